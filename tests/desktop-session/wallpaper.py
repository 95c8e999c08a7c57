# SPDX-License-Identifier: MIT
"""The picture that desktops show: a gradient, so that every place has its own colour and the average is known."""

import struct
import zlib

from screen import SCREEN

AVERAGE = (100, 130, 160)
SPREAD = 48
"""Difference between the average and the colour of an edge: red grows from left to right, green from top to bottom, and
blue falls."""


def color_at(x, y, average=AVERAGE):
    across = (2 * x / (SCREEN[0] - 1) - 1) * SPREAD
    down = (2 * y / (SCREEN[1] - 1) - 1) * SPREAD
    red, green, blue = average
    return round(red + across), round(green + down), round(blue - across)


def is_near(color, other, tolerance=3):
    return all(abs(a - b) <= tolerance for a, b in zip(color, other))


def write(path, average=AVERAGE):
    """Writes it as PNG, in the size of the screen."""
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    width, height = SCREEN
    reds, _, blues = zip(*(color_at(x, 0, average) for x in range(width)))
    row = bytearray(1 + 3 * width)
    row[1::3], row[3::3] = bytes(reds), bytes(blues)
    rows = bytearray()
    for y in range(height):
        row[2::3] = bytes([color_at(0, y, average)[1]]) * width
        rows += row
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
                     + chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))
