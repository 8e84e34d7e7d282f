#!/usr/bin/python3
"""make_seeds.py FOLDER: writes fonts for the font fuzz target.

FOLDER/seeds: what it starts from, one of each kind of glyph that the text code tells apart: TrueType and CFF
outlines, bitmaps of one, two and eight bits a pixel, and an empty file.
FOLDER/damaged: fonts that once kept the library busy for hours: every 32-bit code on one glyph, and that
glyph of 10,000 pixels. Still slow, they are run once and not varied.
FOLDER/small.ttf: a font with small glyphs for the operations target.

All are drawn here, about a kilobyte each.
"""

import pathlib
import struct
import sys

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.t2CharStringPen import T2CharStringPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib.tables.DefaultTable import DefaultTable

EM = 1000
# What FontFuzz.cpp takes from the end of its input, last byte first: texture size, size of the standard
# style, size and style of two requests, four units of text.
PARAMETERS = bytes(8) + bytes([3, 60, 1, 24, 40, 0])
# Glyph name: character codes (none: the missing glyph), left edge, width, height, advance.
GLYPHS = {
    ".notdef": ([], 50, 400, 700, 500),
    "space": ([0x20, 0xA0], 0, 0, 0, 250),
    "bar": ([0x41, 0x42, 0x4E2D], 50, 400, 700, 500),
    "overhang": ([0x66], -200, 600, 900, 300),
    "wide": ([0x2014, 0x1F600], 0, 2000, 100, 2000),
    "vast": ([0x2588], 0, 4000, 4000, 4000),
}


def draw(pen, left, width, height):
    """A triangle with one curved side, so that both kinds of segment occur."""
    if width:
        pen.moveTo((left, 0))
        pen.lineTo((left, height))
        pen.curveTo((left + width // 2, height), (left + width, height // 2), (left + width, 0))
        pen.closePath()


class QuadraticPen(TTGlyphPen):
    """TrueType has no cubic curves: the two control points serve as quadratic ones."""

    def curveTo(self, *points):
        self.qCurveTo(*points)


def outline_font(glyphs=GLYPHS, is_ttf=True, em=EM):
    builder = FontBuilder(em, isTTF=is_ttf)
    builder.setupGlyphOrder(list(glyphs))
    builder.setupCharacterMap({code: name for name, glyph in glyphs.items() for code in glyph[0]})
    outlines = {}
    for name, (_, left, width, height, advance) in glyphs.items():
        pen = QuadraticPen(None) if is_ttf else T2CharStringPen(advance, None)
        draw(pen, left, width, height)
        outlines[name] = pen.glyph() if is_ttf else pen.getCharString()
    if is_ttf:
        builder.setupGlyf(outlines)
    else:
        builder.setupCFF("Seed", {"FullName": "Seed"}, outlines, {})
    builder.setupHorizontalMetrics({name: (glyph[4], glyph[1]) for name, glyph in glyphs.items()})
    builder.setupHorizontalHeader(ascent=900, descent=-200)
    builder.setupNameTable({"familyName": "Seed", "styleName": "Regular"})
    builder.setupOS2()
    builder.setupPost()
    builder.font.recalcTimestamp = False
    builder.updateHead(created=0, modified=0)
    return builder.font


def damaged_font(glyph, em):
    """A TrueType font with all 32-bit codes on one glyph."""
    font = outline_font(em=em)
    group = struct.pack(">LLL", 0x20, 0xFFFFFFFF, list(GLYPHS).index(glyph))
    font["cmap"] = DefaultTable("cmap")
    font["cmap"].data = (struct.pack(">HHHHL", 0, 1, 3, 10, 12)
                         + struct.pack(">HHLLL", 13, 0, 16 + len(group), 0, 1) + group)
    return font


def small_font():
    """A TrueType font of small glyphs, with a program of its own, so that no time goes into hinting."""
    glyphs = {name: glyph for name, glyph in GLYPHS.items() if name != "vast"}
    font = outline_font(glyphs, em=4 * EM)
    font["fpgm"] = DefaultTable("fpgm")
    font["fpgm"].data = bytes.fromhex("b00021") * 4  # push 0, pop it
    return font


def bitmap_font(depth):
    """A BDF font of 13 by 16 pixels at `depth` bits a pixel."""
    width, height = 13, 16
    row = "A5" * ((width * depth + 7) // 8)
    lines = ["STARTFONT 2.1", "FONT -a-b-medium-r-normal--16-160-75-75-c-130-iso10646-1",
             f"SIZE 16 75 75 {depth}", f"FONTBOUNDINGBOX {width} {height} -1 -3",
             "STARTPROPERTIES 4", "FONT_ASCENT 13", "FONT_DESCENT 3", 'CHARSET_REGISTRY "ISO10646"',
             'CHARSET_ENCODING "1"', "ENDPROPERTIES", "CHARS 2"]
    for code in (0x41, 0x66):
        lines += [f"STARTCHAR {code}", f"ENCODING {code}", "SWIDTH 800 0", f"DWIDTH {width} 0",
                  f"BBX {width} {height} -1 -3", "BITMAP", *[row] * height, "ENDCHAR"]
    return "\n".join(lines + ["ENDFONT", ""]).encode()


def main():
    seeds, damaged = (pathlib.Path(sys.argv[1]) / name for name in ("seeds", "damaged"))
    small = pathlib.Path(sys.argv[1]) / "small.ttf"
    for folder in (seeds, damaged):
        folder.mkdir(parents=True, exist_ok=True)
    fonts = {seeds / "truetype": outline_font(), seeds / "cff": outline_font(is_ttf=False),
             small: small_font(), damaged / "map": damaged_font("bar", EM), damaged / "size": damaged_font("vast", 16)}
    for path, font in fonts.items():
        font.save(path)
    for depth in (1, 2, 8):
        (seeds / f"bitmap{depth}").write_bytes(bitmap_font(depth))
    (seeds / "empty").write_bytes(b"")
    for path in (*seeds.iterdir(), *damaged.iterdir()):
        path.write_bytes(path.read_bytes() + PARAMETERS)


main()
