#!/usr/bin/env python3
"""Tests of tools/check_abi.py, with a small library that is compiled for each case."""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from checker import TOOLS, write_tree

PASSES = "the libraries offer what they offered before\n"
HEADER = """#pragma once
#define EXPORT __attribute__((visibility("default")))
enum class ZORMode { One = 1, Two = 2 };
struct ZORPart { int first = 0; double second = 0; };
template<class T> struct ZORList { T* begin = nullptr; };
class EXPORT ZORBase { public: ZORBase(); virtual ~ZORBase(); };
class EXPORT ZORPlant : public ZORBase
{
public:
    enum Kind { Low, High };
    ZORPlant();
    ~ZORPlant() override;
    virtual void Grow();
    virtual int Count() const;
    void SetMode(ZORMode mode);
    int GetKind(Kind kind) const;
    ZORList<ZORPart> GetParts() const;
    int GetInline() const { return 7; }
    static int s_number;
protected:
    void Help();
    bool Check(bool passes) const { return passes || Fail(); }
private:
    void Hide();
    bool Fail() const;
    class Private;
    Private* d;
};
EXPORT void ZorWater(const ZORPlant& plant, int amount);
EXPORT bool operator==(const ZORPlant& a, const ZORPlant& b);
EXPORT unsigned long qHash(const ZORPlant& plant, unsigned long seed);
"""
PRIVATE_HEADER = """#pragma once
#include "ZORPlant.h"
class ZORPlant::Private { public: int Age() const; int age = 0; };
"""
SOURCE = """#include "ZORPlant_p.h"
int ZORPlant::s_number = 0;
ZORBase::ZORBase() {}
ZORBase::~ZORBase() {}
ZORPlant::ZORPlant() : d(new Private) {}
ZORPlant::~ZORPlant() { delete d; }
void ZORPlant::Grow() {}
int ZORPlant::Count() const { return GetInline(); }
void ZORPlant::SetMode(ZORMode) {}
int ZORPlant::GetKind(Kind kind) const { return kind; }
ZORList<ZORPart> ZORPlant::GetParts() const { return {}; }
void ZORPlant::Help() {}
void ZORPlant::Hide() {}
bool ZORPlant::Fail() const { return false; }
int ZORPlant::Private::Age() const { return age; }
bool operator==(const ZORPlant& a, const ZORPlant& b) { return &a == &b; }
unsigned long qHash(const ZORPlant&, unsigned long seed) { return seed; }
void ZorWater(const ZORPlant&, int) {}
"""
LAST_LINE = SOURCE.splitlines()[-1]
FILES = {
    "sdk/ZORPlant/CMakeLists.txt": "zor_add_module(Plant LAYER 0)\n",
    "sdk/ZORPlugin/CMakeLists.txt": "zor_add_plugin(Plugin LAYER 7)\n",
    "sdk/ZORPlant/ZORPlant.h": HEADER,
    "sdk/ZORPlant/ZORPlant_p.h": PRIVATE_HEADER,
    "sdk/ZORPlant/ZORPlant.cpp": SOURCE,
}


def check(root, *options):
    """Returns the exit code and the output of the check."""
    command = [sys.executable, "-B", TOOLS / "check_abi.py", root, *options]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    return result.returncode, result.stdout + result.stderr


def build(root, *flags):
    library = root / "build/lib/libZORPlant.so"
    library.parent.mkdir(parents=True, exist_ok=True)
    command = ["g++", "-std=c++20", "-fvisibility=hidden", "-fPIC", "-shared", "-o", library, *(flags or ("-g",))]
    subprocess.run([*command, root / "sdk/ZORPlant/ZORPlant.cpp"], check=True)


@unittest.skipUnless(shutil.which("abidiff"), "abigail-tools is not installed")
class BreaksTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        write_tree(cls.root, FILES)
        build(cls.root)
        code, output = check(cls.root, cls.root / "build", "--update")
        assert code == 0, output
        cls.baseline = cls.root / "sdk/abi/ZORPlant.abi.xz"

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def check_with(self, *replacements, flags=()):
        """Checks the library with (before, after) replaced in all of its files."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            files = dict(FILES)
            for before, after in replacements:
                self.assertTrue(any(before in text for text in files.values()), before)
                files = {name: text.replace(before, after) for name, text in files.items()}
            write_tree(root, files)
            (root / "sdk/abi").mkdir()
            shutil.copy(self.baseline, root / "sdk/abi")
            build(root, *flags)
            return check(root, root / "build")

    def assert_break(self, message, *replacements):
        code, output = self.check_with(*replacements)
        self.assertEqual(1, code, output)
        self.assertIn("ZORPlant:\n", output)
        self.assertIn(message, output)
        self.assertIn("./test.sh abi --update", output)

    def assert_passes(self, *replacements):
        self.assertEqual((0, PASSES), self.check_with(*replacements))

    def test_additions(self):
        self.assert_passes()
        self.assert_passes(
            ("    void SetMode(", "    void Added();\n    void SetMode("),
            ("void ZORPlant::SetMode", "void ZORPlant::Added() {}\nvoid ZORPlant::SetMode"))
        self.assert_passes(
            ("EXPORT void Zor", "class EXPORT ZORNew { public: ZORNew(); int number; };\nEXPORT void Zor"),
            (LAST_LINE, "ZORNew::ZORNew() {}\n" + LAST_LINE))
        self.assert_passes(("Low, High", "Low, High, Highest"))
        self.assert_passes(("int amount", "int liters"))

    def test_private_parts(self):
        self.assert_passes(("int age = 0;", "double more = 0; int age = 0;"))
        self.assert_passes(("    void Hide();\n", ""), ("void ZORPlant::Hide() {}\n", ""))
        self.assert_passes(("int Age() const; ", ""), ("int ZORPlant::Private::Age() const { return age; }\n", ""))
        self.assert_passes(("return GetInline();", "return 7;"))

    def test_removed_and_changed_functions(self):
        removed = "[D] 'method void ZORPlant::SetMode(ZORMode)'"
        self.assert_break(removed, ("    void SetMode(ZORMode mode);\n", ""), ("void ZORPlant::SetMode(ZORMode) {}\n", ""))
        self.assert_break(removed, ("SetMode(ZORMode", "SetMode(const ZORMode&"))
        removed = "[D] 'method void ZORPlant::Help()'"
        self.assert_break(removed, ("    void Help();\n", ""), ("void ZORPlant::Help() {}\n", ""))
        self.assert_break("[D] 'function void ZorWater(const ZORPlant&, int)'", ("ZorWater", "ZorPour"))
        self.assert_break(
            "return type changed", ("int GetKind", "long GetKind"), ("int ZORPlant::GetKind", "long ZORPlant::GetKind"))

    def test_removed_operators_and_functions_for_containers(self):
        self.assert_break(
            "[D] 'function bool operator==(const ZORPlant&, const ZORPlant&)'",
            ("EXPORT bool operator==(const ZORPlant& a, const ZORPlant& b);\n", ""),
            ("bool operator==(const ZORPlant& a, const ZORPlant& b) { return &a == &b; }\n", ""))
        self.assert_break("qHash", ("qHash", "qMash"))

    def test_private_functions_that_inline_functions_call(self):
        self.assert_break("ZORPlant::Fail() const", ("Fail()", "Report()"))

    def test_removed_and_changed_variables(self):
        line = "int ZORPlant::s_number = 0;\n"
        self.assert_break("[D] 'static int ZORPlant::s_number'", ("    static int s_number;\n", ""), (line, ""))
        self.assert_break("type of variable", ("int s_number", "float s_number"), (line, line.replace("int", "float")))

    def test_changed_layouts(self):
        self.assert_break("1 data member insertion", ("double second = 0;", "int between = 0; double second = 0;"))
        self.assert_break("1 data member deletion", ("double second = 0;", ""))
        self.assert_break("type of 'int first' changed", ("int first = 0;", "float first = 0;"))
        member = "    Private* d;"
        self.assert_break("type size changed", (member, member + "\n    int more = 0;"))
        head = "class EXPORT ZORPlant : public ZORBase"
        self.assert_break("base class", (head, f"struct ZOROther {{ int o; }};\n{head}, public ZOROther"))

    def test_changed_virtual_functions(self):
        body = ("void ZORPlant::Grow() {}", "void ZORPlant::Grow() {}\nvoid ZORPlant::Bloom() {}")
        for place in ("    virtual int Count", "    void SetMode("):  # in the middle, at the end
            added = (place, "    virtual void Bloom();\n" + place)
            self.assert_break("1 member function insertion:\n", added, body)
        self.assert_break("Count() const", ("virtual int Count", "int Count"))

    def test_changed_enumerators(self):
        self.assert_break("'ZORMode::Two' from value '2' to '3'", ("Two = 2", "Two = 3"))
        self.assert_break("'ZORPlant::Kind::High' from value '1' to '2'", ("Low, High", "Low, Middle, High"))
        self.assert_break("1 enumerator deletion", ("Low, High", "Low"))

    def test_unusable_libraries(self):
        code, output = self.check_with(flags=("-O1",))
        self.assertEqual((2, True), (code, "no debug information, please build it with -g" in output), output)
        code, output = check(self.root, self.root / "elsewhere")
        self.assertEqual((2, True), (code, "libZORPlant.so is missing" in output), output)

    def test_libraries_without_baseline_and_baselines_without_library(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            write_tree(root, FILES)
            build(root)
            code, output = check(root, root / "build")
            self.assertEqual((1, True), (code, "ZORPlant: the library has no baseline" in output), output)
            (root / "sdk/abi").mkdir()
            for name in ("ZORPlant", "ZORFormer"):
                shutil.copy(self.baseline, root / f"sdk/abi/{name}.abi.xz")
            self.assertIn("ZORFormer: the library is gone", check(root, root / "build")[1])
            check(root, root / "build", "--update")
            self.assertEqual((0, PASSES), check(root, root / "build"))
            self.assertEqual(["ZORPlant.abi.xz"], [path.name for path in (root / "sdk/abi").iterdir()])

    def test_update_writes_only_what_differs(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            write_tree(root, FILES)
            write_tree(root, {"sdk/ZORPlant/ZORPlant_p.h": PRIVATE_HEADER.replace("int age", "long more = 0; int age")})
            (root / "sdk/abi").mkdir()
            shutil.copy(self.baseline, root / "sdk/abi")
            build(root)
            check(root, root / "build", "--update")
            self.assertEqual(self.baseline.read_bytes(), (root / "sdk/abi/ZORPlant.abi.xz").read_bytes())
            for name, text in (("ZORPlant.h", HEADER), ("ZORPlant.cpp", SOURCE)):
                write_tree(root, {f"sdk/ZORPlant/{name}": text.replace("GetKind(Kind", "GetSort(Kind")})
            build(root)
            self.assertEqual(1, check(root, root / "build")[0])
            check(root, root / "build", "--update")
            self.assertEqual((0, PASSES), check(root, root / "build"))


class HistoryTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.root = pathlib.Path(self.folder.name)
        self.write("CHANGELOG.md", "# Changelog\n")
        self.assertEqual((0, PASSES), check(self.root, "--history"))  # without a repository
        self.git("init", "-q")
        self.write("sdk/abi/ZORPlant.abi.xz", "first")
        self.commit()

    def git(self, *arguments):
        identity = ("-c", "user.name=Tester", "-c", "user.email=tester@example.com", "-c", "core.hooksPath=/dev/null")
        return subprocess.run(["git", "-C", self.root, *identity, *arguments], check=True, capture_output=True)

    def write(self, name, text):
        write_tree(self.root, {name: text})

    def commit(self):
        self.git("add", "-A")
        self.git("commit", "-q", "-m", "Change")

    def assert_found(self, what):
        code, output = check(self.root, "--history")
        self.assertEqual(1, code, output)
        self.assertRegex(output, f"^{what} changes sdk/abi and adds nothing to CHANGELOG.md\\.")

    def assert_passes(self):
        self.assertEqual((0, PASSES), check(self.root, "--history"))

    def test_first_and_further_baselines_need_no_line(self):
        self.assert_passes()
        self.write("sdk/abi/ZORRoot.abi.xz", "first")
        self.assert_passes()
        self.commit()
        self.assert_passes()

    def test_change_with_a_line(self):
        self.write("sdk/abi/ZORPlant.abi.xz", "second")
        self.write("CHANGELOG.md", "# Changelog\n\n- Plant: other.\n")
        self.assert_passes()
        self.commit()
        self.assert_passes()

    def test_change_without_a_line(self):
        self.write("sdk/abi/ZORPlant.abi.xz", "second")
        self.assert_found("The working tree")
        self.git("add", "-A")
        self.assert_found("The working tree")
        self.commit()
        self.assert_found("Commit [0-9a-f]{9}")
        change = self.git("rev-parse", "HEAD").stdout.decode()[:9]
        self.write("CHANGELOG.md", "# Changelog\n\n- Plant: other, said too late.\n")
        self.commit()
        self.assert_found("Commit [0-9a-f]{9}")
        self.write("CHANGELOG.md", f"# Changelog\n\n- Plant: other, said too late ({change}).\n")
        self.commit()
        self.assert_passes()

    def test_change_with_an_empty_line(self):
        self.write("sdk/abi/ZORPlant.abi.xz", "second")
        self.write("CHANGELOG.md", "# Changelog\n\n \n")
        self.assert_found("The working tree")

    def test_removed_baselines_and_removed_lines(self):
        (self.root / "sdk/abi/ZORPlant.abi.xz").unlink()
        self.write("CHANGELOG.md", "")
        self.assert_found("The working tree")
        self.commit()
        self.assert_found("Commit [0-9a-f]{9}")


if __name__ == "__main__":
    unittest.main()
