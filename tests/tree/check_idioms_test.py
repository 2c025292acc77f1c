#!/usr/bin/env python3
"""Tests of tools/check_idioms.py."""
import unittest

from checker import CheckerTest


class CheckIdiomsTest(CheckerTest):
    checker = "check_idioms.py"
    clean = {
        "sdk/ZORSystem/a.cpp": '// Not M_PI, not %1.arg(a).arg(b).\nconst auto text = "M_PI";\n'
        "auto both = QString(format).arg(Name(a), b.arg(c));\n"
        'auto raw = R"(x.arg(a).arg(b))";\n'
        "auto joined = first.arg(a) + second.arg(b).simplified();\n",
    }

    def test_clean_tree_passes(self):
        self.assertEqual((0, "the sources use the spellings of the project\n"), self.run_check({}))

    def test_pi_of_the_c_library(self):
        for folder in ("sdk", "bench", "host", "tools", "tests", "samples", "examples", "benchmarks"):
            self.assert_found(f"{folder}/x/a.cpp", "\n\ndouble a = M_PI / 2;\n", f"{folder}/x/a.cpp:3: std::numbers::pi instead of M_PI")
        self.assert_found("host/a.h", "double a = M_PI_2;\n", "instead of M_PI_2")
        self.assert_found("host/a.h", "double a = std::acos(-1.0);\n", "instead of acos(-1.0)")
        self.assert_found("host/a.h", "double a = 3.14159265;\n", "instead of 3.14159265")
        self.assert_passes("host/a.h", "double a = 13.1415, b = acos(-0.5);\n")

    def test_placeholders_within_arguments(self):
        self.assert_passes("bench/a.cpp", "auto t = F(u.arg(a), v.arg(b)) + w.arg(c).size(); G(t.arg(a)); H(t.arg(b));\n")

    def test_chained_placeholders(self):
        message = "bench/a.cpp:2: one .arg() with all values"
        for text in ("t.arg(a).arg(b);", "t->arg(a).arg(b);", "t.arg(F(a, (b)))\n    .arg(b);", "t.arg(a).simplified(c.arg(d) .arg(e));",
                     't.arg("(").arg(1);', "t.arg(')').arg(1);", "t.arg(a /* ) */).arg(2);", "(t.arg(a)).arg(b);", "t.arg(a).trimmed().arg(b);"):
            self.assert_found("bench/a.cpp", f"\nauto t = {text}\n", message)


if __name__ == "__main__":
    unittest.main()
