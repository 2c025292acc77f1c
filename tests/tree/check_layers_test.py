#!/usr/bin/env python3
"""Tests of tools/check_layers.py: every rule finds its violation, and a clean tree passes."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECKER = pathlib.Path(__file__).resolve().parents[2] / "tools" / "check_layers.py"

CLEAN = {
    "sdk/ZORSystem/CMakeLists.txt": "zor_add_module(System LAYER 0 QT Core\n HEADERS ZORSysA.h\n SOURCES a.cpp)",
    "sdk/ZORSystem/ZORSysA.h": "#pragma once\n#include <QString>\n",
    "sdk/ZORSystem/ZORSysA_p.h": "#pragma once\n",
    "sdk/ZORGeometry/CMakeLists.txt": "zor_add_module(Geometry LAYER 3 DEPENDS System HEADERS ZORGeoA.h SOURCES b.cpp)",
    "sdk/ZORGeometry/ZORGeoA.h": "#include <ZORSystem/ZORSysA.h>\n",
    "sdk/ZORGeometry/ZORGeoA.cpp": '#include "ZORGeoA.h"\n',
    "bench/core/ZORTestA.h": "#pragma once\n",
    "bench/console/ZORTestB.cpp": '#include "core/ZORTestA.h"\n#include <ZORGeometry/ZORGeoA.h>\n',
    "bench/nesting/ZORTestC.h": "#pragma once\n",
    "tools/front/main.cpp": '#include "Options.h"\n#include "Shared.h"\n#include <ZORSystem/ZORSysA.h>\n',
    "tools/front/Options.h": "#include <QString>\n",
    "tools/Shared.h": "#include <exception>\n",
    "host/base/ZORHostA.h": "#include <ZORSystem/ZORSysA.h>\n",
    "host/window/ZORHostB.cpp": '#include "base/ZORHostA.h"\n',
    "tests/sdk/ZORGeometry/mesh/ATest.cpp": '#include "sdk/ZORGeometry/Meshes.h"\n#include <ZORGeometry/mesh/ZORGeoMesh_p.h>\n',
    "tests/bench/BTest.cpp": '#include "core/ZORTestA.h"\n#include <ZORSystem/ZORSysA.h>\n',
    "tests/host/CTest.cpp": '#include "window/ZORHostB.h"\n#include <ZORSystem/ZORSysA.h>\n',
    "tests/windows/DTest.cpp": '#include "window/ZORHostB.h"\n#include "core/ZORTestA.h"\n',
    "tests/fuzz/ETarget.cpp": "#include <ZORGeometry/stl/ZORGeoStl_p.h>\n",
    "benchmarks/ZORGeometry/FBenchmark.cpp": '#include "core/ZORTestA.h"\n#include <ZORGeometry/ZORGeoA.h>\n',
}
# A module with rooms, added to the clean tree by the tests of rooms.
ROOMS = {
    "sdk/ZORGeometry/CMakeLists.txt": "zor_add_module(Geometry LAYER 3 DEPENDS System ROOMS plain mesh path QT_FREE plain\n"
    " HEADERS ZORGeoA.h SOURCES b.cpp)",
    "sdk/ZORGeometry/ZORGeoA.cpp": '#include "ZORGeoA.h"\n#include "mesh/ZORGeoMesh_p.h"\n#include "path/ZORGeoPath_p.h"\n',
    "sdk/ZORGeometry/plain/Run.h": "#include <vector>\n",
    "sdk/ZORGeometry/plain/Run.cpp": '#include "Run.h"\n',
    "sdk/ZORGeometry/mesh/ZORGeoMesh_p.h": "#include <QString>\n#include <ZORGeometry/ZORGeoA.h>\n",
    "sdk/ZORGeometry/mesh/ZORGeoMesh.cpp": '#include "ZORGeoMesh_p.h"\n#include "plain/Run.h"\n',
    "sdk/ZORGeometry/path/ZORGeoPath_p.h": '#include "mesh/ZORGeoMesh_p.h"\n',
}


def run(changes):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**CLEAN, **changes}.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        result = subprocess.run([sys.executable, CHECKER, folder], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout


class CheckLayersTest(unittest.TestCase):
    def test_clean_tree_passes(self):
        self.assertEqual((0, "2 modules, tools, bench, host and tests include only what they may\n"), run({}))

    def assert_found(self, name, text, message, others=None):
        code, output = run({**(others or {}), name: text})
        self.assertEqual(1, code, output)
        self.assertIn(message, output)

    def test_module_of_the_same_layer(self):
        text = "zor_add_module(Geometry LAYER 0 DEPENDS System HEADERS ZORGeoA.h)"
        self.assert_found("sdk/ZORGeometry/CMakeLists.txt", text, "layer 0 must not use ZORSystem")

    def test_plugin_is_held_to_the_layers(self):
        name = "sdk/ZORCommands/CMakeLists.txt"
        plugin = "zor_add_plugin(Commands LAYER 7 DEPENDS {} SOURCES c.cpp)"
        source = {"sdk/ZORCommands/c.cpp": "#include <ZORGeometry/ZORGeoA.h>\n"}
        self.assertEqual(0, run({name: plugin.format("Geometry"), **source})[0])
        code, output = run({name: plugin.format("System"), **source})
        self.assertEqual(1, code)
        self.assertIn("ZORCommands does not depend on ZORGeometry", output)

    def test_proof_and_search_stay_apart(self):
        tree = {f"sdk/ZORSystem/ZORNestSolver{name}.h": "" for name in ("Arc", "Exact", "ExactTree", "Shape")}
        for name, used in (("ExactTree", "Exact"), ("ExactTree", "Arc"), ("Check", "Exact"), ("Apart", "Exact")):
            source = {f"sdk/ZORSystem/ZORNestSolver{name}.cpp": f'#include "ZORNestSolver{used}.h"\n'}
            self.assertEqual(0, run({**tree, **source})[0], (name, used))
        for name, used, message in (
            ("ExactTree", "Shape", "the proof must not use ZORNestSolverShape.h, which the search uses"),
            ("Shape", "Exact", "only the proof may use ZORNestSolverExact.h"),
        ):
            text = f'#include "ZORNestSolver{used}.h"\n'
            self.assert_found(f"sdk/ZORSystem/ZORNestSolver{name}.cpp", text, message, tree)

    def assert_found_in_room(self, name, text, message):
        self.assert_found(f"sdk/ZORGeometry/{name}", text, message, ROOMS)

    def test_clean_rooms_pass(self):
        code, output = run(ROOMS)
        self.assertEqual(0, code, output)

    def test_folder_that_is_not_declared_as_a_room(self):
        self.assert_found("sdk/ZORGeometry/mesh/a.cpp", "#include <QString>\n", "mesh/ is not among its ROOMS")

    def test_room_without_files(self):
        text = ROOMS["sdk/ZORGeometry/CMakeLists.txt"]
        self.assert_found_in_room("CMakeLists.txt", text.replace("mesh path", "mesh path stl"), "the room stl/ does not exist")
        self.assert_found_in_room("CMakeLists.txt", text.replace("QT_FREE plain", "QT_FREE bare"), "the room bare/ does not exist")

    def test_private_header_outside_the_rooms(self):
        self.assert_found_in_room("ZORGeoB_p.h", "#pragma once\n", "ZORGeoB_p.h: private headers of a module with rooms")

    def test_room_that_sees_one_above_it(self):
        self.assert_found_in_room("mesh/a.cpp", '#include "path/ZORGeoPath_p.h"\n', "mesh/ must not see path/, which is above it")

    def test_room_that_includes_its_own_file_with_its_folder(self):
        message = "a file of the same folder is included without it, not as mesh/ZORGeoMesh_p.h"
        self.assert_found_in_room("mesh/a.cpp", '#include "mesh/ZORGeoMesh_p.h"\n', message)

    def test_file_of_another_room_without_its_folder(self):
        message = "a quoted include names a file of the same folder, not ZORGeoMesh_p.h"
        self.assert_found_in_room("path/a.cpp", '#include "ZORGeoMesh_p.h"\n', message)

    def test_public_header_in_quotes_from_a_room(self):
        message = "a quoted include names a file of the same folder, not ZORGeoA.h"
        self.assert_found_in_room("mesh/a.cpp", '#include "ZORGeoA.h"\n', message)

    def test_missing_file_of_a_room(self):
        message = "a quoted include names a file of the same folder or of a room, not mesh/ZORGeoB_p.h"
        self.assert_found_in_room("path/a.cpp", '#include "mesh/ZORGeoB_p.h"\n', message)

    def test_private_header_in_angle_brackets(self):
        message = "ZORGeometry/mesh/ZORGeoMesh_p.h is not public: include it in quotes"
        self.assert_found_in_room("path/a.cpp", "#include <ZORGeometry/mesh/ZORGeoMesh_p.h>\n", message)

    def test_room_of_another_module(self):
        text = "zor_add_module(Topology LAYER 4 DEPENDS Geometry HEADERS ZORTopA.h SOURCES c.cpp)"
        topology = {**ROOMS, "sdk/ZORTopology/CMakeLists.txt": text}
        include = "#include <ZORGeometry/mesh/ZORGeoMesh_p.h>\n"
        self.assert_found("sdk/ZORTopology/c.cpp", include, "ZORGeometry/mesh/ZORGeoMesh_p.h is private to ZORGeometry", topology)

    def test_public_header_that_shows_a_room(self):
        self.assert_found_in_room("ZORGeoA.h", '#include "plain/Run.h"\n', "a public header must not show plain/Run.h")

    def test_room_that_is_free_of_qt(self):
        for text in ("#include <QString>\n", "#include <ZORSystem/ZORSysA.h>\n"):
            self.assert_found_in_room("plain/Run.cpp", text, "plain/ is plain C++ and must not use")
        self.assert_found_in_room("plain/Run.cpp", '#include "mesh/ZORGeoMesh_p.h"\n', "plain/ must not see mesh/")

    def test_room_with_too_many_files(self):
        for folder in ("sdk/ZORGeometry/plain", "host/base"):
            present = sum(name.startswith(folder + "/") for name in {**CLEAN, **ROOMS})
            tree = {**ROOMS, **{f"{folder}/file{number}.cpp": "" for number in range(25 - present)}}
            code, output = run(tree)
            self.assertEqual(0, code, output)
            self.assert_found(f"{folder}/one_more.cpp", "", f"{folder}: 26 files; a room has at most 25", tree)

    def test_rooms_in_a_folder(self):
        tree = {
            "sdk/ZORGeometry/CMakeLists.txt": "zor_add_module(Geometry LAYER 3 DEPENDS System\n"
            " ROOMS plain/base plain/search # above base\n mesh QT_FREE plain HEADERS ZORGeoA.h SOURCES b.cpp)",
            "sdk/ZORGeometry/plain/base/Budget.h": "#include <vector>\n",
            "sdk/ZORGeometry/plain/search/Run.h": '#include "plain/base/Budget.h"\n',
            "sdk/ZORGeometry/mesh/ZORGeoMesh.cpp": '#include "plain/search/Run.h"\n#include <QString>\n',
        }
        code, output = run(tree)
        self.assertEqual(0, code, output)
        for name, include, message in (
            ("plain/base/a.cpp", '"plain/search/Run.h"', "plain/base/ must not see plain/search/, which is above it"),
            ("plain/search/a.cpp", "<QString>", "plain/search/ is plain C++ and must not use QString"),
            ("plain/search/a.cpp", '"base/Budget.h"', "a quoted include names a file of the same folder or of a room"),
            ("plain/a.cpp", '"plain/base/Budget.h"', "plain/ is not among its ROOMS"),
            ("ZORGeoA.h", '"plain/base/Budget.h"', "a public header must not show plain/base/Budget.h"),
        ):
            self.assert_found(f"sdk/ZORGeometry/{name}", f"#include {include}\n", message, tree)

    def test_undeclared_module(self):
        self.assert_found("sdk/ZORSystem/a.cpp", "#include <ZORGeometry/ZORGeoA.h>\n", "ZORSystem does not depend on ZORGeometry")

    def test_undeclared_module_by_quotes(self):
        self.assert_found("sdk/ZORSystem/a.cpp", '#include "ZORGeometry/ZORGeoA.h"\n', "a quoted include names a file")

    def test_private_header_of_another_module(self):
        self.assert_found("sdk/ZORGeometry/b.cpp", "#include <ZORSystem/ZORSysA_p.h>\n", "is private to ZORSystem")

    def test_private_header_that_exports_a_class(self):
        message = "ZORSysA_p.h:2: a private header must not export a class"
        for kind in ("class", "struct"):
            self.assert_found("sdk/ZORSystem/ZORSysA_p.h", f"#pragma once\n{kind} ZORSYSTEM_EXPORT ZORSysA\n{{\n}};\n", message)
        self.assertEqual(0, run({"sdk/ZORSystem/ZORSysA_p.h": "ZORSYSTEM_EXPORT void ZorSysRun();\n"})[0])

    def test_tool_that_uses_a_private_header(self):
        for include in ("<ZORSystem/ZORSysA_p.h>", '"ZORSysA_p.h"', "<ZORSystem/files/ZORSysB_p.h>"):
            self.assert_found("tools/front/main.cpp", f"#include {include}\n", "is not a public header of the SDK")

    def test_tool_that_reaches_into_a_module(self):
        message = "a quoted include names a file of the same folder or of tools/, not "
        for name in ("Run.h", "../other/Options.h", "other/Options.h"):
            self.assert_found("tools/front/main.cpp", f'#include "{name}"\n', message + name)

    def test_public_header_that_shows_an_implementation_library(self):
        self.assert_found("sdk/ZORSystem/ZORSysA.h", "#include <Inventor/SoDB.h>\n", "must not show Inventor/SoDB.h")

    def test_bench_folder_that_sees_its_sister(self):
        self.assert_found("bench/console/ZORTestB.cpp", '#include "nesting/ZORTestC.h"\n', "console/ must not see nesting/")

    def test_bench_that_uses_a_private_header(self):
        self.assert_found("bench/core/ZORTestA.h", "#include <ZORSystem/ZORSysA_p.h>\n", "is not a public header")

    def test_bench_that_uses_the_host(self):
        self.assert_found("bench/core/ZORTestA.h", '#include "ZORHostA.h"\n', "must not use the host")

    def test_host_that_uses_the_bench(self):
        self.assert_found("host/base/ZORHostA.cpp", '#include "core/ZORTestA.h"\n', "the host must not use the bench")

    def test_host_folder_that_sees_one_above_it(self):
        self.assert_found("host/base/ZORHostA.cpp", '#include "window/ZORHostB.h"\n', "base/ must not see window/")
        self.assert_found("host/view/ZORHostC.cpp", '#include "docks/ZORHostD.h"\n', "view/ must not see docks/")
        self.assert_found("host/actions/ZORHostF.cpp", '#include "document/ZORHostG.h"\n', "actions/ must not see document/")
        self.assert_found("host/document/ZORHostG.cpp", '#include "window/ZORHostB.h"\n', "document/ must not see window/")
        self.assert_found("host/window/ZORHostB.cpp", '#include "app/ZORHostE.h"\n', "window/ must not see app/")
        self.assertEqual(0, run({"host/app/ZORHostE.cpp": '#include "window/ZORHostB.h"\n'})[0])

    def test_host_file_outside_the_known_folders(self):
        self.assert_found("host/main.cpp", "#include <QString>\n", "is not a folder of the host that this check knows")
        self.assert_found("host/tools/a.cpp", "#include <QString>\n", "tools is not a folder of the host")

    def test_host_header_without_its_folder(self):
        message = 'host headers are included with their folder, not "ZORHostA.h"'
        self.assert_found("host/base/ZORHostA.cpp", '#include "ZORHostA.h"\n', message)

    def test_test_of_a_module_with_private_header_of_another(self):
        text = "#include <ZORSystem/ZORSysA_p.h>\n"
        self.assert_found("tests/sdk/ZORGeometry/ATest.cpp", text, "ZORSystem/ZORSysA_p.h is private to ZORSystem")

    def test_test_of_the_sdk_with_bench_or_host(self):
        name = "tests/sdk/ZORGeometry/ATest.cpp"
        self.assert_found(name, '#include "core/ZORTestA.h"\n', "tests/sdk/ must not use the bench")
        self.assert_found(name, '#include "window/ZORHostB.h"\n', "tests/sdk/ must not use the host")

    def test_tests_of_bench_and_host_do_not_see_the_other(self):
        self.assert_found("tests/bench/BTest.cpp", '#include "base/ZORHostA.h"\n', "tests/bench/ must not use the host")
        self.assert_found("tests/host/CTest.cpp", '#include "console/ZORTestB.h"\n', "tests/host/ must not use the bench")

    def test_tests_of_bench_and_host_use_public_headers(self):
        for name in ("tests/bench/BTest.cpp", "tests/host/CTest.cpp", "tests/windows/DTest.cpp", "benchmarks/X.cpp"):
            self.assert_found(name, "#include <ZORSystem/ZORSysA_p.h>\n", "ZORSystem/ZORSysA_p.h is private to ZORSystem")

    def test_paths_that_go_up(self):
        for name in ("host/base/ZORHostA.h", "bench/core/ZORTestA.h", "tools/front/Options.h", "tests/bench/BTest.cpp",
                     "sdk/ZORGeometry/ZORGeoA.cpp", "benchmarks/X.cpp"):
            self.assert_found(name, '#include "../window/ZORHostB.h"\n', "../window/ZORHostB.h leaves its folder")

    def test_headers_of_qt_in_lower_case(self):
        text = '#include <qglobal.h>\n#include <queue>\n'
        self.assert_found("sdk/ZORGeometry/plain/Run.cpp", text, "plain C++ and must not use qglobal.h", ROOMS)

    def test_exported_class_in_other_spellings(self):
        for text in ("class [[nodiscard]] ZORGEO_EXPORT A {};\n", "class\nZORGEO_EXPORT A {};\n", "template<class T> class ZORGEO_EXPORT A {};\n"):
            self.assert_found("sdk/ZORGeometry/mesh/ZORGeoMesh_p.h", text, "a private header must not export a class", ROOMS)
        self.assert_found("sdk/ZORGeometry/plain/Run.h", "struct ZORGEO_EXPORT A {};\n", "must not export a class", ROOMS)
        function = "#include <QString>\nZORGEO_EXPORT class QString Name();\n"
        self.assertEqual(0, run({**ROOMS, "sdk/ZORGeometry/mesh/ZORGeoMesh_p.h": function})[0])


if __name__ == "__main__":
    unittest.main()
