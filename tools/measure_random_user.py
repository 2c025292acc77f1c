"""The memory of the random user over three quarters of an hour. Its program is in the build with tests."""
import re
import statistics
import subprocess

PARTS = 5
LINE = re.compile(r"(?P<actions>\d+) actions, (?P<seconds>\d+) s, (?P<resident>[\d.]+) MB resident, (?P<used>[\d.]+) MB in use")


def summarize(output):
    """Returns the figures of each fifth of the lines by "part<n> <field>"."""
    lines = [{name: float(value) for name, value in match.groupdict().items()} for match in LINE.finditer(output)]
    if len(lines) < PARTS:
        raise RuntimeError(f"the random user printed its memory only {len(lines)} times:\n{output[-2000:]}")
    values = {}
    for part in range(PARTS):
        chosen = lines[len(lines) * part // PARTS : len(lines) * (part + 1) // PARTS]
        resident = [line["resident"] for line in chosen]
        used = [line["used"] for line in chosen]
        values |= {
            f"part{part + 1} actions": chosen[-1]["actions"], f"part{part + 1} minutes": chosen[-1]["seconds"] / 60,
            f"part{part + 1} resident_least_MB": min(resident), f"part{part + 1} resident_most_MB": max(resident),
            f"part{part + 1} least_MB": min(used), f"part{part + 1} mean_MB": statistics.mean(used),
            f"part{part + 1} most_MB": max(used),
        }
    return values


def run_random_user(root, _, is_quick):
    build = root / "build" / "ci"
    subprocess.run(["cmake", "--preset", "ci"], cwd=root, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", build, "--target", "random_user"], cwd=root, check=True)
    command = [build / "bin" / "random_user", "--seeds", "7704-7704", "--hours", "0.02" if is_quick else "0.75", "--memory-every",
               "20" if is_quick else "1000"]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    return summarize(result.stdout + result.stderr)


RUNNERS = {"run_random_user": run_random_user}
