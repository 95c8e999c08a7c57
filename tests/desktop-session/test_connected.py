# SPDX-License-Identifier: MIT
"""Charts on the desktop and the application that feeds them: either of the two ends, hangs and comes back."""

import os
import pathlib
import random
import signal
import time

from desktop import stop_process, wait_until
from replicants import OneReplicantTest
from sanitizers import REPORTS

PROGRAM = pathlib.Path(os.environ["QEL_PROGRAM"])


class ConnectedTest(OneReplicantTest):
    """The program, with one of its charts on the desktop."""

    def setUp(self):
        super().setUp()
        self.addCleanup(self.end_programs)
        self.put_chart(686, 296)
        self.await_scrolling()

    # The application, including one that a chart has started.

    def programs(self):
        return self.running(PROGRAM)

    def end_programs(self):
        for pid in self.programs():
            os.kill(pid, signal.SIGKILL)

    def end_application(self, number):
        self.program.signal(number)
        self.program.wait()
        wait_until(lambda: not self.programs(), "the end of the application")

    @staticmethod
    def open_files(pid):
        return len(os.listdir(f"/proc/{pid}/fd"))

    @staticmethod
    def own_memory(pid):
        """Returns the kilobytes of a process that are in memory and shared with no file."""
        status = pathlib.Path(f"/proc/{pid}/status").read_text()
        return int(status.split("RssAnon:")[1].split()[0])

    # The chart on the desktop.

    def await_standstill(self):
        """Nothing announces that no sample comes any more, so the picture must stay the same for as long as ten samples
        take."""
        since, last = time.monotonic(), self.seen()

        def is_still():
            nonlocal since, last
            now = self.seen()
            if now != last:
                since, last = time.monotonic(), now
            return time.monotonic() - since > 2

        wait_until(is_still, "a chart on the desktop that waits")


class Application(ConnectedTest):
    def test_that_is_killed_is_waited_for(self):
        self.end_application(signal.SIGKILL)
        self.await_standstill()
        self.assertEqual(self.replicants(), [self.chart])
        self.assertEqual(self.programs(), [], "a chart that waits starts nothing")
        self.open()
        self.await_scrolling()

    def test_that_quits_is_waited_for(self):
        for _ in range(3):
            self.end_application(signal.SIGTERM)
            self.await_standstill()
            self.open()
            self.await_scrolling()

    def test_that_hangs_is_waited_for(self):
        self.program.stop()
        self.await_standstill()
        # The host keeps running meanwhile: its chart can be moved.
        self.drag_out(690, 600, self.chart)
        wait_until(lambda: self.places()[0][:2] == (686, 596), "the chart at its new place")
        self.program.signal(signal.SIGCONT)
        self.await_scrolling()

    def test_that_is_killed_at_any_moment(self):
        draw = random.Random(7)
        for turn in range(20):
            self.program.close()
            self.program = self.start()
            if turn % 2 == 1:
                self.program.window()
            time.sleep(draw.uniform(0, 0.15))
            if turn % 4 == 3:
                self.program.signal(signal.SIGTERM)
                time.sleep(draw.uniform(0, 0.03))
        self.program.close()
        host = self.host()
        self.open()
        self.await_scrolling()
        self.assertEqual(self.hosts(), [host])
        self.assertEqual(self.programs(), [self.program.pid])


class Host(ConnectedTest):
    def test_that_starts_alone_starts_the_application_minimised(self):
        self.drag_out(690, 450)
        self.replicant(2)
        self.drag_out(690, 600)
        self.replicant(3)
        self.end_host(signal.SIGTERM)
        self.end_application(signal.SIGTERM)
        self.start_host()
        self.replicant(3)
        for chart in self.replicants():
            self.await_scrolling(chart)
        self.assertEqual(len(self.programs()), 1)
        self.assertEqual(self.desktop.windows("^Qel$"), [])
        # A user who starts it by hand wants to see it.
        program = self.start()
        self.assert_ends_well(program)
        self.desktop.window("^Qel$", self.programs()[0])

    def test_that_is_killed_at_any_moment_harms_nobody(self):
        draw = random.Random(8)
        before = self.open_files(self.program.pid)
        for turn in range(20):
            self.end_host(signal.SIGKILL if turn % 3 else signal.SIGTERM)
            self.start_host()
            if turn % 2 == 1:
                self.replicant()
            time.sleep(draw.uniform(0, 0.15))
        self.chart = self.replicant()
        self.await_scrolling()
        self.await_change()
        wait_until(lambda: self.open_files(self.program.pid) <= before, "no connection left over")
        self.assertIsNone(self.program.process.poll())

    def test_that_stands_still_costs_the_application_nothing(self):
        self.assertEqual(self.run_beside("--set-delay", "0.01"), (0, "", ""))
        self.await_scrolling()
        host = self.host()
        stop_process(host)
        self.addCleanup(lambda: [os.kill(pid, signal.SIGCONT) for pid in self.hosts()])
        # By the time the window has scrolled for a while, the socket is full.
        for _ in range(20):
            self.await_change()
        before = self.own_memory(self.program.pid)
        for _ in range(60):
            self.await_change()
        if not REPORTS:  # a sanitizer keeps freed memory
            self.assertLess(self.own_memory(self.program.pid), before + 1024)
        os.kill(host, signal.SIGCONT)
        self.await_scrolling()
        self.assertEqual(self.hosts(), [host])
