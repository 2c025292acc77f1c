#!/usr/bin/env python3
"""Runs clang-tidy and clazy (level 1) over the sources of the project.

    analyze.py <source root> <build directory> [--since-long | FILE...]

Without files, every source of the compile database is analyzed. --since-long analyzes the sources that differ from the
last commit that ./test.sh long has passed, which tools/long_passed.txt names: the changed sources themselves and, for each
changed header, the source of its name. Where the clone lacks that commit, those that differ from the last commit's parent.
The build directory must have been built: sources include generated files.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

LONG_PASSED = "tools/long_passed.txt"
# Classes are registered by static objects on purpose, and Qt 6 has no QString::midRef().
CLAZY_CHECKS = "level1,no-non-pod-global-static,no-qstring-ref"
ANALYZERS = {
    "clang-tidy": ("clang-tidy-14", "--quiet"),
    "clazy": ("clazy-standalone", f"-checks={CLAZY_CHECKS}", r"-header-filter=/(bench|benchmarks|examples|host|samples|sdk|tests|tools)/([A-Za-z_]+/)*[A-Z][A-Za-z_0-9]*\.h$"),
}
FINDING = re.compile(r"^(/[^:\n]+):(\d+):\d+: (?:warning|error): .*\[[\w.,-]+\]$", re.MULTILINE)
# Of the compiler that builds: the precompiled header, and options that clang does not know.
FOREIGN = re.compile(r" -Winvalid-pch| -include \S*cmake_pch\.hxx| -fno-gnu-unique")


def git(root, *arguments):
    return subprocess.run(["git", "-C", root, *arguments], capture_output=True, text=True, check=False)


def write_database(root, build):
    """Writes the compile database for clang, without generated sources. Returns its folder and the sources."""
    entries = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        name = pathlib.Path(entry["file"])
        if name.is_relative_to(root) and not name.is_relative_to(build):
            command = FOREIGN.sub("", entry["command"])
            # What comes before the compiler: the compiler cache and its environment.
            words = shlex.split(command)
            first = next(i for i, word in enumerate(words) if re.search(r"(\+\+|cc|clang)(-\d+)?$", word))
            entries.setdefault(name, {**entry, "command": shlex.join(words[first:])})
    folder = build / "analysis"
    folder.mkdir(exist_ok=True)
    (folder / "compile_commands.json").write_text(json.dumps(list(entries.values())))
    return folder, sorted(entries)


def changed_names(root):
    """Returns the names of the files that differ from the commit that the long tests have passed."""
    commit = (root / LONG_PASSED).read_text().split()[0]
    if git(root, "cat-file", "-e", f"{commit}^{{commit}}").returncode:
        print(f"this clone lacks commit {commit}, which the long tests have passed: analyzing the files of the last commit")
        commit = "HEAD~1"
    changed = git(root, "diff", "--name-only", "--diff-filter=d", commit)
    if changed.returncode:
        sys.exit(f"git cannot compare with {commit}: {changed.stderr.strip()}")
    return changed.stdout.splitlines()


def sources_of(root, names, sources):
    """Returns the sources to analyze for changed files: themselves, and the ones of the same name as a header."""
    wanted = {root / name for name in names}
    stems = {path.with_suffix("").name.removesuffix("_p") for path in wanted if path.suffix == ".h"}
    return [path for path in sources if path in wanted or path.stem in stems]


def analyze(database, path):
    """Returns the findings of all analyzers in a source, and what they say where they fail without one."""
    findings = set()
    for name, command in ANALYZERS.items():
        result = subprocess.run([*command, "-p", database, path], capture_output=True, text=True, check=False)
        output = result.stdout + result.stderr
        found = {match.group() for match in FINDING.finditer(output)}
        if result.returncode and not found:
            found = {f"{path}: {name} failed:\n{output.strip()}"}
        findings |= found
    return findings


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--since-long", action="store_true")
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    arguments = parser.parse_args()
    root, build = arguments.root.resolve(), arguments.build.resolve()
    database, sources = write_database(root, build)
    if arguments.since_long:
        sources = sources_of(root, changed_names(root), sources)
    elif arguments.files:
        wanted = {path.resolve() for path in arguments.files}
        sources = [path for path in sources if path in wanted]
    findings = set()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for found in pool.map(lambda path: analyze(database, path), sources):
            for finding in sorted(found - findings):
                print(finding.replace(f"{root}/", ""), flush=True)
            findings |= found
    print(f"{len(sources)} sources analyzed, {len(findings)} findings")
    return bool(findings)


if __name__ == "__main__":
    sys.exit(main())
