# SPDX-License-Identifier: MIT
"""Charts that are dragged out while the program that shows them on the desktop is held up or killed."""

import os
import signal
import time

from desktop import stop_process, wait_until
from replicants import HOST_STORE, ReplicantsTest


class HeldUp(ReplicantsTest):
    """One chart on the desktop, and another one that is dropped there while the host is stopped."""

    LONGER = 12
    """Seconds; a sender with a timeout of five seconds would give up twice."""

    def setUp(self):
        super().setUp()
        self.drag_out(604, 564)
        self.replicant()
        self.await_stored(1)
        self.stop()
        self.drag_out(304, 604)

    def stop(self):
        self.stopped = self.host()
        stop_process(self.stopped)

    def await_stored(self, count):
        store = self.config / HOST_STORE
        wait_until(lambda: store.exists() and store.read_bytes().count(b"ChartType") == count, "the store")

    def wait_longer(self):
        begun = time.monotonic()
        wait_until(lambda: time.monotonic() > begun + self.LONGER, "a long time")

    def assert_one_came(self):
        self.replicant(2)
        self.await_stored(2)
        # The next drop is performed after everything that was sent before.
        self.drag_out(904, 604)
        self.replicant(3)
        self.await_stored(3)
        self.assertEqual([left for left, _, _, _ in self.places()], [300, 600, 900])
        self.assertEqual(self.shown(), [self.window])

    def test_one_drop_is_one_chart_however_long_it_takes(self):
        self.wait_longer()
        self.assertEqual(self.shown(), [self.window])
        os.kill(self.stopped, signal.SIGCONT)
        self.assert_one_came()
        self.assertEqual(self.hosts(), [self.stopped])

    def test_one_drop_is_one_chart_when_the_host_is_killed_meanwhile(self):
        os.kill(self.stopped, signal.SIGKILL)
        self.assert_one_came()
        self.assertNotIn(self.stopped, self.hosts())
