#!/usr/bin/env python3
"""Tests of tools/check_tests.py."""
import unittest

from checker import CheckerTest


class CheckTestsTest(CheckerTest):
    checker = "check_tests.py"
    clean = {
        "tests/sdk/ATest.cpp": "// sleep(1)\n"
        "ASSERT_TRUE(QTest::qWaitFor([] { return true; }, 1000));\n"
        'const char* name = "QElapsedTimer";\n'
        "Asleep(1);\n",
        "tests/random_user/RandomUserSession.h": "QElapsedTimer m_time;\n",
        "tests/run.sh": "echo asleep\n",
        "sdk/a.cpp": "QElapsedTimer timer; std::this_thread::sleep_for(1s);\n",
    }

    def test_clean_tree_passes(self):
        self.assertEqual((0, "tests wait for states and measure no time\n"), self.run_check({}))

    def test_sleeps(self):
        message = "tests/host/a.cpp:2: a test waits for a state instead of sleeping"
        for call in ("std::this_thread::sleep_for(1ms)", "std::this_thread::sleep_until(t)", "QThread::msleep(5)", "usleep(5)",
                     "QThread::sleep(1)", "sleep(1)", "QTest::qSleep(5)", "QTest::qWait(5)", "nanosleep(&a, &b)"):
            self.assert_found("tests/host/a.cpp", f"\n{call};\n", message)

    def test_clocks(self):
        for text in ("QElapsedTimer t;", "std::chrono::steady_clock::now();", "std::clock();", "clock_gettime(a, &b);",
                     "x = clock();", "x = clock ();", "clock_t x;", "x / CLOCKS_PER_SEC;", "gettimeofday(&a, nullptr);",
                     "EXPECT_LT(GetThreadTime() - x, 10);", "getrusage(RUSAGE_SELF, &x);", "times(&x);",
                     "x = QDateTime::currentMSecsSinceEpoch();", "x = QDateTime::currentSecsSinceEpoch();",
                     "int seed = 1; clock();", "void seed(int) { clock(); }"):
            self.assert_found("tests/support/a.h", text + "\n", "tests/support/a.h:1: a test reads no clock")

    def test_clock_may_choose_a_seed(self):
        for text in ("const auto seed = QDateTime::currentMSecsSinceEpoch();", "Random::SetSeed(\n    size_t(clock()));"):
            self.assert_passes("tests/support/a.h", text + "\n")

    def test_words_that_name_no_clock(self):
        self.assert_passes("tests/support/a.h", "EXPECT_CALL(a, b).Times(2); o_clock(); clockwise(); Budget::Clock c; int times = 2;\n")

    def test_reader_of_a_clock_must_not_sleep(self):
        self.assert_found("tests/random_user/RandomUserSession.h", "sleep(1);\n", "instead of sleeping")

    def test_scripts(self):
        for text in ("sleep 1\n", "while true; do sleep 0.1; done\n"):
            self.assert_found("tests/package/run.sh", text, "instead of sleeping")
        self.assert_found("tests/support/run.py", "import time\ntime.sleep(1)\n", "run.py:2: a test waits")
        self.assert_found("tests/support/run.py", "a = time.monotonic()\n", "reads no clock")


if __name__ == "__main__":
    unittest.main()
