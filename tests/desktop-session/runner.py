# SPDX-License-Identifier: MIT
"""Runs tests of the real programs, as unittest does. A test also fails if a sanitizer reports one of these programs
meanwhile.

    runner.py FOLDER [TEST...]      all tests of the folder when none is named; QEL_PROGRAM names the program
    runner.py -jN FOLDER            all tests of the folder, N modules at a time; each prints its results when it ends
"""

import concurrent.futures
import pathlib
import subprocess
import sys
import time
import unittest

from sanitizers import REPORTS  # before all tests: they pass their environment on
from desktop import wait_until


class Result(unittest.TextTestResult):
    def startTest(self, test):
        self._started = time.monotonic()
        super().startTest(test)

    def _fail_when_reported(self, test):
        text = REPORTS.take() if REPORTS else ""
        if text:
            try:
                raise AssertionError("a sanitizer reports:\n" + text)
            except AssertionError:
                self.addFailure(test, sys.exc_info())
        return bool(text)

    def addSuccess(self, test):
        if not self._fail_when_reported(test):
            self.stream.write(f"{time.monotonic() - self._started:.1f} s, ")
            super().addSuccess(test)

    def stopTest(self, test):
        self._fail_when_reported(test)
        super().stopTest(test)


def await_end():
    """Waits for processes that may still write a report after their test."""
    wait_until(lambda: not REPORTS.writers(), "the end of all programs")


def run_module(folder, module):
    run = subprocess.run([sys.executable, __file__, folder, module], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT, text=True, errors="replace", check=False)
    print(f"{module}\n{run.stdout}", flush=True)
    return run.returncode == 0


def run_side_by_side(jobs, folder):
    """Modules share no desktop, and wait most of their time."""
    # Slow modules should not run last; the size of a module is a fair guess.
    files = sorted(pathlib.Path(folder).glob("test_*.py"), key=lambda file: file.stat().st_size, reverse=True)
    modules = [file.stem for file in files]
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        succeeded = list(pool.map(lambda module: run_module(folder, module), modules))
    failed = [module for module, success in zip(modules, succeeded) if not success]
    print(f"{len(modules)} modules, failed: {', '.join(failed) or 'none'}")
    return 1 if failed or not modules else 0


def main():
    if sys.argv[1].startswith("-j"):
        return run_side_by_side(int(sys.argv[1][2:]), sys.argv[2])
    folder, *names = sys.argv[1:]
    sys.path.insert(0, folder)
    loader = unittest.defaultTestLoader
    tests = loader.loadTestsFromNames(names) if names else loader.discover(folder)
    if REPORTS:
        tests.addTest(unittest.FunctionTestCase(await_end, description="All programs have ended"))
    result = unittest.TextTestRunner(verbosity=2, resultclass=Result).run(tests)
    return 0 if result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
