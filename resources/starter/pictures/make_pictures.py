#!/usr/bin/env python3
"""Draws the preview pictures of the tool kinds: one PNG of 64 x 64 pixels each, beside this script.

A picture is a list of shapes, later ones on top. A shape is a test of a point and a colour; most are bodies of
revolution seen from the side, given by their half width at some heights. The result depends on this script alone.
"""

import math
import struct
import sys
import zlib
from pathlib import Path

SIZE = 64
FINE = 4  # sub-samples a pixel and direction
AXIS = SIZE / 2

SHANK = (168, 176, 186)
STEEL = (74, 92, 116)
FLUTE = (132, 154, 182)
BODY = (112, 122, 134)
INSERT = (222, 170, 48)


def turned(*profile):
    """A body around the vertical axis; profile holds (y, half width), linear in between."""

    def inside(x, y):
        for (y0, w0), (y1, w1) in zip(profile, profile[1:]):
            if y0 <= y < y1:
                return abs(x - AXIS) <= w0 + (w1 - w0) * (y - y0) / (y1 - y0)
        return False

    return inside


def both(first, second):
    return lambda x, y: first(x, y) and second(x, y)


def twist(pitch, share=0.4, slope=0.9):
    """Slanted stripes, as flutes show from the side."""
    return lambda x, y: ((y + slope * (x - AXIS)) / pitch) % 1 < share


def straight(pitch, share=0.35):
    """Stripes along the axis."""
    return lambda x, y: ((x - AXIS) / pitch + 0.5 * share) % 1 < share


def rings(pitch, share=0.45):
    """Grooves across the axis, as threads show from the side."""
    return lambda x, y: ((y + 0.2 * (x - AXIS)) / pitch) % 1 < share


def disc(radius, teeth=0, depth=0.0):
    """A disc about the middle of the picture; its rim may carry saw teeth."""

    def inside(x, y):
        dx, dy = x - AXIS, y - AXIS
        limit = radius - depth * ((math.atan2(dy, dx) / (2 * math.pi) * teeth) % 1)
        return math.hypot(dx, dy) <= limit

    return inside


def box(left, top, right, bottom):
    return lambda x, y: left <= x < right and top <= y < bottom


def fluted(shank, cutter, stripes):
    return [(shank, SHANK), (cutter, STEEL), (both(cutter, stripes), FLUTE)]


def ball(radius, centre, top):
    """Profile of a rounded end below `top`."""
    steps = [i * math.pi / 24 for i in range(13)]
    return turned((top, radius), *((centre + radius * math.sin(a), radius * math.cos(a)) for a in steps))


PLAIN_SHANK = turned((2, 8), (28, 8))

PICTURES = {
    "flat_end_mill": fluted(PLAIN_SHANK, turned((28, 10), (62, 10)), twist(13)),
    "ball_end_mill": fluted(PLAIN_SHANK, ball(10, 52, 28), twist(13)),
    "bull_nose_end_mill": fluted(
        PLAIN_SHANK, turned((28, 12), (57, 12), (59.5, 11), (61, 9.5), (62, 7)), twist(13)),
    "chamfer_mill": fluted(
        turned((2, 9), (30, 9)), turned((30, 16), (42, 16), (58, 1), (59, 1)), twist(14, 0.3)),
    "v_bit": fluted(
        turned((2, 6), (26, 6)), turned((26, 6), (30, 22), (36, 22), (60, 1), (61, 1)), straight(15, 0.3)),
    "engraving_cutter": fluted(
        turned((2, 6), (34, 6)), turned((34, 6), (61, 0.8), (62, 0.8)), lambda x, y: x > AXIS),
    "single_flute_router": fluted(
        turned((2, 7), (26, 7)), turned((26, 7), (62, 7)), twist(24, 0.5, 1.2)),
    "compression_router": fluted(
        turned((2, 10), (20, 10)), turned((20, 10), (62, 10)),
        lambda x, y: (twist(12, 0.4, 0.9) if y > 46 else twist(12, 0.4, -0.9))(x, y)),
    "face_mill": [
        (turned((4, 10), (22, 10), (22.1, 24), (46, 28), (54, 28)), BODY),
        (turned((4, 4), (22, 4)), SHANK),
        (box(5, 46, 15, 58), INSERT), (box(49, 46, 59, 58), INSERT), (box(27, 48, 37, 58), INSERT),
    ],
    "slitting_saw": [
        (disc(30, 32, 4), STEEL), (disc(14), FLUTE), (disc(7), (255, 255, 255)), (box(30, 23, 34, 27), (255, 255, 255)),
    ],
    "twist_drill": fluted(
        turned((2, 6), (18, 6)), turned((18, 7), (57, 7), (62, 0)), twist(11, 0.45, 1.1)),
    "center_drill": fluted(
        turned((2, 10), (34, 10)), turned((34, 10), (40, 10), (52, 3.5), (60, 3.5), (62, 0)), twist(12, 0.3)),
    "spot_drill": fluted(
        turned((2, 9), (32, 9)), turned((32, 9), (52, 9), (61, 0)), twist(12, 0.4)),
    "reamer": fluted(
        turned((2, 5), (26, 5)), turned((26, 9), (59, 9), (62, 7)), straight(5)),
    "countersink": fluted(
        turned((2, 6), (34, 6)), turned((34, 19), (38, 19), (57, 0.5)), straight(13, 0.3)),
    "counterbore": fluted(
        turned((2, 7), (24, 7)), turned((24, 15), (50, 15), (50.1, 6), (61, 6)), both(twist(14), box(0, 24, 64, 50))),
    "boring_bar": [
        (turned((2, 9), (52, 9)), BODY), (turned((2, 9), (14, 9)), SHANK), (box(23, 52, 38, 58), BODY),
        (lambda x, y: 52 <= y < 62 and 36 <= x <= 48 - 0.6 * (y - 52), INSERT),
    ],
    "tap": fluted(
        turned((2, 4), (8, 4), (8.1, 6), (26, 6)), turned((26, 9), (54, 9), (62, 6)), rings(4)),
    "pipe_tap": fluted(
        turned((2, 6), (8, 6), (8.1, 8), (24, 8)), turned((24, 18), (62, 11)), rings(4)),
    "thread_mill": fluted(
        turned((2, 10), (26, 10)), turned((26, 8), (62, 8)), both(rings(6, 0.5), straight(8, 0.75))),
    "tapping_head": [
        (turned((2, 6), (14, 8)), SHANK), (turned((14, 17), (36, 17)), BODY), (box(49, 18, 62, 22), SHANK),
        (turned((36, 13), (46, 9)), STEEL), (turned((46, 4), (62, 4)), FLUTE),
        (both(turned((50, 4), (62, 4)), rings(3)), STEEL),
    ],
}


def pixel(shapes, column, row):
    """Mean of the pixel's sub-samples as red, green, blue, alpha."""
    total = [0, 0, 0]
    hits = 0
    for i in range(FINE * FINE):
        x = column + (i % FINE + 0.5) / FINE
        y = row + (i // FINE + 0.5) / FINE
        colour = next((c for test, c in reversed(shapes) if test(x, y)), None)
        if colour is not None:
            hits += 1
            total = [a + b for a, b in zip(total, colour)]
    return bytes(t // hits for t in total) + bytes([255 * hits // FINE**2]) if hits else bytes(4)


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(shapes):
    rows = b"".join(b"\0" + b"".join(pixel(shapes, x, y) for x in range(SIZE)) for y in range(SIZE))
    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent
    for name, shapes in PICTURES.items():
        (folder / (name + ".png")).write_bytes(png(shapes))


if __name__ == "__main__":
    main()
