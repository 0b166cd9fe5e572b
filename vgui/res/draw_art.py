#!/usr/bin/env python3
"""Draws the library's bitmaps and icons into the folder of this script. Run it after changing a picture here."""

import pathlib
import struct

# Colours of the shared look, as in foundation/gui_manager.cpp.
CAPTION_FROM = (83, 135, 208)
CAPTION_TO = (137, 199, 255)
BUTTON_BORDER = (156, 179, 196)
BUTTON_GLYPH = (48, 65, 120)
CONTROL_FRAME = (47, 95, 179)
CONTROL_WHITE = (253, 250, 246)
CONTROL_LIGHT = (202, 218, 241)
CHECK_MARK = (71, 196, 58)
CHECK_MARK_DARK = (31, 132, 22)
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

# The check boxes of trees: one white pixel around the box, because the trees' image list keeps no mask and the
# box has to stand free on any colour.
CHECK_SIZE = 16
CHECK_MARGIN = 1
CHECK_NONE = ()
CHECK_ALL = (
    "................",
    "................",
    "................",
    "...........d....",
    "..........d#d...",
    ".........d##d...",
    "....d...d##d....",
    "...d#d.d##d.....",
    "...d##d##d......",
    "....d###d.......",
    ".....d#d........",
    "......d.........",
    "................",
    "................",
    "................",
    "................",
)
CHECK_PART = (
    "................",
    "................",
    "................",
    "................",
    "....dddddddd....",
    "....d######d....",
    "....d######d....",
    "....d######d....",
    "....d######d....",
    "....d######d....",
    "....d######d....",
    "....dddddddd....",
    "................",
    "................",
    "................",
    "................",
)

# The state images of tree combo boxes, side by side: a filler that is never shown, then the boxes. White is the
# colour that the image list takes for transparent.
STATE_SIZE = 13
STATE_MARGIN = 1
STATE_TICK = (
    ".............",
    ".............",
    ".............",
    ".........#...",
    "........##...",
    "...#...###...",
    "...##.###....",
    "...#####.....",
    "....###......",
    ".....#.......",
    ".............",
    ".............",
    ".............",
)
BLACK = (0, 0, 0)
GREY = (128, 128, 128)
SILVER = (192, 192, 192)
RED = (255, 0, 0)
# The sixteen colours of the first displays that had as many, in the order in which bitmaps keep them.
SIXTEEN_COLORS = tuple(
    tuple(128 if index >> bit & 1 else 0 for bit in range(3)) for index in range(7)) + (
        SILVER, GREY) + tuple(tuple(255 if index >> bit & 1 else 0 for bit in range(3)) for index in range(1, 8))


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


def check_box(mark):
    """A tree's check box with a mark, '#' and 'd' for its inside and its outline."""

    def pixel(x, y):
        edge = min(x, y, CHECK_SIZE - 1 - x, CHECK_SIZE - 1 - y) - CHECK_MARGIN
        if edge < 0:
            return WHITE
        if edge == 0:
            return CONTROL_FRAME
        sign = mark[y][x] if mark else "."
        if sign != ".":
            return CHECK_MARK if sign == "#" else CHECK_MARK_DARK
        return mix(CONTROL_WHITE, CONTROL_LIGHT, y, CHECK_SIZE)

    return [[pixel(x, y) for x in range(CHECK_SIZE)] for y in range(CHECK_SIZE)]


def state_box(frame, inside, tick):
    """One state image of a tree combo box: a box in a white margin, with or without a red tick."""

    def pixel(x, y):
        edge = min(x, y, STATE_SIZE - 1 - x, STATE_SIZE - 1 - y) - STATE_MARGIN
        if edge <= 0:
            return WHITE if edge < 0 else frame
        return RED if tick and STATE_TICK[y][x] == "#" else inside

    return [[pixel(x, y) for x in range(STATE_SIZE)] for y in range(STATE_SIZE)]


def state_boxes():
    filler = [[GREY] * STATE_SIZE] * STATE_SIZE
    images = (filler, state_box(BLACK, WHITE, False), state_box(BLACK, WHITE, True),
              state_box(BLACK, SILVER, True), state_box(RED, WHITE, False))
    return [sum((image[y] for image in images), []) for y in range(STATE_SIZE)]


def bits24(rows):
    """Rows of (red, green, blue), top row first, as the bits of a 24-bit picture."""
    padding = bytes(-len(rows[0]) * 3 % 4)
    return b"".join(
        b"".join(bytes((blue, green, red)) for red, green, blue in row) + padding for row in reversed(rows))


def header24(width, height, size):
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, size, 0, 0, 0, 0)


def write_ico24(path, rows):
    """Writes rows of (red, green, blue), top row first, as an icon that is opaque everywhere."""
    width, height = len(rows[0]), len(rows)
    mask = bytes((width + 31) // 32 * 4 * height)
    bits = bits24(rows) + mask
    image = header24(width, 2 * height, len(bits)) + bits
    directory = struct.pack("<HHHBBBBHHII", 0, 1, 1, width, height, 0, 0, 1, 24, len(image), 22)
    path.write_bytes(directory + image)


def write_bmp24(path, rows):
    """Writes rows of (red, green, blue), top row first, as a 24-bit bitmap."""
    bits = bits24(rows)
    header = header24(len(rows[0]), len(rows), len(bits))
    offset = 14 + len(header)
    path.write_bytes(struct.pack("<2sIHHI", b"BM", offset + len(bits), 0, 0, offset) + header + bits)


def write_bmp4(path, rows):
    """Writes rows of (red, green, blue), top row first, as a bitmap of the sixteen colours."""
    width, height = len(rows[0]), len(rows)
    table = b"".join(bytes((blue, green, red, 0)) for red, green, blue in SIXTEEN_COLORS)
    stride = (width + 7) // 8 * 4
    bits = b""
    for row in reversed(rows):
        digits = "".join(f"{SIXTEEN_COLORS.index(color):x}" for color in row)
        bits += bytes.fromhex(digits.ljust(2 * stride, "0"))
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 4, 0, len(bits), 0, 0, 16, 0) + table
    offset = 14 + len(header)
    path.write_bytes(struct.pack("<2sIHHI", b"BM", offset + len(bits), 0, 0, offset) + header + bits)


def main():
    folder = pathlib.Path(__file__).resolve().parent
    write_bmp24(folder / "help_glyph.bmp", help_glyph())
    write_ico24(folder / "assist.ico", help_glyph())
    write_ico24(folder / "check_none.ico", check_box(CHECK_NONE))
    write_ico24(folder / "check_all.ico", check_box(CHECK_ALL))
    write_ico24(folder / "check_part.ico", check_box(CHECK_PART))
    write_bmp4(folder / "combo_tree_checks.bmp", state_boxes())


if __name__ == "__main__":
    main()
