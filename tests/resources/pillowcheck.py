#!/usr/bin/env python3
"""The outside view on the editor's files, through Pillow and Python's zlib.

  write FOLDER        writes TGA files with Pillow: RGB and RGBA, rows from
                      the bottom and from the top, plain and run-length
  check-tga FILE W H  reads the editor's TGA with Pillow; it must be W x H and
                      show the pattern of pattern() widened by the 16-bit rule
  check-gfp FILE W H  inflates the payload of the editor's .gfp with zlib and
                      compares it with the pattern in 16-bit form
Exit 0 when all holds; a message on standard error otherwise."""
import struct
import sys
import zlib
from pathlib import Path

from PIL import Image


def pattern(x, y):
    # Flat bands every fourth row give run-length packets real runs.
    if y % 4 == 0:
        return (200, 100, 50, 255)
    return ((x * 37 + y * 11) & 255, (x * 5 + y * 29) & 255, (x * x + y) & 255, (x + y) & 255)


def widen5(c):
    return c * 8 if c % 2 == 0 else (c + 1) * 8 - 1


def widen6(c):
    return c * 4 if c % 2 == 0 else (c + 1) * 4 - 1


def pack(r, g, b):
    return (r // 8) << 11 | (g // 4) << 5 | (b // 8)


def write(folder):
    out = Path(folder)
    w, h = 37, 23
    for mode in ("RGB", "RGBA"):
        im = Image.new(mode, (w, h))
        im.putdata([pattern(x, y)[: len(mode)] for y in range(h) for x in range(w)])
        for orientation, oname in ((-1, "bottom"), (1, "top")):
            for rle in (False, True):
                name = f"{mode.lower()}-{oname}-{'rle' if rle else 'raw'}.tga"
                kwargs = {"orientation": orientation}
                if rle:
                    kwargs["compression"] = "tga_rle"
                im.save(out / name, **kwargs)


def check_tga(path, w, h):
    im = Image.open(path)
    if im.format != "TGA" or im.size != (w, h):
        sys.exit(f"{path}: {im.format} {im.size}, expected TGA {(w, h)}")
    im = im.convert("RGB")
    for y in range(h):
        for x in range(w):
            r, g, b, _ = pattern(x, y)
            want = (widen5(r // 8), widen6(g // 4), widen5(b // 8))
            if im.getpixel((x, y)) != want:
                sys.exit(f"{path}: pixel {x},{y} is {im.getpixel((x, y))}, expected {want}")


def check_gfp(path, w, h):
    data = Path(path).read_bytes()
    stored, rawsize = struct.unpack_from("<ii", data, 96)
    if data[104] != 11 or rawsize != w * h * 2:
        sys.exit(f"{path}: method {data[104]}, rawsize {rawsize}")
    raw = zlib.decompress(data[140 : 132 + stored])
    want = b"".join(struct.pack("<H", pack(*pattern(x, y)[:3])) for y in range(h) for x in range(w))
    if raw != want:
        sys.exit(f"{path}: inflated pixels differ from the pattern")


if __name__ == "__main__":
    cmd = sys.argv[1]
    if cmd == "write":
        write(sys.argv[2])
    elif cmd == "check-tga":
        check_tga(sys.argv[2], int(sys.argv[3]), int(sys.argv[4]))
    elif cmd == "check-gfp":
        check_gfp(sys.argv[2], int(sys.argv[3]), int(sys.argv[4]))
    else:
        sys.exit(f"unknown command {cmd}")
