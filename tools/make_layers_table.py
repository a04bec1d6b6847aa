#!/usr/bin/env python3
"""Write the table of upward includes in docs/ARCHITECTURE.md from tools/layers.txt.

Usage: make_layers_table.py [--check] [root]
--check changes nothing; the exit status is 1 when the table is out of date.
"""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from check_layers import ENTRY  # noqa: E402

BEGIN = "<!-- Upward includes, from tools/layers.txt by tools/make_layers_table.py -->\n"
END = "<!-- End of the upward includes -->\n"


def make_table(layers):
    """The lines of layers.txt as a table in Markdown; a sentence when there are none."""
    matches = [match for match in (ENTRY.match(line.strip()) for line in layers.splitlines()
                                   if not line.lstrip().startswith("#")) if match]
    if not matches:
        return "No source includes upward.\n"
    rows = [f"| `{match[1]}` | `{match[2]}` | {match[3].strip()} |\n" for match in matches]
    return "| source | includes | because |\n|---|---|---|\n" + "".join(rows)


def replace_table(document, table):
    """`document` with `table` between the markers; ValueError when they aren't there."""
    before, begin, rest = document.partition(BEGIN)
    _, end, after = rest.partition(END)
    if not begin or not end:
        raise ValueError("the document lacks the markers of the table")
    return f"{before}{BEGIN}{table}{END}{after}"


def main(arguments):
    check = "--check" in arguments
    roots = [argument for argument in arguments if argument != "--check"]
    root = pathlib.Path(roots[0]) if roots else pathlib.Path(__file__).resolve().parent.parent
    target = root / "docs" / "ARCHITECTURE.md"
    document = target.read_text(encoding="utf-8")
    layers = (root / "tools" / "layers.txt").read_text(encoding="utf-8")
    try:
        wanted = replace_table(document, make_table(layers))
    except ValueError as error:
        print(f"docs/ARCHITECTURE.md: {error}")
        return 1
    if wanted == document:
        return 0
    if check:
        print("docs/ARCHITECTURE.md: the table of upward includes is out of date; "
              "run tools/make_layers_table.py")
        return 1
    target.write_text(wanted, encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
