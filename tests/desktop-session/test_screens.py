# SPDX-License-Identifier: MIT
"""Charts on the desktop, and a second screen that goes and comes back."""

import signal
import time

from desktop import SCREEN, Desktop, wait_until
from replicants import HOST_STORE, OneReplicantTest

HALF = SCREEN[0] // 2
PLACE = (900, 500)
"""Place of a chart, on the second screen."""


class Screens(OneReplicantTest):
    """The screen as two, side by side. Programs notice it when the total size changes."""

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        height = SCREEN[1]
        self.xrandr("--newmode", "half", 0, HALF, 0, 0, HALF, height, 0, 0, height)
        self.xrandr("--addmode", "screen", "half")
        self.xrandr("--setmonitor", "left", f"{HALF}/160x{height}/200+0+0", "screen")
        self.plug_out()
        self.plug_in()
        super().setUp()
        self.resize_window()
        self.put_chart(*PLACE)

    def xrandr(self, *arguments):
        self.desktop.output("xrandr", *(str(argument) for argument in arguments), check=True)

    def plug_in(self):
        self.xrandr("--setmonitor", "right", f"{HALF}/160x{SCREEN[1]}/200+{HALF}+0", "none")
        self.xrandr("--output", "screen", "--mode", f"{SCREEN[0]}x{SCREEN[1]}")

    def plug_out(self):
        self.desktop.output("xrandr", "--delmonitor", "right")
        self.xrandr("--output", "screen", "--mode", "half")

    def resize_window(self):
        self.desktop.resize(self.window, 400, 400)

    def await_first_screen(self):
        def is_there():
            left, top, _, _ = self.desktop.geometry(self.chart)
            return 0 <= left < HALF and 0 <= top < SCREEN[1]

        wait_until(is_there, "the chart on the first screen")

    def await_settled(self):
        """Moves of a chart within five seconds of a change do not count as the user's; nothing announces the end of
        that time."""
        changed = time.monotonic()
        wait_until(lambda: time.monotonic() > changed + 6, "six seconds")

    def test_a_chart_is_shown_in_reach_and_goes_back(self):
        for _ in range(3):
            self.plug_out()
            self.await_first_screen()
            self.plug_in()
            self.await_place(*PLACE)
        # Even if the user takes a while to plug it in again.
        self.plug_out()
        self.await_first_screen()
        self.await_settled()
        self.plug_in()
        self.await_place(*PLACE)

    def test_a_chart_has_a_place_for_each_arrangement(self):
        self.plug_out()
        self.await_first_screen()
        self.drag_out(204, 604, self.chart)
        self.await_place(200, 600)
        self.plug_in()
        self.await_place(*PLACE)
        self.plug_out()
        self.await_place(200, 600)

    def test_the_places_are_kept_over_a_login_without_the_screen(self):
        store = self.config / HOST_STORE
        wait_until(store.exists, "the store")
        self.end_host(signal.SIGTERM)
        self.plug_out()
        self.start_host()
        self.chart = self.replicant()
        self.await_first_screen()
        self.await_settled()
        self.end_host(signal.SIGTERM)
        self.start_host()
        self.chart = self.replicant()
        self.plug_in()
        self.await_place(*PLACE)

    def test_many_charts_go_and_come_together(self):
        for count in range(2, 6):
            self.drag_out(HALF + 24 + 40 * count, 100 + 100 * count)
            self.replicant(count)
        places = self.places()
        for _ in range(5):
            self.plug_out()
            wait_until(lambda: all(left < HALF for left, _, _, _ in self.places()), "all on the first screen")
            self.plug_in()
            wait_until(lambda: self.places() == places, f"the places {places}")
