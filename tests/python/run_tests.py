#!/usr/bin/env python3
"""Runs the tests of the Python package in one process, as the other test programs do theirs: the file of results gets a
line "listed NAME" for each test before the first one runs, and "passed NAME" as each passes.

  run_tests.py [--results=FILE] [PATTERN...]
"""

import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [os.path.join(HERE, "..", "..", "python"), HERE]
sys.dont_write_bytecode = True


def tests_of(suite):
    for test in suite:
        if isinstance(test, unittest.TestSuite):
            yield from tests_of(test)
        else:
            yield test


def name_of(test):
    return f"{type(test).__name__}.{test.id().rsplit('.', 1)[1]}"


class Result(unittest.TextTestResult):
    """A test that was skipped, or that fails in a subtest, has not passed."""

    results = None

    def addSuccess(self, test):
        super().addSuccess(test)
        if self.results:
            self.results.write(f"passed {name_of(test)}\n")
            self.results.flush()


def main():
    options = [argument for argument in sys.argv[1:] if argument.startswith("--results=")]
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{pattern}*" for pattern in sys.argv[1:] if pattern not in options] or None
    suite = loader.discover(HERE, "*_test.py")
    if options:
        Result.results = open(options[0].partition("=")[2], "w", encoding="utf-8")
        Result.results.writelines(f"listed {name_of(test)}\n" for test in tests_of(suite))
        Result.results.flush()
    outcome = unittest.TextTestRunner(resultclass=Result).run(suite)
    sys.exit(0 if outcome.wasSuccessful() and outcome.testsRun and not outcome.skipped else 1)


if __name__ == "__main__":  # a process that the tests start imports this file
    main()
