#!/usr/bin/env python3
"""Checks the spellings that the project has decided on, in the code of every C++ source.

    check_idioms.py <source root>

Pi             std::numbers::pi or a constant derived from it; M_PI is an extension of some compilers, and digits or acos(-1) hide
               what they are.
Placeholders   Several values go into one .arg(a, b). A chained .arg(a).arg(b) replaces "%1" within the text a again.
"""
import re
import sys

from source_texts import code, cpp_files, line_of, run

PI = re.compile(r"\bM_(PI|PI_2|PI_4|1_PI|2_PI|2_SQRTPI)\b|\bacos\(\s*-\s*1(\.0*)?\s*\)|(?<![\w.])3\.1415\d*")
ARG = re.compile(r"(\.|->)arg\s*\(")

# Behind one .arg(): another one, maybe behind a parenthesis or a call without arguments.
CHAINED = re.compile(r"[\s)]*(\.\w+\(\s*\)[\s)]*)*\.arg\s*\(")


def closing(text, position):
    """Returns the position behind the parenthesis that closes the one before the position."""
    depth = 1
    while depth and position < len(text):
        depth += {"(": 1, ")": -1}.get(text[position], 0)
        position += 1
    return position


def faults(text):
    """Yields (position, message) for the code of a source."""
    for match in PI.finditer(text):
        yield match.start(), f"std::numbers::pi instead of {match.group()}"
    for match in ARG.finditer(text):
        if CHAINED.match(text, closing(text, match.end())):
            yield match.start(), "one .arg() with all values instead of a chain, which replaces within values"


def check(root):
    for path in cpp_files(root):
        text = code(path.read_text(encoding="utf-8"))
        for position, message in faults(text):
            yield f"{path.relative_to(root)}:{line_of(text, position)}: {message}"


if __name__ == "__main__":
    sys.exit(run(check, "the sources use the spellings of the project"))
