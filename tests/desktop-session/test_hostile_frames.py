# SPDX-License-Identifier: MIT
"""Sends both programs frames that none of ours would send, made by changing real ones at random.

    QEL_FRAMES=NUMBER   how many each program has to read; tests/long/run uses ten million
    QEL_SEED=NUMBER     the first seed; each start of the program takes the next one
"""

import contextlib
import os
import pathlib
import re
import select
import subprocess
import time
import unittest

from charts import STORE
from desktop import SLOWNESS, TIMEOUT, wait_until
from hostile import APPLICATION, DESKTOP, MIB, PROGRAM, Attack, memory
from replicants import HOST_STORE, ReplicantsTest

FRAMES = int(os.environ.get("QEL_FRAMES", 5000))
SEED = int(os.environ.get("QEL_SEED", 1))
FOLDER = pathlib.Path(__file__).resolve().parent.parent / "data/frames"
IS_TOLD = FRAMES > 10_000
FRAMES_PER_START = 500_000
"""Limited, because the frames delete charts and open more and more windows."""
SILENCE = 120
"""A program that reads no frame for this many seconds is stuck."""


class HostileFrames(ReplicantsTest):
    """Three charts in the window, and, in tests that attack the host, three on the desktop."""

    def arrange(self):
        maker = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "long", "store_of_charts")
        subprocess.run([maker, "3", "200000", self.config / STORE, "desktop", self.config / HOST_STORE], check=True)

    def open(self):
        """Opens nothing before a test knows which of the two it needs."""

    def begin_application(self):
        self.arrange()
        (self.config / HOST_STORE).unlink()
        super().open()
        return self.program.process

    def begin_host(self):
        self.arrange()
        process = self.start_host()
        self.replicant(3)
        return process

    def report(self, text):
        if IS_TOLD:
            print(f"\n    {time.strftime('%H:%M:%S')} {text}", end="", flush=True)

    def attack(self, begin, signature, recorded):
        """Attacks until enough frames have been read. Some frames ask the program to end, and it does; then it is
        started again."""
        read, turn = 0, 0
        while read < FRAMES:
            process = begin()
            wanted = min(FRAMES - read, FRAMES_PER_START)
            sent = self.send(process, signature, recorded, wanted, SEED + turn)
            if sent >= wanted:
                self.ask(signature)
                process.terminate()
            self.assertEqual(process.wait(TIMEOUT), 0, f"seed {SEED + turn}")
            read, turn = read + sent, turn + 1
            self.report(f"{read} frames in all; ended after {sent} of {wanted}")
            self.end_all()

    def ask(self, signature):
        result = subprocess.run([PROGRAM, "question", signature], env=self.desktop.environment, text=True,
                                stdin=subprocess.DEVNULL, capture_output=True, timeout=TIMEOUT)
        self.assertEqual(result.returncode, 0, result.stdout)

    def times(self, honest):
        """Returns the longest time for an answer, in words."""
        said = honest.stop().split()
        if len(said) < 10:
            return "no answers"
        longest, own, work = (int(said[i]) / 1000 for i in (4, 6, 8))
        return f"answers within {longest:.1f} ms, {own:.1f} without waits for a processor, {work:.1f} of work"

    def send(self, process, signature, recorded, count, seed):
        if IS_TOLD:
            honest = Attack(self.desktop.environment, "honest", signature)
            begun = time.monotonic()
            wait_until(lambda: time.monotonic() > begun + 10, "ten seconds")
            self.report(f"at rest: {self.times(honest)}")
            honest = Attack(self.desktop.environment, "honest", signature)
        before = memory(process.pid)[1]
        sender = subprocess.Popen([PROGRAM, "mutations", signature, FOLDER / recorded, str(count), str(seed)],
                                  env=self.desktop.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        read, heard, grown, told = 0, time.monotonic(), 0, time.monotonic()
        try:
            while sender.poll() is None and process.poll() is None:
                ready, _, _ = select.select([sender.stdout], [], [], 1)
                found = re.match(r"([0-9]+) frames", sender.stdout.readline()) if ready else None
                if found and int(found.group(1)) > read:
                    read, heard = int(found.group(1)), time.monotonic()
                    with contextlib.suppress(OSError, KeyError):
                        grown = memory(process.pid)[1] - before
                    if heard > told + 30:
                        told = heard
                        self.report(f"seed {seed}: {read} frames, memory {grown / MIB:+.1f} MiB")
                self.assertLess(time.monotonic() - heard, SILENCE * SLOWNESS, f"stuck after {read} frames, seed {seed}")
        finally:
            rest, _ = sender.communicate()
            for number in re.findall(r"([0-9]+) frames", rest):
                read = max(read, int(number))
            if IS_TOLD:
                self.report(self.times(honest))
        return read

    def test_application(self):
        self.attack(self.begin_application, APPLICATION, "to-application")

    def test_host(self):
        self.attack(self.begin_host, DESKTOP, "to-host")


if __name__ == "__main__":
    unittest.main()
