"""Measurements of zornest as a program: densities of the test inputs, memory, and how soon it answers.

Each runner takes the source root, the build directory and whether the run is a quick one, and returns values by
"<benchmark> <field>".
"""
import json
import math
import os
import pathlib
import random
import re
import signal
import statistics
import subprocess
import tempfile
import time

SEEDS = (1, 2, 3)
STRIPS = ("swim", "shirts", "trousers", "albano", "mao", "jakobs1", "shapes1", "fu", "dighe1", "dighe2")
LONG_STRIPS = ("swim", "shirts", "trousers", "albano")
KITS = {
    "panel": ("plykit_windowpanel", {}),
    "panel_no_flip": ("plykit_windowpanel", {"flippable": False}),
    "panel_no_holes": ("plykit_windowpanel", {"holes": False}),
    "ribs": ("plykit_ribs_BestMix", {}),
    "ribs_flip": ("plykit_ribs_BestMix", {"flippable": True}),
}


def data_folder(root):
    """Returns the folder of the real inputs, which lie outside the project."""
    return pathlib.Path(os.environ.get("ZOR_TEST_DATA", root.parent / "shared" / "data")) / "nesting"


def nest(build, instance, *options):
    """Returns what zornest prints. Exit code 1 says that parts are left over."""
    command = [build / "bin" / "zornest", instance, *map(str, options)]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    if result.returncode not in (0, 1):
        raise RuntimeError(f"zornest failed with {result.returncode}: {result.stderr}")
    return result.stdout


def density_of(output):
    return float(re.search(r"density ([\d.]+)", output)[1])


def cost_of(output):
    return float(re.search(r"^cost ([\d.]+)", output, re.MULTILINE)[1])


def run_strips(root, build, is_quick):
    """Measures densities after a minute of processor time, for each seed."""
    values = {}
    for strip in STRIPS[:1] if is_quick else STRIPS:
        found = [
            density_of(nest(build, data_folder(root) / "strip" / f"{strip}.json", "--cpu", 1 if is_quick else 60, "--seed", seed))
            for seed in SEEDS
        ]
        values |= {f"{strip}/60 seed{seed}": density for seed, density in zip(SEEDS, found)}
        values[f"{strip}/60 median"] = statistics.median(found)
    return values


def run_long_strips(root, build, is_quick):
    """Measures densities after forty minutes of processor time on two threads."""
    values = {}
    for strip in LONG_STRIPS[:1] if is_quick else LONG_STRIPS:
        options = ("--cpu", 2 if is_quick else 2400, "--threads", 2, "--seed", 1)
        output = nest(build, data_folder(root) / "strip" / f"{strip}.json", *options)
        values[f"{strip}/2400 seed1"] = density_of(output)
    return values


def change_kit(kit, change):
    """Changes what may be turned over, and closes holes."""
    for item in kit["items"]:
        if "flippable" in change:
            item["flippable"] = change["flippable"]
        if not change.get("holes", True):
            item["shape"]["contours"] = item["shape"]["contours"][:1]
    return kit


def run_kits(root, build, is_quick):
    """Measures the cost of kits after 20 s of processor time, for each seed."""
    values = {}
    with tempfile.TemporaryDirectory() as folder:
        for name, (source, change) in list(KITS.items())[: 1 if is_quick else None]:
            kit = json.loads((data_folder(root) / "synthetic" / f"{source}.json").read_text(encoding="utf-8"))
            instance = pathlib.Path(folder) / f"{name}.json"
            instance.write_text(json.dumps(change_kit(kit, change)), encoding="utf-8")
            found = [cost_of(nest(build, instance, "--cpu", 1 if is_quick else 20, "--seed", seed)) for seed in SEEDS]
            values |= {f"{name}/20 seed{seed}": cost for seed, cost in zip(SEEDS, found)}
            values[f"{name}/20 mean"] = statistics.mean(found)
    return values


def write_roll(path, count):
    """Writes a job of 20 types of wavy outlines with 60 corners on a roll, always the same."""
    numbers = random.Random(1)
    items = []
    for number in range(20):
        radius, waves, phase = numbers.uniform(50, 150), numbers.randint(2, 5), numbers.uniform(0, 6)
        ring = []
        for i in range(60):
            angle = math.tau * i / 60
            size = radius * (1 + 0.2 * math.cos(waves * angle + phase))
            ring.append([size * math.cos(angle), size * math.sin(angle)])
        items.append({
            "id": number, "name": f"type {number}", "demand": count // 20, "orientation_deg": 0, "grain90": False,
            "grain180": True, "grain270": False, "max_deviation_deg": 0, "deviation_increment_deg": 0, "mirrored": False,
            "flippable": False, "priority": 0, "shape": {"type": "simple_polygon", "data": ring},
        })
    roll = {"id": 0, "name": "roll", "quantity": None, "width": 1500, "length": None, "cost": 1.0,
            "trims": {"left": 0, "right": 0, "top": 0, "bottom": 0}}
    params = {"item_separation": 0.0, "frame_width": 0.0, "usage_rule": "AsListed", "stack_size": 1, "allow_overproduction": False}
    path.write_text(json.dumps({"name": path.stem, "items": items, "packagings": [roll], "params": params}), encoding="utf-8")
    return path


def run_to_end(command, interrupt_after=None):
    """Returns the seconds from the start, or from the interrupt, to the end of a program, and its memory in MB."""
    with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
        start = time.monotonic()
        if interrupt_after is not None:
            time.sleep(interrupt_after)
            process.send_signal(signal.SIGINT)
            start = time.monotonic()
        _, status, usage = os.wait4(process.pid, 0)
        seconds = time.monotonic() - start
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in (0, 1):
        raise RuntimeError(f"zornest failed with {process.returncode}: {' '.join(map(str, command))}")
    return seconds, usage.ru_maxrss * 1024 / 1e6


def run_zornest(_, build, is_quick):
    """Measures memory, the answer to an interrupt, and the time beyond a limit."""
    values = {}
    limit = 2 if is_quick else 5
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        program = build / "bin" / "zornest"
        for count in (200, 2000):
            roll = write_roll(folder / f"{count}.json", count)
            for threads in (1, 2):
                command = [program, roll, "--time", str(limit), "--threads", str(threads)]
                values[f"memory/{count}/{threads} MB"] = run_to_end(command)[1]
        roll = write_roll(folder / "1000.json", 1000)
        command = [program, roll, "--time", "600"]
        files = ["--html", folder / "report.html", "--png", folder, "--out", folder / "layout.json"]
        repeats = 1 if is_quick else 5
        for name, more in (("interrupt", []), ("interrupt_with_files", files)):
            values[f"{name}/1000 real"] = max(run_to_end([*command, *more], limit)[0] for _ in range(repeats))
        over = (run_to_end([program, roll, "--time", str(limit)])[0] - limit for _ in range(repeats))
        values["overrun/1000 real"] = max(max(over), 0.0)
    return values


RUNNERS = {
    "run_kits": run_kits, "run_long_strips": run_long_strips, "run_strips": run_strips, "run_zornest": run_zornest,
}
