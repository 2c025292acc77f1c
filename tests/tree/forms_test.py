#!/usr/bin/env python3
"""Checks that a changed form rebuilds what includes its header in the same run of ninja.

    forms_test.py <build directory> <source root> <ninja>

Every header of a form that an object was compiled with must be the output of a command that reads the form. Ninja does not
see a header change that no command declares before its next run.
"""
import pathlib
import re
import subprocess
import sys


def ask(ninja, build, *words):
    command = [ninja, "-C", build, "-t", *words]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def find_headers(ninja, build):
    """Returns the headers of forms that objects of the last build depend on, by name of the form."""
    headers = re.findall(r"^ {4}(\S*/ui_(\w+)\.h)$", ask(ninja, build, "deps"), re.MULTILINE)
    return {name: path for path, name in headers}


def main():
    build, root, ninja = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]
    forms = {path.stem: path for path in (root / "bench").rglob("*.ui")}
    headers = find_headers(ninja, build)
    faults = [f"no object depends on the header of {name}" for name in forms if name not in headers]
    for name, header in headers.items():
        inputs = ask(ninja, build, "query", header)
        if name not in forms:
            faults.append(f"{header} has no form in bench")
        elif str(forms[name]) not in inputs:
            faults.append(f"no command makes {header} of {forms[name]}")
    print("\n".join(faults) or f"{len(forms)} forms")
    return 1 if faults or not forms else 0


if __name__ == "__main__":
    sys.exit(main())
