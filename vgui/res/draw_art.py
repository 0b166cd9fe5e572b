#!/usr/bin/env python3
"""Draws the library's bitmaps into the folder of this script. Run it after changing a picture here."""

import pathlib
import struct

# Colours of the shared look, as in foundation/gui_manager.cpp.
CAPTION_FROM = (83, 135, 208)
CAPTION_TO = (137, 199, 255)
BUTTON_BORDER = (156, 179, 196)
BUTTON_GLYPH = (48, 65, 120)
WHITE = (255, 255, 255)

HELP_SIZE = 20
HELP_MARGIN = 2  # border and white ring around the button's gradient
HELP_GLYPH = (
    "..####..",
    ".######.",
    "##....##",
    "##....##",
    "......##",
    ".....##.",
    "....##..",
    "...##...",
    "...##...",
    "........",
    "...##...",
    "...##...",
)


def mix(color_from, color_to, index, count):
    """The colour number index of count in a gradient."""
    return tuple(a + (b - a) * index // count for a, b in zip(color_from, color_to))


def on_rounded_border(x, y, size):
    """Whether a pixel is on the outline of a square whose corners lack three pixels each."""
    across, down = min(x, size - 1 - x), min(y, size - 1 - y)
    return (min(across, down) == 0 and max(across, down) >= 2) or (across, down) == (1, 1)


def outside_rounded_border(x, y, size):
    return min(x, size - 1 - x) + min(y, size - 1 - y) <= 1


def help_glyph():
    """The help caption button: like the other caption buttons, with a question mark. The corners continue
    the caption of an active dialog, because the picture is copied opaquely over it."""
    inside = HELP_SIZE - 2 * HELP_MARGIN
    left = (HELP_SIZE - len(HELP_GLYPH[0])) // 2
    top = (HELP_SIZE - len(HELP_GLYPH)) // 2

    def pixel(x, y):
        if outside_rounded_border(x, y, HELP_SIZE):
            return mix(CAPTION_FROM, CAPTION_TO, y, HELP_SIZE)
        if on_rounded_border(x, y, HELP_SIZE):
            return BUTTON_BORDER
        gx, gy = x - left, y - top
        if 0 <= gy < len(HELP_GLYPH) and 0 <= gx < len(HELP_GLYPH[0]) and HELP_GLYPH[gy][gx] == "#":
            return BUTTON_GLYPH
        row = y - HELP_MARGIN
        if min(x, y, HELP_SIZE - 1 - x, HELP_SIZE - 1 - y) < HELP_MARGIN:
            return WHITE
        return mix(CAPTION_TO, CAPTION_FROM, row, inside)

    return [[pixel(x, y) for x in range(HELP_SIZE)] for y in range(HELP_SIZE)]


def write_bmp24(path, rows):
    """Writes rows of (red, green, blue), top row first, as a 24-bit bitmap."""
    width, height = len(rows[0]), len(rows)
    padding = bytes(-width * 3 % 4)
    bits = b"".join(
        b"".join(bytes((blue, green, red)) for red, green, blue in row) + padding for row in reversed(rows))
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(bits), 0, 0, 0, 0)
    offset = 14 + len(header)
    path.write_bytes(struct.pack("<2sIHHI", b"BM", offset + len(bits), 0, 0, offset) + header + bits)


def main():
    folder = pathlib.Path(__file__).resolve().parent
    write_bmp24(folder / "help_glyph.bmp", help_glyph())


if __name__ == "__main__":
    main()
