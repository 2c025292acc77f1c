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
    "host/ZORHostA.cpp": "#include <ZORSystem/ZORSysA.h>\n",
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
        self.assertEqual((0, "2 modules, bench and host include only what they may\n"), run({}))

    def assert_found(self, name, text, message):
        code, output = run({name: text})
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

    def test_folder_in_a_module_is_plain(self):
        solver = {"sdk/ZORGeometry/solver/Run.h": "#include <vector>\n", "sdk/ZORGeometry/solver/Run.cpp": '#include "Run.h"\n'}
        self.assertEqual(0, run({**solver, "sdk/ZORGeometry/a.cpp": '#include "solver/Run.h"\n'})[0])
        for text in ("#include <QString>\n", "#include <ZORSystem/ZORSysA.h>\n"):
            self.assert_found("sdk/ZORGeometry/solver/Run.cpp", text, "plain C++ and must not use")
        self.assert_found("sdk/ZORGeometry/solver/Run.cpp", '#include "ZORGeoA.h"\n', "a file of the same folder, not ZORGeoA.h")
        code, output = run({**solver, "sdk/ZORGeometry/ZORGeoA.h": '#include "solver/Run.h"\n'})
        self.assertEqual(1, code)
        self.assertIn("a public header must not show solver/Run.h", output)

    def test_undeclared_module(self):
        self.assert_found("sdk/ZORSystem/a.cpp", "#include <ZORGeometry/ZORGeoA.h>\n", "ZORSystem does not depend on ZORGeometry")

    def test_undeclared_module_by_quotes(self):
        self.assert_found("sdk/ZORSystem/a.cpp", '#include "ZORGeometry/ZORGeoA.h"\n', "a quoted include names a file")

    def test_private_header_of_another_module(self):
        self.assert_found("sdk/ZORGeometry/b.cpp", "#include <ZORSystem/ZORSysA_p.h>\n", "is private to ZORSystem")

    def test_public_header_that_shows_an_implementation_library(self):
        self.assert_found("sdk/ZORSystem/ZORSysA.h", "#include <Inventor/SoDB.h>\n", "must not show Inventor/SoDB.h")

    def test_bench_folder_that_sees_its_sister(self):
        self.assert_found("bench/console/ZORTestB.cpp", '#include "nesting/ZORTestC.h"\n', "console/ must not see nesting/")

    def test_bench_that_uses_a_private_header(self):
        self.assert_found("bench/core/ZORTestA.h", "#include <ZORSystem/ZORSysA_p.h>\n", "is not a public header")

    def test_bench_that_uses_the_host(self):
        self.assert_found("bench/core/ZORTestA.h", '#include "ZORHostA.h"\n', "must not use the host")

    def test_host_that_uses_the_bench(self):
        self.assert_found("host/ZORHostA.cpp", '#include "core/ZORTestA.h"\n', "the host must not use the bench")


if __name__ == "__main__":
    unittest.main()
