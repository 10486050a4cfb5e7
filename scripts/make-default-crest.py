#!/usr/bin/env python3
"""Draws the neutral crest that a fresh install carries in its wappen folder:
default.tga, default.gfp (the template of every picture an export writes) and
a wa.lst naming one crest. Standard library only; run it again only to change
the drawing: python3 scripts/make-default-crest.py data/defaults/wappen"""
import struct
import sys
import zlib
from pathlib import Path

SIZE = 64
# Colours chosen on the 16-bit grid, so they come back unchanged through it.
WHITE = (255, 255, 255)
GREY = (128, 128, 128)
DARK = (64, 64, 64)


def inside(x, y):
    cx = x + 0.5 - SIZE / 2
    if 8 <= y < 36:
        return abs(cx) < 20
    if 36 <= y < 58:
        return abs(cx) < 20 * (58 - y) / 22
    return False


def colour(x, y):
    if not inside(x, y):
        return WHITE
    near = [(x + dx, y + dy) for dx in range(-2, 3) for dy in range(-2, 3)]
    return DARK if not all(inside(*p) for p in near) else GREY


def main(folder):
    out = Path(folder)
    out.mkdir(parents=True, exist_ok=True)
    rows = [[colour(x, y) for x in range(SIZE)] for y in range(SIZE)]

    tga = bytearray(18)
    tga[2] = 2
    struct.pack_into("<HHB", tga, 12, SIZE, SIZE, 24)
    for row in reversed(rows):
        for r, g, b in row:
            tga += bytes((b, g, r))
    (out / "default.tga").write_bytes(bytes(tga))

    pixels = bytearray()
    for row in rows:
        for r, g, b in row:
            pixels += struct.pack("<H", (r // 8) << 11 | (g // 4) << 5 | (b // 8))
    stream = zlib.compress(bytes(pixels), -1)
    head = bytearray(132)
    head[0:4] = head[56:60] = b"NALP"
    struct.pack_into("<ii", head, 4, SIZE, SIZE)
    struct.pack_into("<iii", head, 64, SIZE, SIZE, 16)
    struct.pack_into("<ii", head, 96, len(stream) + 8, len(pixels))
    head[104] = 11
    gfp = bytes(head) + struct.pack("<ii", len(pixels), len(stream)) + stream
    (out / "default.gfp").write_bytes(gfp)

    lst = "[wa]\r\ndatei=wa.res\r\nanzahl=1\r\ntype=14\r\n[vereins_wappen_0]\r\ndatei=vereins_wappen_0.gfp\r\n"
    (out / "wa.lst").write_bytes(lst.encode("cp1252"))


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else "data/defaults/wappen")
