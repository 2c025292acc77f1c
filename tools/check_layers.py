#!/usr/bin/env python3
"""Checks who includes whom.

    check_layers.py <source root>

SDK      A module may include its own headers and those of the modules in the DEPENDS list of its
         CMakeLists.txt, nothing that merely arrives through them; every module it depends on lies in a
         strictly lower layer. A quoted include names a file of the same folder. Private headers (*_p.h)
         stay inside their module, and public headers show nothing of the libraries that only
         implementations use. A folder in a module (sdk/ZORNesting/solver) is plain C++: it sees
         neither Qt nor the modules; its module includes it with its folder, never in public headers.
Bench    core/ and widgets/ carry the rest and may include each other; console/, visualization/,
         nesting/, operations/ and exchange/ do not see each other. core/ and console/ may include the base
         class of the visualizers.
Host     Never includes the bench.
"""
import pathlib
import re
import sys

INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
IMPLEMENTATION_ONLY = re.compile(r"(Inventor/|EGL/|GL/|Eigen/|backtrace\.h|execinfo\.h|zstd\.h|clipper\.hpp|polyclipping/)")
BENCH_BASE = {"core", "widgets"}
BENCH_EXTRA = {folder: {"visualization/ZORTestVisualizer.h"} for folder in ("core", "console")}


def sources(folder):
    return sorted(p for p in folder.rglob("*") if p.suffix in {".h", ".cpp"})


def includes(path):
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if found := INCLUDE.match(line):
            yield number, found.group(1) == '"', found.group(2)


def module_table(root):
    """Folder name -> (layer, set of folder names it depends on, set of public headers)."""
    table = {}
    for cmake in sorted((root / "sdk").glob("ZOR*/CMakeLists.txt")):
        words = re.sub(r"#.*", "", cmake.read_text()).replace("(", " ").replace(")", " ").split()
        kind = next((word for word in words if word in {"zor_add_module", "zor_add_plugin"}), None)
        if not kind:
            continue
        words = words[words.index(kind) + 1 :]
        lists, key = {}, None
        for word in words[1:]:
            if word in {"LAYER", "DEPENDS", "QT", "PRIVATE_LINK", "HEADERS", "SOURCES"}:
                key = word
                lists[key] = []
            elif key:
                lists[key].append(word)
        depends = {"ZOR" + name for name in lists.get("DEPENDS", [])}
        table[cmake.parent.name] = (int(lists["LAYER"][0]), depends, set(lists.get("HEADERS", [])))
    return table


def check_sdk(root, table):
    for name, (layer, depends, headers) in table.items():
        for other in sorted(depends):
            if other not in table or table[other][0] >= layer:
                yield f"sdk/{name}/CMakeLists.txt: layer {layer} must not use {other}"
        folder = root / "sdk" / name
        inner = {p.name for p in folder.iterdir() if p.is_dir()}
        for path in sources(folder):
            for number, quoted, target in includes(path):
                where = f"{path.relative_to(root)}:{number}"
                module = target.split("/")[0]
                if path.parent != folder and re.match(r"Q[A-Z]|Qt|ZOR\w+/", target):
                    yield f"{where}: a folder in a module is plain C++ and must not use {target}"
                elif path.name in headers and module in inner:
                    yield f"{where}: a public header must not show {target}"
                elif quoted and not (path.parent / target).exists() and not re.match(r"(ui_|moc_)|.*\.moc$", target):
                    yield f"{where}: a quoted include names a file of the same folder, not {target}"
                elif module in table and module != name and module not in depends:
                    yield f"{where}: {name} does not depend on {module}"
                elif module in table and module != name and target.endswith("_p.h"):
                    yield f"{where}: {target} is private to {module}"
                elif path.name in headers and (IMPLEMENTATION_ONLY.match(target) or target.endswith("_p.h")):
                    yield f"{where}: a public header must not show {target}"
                elif re.match(r"(bench|host|core|console|widgets)/", target) or target.startswith("ZORTest"):
                    yield f"{where}: the SDK must not use {target}"


def check_bench(root, table):
    bench = root / "bench"
    folders = {p.name for p in bench.iterdir() if p.is_dir()} if bench.exists() else set()
    for path in sources(bench):
        own = path.relative_to(bench).parts[0]
        for number, quoted, target in includes(path):
            where = f"{path.relative_to(root)}:{number}"
            head = target.split("/")[0]
            if head in table and (quoted or target.split("/")[1] not in table[head][2]):
                yield f"{where}: {target} is not a public header of the SDK"
            elif target.startswith("ZORHost") or head == "host":
                yield f"{where}: the bench must not use the host"
            elif quoted and "/" not in target and not target.startswith("ui_") and not target.endswith(".moc"):
                yield f'{where}: bench headers are included with their folder, not "{target}"'
            elif (
                quoted
                and head in folders
                and head not in BENCH_BASE | {own}
                and target not in BENCH_EXTRA.get(own, set())
            ):
                yield f"{where}: {own}/ must not see {head}/"


def check_host(root, table):
    for path in sources(root / "host"):
        for number, _, target in includes(path):
            where = f"{path.relative_to(root)}:{number}"
            head = target.split("/")[0]
            if target.split("/")[-1].startswith("ZORTest"):
                yield f"{where}: the host must not use the bench"
            elif head in table and target.split("/")[1] not in table[head][2]:
                yield f"{where}: {target} is not a public header of the SDK"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    table = module_table(root)
    errors = [*check_sdk(root, table), *check_bench(root, table), *check_host(root, table)]
    print("\n".join(errors) or f"{len(table)} modules, bench and host include only what they may")
    return bool(errors)


if __name__ == "__main__":
    sys.exit(main())
