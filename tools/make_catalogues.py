#!/usr/bin/env python3
"""Bring po/morentis.pot and the catalogues po/LANGUAGE.po up to date with the texts of SRC, by gettext's tools.

Usage: make_catalogues.py [--check] [root]
New texts come into the catalogues untranslated; a text that changed is a new one (nothing is guessed), and one
that is gone is taken out. --check changes nothing; the exit status is 1 when a text is missing from the template
or a catalogue, is untranslated or doubtful there, or doesn't fit the English one: other conversions such as %d,
mnemonics (&), shortcut keys behind a tab, blanks and line ends at either end, or a colon or "..." at the end.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

KEYWORDS = ["-k", "-k_", "-kwxTRANSLATE", "-kwxPLURAL:1,2", "-kwxGETTEXT_IN_CONTEXT:1c,2"]
CONVERSION = re.compile(r"%(?:%|[-+ #0]*(?:\d+|\*)?(?:\.(?:\d+|\*))?(?:hh|h|ll|l|z|j|t|L)?[a-zA-Z])")
ENTRY = re.compile(r'^(msgctxt|msgid_plural|msgid|msgstr(?:\[\d+\])?) (".*")$')


def run(*command):
    """Standard output of a tool; RuntimeError with what it says when it fails."""
    done = subprocess.run(command, capture_output=True, text=True, encoding="utf-8")
    if done.returncode != 0:
        raise RuntimeError(done.stderr.strip() or f"{command[0]} failed")
    return done.stdout


def make_template(root):
    """The template of all texts of SRC: which file each is from, but no line numbers and dates, which change
    without a text's changing."""
    sources = sorted(str(path.relative_to(root)) for ending in ("cpp", "h") for path in (root / "SRC").rglob(f"*.{ending}"))
    with tempfile.TemporaryDirectory() as folder:
        names = pathlib.Path(folder) / "sources"
        names.write_text("\n".join(sources) + "\n")
        text = run("xgettext", "--from-code=UTF-8", "-C", *KEYWORDS, "--add-location=file", "--no-wrap",
                   "--package-name=morentis", "--add-comments=TRANSLATORS:", f"--directory={root}",
                   f"--files-from={names}", "-o", "-")
    text = "".join(line for line in text.splitlines(keepends=True) if not line.startswith('"POT-Creation-Date:'))
    first = text.index('msgid ""')
    return "# Texts of Morentis, made by tools/make_catalogues.py\n#, fuzzy\n" + text[first:].replace("CHARSET", "UTF-8")


def unquote(text):
    return re.sub(r"\\(.)", lambda match: {"n": "\n", "t": "\t"}.get(match[1], match[1]), text[1:-1])


def read_entries(text):
    """(context, msgid) to its fields, flags and all, of a catalogue; the header and what is gone are left out."""
    entries = {}
    for block in text.split("\n\n"):
        fields, flags, name = {}, set(), None
        for line in block.splitlines():
            match = ENTRY.match(line)
            if line.startswith("#,"):
                flags.update(word.strip() for word in line[2:].split(","))
            elif match:
                name = match[1]
                fields[name] = unquote(match[2])
            elif line.startswith('"') and name:
                fields[name] += unquote(line)
        if fields.get("msgid"):
            entries[(fields.get("msgctxt"), fields["msgid"])] = (fields, flags)
    return entries


def get_shape(text, conversions):
    """What a translation has in common with its English text, in words for a message."""
    # In English a mnemonic is part of a word, elsewhere it may stand behind it.
    mnemonics = len(re.findall(r"&(?=[^&\s])", text.replace("&&", "")))
    end = text.rstrip()
    shape = {"mnemonics": mnemonics, "keys behind a tab": text.partition("\t")[2],
             "first blanks": text[:len(text) - len(text.lstrip())], "last blanks": text[len(end):],
             "end": "..." if end.endswith("...") else ":" if end.endswith((":", "：")) else ""}
    if conversions:
        shape["conversions"] = [match[0] for match in CONVERSION.finditer(text)]
    return shape


def find_faults(template, catalogue):
    """What is wrong with a catalogue, a line each."""
    faults = []
    translated = read_entries(catalogue)
    for key, (fields, flags) in read_entries(template).items():
        english = key[1]
        has, marks = translated.get(key, ({}, set()))
        texts = {name: text for name, text in has.items() if name.startswith("msgstr")}
        if not has:
            faults.append(f"not in it: {english!r}")
        elif "fuzzy" in marks or not texts or not all(texts.values()):
            faults.append(f"not translated: {english!r}")
        else:
            wanted = get_shape(fields.get("msgid_plural", english), "no-c-format" not in marks | flags)
            for text in texts.values():
                shape = get_shape(text, "conversions" in wanted)
                faults += [f"other {what}: {english!r} is {text!r}" for what in wanted if wanted[what] != shape[what]]
    return faults + [f"no text of the program any more: {key[1]!r}" for key in translated.keys() - read_entries(template).keys()]


def check(root, template):
    stale = root / "po" / "morentis.pot"
    faults = []
    if not stale.exists() or stale.read_text(encoding="utf-8") != template:
        faults.append("po/morentis.pot is out of date: run tools/make_catalogues.py")
    for path in sorted((root / "po").glob("*.po")):
        found = find_faults(template, path.read_text(encoding="utf-8"))
        faults += [f"{path.name}: {fault}" for fault in found]
        try:
            run("msgfmt", "-c", "-o", "/dev/null", str(path))
        except RuntimeError as fault:
            faults.append(str(fault))
    print("\n".join(faults[:40]), end="\n" if faults else "")
    if len(faults) > 40:
        print(f"... and {len(faults) - 40} more")
    return bool(faults)


def update(root, template):
    (root / "po").mkdir(exist_ok=True)
    pot = root / "po" / "morentis.pot"
    pot.write_text(template, encoding="utf-8")
    for path in sorted((root / "po").glob("*.po")):
        merged = run("msgmerge", "--no-fuzzy-matching", "--no-wrap", "--add-location=file", "--quiet", str(path), str(pot))
        path.write_text(run_filter(merged), encoding="utf-8")


def run_filter(catalogue):
    """Without texts that are gone: the history keeps them."""
    done = subprocess.run(["msgattrib", "--no-obsolete", "--no-wrap", "-"], input=catalogue, capture_output=True,
                          text=True, encoding="utf-8", check=True)
    return done.stdout


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "--check"]
    root = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parents[1]
    template = make_template(root)
    if "--check" in sys.argv[1:]:
        return check(root, template)
    update(root, template)
    return 0


if __name__ == "__main__":
    sys.exit(main())
