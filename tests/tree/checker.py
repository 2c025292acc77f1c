"""Base of the tests of the checks in tools/: runs a check over a small tree of files."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"


def write_tree(folder, files):
    for name, text in files.items():
        path = pathlib.Path(folder) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")


class CheckerTest(unittest.TestCase):
    checker = ""  # file name in tools/
    clean = {}  # files without a fault

    def run_check(self, changes):
        """Returns the exit code and the output for the clean files with some of them replaced or added."""
        with tempfile.TemporaryDirectory() as folder:
            write_tree(folder, {**self.clean, **changes})
            command = [sys.executable, TOOLS / self.checker, folder]
            result = subprocess.run(command, capture_output=True, text=True, check=False)
            return result.returncode, result.stdout

    def assert_found(self, name, text, message):
        code, output = self.run_check({name: text})
        self.assertEqual(1, code, output)
        self.assertIn(message, output)

    def assert_passes(self, name, text):
        code, output = self.run_check({name: text})
        self.assertEqual(0, code, output)
