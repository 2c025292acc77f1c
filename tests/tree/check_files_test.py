#!/usr/bin/env python3
"""Tests of tools/check_files.py: every rule finds its violation, and a clean tree passes."""
import unittest

from checker import CheckerTest


class CheckFilesTest(CheckerTest):
    checker = "check_files.py"
    clean = {
        "sdk/ZORSystem/CMakeLists.txt": "zor_add_module(System HEADERS ZORSysA.h SOURCES ZORSysA.cpp files/ZORSysB.cpp)\n",
        "sdk/ZORSystem/ZORSysA.h": "int a();\n",
        "sdk/ZORSystem/ZORSysA.cpp": '#include "ZORSysA.h"\n#include "files/ZORSysB_p.h"\n',
        "sdk/ZORSystem/files/ZORSysB_p.h": "int b();\n",
        "sdk/ZORSystem/files/ZORSysB.cpp": '#include "ZORSysB_p.h"\n',
        "tests/sdk/ZORSystem/CMakeLists.txt": "foreach(name one two)\n  add_executable(${name} ${name}_main.cpp)\nendforeach()\n",
        "tests/sdk/ZORSystem/one_main.cpp": "int main() {}\n",
        "tests/sdk/ZORSystem/two_main.cpp": "int main() {}\n",
    }

    def test_clean_tree_passes(self):
        self.assertEqual((0, "the build and the checks see every file\n"), self.run_check({}))

    def test_unlisted_files(self):
        for name in ("sdk/ZORSystem/ZORSysC.cpp", "sdk/ZORSystem/ZORSysC.h", "sdk/ZORSystem/files/ZORSysC.cpp",
                     "tests/sdk/ZORSystem/ATest.cpp", "host/base/ZORHostA.cpp"):
            self.assert_found(name, "int x;\n", f"{name}: no CMakeLists.txt names this file")

    def test_file_that_only_a_comment_lists(self):
        lists = "zor_add_module(System HEADERS ZORSysA.h SOURCES files/ZORSysB.cpp # ZORSysA.cpp\n)\n"
        self.assert_found("sdk/ZORSystem/CMakeLists.txt", lists, "sdk/ZORSystem/ZORSysA.cpp: no CMakeLists.txt names this file")

    def test_header_without_a_user(self):
        name = "sdk/ZORSystem/files/ZORSysUnused_p.h"
        self.assert_found(name, "int x;\n", f"{name}: no file includes this header")

    def test_other_suffixes(self):
        for suffix in (".hpp", ".hxx", ".inl", ".cc", ".c"):
            self.assert_found(f"sdk/ZORSystem/files/x{suffix}", "int x;\n", f"x{suffix}: C++ is in .h and .cpp files")


if __name__ == "__main__":
    unittest.main()
