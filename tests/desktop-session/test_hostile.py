# SPDX-License-Identifier: MIT
"""Hostile programs of the same user attack, while charts scroll in the window and on the desktop.

Each attack lasts some seconds here; tests/long/run extends it to thirty against each of the two programs, and also
checks times.
"""

import contextlib
import os
import resource
import signal
import struct
import subprocess
import time
import unittest

from charts import STORE
from desktop import SLOWNESS, TIMEOUT, wait_until
from hostile import APPLICATION, DESKTOP, IS_LONG, MIB, PROGRAM, Attack, Watch
from owners import Owner
from replicants import HOST_STORE, ReplicantsTest

SECONDS = 30 if IS_LONG else 2
CHARTS = 3
CHART = (500, 100)
"""A place in the window, on a chart."""
MOST_GROWTH = 16 * MIB
MOST_LEFT = 2 * MIB if IS_LONG else 4 * MIB
MOST_DESCRIPTORS = 300
AFTER_SIGTERM = 2
AT_REST = 1
"""Limits in seconds, between two columns and for an answer, on a quiet machine."""


class Target:
    """One of the two programs, and the parts of it that a test watches."""

    def __init__(self, name, signature, pid, window):
        self.name, self.signature, self.pid, self.window = name, signature, pid, window


class HostileTest(ReplicantsTest):
    """Three charts in the window, and three on the desktop."""

    def setUp(self):
        super().setUp()
        self.history = 100

    def arrange(self):
        maker = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "long", "store_of_charts")
        subprocess.run([maker, str(CHARTS), "200000", self.config / STORE, "desktop", self.config / HOST_STORE],
                       check=True)

    def begin(self):
        """Starts both programs, and makes them do once what they will be asked to do."""
        if not self.applications():
            self.arrange()
            self.open()
        replicant = self.replicant(CHARTS)
        self.targets = [Target("application", APPLICATION, self.program.pid, self.window),
                        Target("host", DESKTOP, self.host(), replicant)]
        for target in self.targets:
            self.ask(target)
        self.assertEqual(self.run_beside("--set-history", "99"), (0, "", ""))
        if IS_LONG:
            self.wait(5)  # by then, memory that only the start needed is given back

    def wait(self, seconds):
        begun = time.monotonic()
        wait_until(lambda: time.monotonic() > begun + seconds, f"{seconds} s")

    def ask(self, target):
        """Asks it as a newly started program would."""
        result = subprocess.run([PROGRAM, "question", target.signature], env=self.desktop.environment,
                                stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=TIMEOUT)
        self.assertEqual(result.returncode, 0, f"{target.name}: {result.stdout}")

    def attack(self, name, *numbers):
        """Attacks the application and the host; both at once in the short form."""
        for chosen in ([0], [1]) if IS_LONG else ([0, 1],):
            with self.subTest(targets=chosen):
                self.begin()
                targets = [self.targets[i] for i in chosen]
                self.hold_out(targets, lambda: self.attacks(targets, name, numbers))

    @contextlib.contextmanager
    def attacks(self, targets, name, numbers):
        under_way = []
        try:
            for target in targets:
                under_way.append(Attack(self.desktop.environment, name, target.signature, *numbers))
            yield lambda: None
        finally:
            said = [attack.stop() for attack in under_way]
            if IS_LONG:
                print(f"\n    {name}{numbers}: {said}", end="")

    @contextlib.contextmanager
    def watches(self, targets):
        watches = []
        try:
            for target in targets:
                watches.append(Watch(self.desktop.environment["DISPLAY"], target.pid, target.window))
            yield watches
        finally:
            for watch in watches:
                watch.close()

    def hold_out(self, targets, attacks):
        """Watches the targets during attacks, which last as long as the function's context manager is open."""
        limit = self.times_at_rest(targets) if IS_LONG else None
        with self.watches(targets) as watches:
            with attacks() as again:
                honest = [Attack(self.desktop.environment, "honest", target.signature) for target in targets]
                begun = time.monotonic()
                while time.monotonic() < begun + SECONDS:
                    again()
                    self.assert_scroll(targets, watches)
                for target in targets:
                    self.ask(target)
                if targets[0].signature == APPLICATION:
                    self.assertEqual(self.run_beside("--set-history", "98"), (0, "", ""))
                answers = [attack.stop() for attack in honest]
            for target, watch, answer in zip(targets, watches, answers):
                self.check(target, watch, answer, limit)
        with attacks() as again:
            again()
            self.assert_end_saves(limit)

    def assert_scroll(self, targets, watches):
        for target, watch in zip(targets, watches):
            seen = watch.pictures
            wait_until(lambda: watch.pictures > seen + 2, f"charts of the {target.name} that scroll")

    def times_at_rest(self, targets):
        """Measures without an attack, on the machine as it is: the time between two columns, and for an answer."""
        with self.watches(targets) as watches:
            honest = Attack(self.desktop.environment, "honest", targets[0].signature)
            self.wait(10)
            answer = honest.stop()
        print(f"\n    at rest, load {os.getloadavg()[0]:.0f}: {self.times(watches[0], answer)}", end="")
        return [max(AT_REST, 2 * watches[0].longest_of_its_own), max(AT_REST, 2 * int(answer.split()[6]) / 1e6)]

    @staticmethod
    def times(watch, answer):
        """Returns the times by the clock, and without waits for a processor."""
        words = answer.split()
        return (f"columns {watch.longest_without:.2f} s ({watch.longest_of_its_own:.2f}), "
                f"{words[0]} answers {int(words[4]) / 1e6:.2f} s ({int(words[6]) / 1e6:.2f})")

    def check(self, target, watch, answer, limit):
        resident, private, files = watch.growth()
        words = answer.split()
        self.assertEqual(words[2], "0", f"{target.name}: {answer}")
        left, left_files = watch.await_before()
        said = (f"{target.name}: memory +{resident / MIB:.1f} MiB, its own +{private / MIB:.1f}, descriptors +{files}, "
                f"{self.times(watch, answer)}; afterwards {left / MIB:+.1f} MiB, {left_files:+} descriptors")
        if IS_LONG:
            print(f"\n    {said}", end="")
        self.assertLessEqual(files, MOST_DESCRIPTORS, said)
        self.assertLessEqual(left_files, 0, said)
        if SLOWNESS == 1:  # a sanitizer keeps freed memory
            self.assertLessEqual(max(resident, private), MOST_GROWTH, said)
            self.assertLessEqual(left, MOST_LEFT, said)
        if limit:
            self.assertLessEqual(watch.longest_of_its_own, limit[0], said)
            self.assertLessEqual(int(words[6]) / 1e6, limit[1], said)

    def assert_end_saves(self, limit=None):
        """Arranges something in each program, and asks both to end at once."""
        self.history += 1
        self.assertEqual(self.run_beside("--set-history", str(self.history)), (0, "", ""))
        left, top = self.places()[0][:2]
        place = (left - 43, top + 17)
        self.desktop.drag((left + 4, top + 4), (place[0] + 4, place[1] + 4))
        wait_until(lambda: self.places()[0][:2] == place, f"a chart at {place}")
        host = self.targets[1].pid
        begun = time.monotonic()
        for pid in (self.program.pid, host):
            os.kill(pid, signal.SIGTERM)
        self.assert_ends_well(self.program)
        wait_until(lambda: host not in self.hosts(), "the end of the host")
        took = time.monotonic() - begun
        self.assertRegex(self.stored(), rb"NodesToKeep[^\x18]{0,20}\x18" + bytes([self.history]))
        self.assertIn(struct.pack(">f", place[0]), (self.config / HOST_STORE).read_bytes())
        if limit:
            print(f"\n    both ended {took:.2f} s after SIGTERM", end="")
            self.assertLessEqual(took, AFTER_SIGTERM * limit[1])


class Hostile(HostileTest):
    def test_pings_as_fast_as_they_are_taken(self):
        self.attack("pings")

    def test_many_names_that_want_answers(self):
        self.attack("names")

    def test_answers_that_nobody_reads(self):
        self.attack("deaf", 1)

    def test_answers_that_nobody_reads_under_ten_names(self):
        self.attack("deaf", 10)

    def test_halves_of_huge_frames(self):
        self.attack("halves", 16 * MIB)

    def test_halves_of_large_frames(self):
        self.attack("halves", MIB)

    def test_silent_connections(self):
        self.attack("silence")

    def test_clipboard_whose_owner_does_not_answer(self):
        # Only in the application, because no key reaches charts on the desktop.
        self.begin()
        self.hold_out(self.targets[:1], self.silent_owner)

    @contextlib.contextmanager
    def silent_owner(self):
        with Owner(self.desktop.environment, self.config, "silent", "application/x-color", b"") as owner:
            self.desktop.click(self.window, *CHART)

            def paste():
                asked = len(owner.asked())
                self.desktop.key("ctrl+v", window=self.window)
                wait_until(lambda: len(owner.asked()) > asked, "a question to the owner of the clipboard")

            yield paste
            if IS_LONG:
                print(f"\n    asked {len(owner.asked())} times", end="")


@unittest.skipIf(SLOWNESS != 1, "a sanitizer needs all addresses")
class SmallAddressSpace(HostileTest):
    ROOM = 64 * MIB

    def test_pings(self):
        self.begin()
        for target in self.targets:
            with open(f"/proc/{target.pid}/statm", encoding="ascii") as file:
                size = int(file.read().split()[0]) * resource.getpagesize()
            resource.prlimit(target.pid, resource.RLIMIT_AS, (size + self.ROOM, size + self.ROOM))
        with self.watches(self.targets) as watches:
            with self.attacks(self.targets, "pings", ()):
                self.wait(SECONDS)
                self.assert_scroll(self.targets, watches)
                for target in self.targets:
                    self.ask(target)
                self.assert_end_saves()


if __name__ == "__main__":
    unittest.main()
