#!/usr/bin/env python3
"""Hold the sources to the house's floors and to a few habits.

A header includes headers of its own folder or of a lower floor; a source file
may include a higher one only where tools/layers.txt says so, with a reason.
The floors inside the fence (FENCED) include only each other, and of other
packages only what OUTSIDE lists: no window, no OpenGL. That holds for their
precompiled header too, and their CMakeLists.txt says so.
Besides: project includes name files that exist, headers are guarded by a
pragma, the drawing in docs/ARCHITECTURE.md shows these floors, and texts that
are written for readers of the project alone stay free of references that
those readers cannot follow.

Usage: check_layers.py [root]     exit status 1 when anything was found.
"""
import pathlib
import re
import subprocess
import sys

# Low to high. Folders that share a floor don't include each other.
FLOORS = [
    ["COMMON"],
    ["CONFITEM", "IMPORT", "POVRAY/TEXT"],
    ["PARAM"],
    ["BOND", "COLORCURVE", "MESH", "TIME", "WIDGET"],
    ["COLORCURVE/EDITOR", "PDATA"],
    ["GL/BASE", "PDATA/EDITOR"],
    ["GL/DRAW/CPU", "SCENE"],
    ["GL/DRAW"],
    ["FILTER"],
    ["FILTER/PANEL", "IMAGE", "POVRAY"],
    ["GL/VIEW"],
    ["WIDGET/TIMELINE"],
    ["APP"],
]
FLOOR_OF = {folder: floor for floor, folders in enumerate(FLOORS) for folder in folders}

# Folders that compile and link without a window system (tests/core links them and proves it).
FENCED = {"COMMON", "CONFITEM", "IMPORT", "POVRAY/TEXT", "PARAM", "BOND", "COLORCURVE", "MESH", "TIME", "PDATA", "GL/DRAW/CPU"}
FENCED_PCH = "cmake/pch_core.h"
# What they may include in angle brackets, besides C++'s own headers, which have neither slash nor ".h":
# C, the system, and of wxWidgets what its base library has. Add what you need, if it is of that kind.
OUTSIDE = {
    "assimp/Importer.hpp", "assimp/ProgressHandler.hpp", "assimp/scene.h",
    "emmintrin.h", "expat.h", "fcntl.h", "hdf5.h", "immintrin.h", "locale.h", "unistd.h", "sys/file.h", "sys/inotify.h",
    "sys/mman.h", "sys/prctl.h", "sys/resource.h", "sys/stat.h", "sys/vfs.h", "sys/wait.h",
    "wx/defs.h", "wx/filefn.h", "wx/filename.h", "wx/intl.h", "wx/log.h", "wx/stdpaths.h", "wx/stopwatch.h",
    "wx/strconv.h", "wx/string.h", "wx/thread.h", "wx/utils.h", "zlib.h",
}

OUTSIDE_INCLUDE = re.compile(r"^\s*#\s*include\s*<([^>]+)>")
# A line of the drawing: number of the floor on its first line, folder (in brackets: not there yet; with a
# star: inside the fence), what lives there.
DRAWN = re.compile(r"^ {0,2}(\d+)? +(\(?)([A-Z]+(?:/[A-Z]+)*)(\)?)(\*?)(?:\s|$)")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')
PRAGMA = re.compile(r"^\s*#\s*pragma\s+once\b", re.M)
ENTRY = re.compile(r"^(\S+)\s*->\s*(\S+)\s*:\s*(\S.*)$")

# Split, so that this file doesn't match itself.
UNSAID = [re.compile(pattern, re.I) for pattern in (
    r"\b" + "specif" + r"ication\b",
    r"\bas " + "specif" + r"ied\b",
    r"\bPart" + r" [0-9]+\.[0-9]+",
    "iss" + r"ue #?[0-9]+",
)]
TEXT_SUFFIXES = {".h", ".cpp", ".py", ".sh", ".txt", ".md", ".cmake", ".json", ".in", ".xml",
                 ".vert", ".frag", ".mrp", ""}
TEXT_ROOTS = ("SRC", "tests", "bench", "docs", "tools", "cmake", "packaging")
# Inputs of the program, some of them broken on purpose.
DATA = "tests/data/"


def folder_of(path):
    """The floor's folder that a SRC-relative path lies in, or None."""
    folder = str(path.parent)
    return folder if folder in FLOOR_OF else None


def tracked(root):
    """Files that git tracks or would track; all files outside a repository."""
    try:
        result = subprocess.run(
            ["git", "-C", str(root), "ls-files", "-z", "-co", "--exclude-standard"],
            capture_output=True, check=True)
        names = result.stdout.decode("utf-8", "surrogateescape").split("\0")
        return [pathlib.PurePosixPath(name) for name in names
                if name and (root / name).is_file()]
    except (OSError, subprocess.CalledProcessError):
        return [pathlib.PurePosixPath(path.relative_to(root).as_posix())
                for path in sorted(root.rglob("*")) if path.is_file()]


def read(path):
    return path.read_text(encoding="utf-8", errors="replace")


class Checker:
    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.src = self.root / "SRC"
        self.errors = []
        self.sanctioned = {}  # (source, header) -> line of layers.txt

    def error(self, path, line, text):
        self.errors.append(f"{path}:{line}: {text}")

    def read_sanctions(self):
        path = self.root / "tools" / "layers.txt"
        if not path.exists():
            return
        for number, line in enumerate(read(path).splitlines(), 1):
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            match = ENTRY.match(line)
            if not match:
                self.error("tools/layers.txt", number,
                           "not of the form 'FOLDER/file.cpp -> FOLDER/header.h : reason'")
            elif not match[1].endswith(".cpp"):
                self.error("tools/layers.txt", number, "only a .cpp may include upward")
            elif match.group(1, 2) in self.sanctioned:
                self.error("tools/layers.txt", number, f"{match[1]} -> {match[2]} stands here twice")
            else:
                self.sanctioned[match.group(1, 2)] = number

    def check_sources(self):
        used = set()
        for path in sorted(self.src.rglob("*")):
            if path.suffix in (".h", ".cpp") and path.is_file():
                used |= self.check_source(pathlib.PurePosixPath(path.relative_to(self.src).as_posix()))
        for pair, number in self.sanctioned.items():
            if pair not in used:
                self.error("tools/layers.txt", number, f"{pair[0]} -> {pair[1]} is not needed: remove it")

    def check_source(self, source):
        """Check one file of SRC; returns the sanctions that it uses."""
        shown = f"SRC/{source}"
        text = read(self.src / source)
        used = set()
        own = folder_of(source)
        if own is None:
            self.error(shown, 1, "its folder has no floor; tell tools/check_layers.py which")
            return used
        if source.suffix == ".h" and not PRAGMA.search(text):
            self.error(shown, 1, "header without '#pragma once'")
        for number, line in enumerate(text.splitlines(), 1):
            match = INCLUDE.match(line)
            if match:
                used |= self.check_include(source, own, number, match[1])
            match = OUTSIDE_INCLUDE.match(line)
            if match and own in FENCED:
                self.check_outside(shown, number, match[1])
        return used

    def check_outside(self, shown, number, name):
        if name not in OUTSIDE and ("/" in name or name.endswith(".h")):
            self.error(shown, number, f"<{name}> is beyond the fence: no window and no OpenGL here")

    def check_fence(self):
        """The fenced floors' precompiled header, and which folders are built inside the fence."""
        path = self.root / FENCED_PCH
        for number, line in enumerate(read(path).splitlines() if path.exists() else [], 1):
            match = OUTSIDE_INCLUDE.match(line)
            if match:
                self.check_outside(FENCED_PCH, number, match[1])
            elif INCLUDE.match(line):
                self.error(FENCED_PCH, number, "only headers of other packages are compiled beforehand")
        for folder in FLOOR_OF:
            path = self.src / folder / "CMakeLists.txt"
            if path.exists() and ("morentis_core_library(" in read(path)) != (folder in FENCED):
                self.error(f"SRC/{folder}/CMakeLists.txt", 1,
                           "must use morentis_core_library" if folder in FENCED
                           else "morentis_core_library is for the fenced floors")

    def check_drawing(self):
        """The first drawing under "Floors" shows FLOORS, top-down, a folder a line."""
        name = "docs/ARCHITECTURE.md"
        path = self.root / name
        if not path.exists():
            return
        before, _, rest = read(path).partition("```\n")
        start = before.count("\n") + 1
        floor = None
        drawn = {}
        for number, line in enumerate(rest.partition("```")[0].splitlines(), start + 1):
            match = DRAWN.match(line)
            if not match:
                self.error(name, number, "not a line of the drawing of the floors")
                continue
            floor = int(match[1]) if match[1] else floor
            folder = match[3]
            drawn[folder] = number
            if folder not in FLOOR_OF or FLOOR_OF[folder] + 1 != floor:
                self.error(name, number, f"{folder} doesn't stand on floor {floor} in tools/check_layers.py")
            elif bool(match[2]) == (self.src / folder).is_dir():
                self.error(name, number, f"{folder}: brackets are for folders that aren't there yet")
            elif bool(match[5]) != (folder in FENCED):
                self.error(name, number, f"{folder}: a star is for folders inside the fence")
        for folder in FLOOR_OF:
            if folder not in drawn:
                self.error(name, start, f"the drawing of the floors lacks {folder}")

    def check_include(self, source, own, number, name):
        shown = f"SRC/{source}"
        if not (self.src / name).is_file():
            self.error(shown, number, f'"{name}" is not a file under SRC')
            return set()
        folder = folder_of(pathlib.PurePosixPath(name))
        if folder is None:
            self.error(shown, number, f'"{name}" lies in a folder without a floor')
            return set()
        if own in FENCED and folder not in FENCED:
            self.error(shown, number, f'"{name}" is beyond the fence around {own}: ask for it through a hook')
            return set()
        if folder == own or FLOOR_OF[folder] < FLOOR_OF[own]:
            return set()
        if source.suffix == ".h":
            self.error(shown, number, f'header of {own} includes "{name}", which is not below it: '
                                      "declare the class forward instead")
            return set()
        pair = (str(source), name)
        if pair not in self.sanctioned:
            self.error(shown, number, f'{own} includes "{name}", which is not below it, '
                                      "and tools/layers.txt doesn't allow it")
        return {pair}

    def check_words(self):
        for path in tracked(self.root):
            name = str(path)
            inside = path.parts[0] in TEXT_ROOTS or len(path.parts) == 1
            if not inside or name.startswith(DATA) or path.suffix not in TEXT_SUFFIXES:
                continue
            for number, line in enumerate(read(self.root / name).splitlines(), 1):
                for pattern in UNSAID:
                    match = pattern.search(line)
                    if match:
                        self.error(name, number, f"'{match[0]}' says nothing to a reader of the project")

    def run(self):
        self.read_sanctions()
        self.check_sources()
        self.check_fence()
        self.check_drawing()
        self.check_words()
        return self.errors


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent.parent
    errors = Checker(root).run()
    for error in errors:
        print(error)
    print(f"check_layers: {len(errors)} error(s)" if errors else "check_layers: all in order")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
