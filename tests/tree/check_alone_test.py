#!/usr/bin/env python3
"""Tests of tools/check_alone.py: includes that a precompiled header or an earlier include hides are found."""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

from checker import TOOLS, write_tree

CLEAN = {
    "sdk/ZORSystem/CMakeLists.txt": "zor_add_module(System LAYER 0 QT Core\n HEADERS ZORSysA.h\n SOURCES ZORSysA.cpp)",
    "sdk/ZORSystem/ZORSysA.h": "#pragma once\nstd::string verified_elsewhere();\n",
    "sdk/ZORSystem/ZORSysA.cpp": '#include "files/ZORSysB_p.h"\nint a() { return b(); }\n',
    "sdk/ZORSystem/files/ZORSysB_p.h": "#pragma once\ninline int b() { return VALUE; }\n",
}


def run(changes):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        build = root / "build"
        write_tree(root, {**CLEAN, **changes, "build/cmake_pch.hxx": "#include <string>\n"})
        command = f"/usr/bin/ccache /usr/bin/c++ -Werror -DVALUE=1 -Winvalid-pch -include {build}/cmake_pch.hxx -o a.o -c "
        entries = [
            {"directory": str(build), "file": str(path), "command": command + str(path)} for path in sorted(root.glob("sdk/*/*.cpp"))
        ]
        (build / "compile_commands.json").write_text(json.dumps(entries))
        result = subprocess.run([sys.executable, TOOLS / "check_alone.py", root, build], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout + result.stderr


class CheckAloneTest(unittest.TestCase):
    def test_clean_tree_passes(self):
        self.assertEqual((0, "2 files compiled alone, 0 failed\n"), run({}))

    def test_source_that_needs_the_precompiled_header(self):
        code, output = run({"sdk/ZORSystem/ZORSysC.cpp": "std::string c() { return {}; }\n"})
        self.assertEqual(1, code)
        self.assertIn("sdk/ZORSystem/ZORSysC.cpp does not compile alone:", output)
        self.assertIn("'string' in namespace 'std'", output.replace("‘", "'").replace("’", "'"))
        self.assertIn("3 files compiled alone, 1 failed", output)

    def test_header_that_needs_what_its_source_includes_before(self):
        code, output = run({
            "sdk/ZORSystem/files/ZORSysB_p.h": "#pragma once\ninline std::string b() { return {}; }\n",
            "sdk/ZORSystem/ZORSysA.cpp": '#include <string>\n#include "files/ZORSysB_p.h"\n',
        })
        self.assertEqual(1, code)
        self.assertIn("sdk/ZORSystem/files/ZORSysB_p.h does not compile alone:", output)
        self.assertIn("2 files compiled alone, 1 failed", output)

    def test_header_that_no_source_includes_is_skipped(self):
        self.assertEqual(0, run({"sdk/ZORSystem/files/ZORSysUnused_p.h": "nonsense\n"})[0])


if __name__ == "__main__":
    unittest.main()
