#!/usr/bin/env python3
"""Write Texture/ParticleA.png: the soft round spot that billboards wear.

White everywhere, so that the particle's own colour shows; alpha falls
smoothly from 1 at the centre to 0 at the rim. Standard library only.
"""
import math
import pathlib

from png import RGBA, png

SIZE = 64
TARGET = pathlib.Path(__file__).resolve().parent.parent / "Texture" / "ParticleA.png"


def spot_alpha(x, y):
    """Alpha 0..255 at a pixel: value and slope are 0 at the rim, so no edge shows."""
    middle = (SIZE - 1) / 2
    r = math.hypot(x - middle, y - middle) / (SIZE / 2)
    if r >= 1:
        return 0
    fall = 1 - r * r
    return round(255 * fall * fall)


def main():
    rows = [b"".join(bytes((255, 255, 255, spot_alpha(x, y))) for x in range(SIZE))
            for y in range(SIZE)]
    TARGET.parent.mkdir(exist_ok=True)
    TARGET.write_bytes(png(SIZE, SIZE, RGBA, rows))
    print(f"{TARGET} written")


if __name__ == "__main__":
    main()
