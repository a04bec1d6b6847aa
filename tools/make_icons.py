#!/usr/bin/env python3
"""Draw ICONS/*.png from ICONS/svg/*.svg, and the program's own icon in all sizes from ICONS/morentis.svg.

The pictures are committed, so a build needs none of this: run it after a
drawing has changed. It needs rsvg-convert (Debian package librsvg2-bin).
"""
import pathlib
import shutil
import subprocess
import sys

ICONS = pathlib.Path(__file__).resolve().parent.parent / "ICONS"
SIZE = 24
DESKTOP = ICONS.parent / "packaging" / "icons"
DESKTOP_SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
# The buttons above a view stand in a narrow row.
SMALL = {"ShowMessage": 20, "ShowItem": 20, "ShowGrid": 20, "ShowData": 20, "FitView": 20}


def draw(source, target, size):
    subprocess.run(
        ["rsvg-convert", "-w", str(size), "-h", str(size), "-o", str(target), str(source)],
        check=True)


def main():
    if not shutil.which("rsvg-convert"):
        sys.exit("make_icons.py needs rsvg-convert: apt-get install librsvg2-bin")
    sources = sorted((ICONS / "svg").glob("*.svg"))
    for source in sources:
        draw(source, ICONS / (source.stem + ".png"), SMALL.get(source.stem, SIZE))
    draw(ICONS / "morentis.svg", ICONS / "morentis.png", 128)
    for size in DESKTOP_SIZES:
        draw(ICONS / "morentis.svg", DESKTOP / f"morentis-{size}.png", size)
    print(f"{len(sources) + 1 + len(DESKTOP_SIZES)} pictures drawn in {ICONS} and {DESKTOP}")


if __name__ == "__main__":
    main()
