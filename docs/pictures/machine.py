# SPDX-License-Identifier: MIT
"""A machine for pictures: its processors and its memory are busy in the same way each time."""

import os
import pathlib
import random
import re
import shutil
import threading
import time

TURN = 0.03
TICKS = 100
"""In which the kernel counts a second."""


class Machine:
    """A copy of a recorded machine in a folder, whose figures advance until it is closed."""

    def __init__(self, recorded, folder):
        self.folder = pathlib.Path(folder)
        shutil.copytree(recorded, self.folder, dirs_exist_ok=True)
        self._stat = (self.folder / "proc/stat").read_text()
        self._memory = (self.folder / "proc/meminfo").read_text()
        count = len(re.findall("^cpu[0-9]", self._stat, re.MULTILINE))
        # All figures have as many digits as they will ever need.
        self._ticks = [50_000_000.0] * count
        self._shares = [0.1] * count
        self._aims = [0.1] * count
        self._available = self._aim = 20_000_000
        self._random = random.Random(7)
        self._over = threading.Event()
        self._write()
        self._thread = threading.Thread(target=self._run)
        self._thread.start()

    def close(self):
        self._over.set()
        self._thread.join()

    def _run(self):
        before = time.monotonic()
        while not self._over.wait(TURN):
            now = time.monotonic()
            self._go_on(now - before)
            before = now
            self._write()

    def _go_on(self, seconds):
        """Moves each processor and the memory towards a load that changes now and then."""
        for index, aim in enumerate(self._aims):
            if self._random.random() < seconds / 2.5:
                self._aims[index] = self._random.choice((0.03, 0.05, 0.12, 0.3, 0.6, 0.9))
            self._shares[index] += (aim - self._shares[index]) * min(1, 3 * seconds)
            self._ticks[index] += max(0, self._shares[index] + self._random.gauss(0, 0.05)) * seconds * TICKS
        if self._random.random() < seconds / 6:
            self._aim = self._random.uniform(0.35, 0.75) * 32_774_196
        self._available += (self._aim - self._available) * min(1, 0.6 * seconds)

    def _write(self):
        def line(name, ticks):
            return f"{name} {ticks:.0f} 0 0 99000000 0 0 0 0 0 0"

        lines = [line("cpu ", sum(self._ticks))] + [line(f"cpu{index}", ticks) for index, ticks in enumerate(self._ticks)]
        rest = [other for other in self._stat.splitlines() if not other.startswith("cpu")]
        self._replace("stat", "\n".join(lines + rest) + "\n")
        self._replace("meminfo", re.sub("MemAvailable:.*", f"MemAvailable:   {self._available:8.0f} kB", self._memory))

    def _replace(self, name, text):
        """Writes in place, because the program keeps the files open; the length stays the same."""
        file = os.open(self.folder / "proc" / name, os.O_WRONLY)
        os.pwrite(file, text.encode(), 0)
        os.close(file)
