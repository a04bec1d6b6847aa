#!/usr/bin/env python3
"""List functions of ours that no program can ever call.

The programs are built without inlining, a section a function, and linked so
that the linker drops every section that nothing refers to. What our objects
define and no program keeps is unreachable; so are functions in headers
that no object needed. What only tests call is unreachable too.

tools/unreachable.txt names what may stay for a while, with the reason.

Usage: check_unreachable.py [-j N]     exit status 1 when anything was found.
"""
import argparse
import json
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/reach"
PROGRAMS = ("morentis", "morentis-film", "morentis-import")
ENTRY = re.compile(r"^(\S.*?)\s+:\s+(\S.*)$")

# Of the libraries, also what their macros and templates leave in our objects.
FOREIGN = re.compile(r"_Z(?:Th|Tv|Tc|Z|GV|GR)|_Z(?:N[VK]*)?(?:St|S[absiod]|9__gnu_cxx|N?\d+__)|_GLOBAL__|_Z\d+__static|_Z8wxGetAppv$")
FOREIGN_WEAK = re.compile(r"_Z(?:N[VK]*)?\d+(?:_?wx|WX_|epoxy|Gdk|Gtk|grow_lf|ai[A-Z]|Assimp)|_Zml\w*\d+ai[A-Z]|_ZplRK?8wxString|_Z\w{2}RK8wxString")
# Made by the compiler, or by it on our word.
SPECIAL = re.compile(r"::~|::operator=$|(?:^|::)([A-Za-z_]\w*)(?:<.*>)?::\1$")


def run(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def functions(*files):
    """Mangled name to whether it is weak, of the functions that these files define."""
    found = {}
    for line in run("nm", "--defined-only", "--format=posix", *map(str, files)).splitlines():
        fields = line.split()
        if len(fields) >= 2 and fields[1] in ("T", "t", "W", "w"):
            found[fields[0]] = fields[1] in "Ww"
    return found


def demangled(names):
    names = list(names)
    text = subprocess.run(["c++filt"], input="\n".join(names), check=True, stdout=subprocess.PIPE, text=True).stdout
    return dict(zip(names, text.split("\n")))


def bare(name):
    """A demangled name without return type, arguments and template arguments."""
    name = name.replace("(anonymous namespace)::", "").replace("[abi:cxx11]", "")
    name = re.sub(r"operator(<<|>>|<=|>=|->|<|>|\(\))", lambda match: "operator" + {
        "<<": "SHL", ">>": "SHR", "<=": "LE", ">=": "GE", "->": "ARROW", "<": "LT", ">": "GT", "()": "CALL"}[match[1]], name)
    depth, out = 0, []
    for char in name:
        if char in "<(":
            if char == "(" and depth == 0:
                break
            depth += 1
        elif char in ">)":
            depth -= 1
        elif depth == 0:
            out.append(char)
    name = "".join(out)
    return name if "operator" in name else name.split(" ")[-1]


def inline_functions():
    """Functions in headers, also those that nothing calls."""
    commands = json.loads((BUILD / "compile_commands.json").read_text())
    like = next(entry for entry in commands if entry["file"].endswith("SRC/APP/clsMain.cpp"))
    words = shlex.split(like["command"])
    words = words[[k for k, word in enumerate(words) if word.endswith(("c++", "g++"))][0]:]
    headers = sorted((ROOT / "SRC").rglob("*.h"))
    source, target = BUILD / "all_headers.cpp", BUILD / "all_headers.o"
    source.write_text("#include <epoxy/gl.h>\n" + "".join(f'#include "{path}"\n' for path in headers))
    words[words.index("-o") + 1] = str(target)
    words[words.index("-c") + 1] = str(source)
    words = [word for word in words if word not in ("-MD", "-Werror")]
    subprocess.run(words + ["-w", "-fkeep-inline-functions"], cwd=like["directory"], check=True)
    return functions(target)


def our_constants():
    """Names of functions that the compiler computes itself."""
    text = "\n".join(path.read_text(encoding="utf-8") for path in (ROOT / "SRC").rglob("*.[hc]*"))
    names = set(re.findall(r"\bconstexpr\s[^;{}()=]*?\b(\w+)\(", text))
    return {name for name in names if len(re.findall(rf"\b{name}\b", text)) > 1}


def words_of_tests():
    text = [path.read_text(encoding="utf-8") for folder in ("tests", "bench")
            for path in (ROOT / folder).rglob("*") if path.suffix in (".h", ".cpp")]
    return set(re.findall(r"\w+", "\n".join(text)))


def unreachable():
    archives = sorted(BUILD.rglob("libmorentis_*.a"))
    defined = {**inline_functions(), **functions(*archives)}
    kept_names = set(functions(*(BUILD / program for program in PROGRAMS)))
    names = demangled(set(defined) | kept_names)
    kept = {bare(names[name]) if SPECIAL.search(bare(names[name])) else names[name] for name in kept_names}
    constants, tested = our_constants(), words_of_tests()
    dropped = set()
    for name, weak in defined.items():
        if FOREIGN.match(name) or (weak and FOREIGN_WEAK.match(name)) or not name.startswith("_Z"):
            continue
        full, short = names[name], bare(names[name])
        if full in kept or short in kept or "{lambda" in full or "::_FUN" in full:
            continue
        last = short.split("::")[-1]
        looked = short.split("::")[-2:][0] if last in ("operator==", "operator!=") else last
        if weak and SPECIAL.search(short) or last in constants:
            continue
        if weak and full.endswith(" const") and looked in tested:
            continue
        dropped.add((short, full))
    return dropped


def allowed(path):
    found = {}
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        match = ENTRY.match(line)
        if not match:
            sys.exit(f"{path.name}:{number}: not a name, a colon between blanks and a reason")
        found[match[1]] = number
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("-j", default="2", help="files compiled at a time")
    jobs = parser.parse_args().j
    quiet = {"cwd": ROOT, "check": True, "stdout": subprocess.DEVNULL}
    if not (BUILD / "build.ninja").exists():
        subprocess.run(["cmake", "--preset", "reach"], **quiet)
    subprocess.run(["cmake", "--build", str(BUILD), "--target", *PROGRAMS, "--", "-j", jobs], **quiet)

    listed = allowed(ROOT / "tools/unreachable.txt")
    used, bad = set(), []
    for short, full in sorted(unreachable()):
        entries = [entry for entry in listed if entry == short or entry.endswith("*") and short.startswith(entry[:-1])]
        used.update(entries)
        if not entries:
            bad.append(full)
    for line in bad:
        print(line)
    for entry in sorted(set(listed) - used):
        print(f"tools/unreachable.txt:{listed[entry]}: {entry} is called, or gone")
    if bad or set(listed) - used:
        print(f"check_unreachable: {len(bad)} functions that nothing calls")
        return 1
    print(f"check_unreachable: all in order, {len(listed)} entries wait for their callers")
    return 0


if __name__ == "__main__":
    sys.exit(main())
