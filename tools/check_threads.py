#!/usr/bin/env python3
"""Checks that every class of the SDK says whether several threads may use it.

    check_threads.py <source root>

Sentence  The docstring of each class, struct or union in a public header ends with "Thread safety: " and one of the
          spellings below. Nested types are covered by the sentence around them; docs/architecture.md says what each
          spelling means, and holds no others.
"""
import pathlib
import re
import sys

from source_texts import code, line_of

SPELLINGS = (
    "thread-safe",
    "reentrant; objects may be shared read-only",
    "reentrant; one thread at a time per object",
    "reentrant; an object belongs to its thread",
    "thread of the container; objects may be shared read-only",
    "main thread only",
)
SENTENCE = re.compile(r"/// Thread safety: (.*)\.")
DOCUMENTED = re.compile(r"^\| `Thread safety: (.*)\.` \|", re.MULTILINE)
TYPE = re.compile(r"\b(?P<enum>enum\s+)?(?:class|struct|union)\b(?P<head>[^;{}()=]*)(?P<end>[;{}()=])")


def public_headers(root):
    """Returns the headers at the root of each module that others link; plug-ins have none."""
    found = []
    for lists in sorted((root / "sdk").glob("*/CMakeLists.txt")):
        if re.search(r"^zor_add_module\(", lists.read_text(encoding="utf-8"), re.MULTILINE):
            found += (p for p in lists.parent.glob("*.h") if not p.name.endswith("_p.h"))
    return sorted(found)


def blank_nested(text):
    """Returns the code with everything in braces blanked, except the contents of namespaces."""
    result, hidden, braces = [], 0, []
    for position, character in enumerate(text):
        if character == "{":
            head = re.split(r"[;{}]", text[max(0, position - 300) : position])[-1]
            is_namespace = re.search(r"\bnamespace\b|\bextern\b", head) is not None
            result.append("{" if hidden == 0 else " ")
            braces.append(is_namespace)
            hidden += not is_namespace
        elif character == "}" and braces:
            hidden -= not braces.pop()
            result.append("}" if hidden == 0 else " ")
        else:
            result.append(character if hidden == 0 or character == "\n" else " ")
    return "".join(result)


def definitions(text):
    """Yields (line number, name) of each type that is defined in a header outside of another one."""
    plain = re.sub(r"^#(?:\\\n|.)*", lambda match: re.sub(r"[^\n]", " ", match.group()), code(text), flags=re.MULTILINE)
    plain = blank_nested(plain)
    for match in TYPE.finditer(plain):
        if match.group("end") != "{" or match.group("enum"):
            continue
        own = re.split(r"(?<!:):(?!:)", match.group("head"))[0]
        names = [name for name in re.findall(r"\w+", own) if name != "final" and not name.endswith("_EXPORT")]
        yield line_of(plain, match.start()), names[-1] if names else "unnamed"


def docstring_end(lines, number):
    """Returns the line that ends the docstring of the declaration in a line, counted from 1; empty for none."""
    index = number - 2
    while index >= 0 and lines[index].startswith(("template", "    requires", "requires")):
        index -= 1
    return lines[index] if index >= 0 else ""


def faults(text):
    """Yields (line number, message) for a header."""
    lines = text.split("\n")
    for number, name in definitions(text):
        sentence = SENTENCE.fullmatch(docstring_end(lines, number))
        if not sentence:
            yield number, f'the docstring of {name} does not end with "Thread safety: ..."'
        elif sentence.group(1) not in SPELLINGS:
            yield number, f'"{sentence.group(1)}" is not one of the spellings of thread safety'


def check(root):
    for path in public_headers(root):
        for number, message in faults(path.read_text(encoding="utf-8")):
            yield f"{path.relative_to(root)}:{number}: {message}"
    page = root / "docs" / "architecture.md"
    documented = DOCUMENTED.findall(page.read_text(encoding="utf-8"))
    if sorted(documented) != sorted(SPELLINGS):
        yield f"{page.relative_to(root)}: its spellings of thread safety are not those of tools/check_threads.py"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    errors = list(check(root))
    print("\n".join(errors) or "every public class says which threads may use it")
    return bool(errors)


if __name__ == "__main__":
    sys.exit(main())
