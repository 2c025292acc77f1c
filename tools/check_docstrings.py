#!/usr/bin/env python3
"""Checks the commands in docstrings and comments.

    check_docstrings.py <source root>

Place     \\param, \\return, \\throws, \\pre, \\code and \\endcode begin their line: after other words they end a sentence
          that the reader has not finished, or hide in it.
Operand   \\a names an identifier, \\param an identifier and after two blanks or more what it means, \\throws a type;
          \\return and \\pre say something on the same line.
Known     No other command. Text with a backslash stands between quotes or backticks.
"""
import re
import sys

from source_texts import comment_lines, cpp_files, run

PARAGRAPHS = {"param", "return", "throws", "pre", "code", "endcode"}
COMMAND = re.compile(r"\\([a-zA-Z]+)")
QUOTED = re.compile(r'`[^`]*`|"[^"]*"|\'[^\']*\'')
OPERANDS = {
    "a": (re.compile(r" [A-Za-z_]\w*"), "the identifier that \\a marks is missing"),
    "param": (re.compile(r"(\[(in,)?out\])? [A-Za-z_]\w*(,[A-Za-z_]\w*)*  +\S"), "\\param needs a name, two blanks and a meaning"),
    "throws": (re.compile(r" ([A-Z]\w+|[a-z]+::\w+)"), "\\throws needs a type"),
    "return": (re.compile(r" \S"), "\\return needs a text behind one blank"),
    "pre": (re.compile(r" \S"), "\\pre needs a text behind one blank"),
}


def faults(line):
    """Yields what is wrong in one line of a comment."""
    plain = QUOTED.sub(lambda match: "_" * len(match.group()), line)
    for match in COMMAND.finditer(plain):
        name = match.group(1)
        if name != "a" and name not in PARAGRAPHS:
            yield f"\\{name} is not a command of the project; quote it if it is a text"
            continue
        if name in PARAGRAPHS and plain[: match.start()].strip():
            yield f"\\{name} belongs at the beginning of a line"
        operand, message = OPERANDS.get(name, (None, None))
        if operand and not operand.match(plain, match.end()):
            yield message


def check(root):
    for path in cpp_files(root):
        for number, line in comment_lines(path.read_text(encoding="utf-8")):
            for fault in faults(line):
                yield f"{path.relative_to(root)}:{number}: {fault}"


if __name__ == "__main__":
    sys.exit(run(check, "every command of a docstring has its place and its operand"))
