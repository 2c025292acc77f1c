#!/usr/bin/env python3
"""Runs clang-tidy and clazy (level 1) over the sources of the project.

    analyze.py <source root> <build directory> [--jobs N] [--since-long | FILE...]

Without files, every source of the compile database is analyzed. --since-long analyzes the sources that differ from the
last commit that ./test.sh long has passed, which tools/long_passed.txt names: the changed sources themselves and, for each
changed header, the source of its name or else one that includes it; all if .clang-tidy differs. Where the clone lacks that
commit, those that differ from the last commit's parent. The build directory must have been built: sources include generated files.

Most of the time of an analyzer goes into the headers of Qt and of the standard library, so sources with equal options are
analyzed as one translation unit. A source that does not compile beside those before it, because both define the same
name, waits for a later unit. A source with findings is analyzed alone before they are reported.
"""
import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

import compile_database

LONG_PASSED = "tools/long_passed.txt"
FOLDERS = "bench|benchmarks|examples|host|samples|sdk|tests|tools"
# Classes are registered by static objects on purpose, Qt 6 has no QString::midRef(), and its erase() takes constant iterators,
# to which those of begin() and end() are converted.
CLAZY_CHECKS = "level1,no-non-pod-global-static,no-qstring-ref,no-strict-iterators"
# clazy is the first one since it takes a quarter of the time: it finds out which sources compile together.
ANALYZERS = {
    "clazy": ("clazy-standalone", f"-checks={CLAZY_CHECKS}", "-extra-arg=-ferror-limit=0"),
    "clang-tidy": ("clang-tidy-14", "--quiet", "--checks=-bugprone-suspicious-include"),
}
# In tests, the functions that are connected and what they refer to go with the sender, at the end of a scope.
FOR_TESTS = re.compile(r"/tests/.*\[-Wclazy-(?:connect-3arg-lambda|lambda-in-connect)\]$")
UNIT_SIZE = 16
FINDING = re.compile(r"^(/[^:\n]+):(\d+):\d+: (?:warning|error): .*\[[\w.,-]+\]$", re.MULTILINE)
COMPILE_ERROR = re.compile(r"^(/[^:\n]+):\d+:\d+: (?:fatal )?error: .*(?<!\])$", re.MULTILINE)
# Of the compiler that builds: the precompiled header, options that clang does not know, and a warning that differs from
# that of clang.
FOREIGN = rf"{compile_database.PRECOMPILED}| -fno-gnu-unique| -Wshadow"


def git(root, *arguments):
    return subprocess.run(["git", "-C", root, *arguments], capture_output=True, text=True, check=False)


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
    """Returns the sources to analyze for changed files.

    A source stands for itself, a header for the sources of its name, or else for one that includes it, and the checks
    of clang-tidy for everything.
    """
    if ".clang-tidy" in names:
        return list(sources)
    wanted = {root / name for name in names}
    for header in [path for path in wanted if path.suffix == ".h"]:
        stem = header.stem.removesuffix("_p")
        wanted.update([path for path in sources if path.stem == stem] or [compile_database.first_including(header, sources)])
    return [path for path in sources if path in wanted]


class Analysis:
    """The sources to analyze as units, each with its options and its sources."""

    def __init__(self, root, build, sources):
        self.root, self.build = root, build
        self.header_filter = f"^{re.escape(str(root))}/({FOLDERS})/.*\\.(h|cpp)$"
        groups = collections.defaultdict(list)
        for path, options in sources.items():
            groups[options].append(path)
        self.units = [
            (options, paths[i : i + UNIT_SIZE]) for options, paths in groups.items() for i in range(0, len(paths), UNIT_SIZE)
        ]

    def run(self, name, options, sources):
        """Returns the findings of an analyzer in sources that it analyzes as one, its output, and whether it has failed."""
        directory, command = options
        with tempfile.TemporaryDirectory(dir=self.build) as folder:
            path = sources[0]
            if len(sources) > 1:
                path = pathlib.Path(folder) / "unit.cpp"
                path.write_text("".join(f'#include "{source}"\n' for source in sources))
            entries = [{"directory": directory, "file": str(path), "command": f"{command} -c {shlex.quote(str(path))}"}]
            (pathlib.Path(folder) / "compile_commands.json").write_text(json.dumps(entries))
            analyzer = [*ANALYZERS[name], f"-header-filter={self.header_filter}", "-p", folder, path]
            if name == "clang-tidy":  # which searches for its checks above the source, in vain if the build is elsewhere
                analyzer.insert(1, f"--config-file={self.root / '.clang-tidy'}")
            result = subprocess.run(analyzer, capture_output=True, text=True, check=False, cwd=self.root)
        output = result.stdout + result.stderr
        findings = {match.group() for match in FINDING.finditer(output)}
        failed = result.returncode != 0 and not findings
        return {finding for finding in findings if not FOR_TESTS.search(finding.replace(str(self.root), ""))}, output, failed

    def analyze_alone(self, options, source):
        """Returns the findings of all analyzers in a source, and what they print where they fail without one."""
        findings = set()
        for name in ANALYZERS:
            found, output, failed = self.run(name, options, [source])
            findings |= {f"{source}: {name} failed:\n{output.strip()}"} if failed else found
        return findings

    def analyze_together(self, options, sources):
        """Returns the findings in headers, and the sources that are still to be analyzed apart from each other."""
        findings = set()
        for name in ANALYZERS:
            found, output, failed = self.run(name, options, sources)
            errors = {match[1] for match in COMPILE_ERROR.finditer(output)}
            named = errors | {finding.split(":")[0] for finding in found}
            fitting = [source for source in sources if str(source) not in named]
            if errors and 0 < len(fitting) < len(sources):
                return set(), [fitting, [source for source in sources if source not in fitting]]
            if errors or failed:
                half = len(sources) // 2
                return set(), [sources[:half], sources[half:]]
            if len(fitting) < len(sources):
                return set(), [[source] for source in sources if source not in fitting] + ([fitting] if fitting else [])
            findings |= found
        return findings, []

    def analyze(self, unit):
        """Returns the findings in a unit."""
        options, sources = unit
        findings, waiting = set(), [sources]
        while waiting:
            sources = waiting.pop()
            if len(sources) == 1:
                findings |= self.analyze_alone(options, sources[0])
            else:
                found, remaining = self.analyze_together(options, sources)
                findings |= found
                waiting += remaining
        return findings


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--since-long", action="store_true")
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    arguments = parser.parse_intermixed_args()
    root, build = arguments.root.resolve(), arguments.build.resolve()
    sources = compile_database.read(root, build, FOREIGN)
    if arguments.since_long:
        sources = {path: sources[path] for path in sources_of(root, changed_names(root), sources)}
    elif arguments.files:
        wanted = {path.resolve() for path in arguments.files}
        sources = {path: options for path, options in sources.items() if path in wanted}
    analysis = Analysis(root, build, sources)
    findings = set()
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        for found in pool.map(analysis.analyze, analysis.units):
            for finding in sorted(found - findings):
                print(finding.replace(f"{root}/", ""), flush=True)
            findings |= found
    print(f"{len(sources)} sources analyzed, {len(findings)} findings")
    return bool(findings)


if __name__ == "__main__":
    sys.exit(main())
