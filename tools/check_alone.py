#!/usr/bin/env python3
"""Compiles each source without the precompiled header, and each header that is not public by itself.

    check_alone.py <source root> <build directory> [--jobs N] [FILE...]

A precompiled header hides includes that a source lacks, and what is included before a header hides those that the header
lacks; the build verifies public headers itself. A header is compiled with the options of a source of its folder, or else of
a source that includes it. Nothing is written. The build directory must have been built: sources include generated files.
"""
import argparse
import concurrent.futures
import os
import pathlib
import shlex
import subprocess
import sys

import check_layers
import compile_database

FOLDERS = ("bench", "benchmarks", "host", "samples", "sdk", "tests", "tools")

def source_for(header, sources):
    """Returns a source whose options fit a header; None where nothing includes it."""
    beside = next((path for path in sources if path.parent == header.parent), None)
    return beside or compile_database.first_including(header, sources)


def compilations(root, sources):
    """Returns what to compile: each path with the folder and the options."""
    public = {root / "sdk" / name / header for name, module in check_layers.module_table(root).items() for header in module.headers}
    headers = {path for folder in FOLDERS for path in (root / folder).rglob("*.h")} - public
    result = dict(sources)
    for header in sorted(headers):
        source = source_for(header, sources)
        if source:
            result[header] = sources[source]
    return result


def compile_alone(path, directory, options):
    """Returns the messages of the compiler; empty where the file compiles."""
    # As an include, since the compiler warns about "#pragma once" in a file that it is given.
    command = [*shlex.split(options), "-fsyntax-only", "-x", "c++", "-"]
    result = subprocess.run(command, input=f'#include "{path}"\n', capture_output=True, text=True, check=False, cwd=directory)
    return result.stderr.strip() if result.returncode else ""


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    arguments = parser.parse_intermixed_args()
    root, build = arguments.root.resolve(), arguments.build.resolve()
    files = compilations(root, compile_database.read(root, build))
    wanted = {path.resolve() for path in arguments.files}
    files = {path: how for path, how in files.items() if not wanted or path in wanted}
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        waiting = [(path, pool.submit(compile_alone, path, *how)) for path, how in files.items()]
        for path, compilation in waiting:
            if errors := compilation.result():
                failed += 1
                print(f"{path.relative_to(root)} does not compile alone:\n{errors}\n", flush=True)
    print(f"{len(files)} files compiled alone, {failed} failed")
    return bool(failed)


if __name__ == "__main__":
    sys.exit(main())
