#!/usr/bin/env python3
"""Draws the gallery's sample videos into the folder "videos" beside this script: a square that crosses a coloured
frame. Run it after changing something here."""

import pathlib
import struct

TWIPS = 20  # per pixel
WIDTH, HEIGHT = 320, 240  # pixels
SQUARE = 60
FRAMES = 48
RATE = 24  # frames a second
VIDEOS = {
    "示例程序/打开示例页": (0x2B, 0x6C, 0xC4),
    "示例程序/绘图区": (0x3A, 0x8F, 0x5C),
    "示例页/对话框": (0xC4, 0x7A, 0x2B),
}


class Bits:
    """Numbers of any number of bits, the highest bit first."""

    def __init__(self):
        self.text = ""

    def add(self, value, size):
        self.text += format(value & ((1 << size) - 1), f"0{size}b")
        return self

    def bytes(self):
        padded = self.text + "0" * (-len(self.text) % 8)
        return bytes(int(padded[i : i + 8], 2) for i in range(0, len(padded), 8))


def rect(width, height):
    bits = Bits().add(16, 5)
    for edge in (0, width, 0, height):
        bits.add(edge * TWIPS, 16)
    return bits.bytes()


def tag(code, body=b""):
    return struct.pack("<HI", code << 6 | 0x3F, len(body)) + body


def square():
    """DefineShape number 1: a white square at the origin."""
    side = SQUARE * TWIPS
    edges = Bits().add(1, 4).add(0, 4)  # bits of a fill and of a line index
    edges.add(0b000101, 6).add(1, 5).add(0, 1).add(0, 1).add(1, 1)  # moves to (0, 0), takes fill 1 on the right
    for vertical, distance in ((0, side), (1, side), (0, -side), (1, -side)):
        edges.add(0b11, 2).add(16 - 2, 4).add(0, 1).add(vertical, 1).add(distance, 16)
    edges.add(0, 6)
    fills = b"\x01\x00\xff\xff\xff"
    return tag(2, struct.pack("<H", 1) + rect(SQUARE, SQUARE) + fills + b"\x00" + edges.bytes())


def place(frame):
    """PlaceObject2: the square at its place in a frame."""
    x = (WIDTH - SQUARE) * frame // (FRAMES - 1) * TWIPS
    y = (HEIGHT - SQUARE) // 2 * TWIPS
    matrix = Bits().add(0, 2).add(16, 5).add(x, 16).add(y, 16).bytes()
    flags, what = (0x06, struct.pack("<H", 1)) if frame == 0 else (0x05, b"")
    return tag(26, bytes((flags,)) + struct.pack("<H", 1) + what + matrix)


def video(background):
    body = rect(WIDTH, HEIGHT) + struct.pack("<HH", RATE << 8, FRAMES)
    body += tag(9, bytes(background)) + square()
    for frame in range(FRAMES):
        body += place(frame) + tag(1)
    body += tag(0)
    return b"FWS\x06" + struct.pack("<I", 8 + len(body)) + body


def main():
    folder = pathlib.Path(__file__).resolve().parent / "videos"
    for name, background in VIDEOS.items():
        path = folder / f"{name}.swf"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(video(background))


if __name__ == "__main__":
    main()
