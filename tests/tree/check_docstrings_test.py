#!/usr/bin/env python3
"""Tests of tools/check_docstrings.py."""
import unittest

from checker import CheckerTest

NAME = "sdk/ZORGeometry/ZORGeoA.h"


class CheckDocstringsTest(CheckerTest):
    checker = "check_docstrings.py"
    clean = {
        "host/A.h": "/// Cuts at \\a place.\n"
        "/// \\pre \\a place lies on the curve\n"
        "/// \\param place   millimeters\n"
        "/// \\param[out] a,b  the halves\n"
        "/// \\return the number of halves\n"
        '/// \\throws ZORSysException "no \\place"\n'
        "/// \\code\n"
        "/// Cut(1);\n"
        "/// \\endcode\n"
        "int Cut(double place);\n"
        "// Ends lines with `\\r\\n`.\n"
        'const char* kText = "// \\\\unknown in a literal";\n',
    }

    def test_clean_tree_passes(self):
        self.assertEqual((0, "every command of a docstring has its place and its operand\n"), self.run_check({}))

    def test_paragraph_in_the_middle_of_a_line(self):
        for command in ("\\param a  b", "\\return nothing", "\\throws ZORSysException never", "\\pre closed", "\\code", "\\endcode"):
            name = command.split()[0]
            message = f"{NAME}:2: {name} belongs at the beginning of a line"
            self.assert_found(NAME, f"/// Cuts.\n/// It is quick. {command}\n", message)
            self.assert_found(NAME, f"/// Cuts.\nint a; ///< cut {command}\n", message)

    def test_unknown_command(self):
        self.assert_found(NAME, "/// Cuts \\p place.\n", "\\p is not a command of the project")
        self.assert_found("tests/a.cpp", "// Ends with \\n\n", "\\n is not a command of the project")

    def test_marked_identifier_is_missing(self):
        self.assert_found("tools/a.cpp", "// from \\a\n// place on\n", "the identifier that \\a marks is missing")

    def test_parameter_without_meaning_or_name(self):
        for text in ("\\param", "\\param a", "\\param a b", "\\param a, b  c", "\\param[out]  a  b"):
            self.assert_found(NAME, f"/// {text}\n", "\\param needs a name, two blanks and a meaning")

    def test_exception_without_type(self):
        self.assert_found(NAME, "/// \\throws when it fails\n", "\\throws needs a type")
        self.assert_passes(NAME, "/// \\throws std::bad_alloc\n")

    def test_result_and_condition_without_text(self):
        self.assert_found("samples/a.h", "/// \\return\n", "\\return needs a text")
        self.assert_found("benchmarks/a.h", "/// \\return  two blanks\n", "\\return needs a text")
        self.assert_found("bench/a.h", "/// \\pre\n", "\\pre needs a text")


if __name__ == "__main__":
    unittest.main()
