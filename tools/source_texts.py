"""The C++ sources of the project and the parts of their text, for the checks of this folder."""
import pathlib
import re
import sys

FOLDERS = ("sdk", "bench", "host", "tools", "tests", "samples", "examples", "benchmarks")

_PIECE = re.compile(
    r'(?P<comment>//(?:\\\n|[^\n])*|/\*.*?\*/)'
    r'|(?P<text>(?:u8|[uUL])?R"(?P<guard>[^()\\\s]*)\(.*?\)(?P=guard)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-zA-Z])\'(?:\\.|[^\'\\\n])+\')',
    re.DOTALL,
)


def cpp_files(root, folders=FOLDERS):
    """Returns the headers and sources below the folders of the root, sorted."""
    found = []
    for folder in folders:
        found += (p for p in (pathlib.Path(root) / folder).rglob("*") if p.suffix in {".h", ".cpp"})
    return sorted(found)


def _blank(piece):
    return re.sub(r"[^\n]", " ", piece)


def code(text):
    """Returns the text with comments blanked and each literal as empty quotes; every line keeps its number and columns."""

    def replace(match):
        if match.group("comment"):
            return _blank(match.group())
        piece = match.group()
        return piece[0] + _blank(piece[1:-1]) + piece[-1]

    return _PIECE.sub(replace, text)


def comment_lines(text):
    """Yields (line number, text) for each line of a // or /// comment, without its slashes."""
    for match in _PIECE.finditer(text):
        if match.group("comment") and match.group().startswith("//"):
            yield text.count("\n", 0, match.start()) + 1, match.group().lstrip("/")


def line_of(text, position):
    """Returns the number of the line that holds a position."""
    return text.count("\n", 0, position) + 1


def run(check, success):
    """Checks the root that the command line names, prints the faults or that there are none, and returns the exit code.

    check yields the faults below a root.
    """
    root = pathlib.Path(sys.argv[1]).resolve()
    faults = list(check(root))
    print("\n".join(faults) or success)
    return bool(faults)
