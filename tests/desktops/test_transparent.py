# SPDX-License-Identifier: MIT
"""A transparent chart on a real desktop: over the wallpaper, with a compositor and without."""

import os
import subprocess
import unittest

import wallpaper
from charts import STORE
from desktop import wait_until
from real import DESKTOP, RealTest


class Transparent(RealTest):
    def arrange(self):
        maker = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "long", "store_of_charts")
        subprocess.run([maker, "3", "200000", self.config / STORE, "transparent"], check=True)
        self.desktop.set_compositing(False)
        self.addCleanup(self.desktop.set_compositing, False)

    def setUp(self):
        super().setUp()
        self.put_chart(690, 300)

    def ground(self):
        """Returns a place of the screen with neither words nor samples."""
        left, top = self.frame()[:2]
        return left + 150, top + 10, 200, 20

    def await_average(self):
        def is_average():
            colors = self.desktop.picture().crop(*self.ground()).colors()
            return len(colors) == 1 and wallpaper.is_near(next(iter(colors)), wallpaper.AVERAGE)

        wait_until(is_average, "the chart in the average of the wallpaper")

    @unittest.skipIf(DESKTOP.ALWAYS_COMPOSITES, "this desktop's compositor is always on")
    def test_a_chart_is_in_the_average_or_shows_what_lies_below(self):
        self.await_average()
        for _ in range(2):
            self.desktop.set_compositing(True)
            self.await_wallpaper(*self.ground())
            self.await_scrolling()
            self.desktop.set_compositing(False)
            self.await_average()
            self.await_scrolling()

    def test_a_chart_is_moved_over_the_wallpaper(self):
        self.desktop.set_compositing(True)
        before = self.frame()
        self.drag_out(304, 604, self.chart)
        self.await_place(300, 600)
        self.await_wallpaper(*self.ground())
        self.await_wallpaper(*before)
        self.await_scrolling()
