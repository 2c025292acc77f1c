#!/usr/bin/env python3
"""Checks who includes whom.

    check_layers.py <source root>

SDK      A module may include its own headers and those of the modules in the DEPENDS list of its
         CMakeLists.txt, nothing that merely arrives through them; every module it depends on lies in a
         strictly lower layer. Private headers (*_p.h) stay inside their module and export no class; public
         headers show nothing of the libraries that only implementations use.
         The folders of a module are the rooms of its private code, in the order of the ROOMS list: a room uses
         the public headers of the module and the rooms before it, the sources at the root use every room, and
         public headers show none. Public headers are included with the module in angle brackets; quotes name
         a file of the same folder, or one of another room as "room/File_p.h". A room may be in a folder of rooms,
         "folder/room". Rooms in the QT_FREE list, and those in folders of that list, are plain C++: they
         see neither Qt nor the modules.
Rooms    A room of a module or a folder of the host has at most 25 files.
Proof    The solver of the nesting module proves its layouts by geometry of its own, the files *Exact*, so that no
         fault of the search hides from it: they share only points, poses, arcs, items and the order in space with
         the search. *Check runs the proof, and *Apart measures polygons of the search as it does; the room of these
         files is below those of the search.
Bench    core/ and widgets/ carry the rest and may include each other; console/, visualization/,
         nesting/, operations/ and exchange/ do not see each other. core/ and console/ may include the base
         class of the visualizers.
Tools    Programs use the public headers of the SDK alone, their own folder, and the headers in tools/ itself.
Host     Never includes the bench. base/ lies under view/, docks/ and plugins/, which do not see each other; objects/
         is what users do with objects of the document, actions/ are those of the view and of commands, document/
         opens, saves and rescues what they work on, help/ explains them, window/ shows all of these, script/ drives
         actions, document and window, and app/ sees everything.
Paths    No include goes up by "..".
Tests    tests/sdk/<module>/ uses neither bench nor host, and private headers of its own module alone. tests/bench/ does not use
         the host, tests/host/ does not use the bench, and both use public headers of the SDK alone, as benchmarks do. The
         solver of the nesting module is measured directly, and fuzz targets call the readers that they are for.
"""
import pathlib
import re
import sys
from typing import NamedTuple

from source_texts import code, line_of

EXPORTED_CLASS = re.compile(r"\b(class|struct)\b[^;{}()]*?\b\w+_EXPORT\b")
INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
IMPLEMENTATION_ONLY = re.compile(r"(Inventor/|EGL/|GL/|Eigen/|backtrace\.h|execinfo\.h|zstd\.h|clipper\.hpp|polyclipping/)")
BENCH_BASE = {"core", "widgets"}
HOST_BELOW = {"base": set(), "view": {"base"}, "docks": {"base"}, "plugins": {"base"}}
HOST_BELOW["objects"] = {"base", "view"}
HOST_BELOW["actions"] = {"base", "view"}
HOST_BELOW["document"] = {"base", "view", "actions"}
HOST_BELOW["help"] = {"base", "actions"}
HOST_BELOW["window"] = {"base", "view", "docks", "plugins", "objects", "actions", "document", "help"}
HOST_BELOW["script"] = {"base", "view", "actions", "document", "window"}
HOST_BELOW["app"] = set(HOST_BELOW)
MOST_FILES_OF_ROOM = 25
PROOF_MAY_USE = {f"ZORNestSolver{part}.h" for part in ("Arc", "Geometry", "Item", "Pose", "SpatialOrder")}
PROOF_USERS = {"ZORNestSolverCheck", "ZORNestSolverApart"}
# The processes that helpers start: jobs of nesting are tested in them.
TESTS_MAY_USE = {"tests/sdk/ZORNesting": {"ZORWorker/helper/ZORWorkHelperRun_p.h"}}
BENCH_EXTRA = {folder: {"visualization/ZORTestVisualizer.h"} for folder in ("core", "console")}


def sources(folder):
    return sorted(p for p in folder.rglob("*") if p.suffix in {".h", ".cpp"})


def includes(path):
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if found := INCLUDE.match(line):
            yield number, found.group(1) == '"', found.group(2)


class Module(NamedTuple):
    layer: int
    depends: set[str]  # names of folders
    headers: set[str]  # the public ones
    rooms: list[str]  # lowest first
    qt_free: set[str]  # rooms, or folders of rooms

    def is_plain(self, room):
        """Checks whether the files of a room see neither Qt nor the modules."""
        return any(room == name or room.startswith(name + "/") for name in self.qt_free)


def module_table(root):
    """Folder name -> Module."""
    table = {}
    for cmake in sorted((root / "sdk").glob("ZOR*/CMakeLists.txt")):
        words = re.sub(r"#.*", "", cmake.read_text()).replace("(", " ").replace(")", " ").split()
        kind = next((word for word in words if word in {"zor_add_module", "zor_add_plugin"}), None)
        if not kind:
            continue
        words = words[words.index(kind) + 1 :]
        lists, key = {}, None
        for word in words[1:]:
            if word in {"LAYER", "DEPENDS", "QT", "PRIVATE_LINK", "ROOMS", "QT_FREE", "HEADERS", "SOURCES"}:
                key = word
                lists[key] = []
            elif key:
                lists[key].append(word)
        table[cmake.parent.name] = Module(
            int(lists["LAYER"][0]),
            {"ZOR" + name for name in lists.get("DEPENDS", [])},
            set(lists.get("HEADERS", [])),
            lists.get("ROOMS", []),
            set(lists.get("QT_FREE", [])),
        )
    return table


def check_module(root, table, name):
    """Checks the lists of a module and the folders of its files."""
    module = table[name]
    folder = root / "sdk" / name
    for other in sorted(module.depends):
        if other not in table or table[other].layer >= module.layer:
            yield f"sdk/{name}/CMakeLists.txt: layer {module.layer} must not use {other}"
    inner = {path.relative_to(folder).parent.as_posix() for path in sources(folder)} - {"."}
    for room in sorted(inner - set(module.rooms)):
        yield f"sdk/{name}/CMakeLists.txt: {room}/ is not among its ROOMS"
    unknown = {name for name in module.qt_free if not any(f"{room}/".startswith(f"{name}/") for room in module.rooms)}
    for room in sorted((set(module.rooms) - inner) | unknown):
        yield f"sdk/{name}/CMakeLists.txt: the room {room}/ does not exist"
    if module.rooms:
        for path in sorted(folder.glob("*_p.h")):
            yield f"{path.relative_to(root)}: private headers of a module with rooms belong in one of them"


def check_exports(root, table, name):
    """Finds private headers that export a class; functions that tests call may be exported one by one."""
    folder = root / "sdk" / name
    for path in sources(folder):
        if path.suffix == ".h" and path.relative_to(folder).as_posix() not in table[name].headers:
            text = code(path.read_text(encoding="utf-8"))
            for match in EXPORTED_CLASS.finditer(text):
                yield f"{path.relative_to(root)}:{line_of(text, match.start())}: a private header must not export a class"


def check_quoted(module, folder, path, target):
    """Returns what is wrong with a quoted include in a file of a module."""
    own = path.parent.relative_to(folder).as_posix()
    room, _, name = target.rpartition("/")
    if re.match(r"(ui_|moc_)|.*\.moc$", target):
        return None
    if not room:
        return None if (path.parent / name).exists() else f"a quoted include names a file of the same folder, not {target}"
    if room not in module.rooms or not (folder / target).exists():
        return f"a quoted include names a file of the same folder or of a room, not {target}"
    if room == own:
        return f"a file of the same folder is included without it, not as {target}"
    if own in module.rooms and module.rooms.index(room) > module.rooms.index(own):
        return f"{own}/ must not see {room}/, which is above it"
    return None


def check_proof(path, target):
    """Returns what is wrong with an include of the proof of layouts, or by it."""
    name = target.rpartition("/")[2]
    is_proof = "Exact" in path.name
    if is_proof and name.startswith("ZORNestSolver") and "Exact" not in name and name not in PROOF_MAY_USE:
        return f"the proof must not use {name}, which the search uses"
    if not is_proof and name.startswith("ZORNestSolverExact") and path.stem not in PROOF_USERS:
        return f"only the proof may use {name}"
    return None


def check_angled(table, name, target):
    """Returns what is wrong with an include in angle brackets in a file of a module."""
    head, _, header = target.partition("/")
    if head not in table:
        return None
    if head != name and head not in table[name].depends:
        return f"{name} does not depend on {head}"
    if header not in table[head].headers:
        return f"{target} is private to {head}" if head != name else f"{target} is not public: include it in quotes"
    return None


def check_sdk(root, table):
    for name, module in table.items():
        yield from check_module(root, table, name)
        yield from check_exports(root, table, name)
        folder = root / "sdk" / name
        for path in sources(folder):
            room = path.parent.relative_to(folder).as_posix()
            for number, quoted, target in includes(path):
                where = f"{path.relative_to(root)}:{number}"
                shows_room = path.name in module.headers and target.rpartition("/")[0] in module.rooms
                if module.is_plain(room) and re.match(r"Q[A-Z]|Qt|q\w+\.h$|ZOR\w+/", target):
                    yield f"{where}: {room}/ is plain C++ and must not use {target}"
                elif shows_room or (
                    path.name in module.headers and (IMPLEMENTATION_ONLY.match(target) or target.endswith("_p.h"))
                ):
                    yield f"{where}: a public header must not show {target}"
                elif re.match(r"(bench|host|core|console|widgets)/", target) or target.startswith("ZORTest"):
                    yield f"{where}: the SDK must not use {target}"
                elif error := check_proof(path, target) or (
                    check_quoted(module, folder, path, target) if quoted else check_angled(table, name, target)
                ):
                    yield f"{where}: {error}"


def check_tools(root, table):
    tools = root / "tools"
    for path in sources(tools):
        for number, quoted, target in includes(path):
            where = f"{path.relative_to(root)}:{number}"
            head, _, header = target.partition("/")
            if target.endswith("_p.h") or (head in table and header not in table[head].headers):
                yield f"{where}: {target} is not a public header of the SDK"
            elif quoted and not (re.match(r"\w+\.h$", target) and any((p / target).exists() for p in (path.parent, tools))):
                yield f"{where}: a quoted include names a file of the same folder or of tools/, not {target}"


def check_bench(root, table):
    bench = root / "bench"
    folders = {p.name for p in bench.iterdir() if p.is_dir()} if bench.exists() else set()
    for path in sources(bench):
        own = path.relative_to(bench).parts[0]
        for number, quoted, target in includes(path):
            where = f"{path.relative_to(root)}:{number}"
            head = target.split("/")[0]
            if head in table and (quoted or target.split("/", 1)[1] not in table[head].headers):
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


def check_rooms(root, table):
    """Finds rooms in which one has to search for a file."""
    rooms = [root / "sdk" / name / room for name, module in table.items() for room in module.rooms]
    for room in rooms + sorted(path for path in (root / "host").glob("*") if path.is_dir()):
        count = sum(path.suffix in {".h", ".cpp"} for path in room.glob("*"))
        if count > MOST_FILES_OF_ROOM:
            yield f"{room.relative_to(root)}: {count} files; a room has at most {MOST_FILES_OF_ROOM}"


def check_host(root, table):
    host = root / "host"
    for path in sources(host):
        own = path.relative_to(host).parts[0]
        if own not in HOST_BELOW:
            yield f"{path.relative_to(root)}: {own} is not a folder of the host that this check knows"
            continue
        for number, quoted, target in includes(path):
            where = f"{path.relative_to(root)}:{number}"
            head = target.split("/")[0]
            if target.split("/")[-1].startswith("ZORTest"):
                yield f"{where}: the host must not use the bench"
            elif head in table and target.split("/", 1)[1] not in table[head].headers:
                yield f"{where}: {target} is not a public header of the SDK"
            elif quoted and "/" not in target and not re.match(r"ui_|.*\.moc$", target):
                yield f'{where}: host headers are included with their folder, not "{target}"'
            elif quoted and head in HOST_BELOW and head not in HOST_BELOW[own] | {own}:
                yield f"{where}: {own}/ must not see {head}/"


def folders_of(root, house):
    folder = root / house
    return {path.name for path in folder.iterdir() if path.is_dir()} if folder.exists() else set()


def check_test(root, table, path, target):
    """Returns what is wrong with an include of a test or a benchmark."""
    parts = path.relative_to(root).parts
    head, _, header = target.partition("/")
    of_sdk = parts[:2] == ("tests", "sdk")
    may_use_bench = parts[0] == "benchmarks" or (not of_sdk and parts[1] != "host")
    may_use_host = not of_sdk and parts[1] != "bench" and (parts[0] != "benchmarks" or parts[1] == "host")
    if header and not may_use_bench and head in folders_of(root, "bench") - folders_of(root, "host"):
        return f"{'/'.join(parts[:2])}/ must not use the bench"
    if header and not may_use_host and head in folders_of(root, "host") - folders_of(root, "bench"):
        return f"{'/'.join(parts[:2])}/ must not use the host"
    if head not in table or header in table[head].headers or parts[:2] == ("tests", "fuzz") or (root / parts[0] / target).exists():
        return None
    if (of_sdk and head == parts[2]) or target in TESTS_MAY_USE.get("/".join(parts[:3]), set()):
        return None
    return f"{target} is private to {head}"


def check_paths(root, _):
    for house in ("sdk", "bench", "host", "tools", "tests", "benchmarks"):
        for path in sources(root / house):
            for number, _, target in includes(path):
                if ".." in target.split("/"):
                    yield f"{path.relative_to(root)}:{number}: {target} leaves its folder"


def check_tests(root, table):
    for house in ("tests", "benchmarks"):
        for path in sources(root / house):
            for number, _, target in includes(path):
                if error := check_test(root, table, path, target):
                    yield f"{path.relative_to(root)}:{number}: {error}"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    table = module_table(root)
    checks = (check_sdk, check_rooms, check_tools, check_bench, check_host, check_tests, check_paths)
    errors = [error for check in checks for error in check(root, table)]
    print("\n".join(errors) or f"{len(table)} modules, tools, bench, host and tests include only what they may")
    return bool(errors)


if __name__ == "__main__":
    sys.exit(main())
