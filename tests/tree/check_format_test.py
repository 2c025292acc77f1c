#!/usr/bin/env python3
"""Tests of tools/check_format.sh, run on a tree with a copy of it."""
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from checker import TOOLS, write_tree

CLEAN = {
    "sdk/ZORSystem/a.h": "int a();\n",
    "tools/check_a.py": "print(1)\n",
    "tests/run.sh": "if true; then echo a; fi\n",
}
FOLDERS = ("sdk", "bench", "host", "tools", "tests", "samples", "examples", "benchmarks")


class CheckFormatTest(unittest.TestCase):
    def run_check(self, changes, *arguments):
        """Returns the exit code, the messages, and the text of each file of changes afterwards."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            write_tree(root, {**CLEAN, **changes})
            shutil.copy(TOOLS / "check_format.sh", root / "tools")
            shutil.copy(TOOLS.parent / ".clang-format", root)
            command = [root / "tools" / "check_format.sh", *arguments]
            result = subprocess.run(command, capture_output=True, text=True, check=False)
            return result.returncode, result.stderr, [(root / name).read_text() for name in changes]

    def test_clean_tree_passes(self):
        self.assertEqual((0, "", []), self.run_check({}))

    def test_layout_in_every_folder(self):
        for folder in FOLDERS:
            for suffix in ("h", "cpp"):
                name = f"{folder}/x/a.{suffix}"
                code, messages, _ = self.run_check({name: "int  a( );\n"})
                self.assertEqual(1, code, name)
                self.assertIn(name, messages)

    def test_layout_is_applied(self):
        self.assertEqual((0, "", ["int a();\n"]), self.run_check({"host/a.h": "int  a( );\n"}, "--fix"))

    def test_length_of_sources(self):
        for suffix in ("h", "cpp"):
            name = f"tests/x/a.{suffix}"
            self.assertEqual(0, self.run_check({name: "int a();\n" * 400})[0])
            code, messages, _ = self.run_check({name: "int a();\n" * 401, "tests/x/b.h": "int b();\n"})
            self.assertEqual(1, code)
            self.assertEqual(f"{name}: more than 400 lines; split it by what it is about\n", messages)

    def test_syntax_of_python(self):
        code, messages, _ = self.run_check({"samples/a.py": "def a(:\n", "tools/b.py": "print(2)\n"})
        self.assertEqual(1, code)
        self.assertIn("samples/a.py", messages)

    def test_syntax_of_shell_scripts(self):
        for name in ("run.sh", "tests/x/run.sh"):
            code, messages, _ = self.run_check({name: "if true; then\n"})
            self.assertEqual(1, code)
            self.assertIn("run.sh", messages)


if __name__ == "__main__":
    unittest.main()
