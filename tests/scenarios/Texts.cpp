// Fonts, and texts in the standard style and others.

#include "scenarios/Contracts.h"

namespace kivgles {
namespace {

using namespace std::string_literals;

const std::string EMPTY = "32 24";  // the middle of layer a
const Calls DELETE_ATLAS = "glDeleteTextures(1, atlas)";
const Calls DELETE_STYLED_ATLAS = "glDeleteTextures(1, styled atlas)";
const Calls NO_FACE = "E FontStyleAtlas: font face is null pointer";

// Of a character, in each class that looks for it.
std::string OSDTextLacks(int code) { return Line("E OSDText: Char {} is not exit", code); }
std::string StyleLacks(int code) { return Line("E FontStyleAtlas: Char {} is not exit", code); }

// Nobody has loaded a font.
SCENARIO(DefaultFont, SWEPT) {
    Begin();
    Write(A, WHOLE, {u"A"}).Makes(MakeTextRenderer(), FailToLoad("/system/fonts/CC3.ttf"));
    Init(1).Makes();
    Measure({u"A"}).Answers("0, 30 x 50", OSDTextLacks('A'));
    Measure({u"A", 20}).Answers("0, 30 x 50", NO_FACE, OSDTextLacks('A'));
    Write(A, WHOLE, {u"A", 20})
        .Makes(NO_FACE, "E OSDText: Get font atlas texture fail 101",
               "E OSDText: get font alpha texture fail 101");
}

// They are loaded, replaced and refused.
SCENARIO(Fonts, SWEPT) {
    const Font bits1("bits1.bdf", 20, 3,
                     {"0, 0, 11, 3: ff000000000000000000ff ffffffffffffffffffffff 00ff00ff00ff00ff00ff00",
                      "12, 0, 5, 2: ff00ff00ff 00ff00ff00", "18, 0, 1, 2: ff ff"});
    const Font bits4("bits4.bdf", 20, 3,
                     {"0, 0, 11, 3: 8800220088002200880022 ffffee00ffffee00ffffee 5555440055554400555544",
                      "12, 0, 5, 2: aa88aa88aa 5500550055", "18, 0, 1, 2: 88 88"});
    const Font rows("rows.ttf", 1024, 66,
                    {"0, 0, 510, 10", "511, 0, 511, 30", "0, 30, 600, 20", "0, 50, 422, 5", "0, 55, 1023, 7",
                     "0, 62, 1, 4"});
    const Font spaceBreaksRow("space_breaks_row.ttf", 1022, 40,
                              {"0, 0, 0, 0: null", "1, 0, 501, 10", "0, 10, 520, 30", "521, 10, 500, 30"});
    Begin();
    LoadFont("outlines.ttf", 0).Makes(MakeTextRenderer(), LoadFirstFont(OUTLINES));
    Write(A, WHOLE, {u"A"}).Makes(DrawText(A, STANDARD, {GLYPH_A}));
    LoadFont("missing.ttf").Answers("31", DELETE_ATLAS, FailToLoad("missing.ttf"));
    LoadFont("/dev/null")  // what is no file of bytes is not given to FreeType, nor waited for
        .Answers("31", "FT_Init_FreeType() = atlas library", "E FontAtlas: Error loading font face",
                 "FT_Done_FreeType(atlas library)", "E OSDText: Load standard font lib fail 31");
    Write(A, WHOLE, {u"AJ"}).Makes(DrawText(A, "0", {EMPTY, EMPTY}, {OSDTextLacks('A'), OSDTextLacks('J')}));
    LoadFont("bits1.bdf").Makes(LoadNextFont(bits1));
    Write(A, WHOLE, {u"ABC", 40, "b"})
        .Makes(DrawStyled(40), FillStyledAtlas(20, 3, bits1.glyphs),
               DrawText(
                   A, STYLED,
                   {"0 35 11 38 from 0 0 11 3", "11 37 16 39 from 12 0 17 2", "18 36 19 38 from 18 0 19 2"}));
    Measure({u"AB", 40, "b"}).Answers("0, 18 x 50", MeasureStyled(40));
    LoadFont("bits4.bdf").Makes(DELETE_ATLAS, LoadNextFont(bits4));
    LoadFont("no_characters.ttf")
        .Answers("32", DELETE_ATLAS, FailToFillAtlas({"no_characters.ttf", 0, 0, {}}));
    LoadFont("spaces.ttf").Answers("32", FailToFillAtlas({"spaces.ttf", 2, 0, {}}));
    LoadFont("rows.ttf").Makes(LoadNextFont(rows));
    Write(A, WHOLE, {u"BG"})
        .Makes(DrawText(A, STANDARD, {"0 8 511 38 from 511 0 1022 30", "511 34 512 38 from 0 62 1 66"}));
    LoadFont("space_breaks_row.ttf").Makes(DELETE_ATLAS, LoadNextFont(spaceBreaksRow));
    Write(A, WHOLE, {u"B"}).Makes(DrawText(A, STANDARD, {"0 8 520 38 from 0 10 520 40"}));
    Write(A, WHOLE, {u"A BC", 0})
        .Makes(DELETE_STYLED_ATLAS, DrawStyled(40),
               FillStyledAtlas(1023, 60,
                               {"0, 0, 501, 10", StyleLacks(' '), "502, 0, 520, 30", "0, 30, 500, 30"}),
               DrawText(A, STYLED,
                        {"0 28 501 38 from 0 0 501 10", "501 8 1021 38 from 502 0 1022 30",
                         "1021 8 1521 38 from 0 30 500 60", EMPTY},
                        OSDTextLacks(' ')));
}

// Of glyphs that hang over, lack an advance or are missing.
SCENARIO(Texts, SWEPT) {
    Begin();
    LoadFont("bearings.ttf").Makes(MakeTextRenderer(), LoadFirstFont(BEARINGS));
    Write(A, WHOLE, {u"AJKM", 40, "", GREY})
        .Makes(MakeFlatRenderer("OSDRect"), FillRectangle(A, GREY, "0 0 64 48"),
               DrawText(A, STANDARD,
                        {GLYPH_A, "14 24 26 44 from 12 0 24 20", "20 28 28 38 from 25 0 33 10",
                         "41 28 51 38 from 41 0 51 10"}));
    Write(A, WHOLE, {u"A Lx", 40, "u"})
        .Makes(DrawText(A, STANDARD, {GLYPH_A, "10 14 16 18 from 34 0 40 4", EMPTY, EMPTY},
                        {OSDTextLacks(' '), OSDTextLacks('x')}),
               FillRectangle(A, WHITE, "0 40 64 42"));
    Write(A, WHOLE, {u"AMQRA", 20, "b"})  // A twice: shown from where it comes last
        .Makes(
            DrawStyled(20),
            FillStyledAtlas(35, 11,
                            {"0, 0, 6, 11", "7, 0, 6, 6", "14, 0, 6, 6", "21, 0, 6, 6", "28, 0, 6, 11"}),
            DrawText(A, STYLED,
                     {"1 27 7 38 from 28 0 34 11", "7 32 13 38 from 7 0 13 6", "12 32 18 38 from 14 0 20 6",
                      "20 32 26 38 from 21 0 27 6", "23 27 29 38 from 28 0 34 11"}));
    Write(A, WHOLE, {u"JKLA", 30, "iu", GREY})
        .Makes(FillRectangle(A, GREY, "0 0 64 48"), DELETE_STYLED_ATLAS, DrawStyled(30, ITALIC),
               FillStyledAtlas(43, 16, {"0, 0, 13, 16", "14, 0, 9, 8", "24, 0, 6, 3", "31, 0, 11, 15"}),
               DrawText(A, STYLED,
                        {"0 27 13 43 from 0 0 13 16", "4 30 13 38 from 14 0 23 8",
                         "22 20 28 23 from 24 0 30 3", "23 23 34 38 from 31 0 42 15"}),
               FillRectangle(A, WHITE, "0 40 64 42"));
    Write(A, WHOLE, {u"A", 40, "bi"})
        .Makes(DELETE_STYLED_ATLAS, DrawStyled(40, ITALIC), FillStyledAtlas(18, 21, {"0, 0, 17, 21"}),
               DrawText(A, STYLED, {"1 17 18 38 from 0 0 17 21"}));
    Write(A, WHOLE, {u"A"}).Makes(DrawText(A, STANDARD, {GLYPH_A}));  // again in the standard style
    Measure({u"AJKLMQR"}).Answers("0, 74 x 50");
    Measure({u"AJKLMR", 0}).Answers("0, 65 x 50", MeasureStyled(40));
    Measure({u"AJKM", 24, "bi"}).Answers("0, 41 x 50", MeasureStyled(24, ITALIC));
    Measure({u"A \U0001F600"})
        .Answers("0, 104 x 50", OSDTextLacks(' '), OSDTextLacks(0xD83D), OSDTextLacks(0xDE00));
    Measure({u"A\0A"s}).Answers("0, 14 x 50");
}

// Of more than the 127 units that are drawn, of none, with half a character, in the background's colour, in
// too low a box, of other lengths than they claim.
SCENARIO(OddTexts, SWEPT) {
    const std::u16string many(200, u'A');
    std::vector<std::string> drawn;  // of them
    for (int left = 2; drawn.size() < 127; left += 14) {
        drawn.push_back(Line("{} 18 {} 38 from 1 0 11 20", left, left + 10));
    }
    const std::string m = "12 28 22 38 from 41 0 51 10";
    Begin();
    LoadFont("bearings.ttf").Makes(MakeTextRenderer(), LoadFirstFont(BEARINGS));
    Write(A, WHOLE, {many}).Makes(DrawText(A, STANDARD, drawn));
    Measure({many}).Answers("0, 2800 x 50");
    Write(A, WHOLE, {u""}).Makes(DrawText(A, STANDARD, {}));
    Measure({u""}).Answers("0, 0 x 50");
    Write(A, WHOLE, {std::nullopt})
        .Makes("E TextInfo: memset_s_func failed, err = 22", DrawStyled(40), FailToFillStyledAtlas());
    Measure({std::nullopt}).Answers("0, 0 x 50");
    Measure({std::nullopt, 20}).Answers("0, 0 x 50", MeasureStyled(20));
    Write(A, WHOLE, {u"A\xDC00"}).Makes(DrawText(A, STANDARD, {GLYPH_A, EMPTY}, OSDTextLacks(0xDC00)));
    Write(A, WHOLE, {u"", 40, "u", WHITE})  // the text's own colour
        .Makes(MakeFlatRenderer("OSDRect"), FillRectangle(A, WHITE, "0 0 64 48"),
               DrawText(A, STANDARD, {}, {}, 0xffffff00), FillRectangle(A, 0xffffff00, "0 40 64 42"));
    for (const Color nearly : {0xfeffffff, 0xfffeffff, 0xfffffeff, 0xfffffffe}) {
        Write(A, WHOLE, {u"", 40, "", nearly})
            .Makes(FillRectangle(A, nearly, "0 0 64 48"), DrawText(A, STANDARD, {}));
    }
    Write(A, {0, 0, 64, 8}, {u"", 40, "u"})  // its baseline is above the layer: 2^32 - 2, and 0 below
        .Makes(DrawText(A, STANDARD, {}), FillRectangle(A, WHITE, "0 0 64 2"));
    drawn = {GLYPH_A, m, "24 28 34 38 from 52 0 62 10"};
    drawn.resize(127, EMPTY);
    Write(A, WHOLE, {u"AMQ", 40, "", NONE, WHITE, 4000000000}).Makes(DrawText(A, STANDARD, drawn));
    for (const char16_t* units : {u"AMQ", u"AM"}) {  // ends where its length says: no further unit is read
        Write(A, WHOLE, {units, 40, "", NONE, WHITE, 2}).Makes(DrawText(A, STANDARD, {GLYPH_A, m}));
    }
    Measure({u"AMQ", 40, "", NONE, WHITE, 2}).Answers("0, 24 x 50");
}

// Glyphs that are larger than an atlas, or than anything.
SCENARIO(GlyphSizes, NOT_SWEPT) {
    const Target a{"a", 2000, 100};
    const std::string nothing = "1000 50";
    const Font rows("rows.ttf", 1023, 90,
                    {"0, 0, 1020, 20", "0, 20, 1022, 60", "0, 80, 844, 10", "845, 80, 2, 8"}, 80);
    Create().Makes(CreateContext());
    MakeLayer(a).Makes(SetUpLayer(a, "0x10001"));
    LoadFont("bearings.ttf").Makes(MakeTextRenderer(), LoadFirstFont(BEARINGS));
    Measure({u"MMMMMMMMMM"}).Answers("0, 100 x 50");  // by what the pen moves, unless they hang over
    Measure({u"MMMMMMMMMM", 40, "i"}).Answers("0, 120 x 50", MeasureStyled(40, ITALIC));
    Measure({u"J", 4000}).Answers("0, 1200 x 50", MeasureStyled(4000));  // has no room in an atlas
    Measure({u"J", 4000, "i"}).Answers("0, 1600 x 50", MeasureStyled(4000, ITALIC));
    LoadFont("rows.ttf", 80).Makes(DELETE_ATLAS, LoadNextFont(rows));
    Measure({u"CG"}).Answers("0, 1202 x 50");
    Write(a, {0, 0, 2000, 50}, {u"CG"})  // C has no room on demand either, but its advance
        .Makes(DrawText(a, STANDARD, {"1200 32 1202 40 from 845 80 847 88", nothing}, OSDTextLacks('C')));
    Write(a, {0, 0, 2000, 50}, {u"C"}).Makes(DrawText(a, STANDARD, {nothing}, OSDTextLacks('C')));
    Write(a, {0, 0, 2000, 50}, {u"C", 20})
        .Makes(DrawStyled(20), FillStyledAtlas(301, 10, {"0, 0, 300, 10"}),
               DrawText(a, STYLED, {"0 30 300 40 from 0 0 300 10"}));
    LoadFont("advance.ttf")  // whose C has room again
        .Makes(DELETE_ATLAS, LoadNextFont({"advance.ttf", 2, 1, {"0, 0, 1, 1"}}));
    Measure({std::u16string(132, u'C'), 40000})  // and no further
        .Answers("0, 4294967295 x 50", MeasureStyled(40000));
    Fail("glGetIntegerv", 64, ALWAYS);
    LoadFont("full.ttf")  // behind A nothing is drawn on demand
        .Makes(DELETE_ATLAS, LoadNextFont({"full.ttf", 41, 40, {"0, 0, 40, 40"}}));
    Write(a, {0, 0, 2000, 50}, {u"ACA"})
        .Makes(DrawText(a, STANDARD, {"0 0 40 40 from 0 0 40 40", "1097 0 1137 40 from 0 0 40 40", nothing},
                        OSDTextLacks('C')));
    Measure({u"C", 1240}).Answers("0, 32767 x 50", MeasureStyled(1240));
    Measure({u"C", 1241}).Answers("0, 0 x 50", MeasureStyled(1241), StyleLacks('C'));  // wider than any
    Write(a, {0, 0, 2000, 50}, {u"C", 1241})
        .Makes(DELETE_STYLED_ATLAS, DrawStyled(1241), StyleLacks('C'), FailToFillStyledAtlas());
    LoadFont("overlaps.ttf")  // FreeType renders it in four times its size
        .Makes(DELETE_ATLAS, LoadNextFont({"overlaps.ttf", 41, 10, {"0, 0, 40, 10"}}));
    Measure({u"A", 8191}).Answers("0, 8191 x 50", MeasureStyled(8191));
    Measure({u"A", 8192}).Answers("0, 0 x 50", MeasureStyled(8192), StyleLacks('A'));
}

// A part that cannot be made leaves what there was before.
SCENARIO(FontFailures, NOT_SWEPT) {
    const auto fails = [&](const std::string& function, int nth, int status, const std::string& line,
                           const std::string& font) {
        Fail(function, 0, nth);
        LoadFont("outlines.ttf")
            .LogsErrors(Line("{}", status), line, Line("E OSDText: Load {} font lib fail {}", font, status));
    };
    Begin();
    fails("FT_Init_FreeType", 1, 30, "E FontAtlas: Failed to initialize freetype library", "standard");
    fails("FT_Get_First_Char", 1, 32, "E FontAtlas: Calculate texture width 0d, height 0d", "standard");
    fails("glGenTextures", 1, 21, "E FontAtlas: Create texture fail", "standard");
    fails("FT_Init_FreeType", 2, 30, "E FontStyleAtlas: Failed to initialize freetype library", "dynamic");
    fails("FT_New_Face", 2, 31, "E FontStyleAtlas: Error loading font face", "dynamic");
    Fail("FT_Set_Pixel_Sizes");
    Fail("FT_Load_Char", 0, 2);  // A's
    LoadFont("outlines.ttf")
        .LogsErrors("0", "E FontAtlas: set pixel size fail", "E FontAtlas: Loading character 65 failed!");
    Fail("FT_Set_Pixel_Sizes");
    Write(A, WHOLE, {u"A", 20}).LogsErrors("0", "E FontStyleAtlas: set pixel size fail");
    Fail("glGenTextures");
    Write(A, WHOLE, {u"A", 20})
        .LogsErrors("0", "E FontStyleAtlas: Create texture fail", "E OSDText: Get font atlas texture fail 21",
                    "E OSDText: get font alpha texture fail 21");
    Fail("FT_Render_Glyph");
    Measure({u"A", 20}).LogsErrors("0, 0 x 50", StyleLacks('A'));
    fails("FT_New_Face", 3, 31, "E FontStyleAtlas: Error loading font face for text size", "dynamic");
    Measure({u"AJ"}).Answers("0, 26 x 50");
    Measure({u"AJ", 20}).Answers("0, 0 x 50", NO_FACE);
}

// A font of pictures: those of A and D are small, that of B has 10,000 by 10,000 pixels. Those of B and D are
// damaged, so that they fail where they are decoded: that of B, which has no room, is not.
SCENARIO(GlyphPictures, NOT_SWEPT) {
    const std::string fails = "E FontAtlas: Loading character 68 failed!";
    const Font pictures("pictures.ttf", 5, 2, {"0, 0, 4, 2: ffffffff ffffffff", fails});
    Create().Makes(CreateContext());
    LoadFont("pictures.ttf")
        .Makes(MakeTextRenderer(), OpenFace(pictures), fails, FillAtlas(pictures), OpenStyles(pictures));
    Measure({u"ABD"}).Answers("0, 78 x 50", OSDTextLacks('D'));
    Measure({u"ABD", 40, "b"}).Answers("0, 78 x 50", MeasureStyled(40), StyleLacks('D'), OSDTextLacks('D'));
}

// A texture of 54 pixels holds six of the font's 26 characters, and is full to its last row.
SCENARIO(SmallTextures, SWEPT) {
    const Font many("many.ttf", 40, 54,
                    {"0, 0, 19, 18", "20, 0, 19, 18", "0, 18, 19, 18", "20, 18, 19, 18", "0, 36, 19, 18",
                     "20, 36, 19, 18"},
                    36);
    const std::string warning = "W FontAtlas: 6 characters are held in the atlas, 20 are drawn on demand";
    Begin();
    Fail("glGetIntegerv", 54, ALWAYS);
    LoadFont("many.ttf", 36).Makes(MakeTextRenderer(), LoadFirstFont(many, warning));
    Write(A, WHOLE, {u"\u4E00A"})
        .Makes(DrawText(A, STANDARD, {"1 20 20 38 from 0 0 19 18", EMPTY}, OSDTextLacks(0x4E00)));
    Write(A, WHOLE, {u"AYZ"})
        .Makes(DrawStyled(36), FillStyledAtlas(40, 36, {"0, 0, 19, 18", "20, 0, 19, 18", "0, 18, 19, 18"}),
               DrawText(A, STYLED,
                        {"1 20 20 38 from 0 0 19 18", "23 20 42 38 from 20 0 39 18",
                         "45 20 64 38 from 0 18 19 36"}));
    Measure({u"AZ"}).Answers("0, 44 x 50");
    Measure({u"AZ", 30, "i"}).Answers("0, 36 x 50", MeasureStyled(30, ITALIC));
    LoadFont("outlines.ttf").Makes(DELETE_ATLAS, LoadNextFont(OUTLINES));  // has room for all
}

}  // namespace
}  // namespace kivgles
