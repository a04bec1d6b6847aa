#!/usr/bin/env python3
"""Make the AppStream file of the program from packaging/metainfo.xml.in and CHANGELOG.md.

    tools/make_metainfo.py [--media URL] > org.morentis.Morentis.metainfo.xml

Each heading "## VERSION (YYYY-MM-DD)" of the changelog becomes a release; an unreleased one is left out.
Software centres load screenshots from the web: with --media the pictures that tools/make_screenshots.sh
draws for them (store_*.png) are named below that address, without it there are none.
"""
import argparse
import pathlib
import re
import sys
from xml.sax.saxutils import quoteattr

ROOT = pathlib.Path(__file__).resolve().parent.parent
# The first one is shown first.
SCREENSHOTS = {
    "store_galaxies": "Two galaxies meet, seen from four sides",
    "store_melt": "A melting crystal over a floor, with the shadows of two lights",
    "store_bonds": "Bonds of a crystal, through the faces of its periodic cell",
}
SIZE = (1280, 720)


def releases(changelog):
    """Version and date of the headings that have a date, newest first."""
    return re.findall(r"^## (\d[\w.]*) \((\d{4}-\d{2}-\d{2})\)$", changelog, re.MULTILINE)


def release_block(found):
    if not found:
        return ""
    lines = [f'    <release version="{version}" date="{date}"/>\n' for version, date in found]
    return "  <releases>\n" + "".join(lines) + "  </releases>\n"


def screenshot_block(media):
    if not media:
        return ""
    text = "  <screenshots>\n"
    for number, (name, caption) in enumerate(SCREENSHOTS.items()):
        kind = ' type="default"' if number == 0 else ""
        address = f"{media.rstrip('/')}/{name}.png"
        text += (f"    <screenshot{kind}>\n      <caption>{caption}</caption>\n"
                 f'      <image type="source" width={quoteattr(str(SIZE[0]))} height={quoteattr(str(SIZE[1]))}>'
                 f"{address}</image>\n    </screenshot>\n")
    return text + "  </screenshots>\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--media", default="", help="web address of the screenshots' folder")
    args = parser.parse_args()
    text = (ROOT / "packaging" / "metainfo.xml.in").read_text(encoding="utf-8")
    text = text.replace("@SCREENSHOTS@", screenshot_block(args.media))
    text = text.replace("@RELEASES@", release_block(releases((ROOT / "CHANGELOG.md").read_text(encoding="utf-8"))))
    sys.stdout.write(text)


if __name__ == "__main__":
    main()
