#!/usr/bin/env python3
"""Draws the framework's cursors into the folder of this script. Run it after changing a picture here."""

import pathlib
import struct

SIZE = 32
CENTER = 15  # of the picture, and the hot spot
BAR_HALF = 8  # the split bar's two lines reach this far from the center
ARROW_TIP = 9  # distance of the arrows' tips from the center
ARROW_HALF = 3  # half of an arrow head's width


def split_bar():
    """The black pixels of the cursor for a vertical split bar: two upright lines between two arrows."""
    black = set()
    for along in range(-BAR_HALF, BAR_HALF + 1):
        for line in (-1, 1):
            black.add((line, along))
    for side in (-1, 1):
        for step in range(ARROW_HALF + 1):
            for along in range(-step, step + 1):
                black.add((side * (ARROW_TIP - step), along))
        for across in range(2, ARROW_TIP - ARROW_HALF):
            black.add((side * across, 0))
    return black


def outline(black):
    """The pixels around a shape, so that it is seen on every background."""
    around = {(x + dx, y + dy) for x, y in black for dx in (-1, 0, 1) for dy in (-1, 0, 1)}
    return around - black


def mask(is_set):
    """A monochrome picture, bottom row first, each row padded to 4 bytes."""
    rows = []
    for y in reversed(range(SIZE)):
        bits = 0
        for x in range(SIZE):
            bits = bits << 1 | is_set(x - CENTER, y - CENTER)
        rows.append(struct.pack(">I", bits))
    return b"".join(rows)


def write_cursor(path, black):
    """Writes a monochrome cursor: the shape black, its outline white, the rest transparent."""
    white = outline(black)
    header = struct.pack("<IiiHHIIiiII", 40, SIZE, 2 * SIZE, 1, 1, 0, 0, 0, 0, 2, 0)
    colors = struct.pack("<II", 0x000000, 0xFFFFFF)
    invert = mask(lambda x, y: (x, y) in white)
    keep = mask(lambda x, y: (x, y) not in white and (x, y) not in black)
    picture = header + colors + invert + keep
    folder = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", SIZE, SIZE, 2, 0, CENTER, CENTER, len(picture), 22)
    path.write_bytes(folder + entry + picture)


def main():
    folder = pathlib.Path(__file__).resolve().parent
    upright = split_bar()
    write_cursor(folder / "vsplitbar.cur", upright)
    write_cursor(folder / "hsplitbar.cur", {(y, x) for x, y in upright})


if __name__ == "__main__":
    main()
