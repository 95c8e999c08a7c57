# SPDX-License-Identifier: MIT
"""A chart that is moved from the desktop into the window ends up in one of the two places, whichever program is killed
meanwhile."""

import contextlib
import os
import random
import signal
import time

from charts import STORE
from desktop import wait_until
from replicants import HOST_STORE, ReplicantsTest

FIRST = 3
"""The number of charts in the window at the first start."""


class Taken(ReplicantsTest):
    def stored(self):
        """Returns how many charts the window and the desktop have stored."""
        stores = [self.config / name for name in (STORE, HOST_STORE)]
        return tuple(store.read_bytes().count(b"ChartType") if store.exists() else 0 for store in stores)

    def await_stored(self, in_window, on_desktop):
        wait_until(lambda: self.stored() == (in_window, on_desktop) and len(self.replicants()) == on_desktop,
                   f"{in_window} charts in the window and {on_desktop} on the desktop")

    def quit_all(self):
        """Quits the application first, because it would start the host again."""
        for pid in self.applications():
            os.kill(pid, signal.SIGTERM)
        wait_until(lambda: not self.applications(), "the end of the application")
        self.end_host(signal.SIGTERM)

    def test_does_not_come_back_when_the_host_was_killed_before_it_wrote(self):
        self.drag_out(604, 564)
        self.replicant()
        self.drag_out(604, 664)
        self.replicant(2)
        self.await_stored(FIRST, 2)
        store = self.config / HOST_STORE
        before = store.read_bytes()
        self.drag_back(280, 160, self.replicant(2))
        self.await_stored(FIRST + 1, 1)

        with self.subTest("the application runs"):
            self.end_host(signal.SIGTERM)
            store.write_bytes(before)
            self.start_host()
            self.await_stored(FIRST + 1, 1)
        with self.subTest("the application starts, and starts the host"):
            self.quit_all()
            store.write_bytes(before)
            self.open()
            self.await_stored(FIRST + 1, 1)
        with self.subTest("the host starts, and starts the application"):
            self.quit_all()
            store.write_bytes(before)
            self.start_host()
            self.await_stored(FIRST + 1, 1)

    def test_is_in_one_place_whatever_is_killed_when(self):
        draw = random.Random(5)
        for turn in range(6):
            self.drag_out(604, 564)
            self.await_stored(FIRST + turn, 1)
            self.carry_back(280, 160, self.replicant())
            self.desktop.xdotool("mouseup", 1)
            time.sleep(draw.uniform(0, 0.3))
            killed = (self.hosts() if turn % 3 != 1 else []) + (self.applications() if turn % 3 != 0 else [])
            for pid in killed:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(pid, signal.SIGKILL)
            wait_until(lambda: not set(killed) & set(self.hosts() + self.applications()), "the end of the killed")
            # Twice, because the application stores the rest when it quits the first time.
            for _ in range(2):
                self.quit_all()
                self.open()
                self.start_host()
                wait_until(lambda: sum(self.stored()) == FIRST + turn + 1 and
                           len(self.replicants()) == self.stored()[1], "the chart in one place")
            if self.replicants():
                self.drag_back(280, 160, self.replicant())
            self.await_stored(FIRST + turn + 1, 0)
