#!/usr/bin/env python3
"""Runs the benchmarks of tools/measurements.toml and fills their tables in docs/performance.md.

    measure.py <source root> <build directory> [options] [TABLE or SECTION...]

Without names, all tables are measured that are not on request. The results are written as JSON after each table, beside those
of tables that are not measured this time. A table of the page is the text between "<!-- measure: NAME -->" and
"<!-- end: NAME -->".
"""
import argparse
import json
import math
import os
import pathlib
import platform
import re
import subprocess
import sys
import tempfile
import time
import tomllib

import measure_random_user
import measure_zornest

TIME_UNITS = {"s": 1, "ms": 1e-3, "us": 1e-6, "ns": 1e-9}
CELL = re.compile(r"^(?!= )(?P<key>\S+ (?P<field>\S+))(?: / (?P<divisor>\d+))?$")
# What Google Benchmark adds to a name: how it measures, not what.
MEASURE = re.compile(r"/(iterations:\d+|repeats:\d+|process_time|real_time|manual_time)")
LONGEST_RUN = 1200  # seconds of a program, which would hang otherwise
RUNNERS = {**measure_zornest.RUNNERS, **measure_random_user.RUNNERS}


class MeasureError(Exception):
    """The message is for the user."""


def run_text(*command):
    """Returns what a command prints, or nothing where it fails."""
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout.strip()


# Tables


def command_of(table):
    """Returns the command that the page names."""
    if "runner" in table:
        return f"tools/measure.sh {table['name']}"
    words = [f"build/benchmark/bin/{table['program']}"]
    if "filter" in table:
        words.append(f"--benchmark_filter='{table['filter']}'")
    return " ".join([*words, f"--benchmark_repetitions={table.get('repetitions', 3)}"])


def read_tables(path):
    """Returns the tables of a file by their names."""
    tables = {table["name"]: table for table in tomllib.loads(path.read_text(encoding="utf-8"))["table"]}
    for table in tables.values():
        table.setdefault("units", [""] * len(table["columns"]))
        for row in table["rows"]:
            if not len(row) == len(table["columns"]) == len(table["units"]):
                raise MeasureError(f"{table['name']}: the row {row[0]!r} has not as many cells as there are columns")
            for cell in row[1:]:
                if cell and not cell.startswith("= ") and not CELL.match(cell):
                    raise MeasureError(f"{table['name']}: {cell!r} is not a cell: <benchmark> <field> [/ <number>]")
    return tables


def select(tables, names, is_quick):
    """Returns the tables to measure."""
    if not names:
        return [
            table for table in tables.values()
            if not table.get("on_request") and ("quick" in table or not is_quick)
        ]
    for name in names:
        if not any(name in (table, table.split(".")[0]) for table in tables):
            raise MeasureError(f"neither a table nor a section is called {name!r}: {', '.join(tables)}")
    return [table for name, table in tables.items() if name in names or name.split(".")[0] in names]


def cells_of(table):
    """Yields label, column, unit, key, field and divisor of each measured cell."""
    for row in table["rows"]:
        for column, unit, cell in zip(table["columns"][1:], table["units"][1:], row[1:]):
            if match := CELL.match(cell):
                yield row[0], column, unit, match["key"], match["field"], int(match["divisor"] or 1)


# Benchmarks


def read_benchmarks(document):
    """Returns the values of a JSON report by "<benchmark> <field>": times in seconds, counters as they are."""
    best = {}
    for run in document["benchmarks"]:
        if run.get("error_occurred"):
            raise MeasureError(f"{run['name']}: {run['error_message']}")
        if run["run_type"] == "iteration":
            name = MEASURE.sub("", run["name"])
            best.setdefault(name, []).append(run)
    values = {}
    for name, runs in best.items():
        for field, key in (("cpu", "cpu_time"), ("real", "real_time")):
            values[f"{name} {field}"] = min(run[key] * TIME_UNITS[run["time_unit"]] for run in runs)
        fastest = min(runs, key=lambda run: run["cpu_time"])
        values |= {f"{name} {key}": value for key, value in fastest.items() if isinstance(value, (int, float))}
    return values


def run_benchmarks(table, build, is_quick):
    pattern = table.get("quick" if is_quick else "filter", table.get("filter", "."))
    repetitions = 1 if is_quick else table.get("repetitions", 3)
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "QT_HASH_SEED": "0"}
    with tempfile.TemporaryDirectory() as folder:
        report = pathlib.Path(folder) / "report.json"
        command = [
            build / "bin" / table["program"], f"--benchmark_filter={pattern}", f"--benchmark_repetitions={repetitions}",
            f"--benchmark_out={report}", "--benchmark_out_format=json", *(["--benchmark_min_time=0.01"] if is_quick else []),
        ]
        result = subprocess.run(command, capture_output=True, text=True, check=False, env=environment, timeout=LONGEST_RUN)
        if result.returncode or not report.exists():
            raise MeasureError(f"{table['program']} failed:\n{result.stdout}{result.stderr}")
        return read_benchmarks(json.loads(report.read_text(encoding="utf-8")))


def measure(table, root, build, is_quick):
    """Returns the values of the cells of a table by their keys."""
    if "runner" in table:
        measured = RUNNERS[table["runner"]](root, build, is_quick)
    else:
        measured = run_benchmarks(table, build, is_quick)
    keys = [key for _, _, _, key, _, _ in cells_of(table)]
    missing = [key for key in keys if key not in measured]
    if missing and not is_quick:
        raise MeasureError(f"{table['name']}: {table.get('program', 'zornest')} does not measure {missing[0]!r}")
    return {key: measured[key] for key in keys if key in measured}


# The page


def rounded(value):
    """Returns three digits, or all before the point."""
    return f"{value:,.0f}" if value >= 100 else f"{value:.3g}"


def formatted(value, unit, field):
    """Returns a value as a cell shows it: bare in a column with a unit, else with its own one."""
    if unit in TIME_UNITS:
        return rounded(value / TIME_UNITS[unit])
    if unit == "count":
        return f"{value:,.0f}"
    if unit == "%":
        return f"{value:.2f}"
    if unit:
        return rounded(value)
    if field in ("cpu", "real"):
        own = next((name for name, size in TIME_UNITS.items() if value >= size), "ns")
        return f"{rounded(value / TIME_UNITS[own])} {own}"
    own = next((f" {name}" for name in ("MiB", "MB") if field.endswith(name)), "")
    return rounded(value) + own


def text_of(table, values):
    """Returns command and table as the page shows them."""
    lines = [f"    {command_of(table)}", ""]
    lines.append("| " + " | ".join(table["columns"]) + " |")
    lines.append("|---" + "|---:" * (len(table["columns"]) - 1) + "|")
    for row in table["rows"]:
        cells = [row[0]]
        for unit, cell in zip(table["units"][1:], row[1:]):
            if match := CELL.match(cell):
                value = values.get(match["key"])
                cell = "" if value is None else formatted(value / int(match["divisor"] or 1), unit, match["field"])
            cells.append(cell.removeprefix("= "))
        lines.append("| " + " | ".join(cells) + " |")
    return "\n".join(line.replace("|  |", "| |").replace("|  |", "| |") for line in lines)


def fill(page, name, text):
    """Returns the page with the text of a table replaced."""
    block = re.compile(rf"(<!-- measure: {re.escape(name)} -->\n).*?(<!-- end: {re.escape(name)} -->)", re.DOTALL)
    filled, count = block.subn(lambda match: f"{match[1]}\n{text}\n\n{match[2]}", page)
    if count != 1:
        raise MeasureError(f"the page has {count} tables {name} between <!-- measure: {name} --> and <!-- end: {name} -->")
    return filled


def machine_text(results, tables):
    """Returns where and when the tables were measured that are not on request."""
    runs = [run for name, run in results["tables"].items() if name in tables and not tables[name].get("on_request")]
    dates = sorted({run["date"] for run in runs})
    commits = sorted({run["commit"] for run in runs})
    return (
        f"{results['machine']}. Measured {' to '.join(dict.fromkeys((dates[0], dates[-1])))} at "
        f"{', '.join(commits)} in {sum(run['seconds'] for run in runs) / 60:.0f} minutes; "
        f"load before the first table {runs[0]['load']:.1f}."  # later ones follow benchmarks that load the machine
    )


def write_page(path, results, tables, names):
    page = path.read_text(encoding="utf-8")
    for name in names:
        page = fill(page, name, text_of(tables[name], results["tables"][name]["values"]))
    if any(name in tables and not tables[name].get("on_request") for name in results["tables"]):
        page = fill(page, "machine", machine_text(results, tables))
    path.write_text(page, encoding="utf-8")


# Comparison


def kind_of(unit, field):
    """Returns what a larger value means: 1 worse, -1 better, 0 neither."""
    if unit == "%" or field in ("evaluations", "nodes/s"):
        return -1
    return int(unit in TIME_UNITS or unit == "cost" or field in ("cpu", "real") or field.endswith(("MB", "MiB")))


def compare(old, new, tables, threshold):
    """Returns how many figures both results have, and a line for each one that is worse by the threshold or gone.

    From nothing to something that the table shows is infinitely worse, or better.
    """
    count, lines = 0, []
    for name, run in new["tables"].items():
        before = old["tables"].get(name, {}).get("values", {})
        for label, column, unit, key, field, divisor in cells_of(tables.get(name, {"rows": []})):
            kind, figure = kind_of(unit, field), f"{name}: {label}, {column or 'figure'}"
            if key not in before:
                continue
            if key not in run["values"]:
                lines.append(f"{figure}: not measured any more")
                continue
            count += 1
            values = [before[key] / divisor, run["values"][key] / divisor]
            texts = [formatted(value, unit, field) for value in values]
            if kind < 0:
                values.reverse()
            ratio = 1 if kind == 0 or texts[0] == texts[1] else math.inf if values[0] == 0 else values[1] / values[0]
            if ratio > threshold:
                lines.append(f"{figure}: {texts[0]} -> {texts[1]}, worse by a factor of {ratio:.2f}")
    return count, lines


def print_comparison(old, new, tables, threshold):
    """Prints what is worse. Returns whether something is."""
    count, lines = compare(old, new, tables, threshold)
    if count == 0 and not lines:
        raise MeasureError("the results have no figure in common with those to compare with")
    print("\n".join(lines) or f"none of {count} figures is worse by a factor of {threshold}")
    return bool(lines)


# The run


def describe_machine():
    info = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8")
    model = re.search(r"model name\s*: (.*)", info)
    return f"{os.cpu_count()} cores of {model[1] if model else platform.machine()}, {platform.system()} {platform.release()}"


def read_results(path):
    try:
        return json.loads(path.read_text(encoding="utf-8"))
    except (OSError, ValueError) as error:
        raise MeasureError(f"cannot read the results in {path}: {error}") from error


def measure_tables(chosen, arguments, results):
    """Measures tables, each of which is written when it is measured. Returns those that could be measured."""
    commit = run_text("git", "-C", str(arguments.root), "rev-parse", "--short=10", "HEAD") or "unknown"
    results["machine"] = describe_machine()
    measured = []
    for table in chosen:
        load, start = os.getloadavg()[0], time.monotonic()
        try:
            values = measure(table, arguments.root, arguments.build, arguments.quick)
        except (MeasureError, OSError, RuntimeError, subprocess.SubprocessError) as error:
            print(f"{table['name']}: {error}", file=sys.stderr, flush=True)
            continue
        measured.append(table)
        results["tables"][table["name"]] = {
            "date": time.strftime("%Y-%m-%d"), "commit": commit, "load": round(load, 2),
            "seconds": round(time.monotonic() - start, 1), "values": values,
        }
        print(f"{table['name']}: {time.monotonic() - start:.0f} s, {len(values)} figures", flush=True)
        arguments.json.parent.mkdir(parents=True, exist_ok=True)
        arguments.json.write_text(json.dumps(results, indent=1) + "\n", encoding="utf-8")
    return measured


def missing_benchmarks(tables, build):
    """Yields what is wrong with the names of benchmarks in tables."""
    for program in sorted({table["program"] for table in tables.values() if "program" in table}):
        listed = run_text(build / "bin" / program, "--benchmark_list_tests").splitlines()
        for table in tables.values():
            if table.get("program") != program:
                continue
            patterns = [table.get("filter", "."), *([table["quick"]] if "quick" in table else [])]
            keys = {key.split()[0] for _, _, _, key, _, _ in cells_of(table)}
            matching = {MEASURE.sub("", name) for name in listed if re.search(patterns[0], name)}
            yield from (f"{table['name']}: {program} has not {key} among those of the filter" for key in sorted(keys - matching))
            if not any(re.search(patterns[-1], name) for name in listed):
                yield f"{table['name']}: no benchmark matches {patterns[-1]}"


def run(arguments):
    tables = read_tables(arguments.tables)
    if arguments.check:
        faults = list(missing_benchmarks(tables, arguments.build))
        print("\n".join(faults) or f"{len(tables)} tables name benchmarks that exist")
        return bool(faults)
    chosen = [] if arguments.no_run else select(tables, arguments.names, arguments.quick)
    old = read_results(arguments.compare) if arguments.compare else None
    results = read_results(arguments.json) if arguments.json.exists() else {"machine": "", "tables": {}}
    measured = measure_tables(chosen, arguments, results)
    if arguments.docs and str(arguments.docs) != "none":
        names = [name for name in results["tables"] if name in tables]
        if not arguments.no_run:
            names = [table["name"] for table in measured]
        write_page(arguments.docs, results, tables, names)
    if len(measured) < len(chosen):
        raise MeasureError(f"{len(chosen) - len(measured)} of {len(chosen)} tables could not be measured")
    if old:
        names = results["tables"] if arguments.no_run else [table["name"] for table in measured]
        return print_comparison(old, {"tables": {name: results["tables"][name] for name in names}}, tables, arguments.threshold)
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("names", nargs="*")
    parser.add_argument("--quick", action="store_true", help="small sizes and short times")
    parser.add_argument("--json", type=pathlib.Path, help="the results; measured.json in the build directory unless given")
    parser.add_argument("--docs", type=pathlib.Path, help="the page to fill, or none; docs/performance.md unless given")
    parser.add_argument("--tables", type=pathlib.Path, help="the tables; tools/measurements.toml unless given")
    parser.add_argument("--compare", type=pathlib.Path, metavar="OLD.json", help="print what is worse than in these results")
    parser.add_argument("--threshold", type=float, default=1.25, help="the factor from which on it is worse; 1.25 unless given")
    parser.add_argument("--no-run", action="store_true", help="measure nothing: fill and compare with the results that exist")
    parser.add_argument("--check", action="store_true", help="only find out whether the benchmarks of all tables exist")
    arguments = parser.parse_intermixed_args()
    root = arguments.root = arguments.root.resolve()
    arguments.build = arguments.build.resolve()
    arguments.json = arguments.json or arguments.build / ("measured-quick.json" if arguments.quick else "measured.json")
    arguments.docs = arguments.docs or (None if arguments.quick else root / "docs" / "performance.md")
    arguments.tables = arguments.tables or root / "tools" / "measurements.toml"
    try:
        return run(arguments)
    except MeasureError as error:
        print(error, file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
