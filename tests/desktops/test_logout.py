# SPDX-License-Identifier: MIT
"""Logout and login: the user's arrangement is back, and nothing of the previous session is left."""

import os
import time

from desktop import wait_until
from real import RealTest


class Logout(RealTest):
    def log_out(self):
        if not self.desktop.TELLS_OF_ITS_END:
            # The program promises to have the arrangement on the disk five seconds later, and nothing announces it.
            arranged = time.monotonic()
            wait_until(lambda: time.monotonic() > arranged + 6, "six seconds")
        self.desktop.log_out()

    def assert_has_ended(self, program):
        if self.desktop.TELLS_OF_ITS_END:
            self.assert_ends_well(program)
        else:
            program.wait()

    def test_charts_are_where_they_were_after_the_next_login(self):
        self.put_chart(690, 300)
        self.await_chart(*self.frame())
        self.resize(self.chart, 400, 90)
        self.drag_out(304, 544)
        self.replicant(2)
        places = self.places()
        host, = self.hosts()

        self.log_out()
        wait_until(lambda: not self.hosts() and not self.applications(), "the end of the programs of the session")
        self.assert_has_ended(self.program)

        self.desktop.log_in()
        self.replicant(2)
        self.assertNotIn(host, self.hosts())
        wait_until(lambda: self.places() == places, f"the places {places}")
        for place in places:
            self.await_chart(*place)
            before = self.desktop.picture().crop(*place)
            wait_until(lambda: self.desktop.picture().crop(*place) != before, "a chart on the desktop that scrolls")
        self.assertEqual(len(self.applications()), 1)
        self.desktop.xdotool("mousemove", 640, 120, "click", 1)
        self.await_chart(*places[0])

    def test_an_arrangement_of_the_window_is_saved(self):
        self.popup(300, 240)
        self.desktop.key("d")  # deletes the second chart
        wait_until(lambda: self.shown() == [self.window], "the pop-up to close")
        self.log_out()
        wait_until(lambda: not self.applications(), "the end of the program")
        self.assertEqual(self.stored().count(b"ChartType"), 2)
        self.desktop.log_in()
        for pid in self.applications():  # a session may restart programs that ran at its end
            os.kill(pid, 9)
        wait_until(lambda: not self.applications(), "the end of the program that the session has started")
        self.open()
        self.assertEqual(self.quit().count(b"ChartType"), 2)
