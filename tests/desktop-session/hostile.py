# SPDX-License-Identifier: MIT
"""Shared by tests of hostile programs: attacks, and observations of our programs meanwhile."""

import contextlib
import os
import pathlib
import subprocess
import threading
import time

from desktop import TIMEOUT, wait_until
from sanitizers import REPORTS
from xclient import Client

PROGRAM = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "hostile", "hostile")
APPLICATION = "application/x-vnd.kvt-Qel"
DESKTOP = "application/x-vnd.kvt-Qel-Desktop"
IS_LONG = "QEL_LONG" in os.environ
MIB = 1 << 20


class Attack:
    """A program that runs until `stop`."""

    def __init__(self, environment, name, signature, *numbers):
        self.process = subprocess.Popen([PROGRAM, name, signature, *map(str, numbers)], env=environment, text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        if self.process.stdout.readline() != "ready\n":
            raise AssertionError(f"{name} does not begin, status {self.process.wait(TIMEOUT)}")

    def stop(self):
        """Returns its output at the end; empty the second time."""
        if self.process.stdin.closed:
            return ""
        said, _ = self.process.communicate(timeout=TIMEOUT)
        if self.process.returncode < 0:
            raise AssertionError(f"{self.process.args[1]} ended with signal {-self.process.returncode}")
        return said.strip()


def memory(pid):
    """Returns the bytes of a process that are in memory, and how many of them are its own."""
    values = {}
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:]:
        name, value = line.split()[:2]
        values[name] = int(value) * 1024
    return values["Rss:"], values["Private_Dirty:"]


def descriptors(pid):
    return len(os.listdir(f"/proc/{pid}/fd"))


def time_in_queue(pid):
    """Returns the seconds that the main thread has waited for a processor."""
    return int(pathlib.Path(f"/proc/{pid}/schedstat").read_text().split()[1]) / 1e9


class Watch:
    """Watches a process and its window ten times a second, until closed.

    Measures the longest time without a new picture by the clock, and also without the time that the main thread waited
    for a processor, so that other load on the machine does not count."""

    def __init__(self, display, pid, window):
        self.pid, self._display, self._window = pid, display, window
        self.before = self._measure()
        self.most = list(self.before)
        self.pictures = 0
        self.longest_without = self.longest_of_its_own = 0
        self._is_over = threading.Event()
        self._thread = threading.Thread(target=self._run)
        self._thread.start()

    def _measure(self):
        return (*memory(self.pid), descriptors(self.pid))

    def _run(self):
        with Client(self._display) as client:
            last, since, queued_since = None, time.monotonic(), time_in_queue(self.pid)
            while not self._is_over.wait(0.1):
                try:
                    picture = client.content(self._window)
                    measured = self._measure()
                    queued = time_in_queue(self.pid)
                except (OSError, RuntimeError):
                    return  # it has ended; other checks report that
                now = time.monotonic()
                self.longest_without = max(self.longest_without, now - since)
                self.longest_of_its_own = max(self.longest_of_its_own, now - since - (queued - queued_since))
                if picture != last:
                    self.pictures += 1
                    last, since, queued_since = picture, now, queued
                self.most = [max(pair) for pair in zip(self.most, measured)]

    def growth(self):
        """Returns the maximum growth of memory, of the process's own memory, and of the number of its descriptors."""
        return [most - before for most, before in zip(self.most, self.before)]

    def await_before(self):
        """Waits until it has no more descriptors and hardly more memory than at the beginning. A sanitizer keeps
        memory."""
        seen = []

        def is_back():
            seen[:] = self._measure()
            return seen[2] <= self.before[2] and (REPORTS or seen[1] <= self.before[1] + 2 * MIB)

        with contextlib.suppress(AssertionError):
            wait_until(is_back, "")
        return seen[1] - self.before[1], seen[2] - self.before[2]

    def close(self):
        self._is_over.set()
        self._thread.join(TIMEOUT)
