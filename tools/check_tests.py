#!/usr/bin/env python3
"""Checks that tests wait for states and measure no time.

    check_tests.py <source root>

Sleep   No test sleeps: it waits for the state that it needs, with QTest::qWaitFor() or a condition variable.
Clock   No test reads a clock. A machine may be busy, so a bound on a time either fails for no reason or finds nothing;
        benchmarks/ measures speed, and the TIMEOUT of ctest ends what hangs. A clock may choose a seed.
"""
import re
import sys

from source_texts import code, cpp_files, line_of, run

SLEEP = re.compile(r"\b(sleep|sleep_for|sleep_until|msleep|usleep|nanosleep|qSleep|qWait)\s*\(")
CLOCK = re.compile(
    r"\b(?:QElapsedTimer|steady_clock|system_clock|high_resolution_clock|clock_t|CLOCKS_PER_SEC"
    r"|currentMSecsSinceEpoch|currentSecsSinceEpoch|GetThreadTime)\b"
    r"|\b(?:clock|clock_gettime|gettimeofday|getrusage|times)\s*\("
)
SEED = re.compile(r"\b\w*[sS]eed\w*\s*[=({][^;{}),]*$")  # what a clock may set without measuring anything
SCRIPT_SLEEP = re.compile(r"(^|[;&|]|\bdo|\bthen|\belse)\s*sleep\s|\btime\.sleep\b", re.MULTILINE)
SCRIPT_CLOCK = re.compile(r"\btime\.(time|monotonic|perf_counter|process_time)\b")

# Files that may read a clock, and why.
CLOCK_READERS = {
    "tests/random_user/RandomUserSession.h": "a long run lasts for the hours that its user asks for",
}


def faults(name, text, sleep, clock):
    for match in sleep.finditer(text):
        yield match.start(), "a test waits for a state instead of sleeping"
    if name not in CLOCK_READERS:
        for match in clock.finditer(text):
            if not SEED.search(text, 0, match.start()):
                yield match.start(), "a test reads no clock"


def check(root):
    for path in cpp_files(root, ("tests",)):
        text = code(path.read_text(encoding="utf-8"))
        name = str(path.relative_to(root))
        for position, message in faults(name, text, SLEEP, CLOCK):
            yield f"{name}:{line_of(text, position)}: {message}"
    for path in sorted((root / "tests").rglob("*")):
        if path.suffix in {".sh", ".py"} and path.parent != root / "tests" / "tree":
            text = path.read_text(encoding="utf-8")
            name = str(path.relative_to(root))
            for position, message in faults(name, text, SCRIPT_SLEEP, SCRIPT_CLOCK):
                yield f"{name}:{line_of(text, position)}: {message}"


if __name__ == "__main__":
    sys.exit(run(check, "tests wait for states and measure no time"))
