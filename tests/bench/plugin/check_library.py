#!/usr/bin/env python3
"""Checks the built plug-in library against its sources.

* Every ZOR_TEST_REGISTER line survived compiler and linker, once.
* The library has no STB_GNU_UNIQUE symbol and no thread-local variable with a destructor: either would
  keep it in memory for good.
* It exports no weak symbol of others: a library that binds to its copy of an inline function would keep it in
  memory.
* It exports the classes and the flag that it promises, and little else.
* The sources use no string literal types whose data would stay behind in the SDK or the host, pointing
  into the unmapped library.
"""
import argparse
import re
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "support"))
from check_plugin import find_bonds, find_static_literals

EXPORTED_CLASSES = ["ZORTestEnvironment", "ZORTestMainDialog", "ZORTestOptionsDlg"]


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def check(bench, library, nm, readelf):
    errors = list(find_static_literals(bench))
    sources = sorted(p for p in bench.rglob("*") if p.suffix in (".cpp", ".h"))

    registered = []
    for path in sources:
        text = path.read_text(encoding="utf-8")
        registered += re.findall(r"^ZOR_TEST_REGISTER\((\w+)\)", text, re.MULTILINE)
    if not registered:
        errors.append(f"no ZOR_TEST_REGISTER line under {bench}")
    symbols = re.findall(r" registrationOf(\w+)$", run(nm, "-C", str(library)), re.MULTILINE)
    if sorted(symbols) != sorted(registered):
        lost = set(registered) - set(symbols)
        errors.append(f"registered in the sources {len(registered)}, in the library {len(symbols)}; lost: {sorted(lost)}")

    elf = run(readelf, "--dyn-syms", "--wide", str(library))
    errors += find_bonds(elf, EXPORTED_CLASSES)

    exported = run(nm, "-C", "-D", "--defined-only", str(library))
    for name in EXPORTED_CLASSES:
        if f"{name}::staticMetaObject" not in exported:
            errors.append(f"{name} is not exported")
    if not re.search(r" [BD] _ZORTestingLoaded$", exported, re.MULTILINE):
        errors.append("_ZORTestingLoaded is not exported")
    for name in re.findall(r" (?:[TBDRVW]) (ZORTest\w+)::", exported):
        if name not in EXPORTED_CLASSES:
            errors.append(f"{name} is exported")
            break
    return errors


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--readelf", default="readelf")
    parser.add_argument("bench", type=Path)
    parser.add_argument("library", type=Path)
    arguments = parser.parse_args()
    errors = check(arguments.bench, arguments.library, arguments.nm, arguments.readelf)
    for error in errors:
        print(error, file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
