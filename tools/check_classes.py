#!/usr/bin/env python3
"""No class keeps over 60 methods: who reads one can hold it in mind.

Counts the functions that each class of SRC's headers declares: constructors, operators, accessors and private
ones too, but not what is deleted or defaulted, and not a base's. LARGE names the classes that are over the limit and wait for being split; one
that no longer is must be removed from it.

Usage: check_classes.py [root]     exit status 1 when anything was found.
"""
import pathlib
import re
import sys

LIMIT = 60
LARGE = set()

NOISE = re.compile(r"//[^\n]*|/\*.*?\*/|\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])+'|^[ \t]*#(?:\\\n|[^\n])*",
                   re.S | re.M)
HEAD = re.compile(r"\b(?:class|struct)\s+(?:\[\[\w+\]\]\s*)?(\w+)(?:\s+final)?\s*(?::[^;{}]*)?\{")
LABEL = re.compile(r"\b(?:public|protected|private)\s*:(?!:)")
NO_METHOD = re.compile(r"^\s*(?:friend|using|typedef|static_assert|enum|class|struct|union)\b")
GONE = re.compile(r"=\s*(?:delete|default)\s*$")


def without_templates(text):
    """`text` without what stands in angle brackets."""
    before = None
    while before != text:
        before, text = text, re.sub(r"<[^<>]*>", "", text)
    return text


def is_method(statement):
    """Does this statement of a class's body declare a function?"""
    if NO_METHOD.match(statement) or GONE.search(statement):
        return False
    if re.search(r"\boperator\b", statement):
        return True
    statement = without_templates(statement).split("=")[0]
    statement = re.sub(r"\b(?:alignas|decltype|noexcept)\s*\([^()]*\)", "", statement)
    # "type (*pName)(arguments)" is a pointer.
    return "(" in statement and not re.search(r"\(\s*\*\s*\w+\s*\)\s*\(", statement)


def body_of(text, start):
    """The statements of the body whose brace stands at start - 1; of functions with a body the head."""
    statements = []
    statement = ""
    depth = 0
    for at in range(start, len(text)):
        letter = text[at]
        if letter == "{":
            depth += 1
        elif letter == "}":
            if depth == 0:
                return statements
            depth -= 1
            if depth == 0 and is_method(statement):
                statements.append(statement)
                statement = ""
        elif depth == 0 and letter == ";":
            statements.append(statement)
            statement = ""
        elif depth == 0:
            statement += letter
    return statements


def count_methods(text):
    """(class, line, methods) for each class that `text`, a header, defines."""
    text = NOISE.sub(lambda match: re.sub(r"[^\n]", " ", match[0]), text)
    for head in HEAD.finditer(text):
        if re.search(r"\benum\s*$", text[:head.start()]):
            continue
        statements = [LABEL.sub(" ", statement).strip() for statement in body_of(text, head.end())]
        yield head[1], text.count("\n", 0, head.start()) + 1, sum(map(is_method, statements))


def find(root):
    errors = []
    large = set()
    for path in sorted((root / "SRC").rglob("*.h")):
        for name, line, count in count_methods(path.read_text(encoding="utf-8")):
            if count <= LIMIT:
                continue
            large.add(name)
            if name not in LARGE:
                errors.append(f"{path.relative_to(root)}:{line}: {name} has {count} methods, over {LIMIT}: split it")
    errors += [f"tools/check_classes.py:1: {name} is no longer large: remove it from LARGE"
               for name in sorted(LARGE - large)]
    return errors


def main():
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent.parent
    errors = find(root)
    for error in errors:
        print(error)
    print(f"check_classes: {len(errors)} error(s)" if errors else "check_classes: all in order")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
