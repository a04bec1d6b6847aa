#!/usr/bin/env python3
"""Write Resource/DefaultMask.png: what a dome picture on a mirror keeps of its light.

Grey, in the place of the dome picture: white inside, falling softly to black
at the rim of the disc, so that no light reaches what is outside the dome.
Standard library only.
"""
import math
import pathlib

from png import GREY, png

SIZE = 512
SOFT = 0.02  # width of the soft rim, as a share of the disc's radius
TARGET = pathlib.Path(__file__).resolve().parent.parent / "Resource" / "DefaultMask.png"


def grey(x, y):
    """0..255 at a pixel."""
    middle = (SIZE - 1) / 2
    r = math.hypot(x - middle, y - middle) / (SIZE / 2)
    t = min(max((1 - r) / SOFT, 0.0), 1.0)
    return round(255 * t * t * (3 - 2 * t))


def main():
    rows = [bytes(grey(x, y) for x in range(SIZE)) for y in range(SIZE)]
    TARGET.parent.mkdir(exist_ok=True)
    TARGET.write_bytes(png(SIZE, SIZE, GREY, rows))
    print(f"{TARGET} written")


if __name__ == "__main__":
    main()
