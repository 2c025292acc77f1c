#!/usr/bin/env python3
"""Tests of tools/analyze.py: what it analyzes, and that it reports what the analyzers find.

The analyzers themselves are replaced by a script here, except in the test that plants a fault of each kind.
"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from checker import TOOLS, write_tree

FILES = {
    "sdk/ZORSystem/A.cpp": "int a();\n",
    "sdk/ZORSystem/A_p.h": "int a();\n",
    "sdk/ZORSystem/B.cpp": "int b();\n",
    "sdk/ZORSystem/C.cpp": "int c();\n",
    "build/generated.cpp": "int c();\n",
    "README.md": "a\n",
}
# Finds a fault in the source whose name is in the environment, alone and among others, or only among others; fails for the
# source that is named there, and does not compile the one named there after others.
ANALYZER = """#!/bin/sh
for last; do :; done
case "$last" in */unit.cpp) sources=$(sed 's/#include "\\(.*\\)"/\\1/' "$last") ;; *) sources=$last ;; esac
echo "$(basename "$0")" $(for source in $sources; do basename "$source"; done) >> "$LOG"
code=0
for source in $sources; do
  case "$source" in *"${FAULTY:-none}") echo "$source:1:2: warning: found by $(basename "$0") [${CHECK:-a-check}]"; code=1 ;; esac
  case "$source" in *"${BROKEN:-none}") echo "cannot be read" >&2; code=1 ;; esac
  [ "$source" != "$sources" ] || continue
  case "$source" in *"${FAULTY_AMONG_OTHERS:-none}") echo "$source:1:2: warning: fault [a-check]"; code=1 ;; esac
  case "$source" in *"${COLLIDING:-none}") echo "$source:1:2: error: redefinition of 'a'"; code=1 ;; esac
done
exit $code
"""


class AnalyzeTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name).resolve() / "clone"
        write_tree(self.root, FILES)
        self.write_database({})
        tools = pathlib.Path(self.folder.name) / "bin"
        tools.mkdir()
        for name in ("clang-tidy-14", "clazy-standalone"):
            (tools / name).write_text(ANALYZER)
            (tools / name).chmod(0o755)
        self.log = pathlib.Path(self.folder.name) / "log"
        self.environment = {**os.environ, "PATH": f"{tools}:{os.environ['PATH']}", "LOG": str(self.log)}
        self.git("init", "-q")
        self.commit("First")

    def write_database(self, options, more=()):
        """Writes the compile database, with additional options of sources by their names, and more sources."""
        entries = [
            {"directory": str(self.root), "file": str(self.root / name),
             "command": f"cmake -E env A=b ccache /usr/bin/c++ -Winvalid-pch -include x/cmake_pch.hxx {options.get(name, '')} "
             f"-o {name}.o -c {name}"}
            for name in (*FILES, *more) if name.endswith(".cpp")
        ]
        (self.root / "build" / "compile_commands.json").write_text(json.dumps(entries))

    def tearDown(self):
        self.folder.cleanup()

    def git(self, *arguments):
        names = ("-c", "user.name=a", "-c", "user.email=a@b")
        result = subprocess.run(["git", "-C", self.root, *names, *arguments], capture_output=True, text=True, check=True)
        return result.stdout.strip()

    def commit(self, subject):
        self.git("add", "-A", ":!build")
        self.git("commit", "-q", "--allow-empty", "-m", subject)
        return self.git("rev-parse", "HEAD")

    def analyze(self, *arguments, **environment):
        """Returns the exit code, the output, and the names of the sources that were analyzed."""
        self.log.write_text("")
        command = [sys.executable, "-B", TOOLS / "analyze.py", self.root, self.root / "build", *arguments]
        result = subprocess.run(command, capture_output=True, text=True, check=False, env={**self.environment, **environment})
        return result.returncode, result.stdout, sorted(self.log.read_text().splitlines())

    def test_every_source_but_generated_ones_by_both_analyzers(self):
        code, output, analyzed = self.analyze()
        self.assertEqual((0, "3 sources analyzed, 0 findings\n"), (code, output))
        self.assertEqual(["clang-tidy-14 A.cpp B.cpp C.cpp", "clazy-standalone A.cpp B.cpp C.cpp"], analyzed)

    def test_sources_with_other_options_are_analyzed_apart(self):
        self.write_database({"sdk/ZORSystem/B.cpp": "-DX"})
        self.assertEqual(
            ["clang-tidy-14 A.cpp C.cpp", "clang-tidy-14 B.cpp", "clazy-standalone A.cpp C.cpp", "clazy-standalone B.cpp"],
            self.analyze()[2])

    def test_findings_and_failures_are_reported(self):
        code, output, _ = self.analyze(FAULTY="A.cpp", BROKEN="B.cpp")
        self.assertEqual(1, code)
        for tool in ("clang-tidy-14", "clazy-standalone"):
            self.assertIn(f"sdk/ZORSystem/A.cpp:1:2: warning: found by {tool} [a-check]", output)
        for name in ("clang-tidy", "clazy"):
            self.assertIn(f"sdk/ZORSystem/B.cpp: {name} failed:\ncannot be read", output)
        self.assertIn("3 sources analyzed, 4 findings", output)

    def test_tests_may_connect_functions_that_refer_to_their_scope(self):
        write_tree(self.root, {"tests/sdk/ATest.cpp": "int a();\n"})
        self.write_database({}, ["tests/sdk/ATest.cpp"])
        for check in ("-Wclazy-lambda-in-connect", "-Wclazy-connect-3arg-lambda"):
            self.assertEqual(0, self.analyze(FAULTY="ATest.cpp", CHECK=check)[0])
            self.assertEqual(1, self.analyze(FAULTY="A.cpp", CHECK=check)[0])
        self.assertEqual(1, self.analyze(FAULTY="ATest.cpp")[0])

    def test_findings_among_other_sources_are_confirmed_alone(self):
        code, output, analyzed = self.analyze(FAULTY_AMONG_OTHERS="B.cpp")
        self.assertEqual((0, "3 sources analyzed, 0 findings\n"), (code, output))
        self.assertIn("clang-tidy-14 B.cpp", analyzed)

    def test_sources_that_do_not_compile_together_are_analyzed_apart(self):
        code, output, analyzed = self.analyze(COLLIDING="B.cpp")
        self.assertEqual((0, "3 sources analyzed, 0 findings\n"), (code, output))
        self.assertEqual(["clang-tidy-14 A.cpp C.cpp", "clang-tidy-14 B.cpp"], analyzed[:2])

    def test_sources_since_the_long_tests(self):
        passed = self.commit("Passed")
        write_tree(self.root, {"tools/long_passed.txt": f"{passed}\n", "sdk/ZORSystem/B.cpp": "int b2();\n"})
        self.commit("Change")
        self.assertEqual(["clang-tidy-14 B.cpp", "clazy-standalone B.cpp"], self.analyze("--since-long")[2])
        write_tree(self.root, {"sdk/ZORSystem/A_p.h": "int a2();\n"})  # not even committed
        self.assertEqual(["clang-tidy-14 A.cpp B.cpp", "clazy-standalone A.cpp B.cpp"], self.analyze("--since-long")[2])

    def test_header_without_a_source_of_its_name(self):
        write_tree(self.root, {"sdk/ZORSystem/B.cpp": '#include "files/Shared_p.h"\n', "sdk/ZORSystem/files/Shared_p.h": "\n"})
        passed = self.commit("Passed")
        write_tree(self.root, {"tools/long_passed.txt": f"{passed}\n"})
        write_tree(self.root, {"sdk/ZORSystem/files/Shared_p.h": "using namespace std;\n", "sdk/ZORSystem/Unused.h": "\n"})
        self.commit("Change")
        self.assertEqual(["clang-tidy-14 B.cpp", "clazy-standalone B.cpp"], self.analyze("--since-long")[2])

    def test_changed_checks_concern_everything(self):
        passed = self.commit("Passed")
        write_tree(self.root, {"tools/long_passed.txt": f"{passed}\n", ".clang-tidy": "Checks: '*'\n"})
        self.commit("Change")
        self.assertIn("3 sources analyzed", self.analyze("--since-long")[1])

    def test_clone_without_the_commit(self):
        write_tree(self.root, {"tools/long_passed.txt": "0123456789012345678901234567890123456789\n"})
        self.commit("Name")
        write_tree(self.root, {"sdk/ZORSystem/A.cpp": "int a3();\n"})
        self.commit("Change")
        code, output, analyzed = self.analyze("--since-long")
        self.assertEqual(0, code)
        self.assertIn("this clone lacks commit 0123456789012345678901234567890123456789", output)
        self.assertEqual(["clang-tidy-14 A.cpp", "clazy-standalone A.cpp"], analyzed)

    @unittest.skipUnless(shutil.which("clang-tidy-14"), "clang-tidy is not installed")
    def test_rules_of_clang_tidy(self):
        shutil.copy(TOOLS.parent / ".clang-tidy", self.root)
        faults = {
            "class 'a_class'": "class a_class {};\n",
            "private member 'count'": "class A { int count = 0; public: int Get() const { return count; } };\n",
            "function 'getName'": "int getName() { return 1; }\n",
            "local variable 'A_b'": "int Get() { int A_b = 1; return A_b; }\n",
            "parameter 'Count'": "int Get(int Count) { return Count; }\n",
            "bugprone-use-after-move": "#include <string>\n#include <utility>\n"
            "std::string Get(std::string a) { std::string b = std::move(a); return b + a; }\n",
            "performance-for-range-copy": "#include <string>\n#include <vector>\nunsigned long Get(const std::vector<std::string>& all)\n"
            "{ unsigned long n = 0; for (const auto a : all) n += a.size(); return n; }\n",
            "modernize-use-override": "struct A { virtual ~A() = default; virtual void Do(); };\nstruct B : A { void Do(); };\n",
        }
        for message, text in faults.items():
            write_tree(self.root, {"sdk/ZORSystem/A.cpp": text})
            command = ["clang-tidy-14", "--quiet", self.root / "sdk/ZORSystem/A.cpp", "--", "-std=c++20"]
            result = subprocess.run(command, capture_output=True, text=True, check=False)
            self.assertNotEqual(0, result.returncode, message)
            self.assertIn(message, result.stdout)


if __name__ == "__main__":
    unittest.main()
