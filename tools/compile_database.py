"""What the build knows of sources: their options, and which of them include a header."""
import json
import pathlib
import re
import shlex

PRECOMPILED = r" -Winvalid-pch| -include \S*cmake_pch\.hxx"


def compile_options(command, dropped):
    """Returns the compiler of a command and its options, without files and without what the pattern finds."""
    words = shlex.split(re.sub(dropped, "", command))
    # What comes before the compiler: the compiler cache and its environment.
    first = next(i for i, word in enumerate(words) if re.search(r"(\+\+|cc|clang)(-\d+)?$", word))
    files = {i + step for i, word in enumerate(words) if word in ("-o", "-c") for step in (0, 1)}
    return shlex.join(word for i, word in enumerate(words) if i >= first and i not in files)


def read(root, build, dropped=PRECOMPILED):
    """Returns folder and options of each source by its path, without generated sources."""
    sources = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        path = pathlib.Path(entry["file"])
        if path.is_relative_to(root) and not path.is_relative_to(build):
            sources.setdefault(path, (entry["directory"], compile_options(entry["command"], dropped)))
    return dict(sorted(sources.items()))


def first_including(header, sources):
    """Returns the first source that includes a header itself, those of its folder before others; None if there is none."""
    include = re.compile(rf'^\s*#\s*include\s*["<](?:[^">]*/)?{re.escape(header.name)}[">]', re.MULTILINE)
    near = sorted(sources, key=lambda path: (path.parent != header.parent, path))
    return next((path for path in near if include.search(path.read_text(encoding="utf-8"))), None)
