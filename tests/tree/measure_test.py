#!/usr/bin/env python3
"""Tests of tools/measure.py: what it measures, what it writes into the page, and what it finds slower. A script stands in
for the benchmark program. The tables of the project are compared with its page."""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

from checker import TOOLS, write_tree

sys.path.insert(0, str(TOOLS))
import measure  # noqa: E402

PROJECT = TOOLS.parent
TABLES = """
[[table]]
name = "stl.load"
program = "stl_benchmarks"
filter = "Load|Walk"
quick = "Walk"
columns = ["", "ms", "peak MiB", "each", "target"]
units = ["", "ms", "MiB", "", ""]
rows = [
  ["load", "Load/Binary cpu", "Load/Binary peak_MiB", "Load/Binary cpu / 1000", "= 1,500"],
  ["walk", "Walk real", "", "", ""],
]
[[table]]
name = "stl.rates"
program = "stl_benchmarks"
repetitions = 1
columns = ["", "figure"]
rows = [["judged", "Judge evaluations"]]
[[table]]
name = "long.densities"
program = "stl_benchmarks"
on_request = true
columns = ["", "density"]
units = ["", "%"]
rows = [["swim", "Swim density"]]
"""
PAGE = """# Performance
<!-- measure: machine -->
<!-- end: machine -->
Before.
<!-- measure: stl.load -->
An old table.
<!-- end: stl.load -->
Between.
<!-- measure: stl.rates -->

<!-- end: stl.rates -->
<!-- measure: long.densities -->
Old densities.
<!-- end: long.densities -->
After.
"""
# Prints the report that lies beside it, and notes how it was called.
PROGRAM = """#!/bin/sh
here=$(dirname "$0")
echo "$@" >> "$here/calls"
for argument; do
  case "$argument" in
    --benchmark_out=*) cp "$here/report.json" "${argument#*=}" ;;
    --benchmark_list_tests) echo "Load/Binary/iterations:1"; echo "Walk/real_time"; echo "Judge"; echo "Swim" ;;
  esac
done
"""


def entry(name, cpu, real=1.0, unit="ms", **more):
    return {"name": name, "run_type": "iteration", "cpu_time": cpu, "real_time": real, "time_unit": unit, **more}


class MeasureTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name)
        write_tree(self.root, {"tools/measurements.toml": TABLES, "docs/performance.md": PAGE, "bin/stl_benchmarks": PROGRAM})
        (self.root / "bin/stl_benchmarks").chmod(0o755)
        self.report(120)

    def tearDown(self):
        self.folder.cleanup()

    def report(self, milliseconds, **more):
        entries = [
            entry("Load/Binary/iterations:1", milliseconds, peak_MiB=80.25), entry("Load/Binary/iterations:1", 250.0, peak_MiB=99.0),
            entry("Walk/real_time", 7.0, 3_283_000.0, "us"), entry("Judge", 1.0, evaluations=1_530_000.4),
            entry("Swim", 1.0, density=75.326), {"name": "Walk_mean", "run_type": "aggregate"},
        ]
        entries[0] |= more
        (self.root / "bin/report.json").write_text(json.dumps({"benchmarks": entries}))

    def measure(self, *arguments):
        command = [sys.executable, "-B", TOOLS / "measure.py", self.root, self.root, *arguments]
        result = subprocess.run(command, capture_output=True, text=True, check=False, env={**os.environ, "LC_ALL": "C"})
        return result.returncode, result.stdout + result.stderr

    def page(self):
        return (self.root / "docs/performance.md").read_text()

    def calls(self):
        return (self.root / "bin/calls").read_text().splitlines()

    def test_tables_and_their_commands_replace_the_old_ones(self):
        self.assertEqual(0, self.measure()[0])
        page = self.page()
        self.assertIn("""<!-- measure: stl.load -->

    build/benchmark/bin/stl_benchmarks --benchmark_filter='Load|Walk' --benchmark_repetitions=3

| | ms | peak MiB | each | target |
|---|---:|---:|---:|---:|
| load | 120 | 80.2 | 120 us | 1,500 |
| walk | 3,283 | | | |

<!-- end: stl.load -->
Between.
""", page)
        self.assertIn("| judged | 1,530,000 |", page)
        self.assertNotIn("An old table.", page)
        self.assertIn("Old densities.", page)
        self.assertIn("Before.", page)
        self.assertTrue(page.endswith("After.\n"))
        self.assertRegex(page, r"cores of .*\. Measured \d{4}-\d\d-\d\d at .* in \d+ minutes; load before the first table \d")

    def test_tables_are_measured_one_by_one(self):
        self.assertEqual(0, self.measure("stl.rates")[0])
        self.assertEqual(1, len(self.calls()))
        self.assertIn("An old table.", self.page())
        self.assertEqual(0, self.measure("stl.load")[0])
        results = json.loads((self.root / "measured.json").read_text())
        self.assertEqual(["stl.load", "stl.rates"], sorted(results["tables"]))
        self.assertEqual(0.12, results["tables"]["stl.load"]["values"]["Load/Binary cpu"])

    def test_tables_on_request_are_named(self):
        self.assertEqual(0, self.measure("long")[0])
        self.assertIn("| swim | 75.33 |", self.page())
        self.assertEqual(2, self.measure("short")[0])

    def test_trial_runs_leave_the_page_as_it_is(self):
        self.assertEqual(0, self.measure("--quick")[0])
        self.assertEqual(PAGE, self.page())
        self.assertFalse((self.root / "measured.json").exists())
        self.assertEqual(1, len(self.calls()))
        self.assertIn("--benchmark_filter=Walk --benchmark_repetitions=1", self.calls()[0])

    def test_what_is_slower_is_reported(self):
        self.measure("stl")
        old = self.root / "old.json"
        (self.root / "measured.json").rename(old)
        self.report(119)
        self.assertEqual((0, "none of 5 figures is worse by a factor of 1.25\n"),
                         (lambda code, text: (code, text[text.index("none of"):]))(*self.measure("stl", "--compare", old)))
        self.report(240)
        code, output = self.measure("stl", "--compare", old)
        self.assertEqual(1, code)
        self.assertIn("stl.load: load, ms: 120 -> 240, worse by a factor of 2.00", output)
        self.assertIn("stl.load: load, each: 120 us -> 240 us, worse by a factor of 2.00", output)
        self.assertNotIn("walk", output)
        code, output = self.measure("--no-run", "--compare", old, "--threshold", "2.5")
        self.assertEqual(0, code)

    def test_smaller_rates_and_densities_are_worse(self):
        tables = measure.read_tables(self.root / "tools/measurements.toml")
        old = {"tables": {"stl.rates": {"values": {"Judge evaluations": 200.0}}, "long.densities": {"values": {"Swim density": 75.0}}}}
        new = {"tables": {"stl.rates": {"values": {"Judge evaluations": 100.0}}, "long.densities": {"values": {"Swim density": 76.0}}}}
        self.assertEqual((2, ["stl.rates: judged, figure: 200 -> 100, worse by a factor of 2.00"]),
                         measure.compare(old, new, tables, 1.001))

    def test_comparisons_without_a_common_figure_fail(self):
        self.measure("stl.load")
        code, output = self.measure("--no-run", "--compare", self.root / "mistyped.json")
        self.assertEqual((2, True), (code, "cannot read the results in" in output), output)
        write_tree(self.root, {"old.json": json.dumps({"tables": {"stl.former": {"values": {"Load": 1.0}}}})})
        code, output = self.measure("--no-run", "--compare", self.root / "old.json")
        self.assertEqual((2, True), (code, "no figure in common" in output), output)
        write_tree(self.root, {"old.json": "no results"})
        self.assertEqual(2, self.measure("--no-run", "--compare", self.root / "old.json")[0])

    def test_figures_that_were_nothing_or_are_gone(self):
        tables = measure.read_tables(self.root / "tools/measurements.toml")
        label, _, _, key, _, _ = next(measure.cells_of(tables["stl.load"]))
        old, new = ({"tables": {"stl.load": {"values": values}}} for values in ({key: 0.0}, {key: 3e9}))
        self.assertIn("worse by a factor of", measure.compare(old, new, tables, 1.25)[1][0])
        count, lines = measure.compare(new, {"tables": {"stl.load": {"values": {}}}}, tables, 1.25)
        self.assertEqual(0, count)
        self.assertTrue(lines and all(re.fullmatch(f"stl.load: {label}, .*: not measured any more", line) for line in lines), lines)

    def test_failures_are_reported(self):
        self.report(1, error_occurred=True, error_message="the file cannot be read")
        code, output = self.measure("stl.load", "stl.rates")
        self.assertEqual(2, code)
        self.assertIn("stl.load: Load/Binary/iterations:1: the file cannot be read\n", output)
        self.assertIn("2 of 2 tables could not be measured", output)
        write_tree(self.root, {"bin/stl_benchmarks": "#!/bin/sh\necho broken >&2\nexit 3\n"})
        code, output = self.measure("stl.load")
        self.assertEqual(2, code)
        self.assertIn("stl_benchmarks failed:\nbroken", output)

    def test_a_table_that_fails_does_not_keep_others_from_being_measured(self):
        write_tree(self.root, {"bin/other_benchmarks": "#!/bin/sh\nexit 3\n", "tools/measurements.toml": TABLES.replace(
            'program = "stl_benchmarks"', 'program = "other_benchmarks"', 1)})
        (self.root / "bin/other_benchmarks").chmod(0o755)
        code, output = self.measure()
        self.assertEqual(2, code)
        self.assertIn("1 of 2 tables could not be measured", output)
        self.assertIn("An old table.", self.page())
        self.assertIn("| judged | 1,530,000 |", self.page())

    def test_benchmarks_of_tables_exist(self):
        self.assertEqual((0, "3 tables name benchmarks that exist\n"), self.measure("--check"))
        write_tree(self.root, {"tools/measurements.toml": TABLES.replace("Walk real", "Wander real").replace('quick = "Walk"', 'quick = "X"')})
        code, output = self.measure("--check")
        self.assertEqual(1, code)
        self.assertIn("stl.load: stl_benchmarks has not Wander among those of the filter", output)
        self.assertIn("stl.load: no benchmark matches X", output)

    def test_times_have_three_digits_and_a_unit(self):
        texts = [measure.formatted(value, "", "cpu") for value in (4.5e-9, 0.0, 6.66e-6, 0.1, 0.9994, 1.0, 123.4)]
        self.assertEqual(["4.5 ns", "0 ns", "6.66 us", "100 ms", "999 ms", "1 s", "123 s"], texts)

    def test_memory_of_the_random_user_in_five_parts(self):
        lines = "".join(
            f"seed 1: {1000 * i} actions, {60 * i} s, {100 + i}.0 MB resident, {20 + i}.5 MB in use; 9 threads\n" for i in range(1, 11))
        values = measure.measure_random_user.summarize(lines)
        self.assertEqual((4000, 4, 103, 104), tuple(
            values[f"part2 {field}"] for field in ("actions", "minutes", "resident_least_MB", "resident_most_MB")))
        self.assertEqual((29.5, 30, 30.5), tuple(values[f"part5 {field}_MB"] for field in ("least", "mean", "most")))

    def test_the_page_of_the_project_has_every_table(self):
        tables = measure.read_tables(PROJECT / "tools/measurements.toml")
        page = (PROJECT / "docs/performance.md").read_text(encoding="utf-8")
        self.assertEqual(sorted(["machine", *tables]), sorted(re.findall(r"^<!-- measure: (\S+) -->$", page, re.MULTILINE)))
        for name, table in tables.items():
            page = measure.fill(page, name, "")
            self.assertIn(measure.command_of(table).split()[0], ("tools/measure.sh", f"build/benchmark/bin/{table.get('program')}"))
            if "runner" in table:
                self.assertIn(table["runner"], measure.RUNNERS)
        # Only the comparison with a library that is rarely installed is filled by hand.
        self.assertEqual(1, len(re.findall(r"^\|---", page, re.MULTILINE)))


if __name__ == "__main__":
    unittest.main()
