"""make_fonts.py DIRECTORY: writes the small fonts of the tests.

Glyphs are filled rectangles on an em of 40 units, so that at 40 pixels a unit is a pixel. Each font shows one
property; the tests know the numbers.

DIRECTORY/seeds: what the fuzz target for fonts starts from, one of each kind of glyph that the text code tells
apart.
DIRECTORY/damaged: fonts that once kept the library busy for hours: every 32-bit code on one glyph, and on one of
10,000 pixels. Still slow, they are run once and not varied.
"""
import pathlib
import struct
import sys
import zlib

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import newTable
from fontTools.ttLib.tables import ttProgram
from fontTools.ttLib.tables.DefaultTable import DefaultTable
from fontTools.ttLib.tables._g_l_y_f import flagOverlapSimple
from fontTools.ttLib.tables.sbixGlyph import Glyph as Picture
from fontTools.ttLib.tables.sbixStrike import Strike

EMPTY = (0, 0, 0, 0, 10)


def plain(**sizes):
    """Glyphs of so many columns and rows, each beside the last one."""
    return {char: (0, 0, width, height, width) for char, (width, height) in sizes.items()}


# Character: left edge, bottom edge, width, height, advance.
FONTS = {
    "bearings.ttf": {
        " ": EMPTY,
        "A": (2, 0, 10, 20, 14),    # plain
        "J": (-5, -6, 12, 20, 9),   # hangs over to the left, wider than its advance
        "K": (-3, 0, 8, 10, 20),    # reaches to the left, narrower than its advance
        "L": (-4, 20, 6, 4, 0),     # a mark without advance
        "M": (-2, 0, 10, 10, 10),   # reaches to the left, as wide as its advance
        "Q": (0, 0, 10, 10, 9),     # hangs over to the right, from the pen on
        "R": (6, 0, 10, 10, 9),     # hangs over to the right
    },
    # Rows of 1023 columns: A and B fill one, D would be one column too far beside C, E needs a row of its
    # own, F has no room in any.
    "rows.ttf": plain(A=(510, 10), B=(511, 30), C=(600, 20), D=(422, 5), E=(1023, 7), F=(1024, 9), G=(1, 4)),
    # In the text "A B" the space makes the difference between one row and two; in "A BC" the rows are higher without.
    "space_breaks_row.ttf": {" ": EMPTY, **plain(A=(501, 10), B=(520, 30), C=(500, 30))},
    # Only the 0 is wide.
    "digits.ttf": {
        **plain(H=(20, 30)),
        ":": (1, 0, 4, 20, 6),
        "0": (1, 0, 18, 20, 20),
        **{digit: (1, 0, 6, 20, 8) for digit in "123456789"},
    },
    "many.ttf": {chr(code): (2, 0, 20, 20, 24) for code in range(ord("A"), ord("Z") + 1)},
    # A texture of 64 pixels is full with A. No texture has room for C, and the last one is no unit of text.
    "full.ttf": plain(A=(40, 40), C=(1057, 10), **{"\U0001F600": (40, 40)}),
    "overlaps.ttf": plain(A=(40, 10)),  # says that its contours may overlap
    "advance.ttf": {"C": (0, 0, 1, 1, 32767)},
    "spaces.ttf": {" ": EMPTY, "\u00a0": EMPTY},
    "no_characters.ttf": {},
    "outlines.ttf": {" ": EMPTY, "A": (2, 0, 10, 20, 14), "J": (-5, -6, 12, 20, 9)},
}

# What FontFuzz.cpp takes from the end of its input, last byte first: texture size, size of the standard style, size
# and style of two requests, four units of text.
PARAMETERS = "JKMQ".encode("utf-16-le") + bytes([3, 60, 1, 24, 40, 0])

# Character: bounding box and advance, and rows of one bit a pixel. Eleven columns, so two bytes a row, five with
# negative bearings, and one, so as many bytes as pixels.
BITMAPS = {
    "A": ("11 3 0 0", 12, ["8020", "FFE0", "5540"]),
    "B": ("5 2 -1 -1", 6, ["A8", "50"]),
    "C": ("1 2 0 0", 2, ["80", "80"]),
}


# Character: width and height of its picture at 40 pixels, and whether that can be decoded.
PICTURES = {"A": (4, 2, True), "B": (10000, 10000, False), "D": (4, 2, False)}


def bitmap_font(depth):
    """A BDF font; at more bits a pixel its rows are repeated to the length that they need."""
    lines = ["STARTFONT 2.1", "FONT bits", f"SIZE 40 72 72 {depth}", "FONTBOUNDINGBOX 11 3 -1 -1",
             f"CHARS {len(BITMAPS)}"]
    for char, (box, advance, rows) in BITMAPS.items():
        lines += [f"STARTCHAR {char}", f"ENCODING {ord(char)}", f"DWIDTH {advance} 0", f"BBX {box}", "BITMAP",
                  *[row * depth for row in rows], "ENDCHAR"]
    return "\n".join(lines + ["ENDFONT", ""]).encode()


def build(name, glyphs):
    names = {char: f"u{ord(char):04X}" for char in glyphs}
    boxes = {".notdef": EMPTY, **{names[char]: box for char, box in glyphs.items()}}
    font = FontBuilder(unitsPerEm=40)
    font.setupGlyphOrder(list(boxes))
    font.setupCharacterMap({ord(char): glyph for char, glyph in names.items()})
    drawn = {}
    for glyph, (left, bottom, width, height, _) in boxes.items():
        pen = TTGlyphPen(None)
        if width and height:
            pen.moveTo((left, bottom))
            pen.lineTo((left, bottom + height))
            pen.lineTo((left + width, bottom + height))
            pen.lineTo((left + width, bottom))
            pen.closePath()
        drawn[glyph] = pen.glyph()
        if name == "overlaps.ttf" and width:
            drawn[glyph].flags[0] |= flagOverlapSimple
    font.setupGlyf(drawn)
    # A font with instructions of its own is not hinted automatically: edges stay on their pixels.
    font.font["fpgm"] = newTable("fpgm")
    font.font["fpgm"].program = ttProgram.Program()
    font.font["fpgm"].program.fromAssembly(["PUSHB[ ] 0", "POP[ ]"] * 4)
    font.setupHorizontalMetrics({glyph: (box[4], box[0]) for glyph, box in boxes.items()})
    font.setupHorizontalHeader(ascent=30, descent=-10)
    return font.font


def png(width, height, whole):
    """A picture, black all over, which is full coverage."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    pixels = zlib.compress(bytes((1 + (width + 7) // 8) * height)) if whole else b""
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 1, 0, 0, 0, 0)) +
            chunk(b"IDAT", pixels) + chunk(b"IEND", b""))


def picture_font():
    """A font that has pictures of its glyphs beside their outlines."""
    font = build("pictures.ttf", {char: (0, 0, 20, 10, 24) for char in PICTURES})
    strike = Strike(ppem=40, resolution=72)
    for char, picture in PICTURES.items():
        name = f"u{ord(char):04X}"
        strike.glyphs[name] = Picture(glyphName=name, graphicType="png ", imageData=png(*picture))
    font["sbix"] = newTable("sbix")
    font["sbix"].strikes = {40: strike}
    return font


def damaged_font(size):
    """A font with all 32-bit codes on one glyph, of so many pixels."""
    font = build("damaged.ttf", {"A": (0, 0, size, size, size)})
    font["cmap"] = DefaultTable("cmap")
    font["cmap"].data = struct.pack(">HHHHLHHLLLLLL", 0, 1, 3, 10, 12, 13, 0, 28, 0, 1, 0x20, 0xFFFFFFFF, 1)
    return font


directory, seeds, damaged = (pathlib.Path(sys.argv[1]) / name for name in ("", "seeds", "damaged"))
for folder in (directory, seeds, damaged):
    folder.mkdir(parents=True, exist_ok=True)
for name, glyphs in FONTS.items():
    build(name, glyphs).save(directory / name)
picture_font().save(directory / "pictures.ttf")
for depth in (1, 2, 4, 8):
    (directory / f"bits{depth}.bdf").write_bytes(bitmap_font(depth))
for name, size in (("map", 16), ("size", 10000)):
    damaged_font(size).save(damaged / name)
for name in ("bearings.ttf", "bits1.bdf", "bits2.bdf", "bits8.bdf", "pictures.ttf"):
    (seeds / name).write_bytes((directory / name).read_bytes() + PARAMETERS)
(seeds / "empty").write_bytes(PARAMETERS)
