# SPDX-License-Identifier: MIT
"""The program that shows charts on the desktop is killed or ends in order, and the application restarts it or not."""

import os
import signal
import subprocess

from desktop import wait_until
from replicants import HOST, HOST_STORE, ReplicantsTest


class HostDies(ReplicantsTest):
    """One chart on the desktop, at (600, 560)."""

    def setUp(self):
        super().setUp()
        self.drag_out(604, 564)
        self.await_chart()
        store = self.config / HOST_STORE
        wait_until(lambda: store.exists() and b"ChartType" in store.read_bytes(), "the store")

    def await_chart(self):
        self.replicant()
        wait_until(lambda: [place[:2] for place in self.places()] == [(600, 560)], "the chart at its place")

    def kill_host(self, number=signal.SIGKILL):
        host, window = self.host(), self.replicant()
        os.kill(host, number)
        # The display removes the window a moment later; until then it looks like that of the next host.
        wait_until(lambda: host not in self.hosts() and window not in self.replicants(), "the end of the host")

    def start_program(self):
        self.program = self.start()
        self.window = self.program.window()
        self.place()
        self.await_change()

    def go_to_desktop(self):
        self.popup()
        self.desktop.key("g")

    def test_a_killed_one_comes_back_three_times_a_minute(self):
        for _ in range(3):
            self.kill_host()
            self.await_chart()
            self.assertEqual(len(self.hosts()), 1)
        self.kill_host(signal.SIGSEGV)
        self.settle()
        self.assertEqual(self.hosts(), [])
        # The user may still ask for it.
        self.go_to_desktop()
        self.await_chart()
        self.assertEqual(self.shown(), [self.window])

    def test_one_that_ends_in_order_does_not(self):
        self.kill_host(signal.SIGTERM)
        self.settle()
        self.assertEqual(self.hosts(), [])

    def test_go_to_desktop_starts_it_and_gives_it_the_keyboard(self):
        self.kill_host(signal.SIGTERM)
        self.go_to_desktop()
        self.await_chart()
        wait_until(lambda: self.desktop.output("xdotool", "getactivewindow").strip() == str(self.replicant()),
                   "the focus")

    def test_the_start_of_the_application_starts_it(self):
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)
        self.kill_host()
        self.start_program()
        self.await_chart()

    def test_the_start_of_the_session_starts_one(self):
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)
        self.kill_host(signal.SIGTERM)
        environment = dict(self.desktop.environment, XDG_CONFIG_HOME=str(self.config))
        for program in (HOST, os.environ["QEL_PROGRAM"], HOST):
            process = subprocess.Popen([program], env=environment, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.addCleanup(process.wait)
            self.addCleanup(process.kill)
        self.await_chart()
        wait_until(lambda: len(self.hosts()) == 1, "a single host")
        self.assertEqual(len(self.applications()), 1)


class NothingOnDesktop(ReplicantsTest):
    def test_go_to_desktop_starts_nothing(self):
        self.popup()
        self.desktop.key("g")
        self.settle()
        self.assertEqual(self.hosts(), [])
        self.assertEqual(self.shown(), [self.window])
