#!/usr/bin/env python3
"""Follows docs/adding-a-dialog.md to the letter in a scratch clone, builds the bench and runs its tests.

    follow_adding_a_dialog.py <source root> [--check]

"New file `path`" is followed by a block with the text of the file; "in `path`, below the line" by a block with a line that
occurs once in the file, and a block to add. The clone holds the commit that is checked out, without what is not committed.
--check only finds out whether every edit of the page can be made in the source root, and changes nothing.
"""
import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

PAGE = "docs/adding-a-dialog.md"
BLOCK = r"(?:(?!\n *```).)*\n+(?P<indent{0}> *)```\w+\n(?P<block{0}>.*?)\n(?P=indent{0})```"
STEP = re.compile(
    r"(?:New file `(?P<new>[^`]+)`" + BLOCK.format(1) + r")"
    r"|(?:[Ii]n `(?P<old>[^`]+)`, (?P<where>below|above) the line\n\n(?P<indent2> *)```\w+\n(?P<block2>.*?)\n(?P=indent2)```\n\n"
    r" *add [^\n]*\n\n(?P<indent3> *)```\w+\n(?P<block3>.*?)\n(?P=indent3)```)",
    re.DOTALL,
)
PROGRAMS = ("console", "core", "exchange", "nesting", "operations", "plugin", "visualization", "widgets")
TARGETS = ["ZORTesting", "window_tests", *(f"bench_{name}_tests" for name in PROGRAMS)]
TESTS = r"^(bench_|window_tests|tree\.)"
FOLLOWED = r"^tree\.adding_a_dialog$"  # requires that the edits of the page are not made yet


def unindent(block, indent):
    return "\n".join(line.removeprefix(indent) for line in block.split("\n")) + "\n"


def read_page(root):
    """Returns the new text of every file that the page makes or changes, by name."""
    page = (root / PAGE).read_text(encoding="utf-8")
    texts = {}
    steps = 0
    for step in STEP.finditer(page):
        if name := step["new"]:
            if (root / name).exists():
                raise RuntimeError(f"{PAGE}: {name} exists already")
            texts[name] = unindent(step["block1"], step["indent1"])
        else:
            name = step["old"]
            anchor = unindent(step["block2"], step["indent2"])
            added = unindent(step["block3"], step["indent3"])
            text = texts.get(name) or (root / name).read_text(encoding="utf-8")
            if text.count("\n" + anchor) != 1:
                raise RuntimeError(f"{PAGE}: {name} does not hold this line once: {anchor}")
            both = anchor + added if step["where"] == "below" else added + anchor
            texts[name] = text.replace("\n" + anchor, "\n" + both)
        steps += 1
    if steps != len(re.findall(r"^\d+\. ", page, re.MULTILINE)):
        raise RuntimeError(f"{PAGE}: only {steps} of its numbered steps can be followed")
    return texts


def follow(source):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder) / "clone"
        subprocess.run(["git", "clone", "-q", source, root], check=True)
        for name, text in read_page(root).items():
            print(name, flush=True)
            (root / name).write_text(text, encoding="utf-8")
        build = root / "build" / "ci"  # what has not changed comes out of the compiler cache
        commands = (
            ["cmake", "--preset", "ci"],
            ["cmake", "--build", build, "--target", *TARGETS],
            ["ctest", "--test-dir", build, "-R", TESTS, "-E", FOLLOWED, "--output-on-failure", "-j2"],
        )
        for command in commands:
            if code := subprocess.run(command, cwd=root, check=False).returncode:
                return code
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("source", type=pathlib.Path)
    parser.add_argument("--check", action="store_true")
    arguments = parser.parse_args()
    try:
        if arguments.check:
            print(f"{len(read_page(arguments.source))} files follow the page")
            return 0
        return follow(arguments.source.resolve())
    except RuntimeError as error:
        print(error, file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
