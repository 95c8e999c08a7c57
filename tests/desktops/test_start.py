# SPDX-License-Identifier: MIT
"""The program on a real desktop."""

from real import RealTest


class Start(RealTest):
    def test_shows_charts_that_scroll(self):
        self.await_change()
        self.assertTrue(self.desktop.shows_wallpaper())
        self.quit()
