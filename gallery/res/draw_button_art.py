#!/usr/bin/env python3
"""Draws the pictures of the button page into the folder of this script. Run it after changing one here.

Every picture is 16 pixels square, drawn letter by letter. A space is transparent."""

import pathlib
import struct

SIZE = 16
KEY = (255, 0, 255)  # stands for "transparent" in the bitmaps

FOLDER = (
    "                ",
    "  oooooo        ",
    " oyyyyyyo       ",
    " oyyyyyyyooooo  ",
    " oyyyyyyyyyyyyo ",
    " oyyyyyyyyyyyyo ",
    " ooooooooooooooo",
    " owwwwwwwwwwwwwo",
    " owyyyyyyyyyyyo ",
    " owyyyyyyyyyyyo ",
    " owyyyyyyyyyyyo ",
    " owyyyyyyyyyyo  ",
    " owyyyyyyyyyyo  ",
    " oyyyyyyyyyyyo  ",
    " oooooooooooo   ",
    "                ",
)
TICK = (
    "                ",
    "     gggggg     ",
    "   gggggggggg   ",
    "  gggggggggggg  ",
    "  gggggggggwwg  ",
    " gggggggggwwwgg ",
    " ggggggggwwwggg ",
    " gggwwggwwwgggg ",
    " gggwwwwwwggggg ",
    " ggggwwwwgggggg ",
    " gggggwwggggggg ",
    "  gggggggggggg  ",
    "  gggggggggggg  ",
    "   gggggggggg   ",
    "     gggggg     ",
    "                ",
)
PENCIL = (  # a cursor, black with a white inside; it points to the upper left
    "kk              ",
    "kwkk            ",
    "kwwwk           ",
    " kwwwk          ",
    " kwwwwk         ",
    "  kwwwwk        ",
    "   kwwwwk       ",
    "    kwwwwk      ",
    "     kwwwwk     ",
    "      kwwwwk    ",
    "       kwwwkk   ",
    "        kwkwwk  ",
    "         kwwwk  ",
    "          kwk   ",
    "           k    ",
    "                ",
)

HOT = {"o": (150, 96, 12), "y": (255, 209, 92), "w": (255, 246, 214), "g": (46, 160, 67), "k": (0, 0, 0)}
CALM = {"o": (110, 118, 132), "y": (203, 210, 220), "w": (246, 248, 250), "g": (142, 152, 166)}
HOT_TICK = HOT | {"w": (255, 255, 255)}


def colors_24(picture, palette, transparent):
    """The picture's pixels as a 24-bit bitmap's, bottom row first."""
    return b"".join(bytes(reversed(palette.get(letter, transparent))) for row in reversed(picture) for letter in row)


def transparency(picture):
    """A monochrome bitmap's pixels, set where the picture is transparent; rows are padded to 4 bytes."""
    rows = (int("".join("1" if letter == " " else "0" for letter in row), 2) << 16 for row in reversed(picture))
    return b"".join(struct.pack(">I", row) for row in rows)


def info_header(height, size):
    return struct.pack("<IiiHHIIiiII", 40, SIZE, height, 1, 24, 0, size, 0, 0, 0, 0)


def write_icon(path, picture, palette, hot_spot=None):
    """Writes an icon, or a cursor with its hot spot."""
    pixels = colors_24(picture, palette, (0, 0, 0)) + transparency(picture)
    image = info_header(2 * SIZE, len(pixels)) + pixels
    kind = 1 if hot_spot is None else 2
    x, y = (1, 24) if hot_spot is None else hot_spot  # planes and colour depth stand there in an icon
    directory = struct.pack("<HHHBBBBHHII", 0, kind, 1, SIZE, SIZE, 0, 0, x, y, len(image), 22)
    path.write_bytes(directory + image)


def write_bitmap(path, picture, palette):
    pixels = colors_24(picture, palette, KEY)
    header = info_header(SIZE, len(pixels))
    offset = 14 + len(header)
    path.write_bytes(struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + header + pixels)


def main():
    folder = pathlib.Path(__file__).resolve().parent
    write_icon(folder / "folder_hot.ico", FOLDER, HOT)
    write_icon(folder / "folder_calm.ico", FOLDER, CALM)
    write_bitmap(folder / "tick_hot.bmp", TICK, HOT_TICK)
    write_bitmap(folder / "tick_calm.bmp", TICK, CALM)
    write_icon(folder / "pencil.cur", PENCIL, HOT_TICK, (0, 0))


if __name__ == "__main__":
    main()
