#!/usr/bin/env python3
"""Checks that a plug-in library can be unloaded and leaves nothing of itself behind.

    check_plugin.py --readelf <readelf> <folder of the sources> <library>

* The library has no STB_GNU_UNIQUE symbol and no thread-local variable with a destructor: either would keep it
  in memory for good.
* It exports no weak symbol of others: a library that binds to its copy of an inline function would keep it in
  memory.
* The sources use no string literal types whose data would stay behind in the SDK or the host, pointing into the
  unmapped library.
* It exports no class: nobody links it.
"""
import argparse
import re
import subprocess
import sys
from pathlib import Path

STATIC_LITERALS = re.compile(r'\b(QStringLiteral|QByteArrayLiteral)\s*\(|"_qs\b|"_qba\b|"_s\b|"_ba\b')


def find_static_literals(folder):
    """One line for each literal that may outlive the library."""
    for path in sorted(p for p in folder.rglob("*") if p.suffix in (".cpp", ".h")):
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if STATIC_LITERALS.search(line):
                yield f"{path}:{number}: this literal may outlive the library: use QLatin1String or tr()"


def defined_symbols(elf):
    """The fields of each symbol that the library defines, as readelf lists them; the name is the eighth."""
    lines = (line.split() for line in elf.splitlines())
    return [words for words in lines if len(words) == 8 and words[6] != "UND"]


def find_bonds(elf, classes=()):
    """What keeps a library in memory, by its dynamic symbols as readelf lists them.

    Weak symbols of the classes that the library exports on purpose are fine: no other library has a copy.
    """
    unique = [line.split()[-1] for line in elf.splitlines() if " UNIQUE " in line]
    if unique:
        yield f"unique symbols keep the library loaded: {unique[:5]}"
    if "__cxa_thread_atexit" in elf:
        yield "thread-local variables with destructors keep the library loaded"
    weak = [words[7] for words in defined_symbols(elf) if words[4] == "WEAK" and words[5] == "DEFAULT"]
    weak = [name for name in weak if not any(f"{len(class_)}{class_}" in name for class_ in classes)]
    if weak:
        yield f"{len(weak)} weak symbols are exported and may keep the library loaded: {weak[:5]}"


def find_exports(elf):
    """Classes that the library exports."""
    for words in defined_symbols(elf):
        if words[5] == "DEFAULT" and "staticMetaObject" in words[7]:
            yield f"{words[7]} is exported"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--readelf", default="readelf")
    parser.add_argument("sources", type=Path)
    parser.add_argument("library", type=Path)
    arguments = parser.parse_args()
    command = [arguments.readelf, "--dyn-syms", "--wide", str(arguments.library)]
    elf = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    errors = [*find_static_literals(arguments.sources), *find_bonds(elf), *find_exports(elf)]
    for error in errors:
        print(error, file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
