#!/usr/bin/env python3
"""Checks that every file of C++ is where the build and the other checks see it.

    check_files.py <source root>

Suffix  C++ is in .h and .cpp files: the checks and the layout read no others.
Listed  Each source, and each public header of the SDK, is named in the CMakeLists.txt of its folder or of one above. A source
        that is not is never compiled, a test never run, and a header neither verified nor installed.
Used    Each other header is included by some file.
"""
import re
import sys

from source_texts import FOLDERS, cpp_files, run

FOREIGN = {".hpp", ".hxx", ".hh", ".inl", ".ipp", ".tpp", ".cc", ".cxx", ".c"}
INCLUDED = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)


def listed_files(root, files):
    """Returns the files that CMakeLists.txt files name, relative to their folders; a variable stands for any word."""
    found = set()
    for folder in FOLDERS:
        for lists in (root / folder).rglob("CMakeLists.txt"):
            text = re.sub(r"#.*", "", lists.read_text(encoding="utf-8"))
            names = {name.rpartition("}/")[2] for name in re.findall(r"[\w./{}$-]+\.(?:h|cpp)\b", text)}
            found |= {(lists.parent / name).resolve() for name in names if "$" not in name}
            patterns = {re.sub(r"\\\$\\\{\w+\\\}", r"\\w+", re.escape(name)) for name in names if "$" in name}
            found |= {
                path for path in files for pattern in patterns if path.parent == lists.parent and re.fullmatch(pattern, path.name)
            }
    return found


def is_public(root, path):
    parts = path.relative_to(root).parts
    return parts[0] == "sdk" and len(parts) == 3 and path.suffix == ".h" and not path.stem.endswith("_p")


def check(root):
    files = cpp_files(root)
    listed, included = listed_files(root, files), set()
    for path in files:
        included |= {name.rpartition("/")[2] for name in INCLUDED.findall(path.read_text(encoding="utf-8"))}
    for path in files:
        if path in listed:
            continue
        if path.suffix == ".cpp" or is_public(root, path):
            yield f"{path.relative_to(root)}: no CMakeLists.txt names this file"
        elif path.name not in included:
            yield f"{path.relative_to(root)}: no file includes this header"
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in FOREIGN:
                yield f"{path.relative_to(root)}: C++ is in .h and .cpp files"


if __name__ == "__main__":
    sys.exit(run(check, "the build and the checks see every file"))
