#!/usr/bin/env python3
"""Tests of tools/check_threads.py."""
import pathlib
import unittest

from checker import CheckerTest

PAGE = (pathlib.Path(__file__).resolve().parents[2] / "docs" / "architecture.md").read_text(encoding="utf-8")
MODULE = "sdk/ZORSystem/"
MISSING = 'does not end with "Thread safety: ..."'


class CheckThreadsTest(CheckerTest):
    checker = "check_threads.py"
    clean = {
        "docs/architecture.md": PAGE,
        MODULE + "CMakeLists.txt": "# A module.\nzor_add_module(System LAYER 0)\n",
        MODULE + "ZORSysA.h": "class ZORSysB;\nstruct ZORSysC;\nenum class ZORSysD { A };\nextern struct ZORSysC c;\n"
        "/// Does this.\n/// Thread safety: thread-safe.\nclass ZORSYSTEM_EXPORT ZORSysA final : public QObject\n"
        "{\n    struct Nested {\n        int a;\n    };\n    class Private;\n};\n"
        "namespace zor {\n/// Thread safety: main thread only.\ntemplate<class T>\nstruct Inner : Base<class Other>\n{\n};\n"
        "template<class T>\nclass Inner<T*>;\nstruct ZORSysC Make(struct ZORSysC* c);\n}\n"
        "#define MAKE(X) class X { }\n// class Comment {\n",
        MODULE + "ZORSysA_p.h": "class Private\n{\n};\n",
        "sdk/ZORPlugin/CMakeLists.txt": "zor_add_plugin(Plugin LAYER 7)\n",
        "sdk/ZORPlugin/ZORPlugin.h": "class ZORPlugin\n{\n};\n",
    }

    def test_clean_tree_passes(self):
        self.assertEqual((0, "every public class says which threads may use it\n"), self.run_check({}))

    def test_missing_sentence(self):
        for text in ("class ZORSYSTEM_EXPORT X\n{\n};\n", "/// Does this.\nclass X {};\n", "\n\nstruct X : A, B\n{\n};\n", "union X { int a; };\n",
                     "/// Thread safety: thread-safe.\n\nclass X\n{\n};\n", "/// Thread safety: thread-safe.\n/// More.\nclass X\n{\n};\n",
                     "// Thread safety: thread-safe.\nclass X\n{\n};\n", "namespace n::m {\nclass X\n{\n};\n}\n",
                     "inline int F()\n{\n    return 1;\n}\nclass X {};\n", "/// Thread safety: thread-safe\nclass X {};\n",
                     "template<class T>\nstruct X\n{\n};\n", "struct X::Y\n{\n};\nstruct X\n{\n};\n"):
            self.assert_found(MODULE + "b.h", text, MISSING)

    def test_place_and_name(self):
        text = "/// Thread safety: thread-safe.\nclass A\n{\n};\n\nclass SDK_EXPORT B final : public A\n{\n};\n"
        self.assert_found(MODULE + "b.h", text, f"{MODULE}b.h:6: the docstring of B {MISSING}")

    def test_spellings(self):
        for spelling in ("threadsafe", "reentrant", "Main thread only", "thread-safe mostly"):
            text = f"/// Thread safety: {spelling}.\nclass X\n{{\n}};\n"
            self.assert_found(MODULE + "b.h", text, f'"{spelling}" is not one of the spellings')

    def test_page_and_check_hold_the_same_spellings(self):
        message = "docs/architecture.md: its spellings of thread safety are not those"
        self.assert_found("docs/architecture.md", PAGE.replace("| `Thread safety: main thread only.` |", "| main |"), message)
        self.assert_found("docs/architecture.md", PAGE + "\n| `Thread safety: often.` | Hope. |\n", message)


if __name__ == "__main__":
    unittest.main()
