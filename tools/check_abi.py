#!/usr/bin/env python3
"""Compares the public types and functions of the SDK's libraries with those of the baseline in sdk/abi.

    check_abi.py <source root> <build directory>            prints breaks; needs abigail-tools and libraries built with -g
    check_abi.py <source root> <build directory> --update   writes the baseline anew
    check_abi.py <source root> --history                    checks only the rule about CHANGELOG.md

Breaks     What makes a program fail that was built before: removed functions and variables, other signatures, other layouts
           of classes, other virtual functions, removed or renumbered enumerators. Additions are not breaks.
Public     What the headers at the root of a module define. Private members count only where inline functions of these headers
           call them; weak (inline) functions and the types of other libraries do not count.
Changelog  A commit that changes the baseline of a library also adds to CHANGELOG.md, or a line added later names it.

See "When the interface of a library changes" in CONTRIBUTING.md.
"""
import argparse
import collections
import lzma
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

from source_texts import code

BASELINES = pathlib.PurePath("sdk/abi")
SUFFIX = ".abi.xz"
OURS = r"(ZOR|Zor|zor)"
# Functions, operators and functions such as qHash() with a type of ours first. Everything else in the symbol tables is a template or an inline function of Qt or of the standard library. Dropping it
# while the debug information is read makes the reader a hundred times faster.
SUPPRESSIONS = f"""
[suppress_function]
  symbol_name_not_regexp = ^_Z(NK?)?([a-z][a-zA-Z]|[0-9]+[a-zA-Z_]+)?[RPK]*[0-9]+{OURS}
  drop = yes
[suppress_variable]
  symbol_name_not_regexp = ^_Z(NK?)?([a-z][a-zA-Z]|[0-9]+[a-zA-Z_]+)?[RPK]*[0-9]+{OURS}
  drop = yes
"""
READER = (
    "abidw", "--exported-interfaces-only", "--drop-private-types", "--no-corpus-path", "--no-show-locs", "--no-comp-dir-path",
    "--no-elf-needed", "--no-architecture", "--no-parameter-names", "--no-write-default-sizes",
)  # fmt: skip
COMPARER = ("abidiff", "--no-unreferenced-symbols", "--no-show-locs")
FAILED = 3  # the bits of abidiff's exit code that stand for errors of its own


class Failure(Exception):
    """A tool or a file that is missing or unusable."""


def run(command, **options):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=False, **options)
    except FileNotFoundError as error:
        raise Failure(f"{command[0]} is missing, please install abigail-tools") from error


def public_modules(root):
    """Returns the names of the modules that others link, without ZOR, sorted."""
    found = []
    for lists in sorted((root / "sdk").glob("*/CMakeLists.txt")):
        found += re.findall(r"^zor_add_module\((\w+)", lists.read_text(encoding="utf-8"), re.MULTILINE)
    return found


def inline_calls(headers):
    """Returns the names of functions that the headers call besides declaring them, or declare several times."""
    counts = collections.Counter()
    for header in headers:
        counts.update(re.findall(r"\b(\w+)\s*\(", code(header.read_text(encoding="utf-8"))))
    return {name for name, count in counts.items() if count > 1}


def keep_public_symbols(corpus, called):
    """Removes the symbols of private members, of private types and of weak functions from a corpus.

    Private functions stay whose names are called: inline functions of programs may refer to them.
    """
    weak = {symbol.get("name") for symbol in corpus.iter("elf-symbol") if symbol.get("binding") == "weak-binding"}
    kept = set()

    def visit(parent, is_public):
        for child in parent:
            is_hidden = child.get("access") == "private" and not any(part.get("name") in called for part in child)
            inside = is_public and not is_hidden and child.get("is-declaration-only") != "yes"
            symbol = child.attrib.pop("elf-symbol-id", None)
            if symbol and inside and symbol not in weak:
                child.set("elf-symbol-id", symbol)
                kept.add(symbol)
            visit(child, inside)

    for unit in corpus.iter("abi-instr"):
        visit(unit, True)
    for table in corpus.iter():
        for symbol in table.findall("elf-symbol"):
            symbol.attrib.pop("alias", None)
            if symbol.get("name") not in kept:
                table.remove(symbol)


def drop_foreign_functions(corpus):
    """Removes the member functions of types of Qt and of the standard library, which nothing else refers to."""

    def visit(parent):
        for function in parent.findall("member-function"):
            parent.remove(function)
        for child in parent:
            visit(child)

    for unit in corpus.iter("abi-instr"):
        for child in unit:
            if not re.match(OURS, child.get("name", "")):
                visit(child)


def describe(library, headers):
    """Returns the public types and functions of a library, as text that depends on nothing else."""
    if not library.exists():
        raise Failure(f"{library} is missing, please build it")
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        (folder / "headers").mkdir()
        for header in headers:  # found by name; private headers must not be among them
            (folder / "headers" / header.name).symlink_to(header)
        (folder / "suppressions").write_text(SUPPRESSIONS, encoding="utf-8")
        output = folder / "corpus"
        result = run([*READER, "--suppressions", folder / "suppressions", "--headers-dir", folder / "headers",
                      "--out-file", output, library.resolve()])  # fmt: skip
        if result.returncode or not output.exists():
            raise Failure(f"abidw cannot read {library}: {result.stderr}")
        corpus = ElementTree.parse(output).getroot()
    if corpus.find("abi-instr") is None:
        raise Failure(f"{library} has no debug information, please build it with -g")
    keep_public_symbols(corpus, inline_calls(headers))
    drop_foreign_functions(corpus)
    ElementTree.indent(corpus, "")
    return ElementTree.tostring(corpus, encoding="unicode") + "\n"


def compare(before, after, *options):
    """Returns what abidiff reports of the changes between two descriptions; empty for none."""
    if before == after:
        return ""
    with tempfile.TemporaryDirectory() as folder:
        paths = [pathlib.Path(folder) / name for name in ("before.abi", "after.abi")]
        for path, text in zip(paths, (before, after)):
            path.write_text(text, encoding="utf-8")
        result = run([*COMPARER, *options, *paths])
    if result.returncode & FAILED:
        raise Failure(f"abidiff fails: {result.stderr or result.stdout}")
    return result.stdout if result.returncode else ""


def describe_module(root, build, module):
    folder = root / "sdk" / f"ZOR{module}"
    headers = sorted(path for path in folder.glob("*.h") if not path.name.endswith("_p.h"))
    return describe(build / "lib" / f"libZOR{module}.so", headers)


def read(path):
    return lzma.decompress(path.read_bytes()).decode()


def update(root, build):
    """Writes the baselines of libraries that offer something else than before, and removes those of former modules."""
    folder = root / BASELINES
    folder.mkdir(exist_ok=True)
    wanted = {folder / f"ZOR{module}{SUFFIX}": module for module in public_modules(root)}
    for path in set(folder.glob("*" + SUFFIX)) - set(wanted):
        path.unlink()
    for path, module in wanted.items():
        text = describe_module(root, build, module)
        if not path.exists() or compare(read(path), text):
            path.write_bytes(lzma.compress(text.encode(), preset=9 | lzma.PRESET_EXTREME))
    size = sum(path.stat().st_size for path in wanted)
    print(f"The baseline of {len(wanted)} libraries takes {size // 1024} KB. Please say in CHANGELOG.md what has changed.")


def find_breaks(root, build):
    """Yields a text for each library that breaks programs, or whose baseline is missing."""
    modules = public_modules(root)
    stored = {path.name.removesuffix(SUFFIX).removeprefix("ZOR"): path for path in (root / BASELINES).glob("*" + SUFFIX)}
    for module in sorted(set(stored) - set(modules)):
        yield f"ZOR{module}: the library is gone"
    for module in modules:
        if module not in stored:
            yield f"ZOR{module}: the library has no baseline"
            continue
        report = compare(read(stored[module]), describe_module(root, build, module), "--no-added-syms")
        if report:
            yield f"ZOR{module}:\n{report}"


def lacks_changelog(git, *revisions):
    """Returns whether a difference changes a baseline that was there before, and adds nothing to CHANGELOG.md."""
    names = git("diff", "--name-status", "--no-renames", *revisions, "--", str(BASELINES))
    if not re.search(r"^[MD]\t", names, re.MULTILINE):
        return False
    return not re.search(r"^\+(?!\+\+ ).*\S", git("diff", "-U0", *revisions, "--", "CHANGELOG.md"), re.MULTILINE)


def find_silent_changes(root):
    """Yields a text for each commit, and for the working tree, where a baseline differs but CHANGELOG.md does not."""

    def git(*arguments):
        result = run(["git", "-C", root, *arguments])
        if result.returncode:
            raise Failure(f"git fails: {result.stderr}")
        return result.stdout

    if not (root / ".git").exists():
        return
    changelog = root / "CHANGELOG.md"
    named = changelog.read_text(encoding="utf-8") if changelog.exists() else ""
    for commit in git("log", "--no-merges", "--format=%H", "--diff-filter=MD", "--", str(BASELINES)).split():
        if commit[:9] not in named and lacks_changelog(git, f"{commit}^", commit):
            yield f"Commit {commit[:9]} changes {BASELINES} and adds nothing to CHANGELOG.md. Please add a line that names it."
    if lacks_changelog(git, "HEAD"):
        yield f"The working tree changes {BASELINES} and adds nothing to CHANGELOG.md."


ADVICE = """
Programs built against the former libraries break. Please restore the interface; or, if the break is meant, run
    ./test.sh abi --update
and commit sdk/abi together with a line in CHANGELOG.md that says what breaks and what to do about it."""


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("build", type=pathlib.Path, nargs="?")
    mode = parser.add_mutually_exclusive_group()
    mode.add_argument("--update", action="store_true")
    mode.add_argument("--history", action="store_true")
    arguments = parser.parse_args()
    if not arguments.history and not arguments.build:
        parser.error("a build directory is needed")
    root = arguments.root.resolve()
    try:
        if arguments.update:
            update(root, arguments.build)
            return 0
        breaks = [] if arguments.history else list(find_breaks(root, arguments.build))
        silent = list(find_silent_changes(root))
    except Failure as failure:
        print(failure)
        return 2
    print("\n".join([*breaks, *([ADVICE] if breaks else []), *silent]) or "the libraries offer what they offered before")
    return bool(breaks or silent)


if __name__ == "__main__":
    sys.exit(main())
