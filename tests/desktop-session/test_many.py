# SPDX-License-Identifier: MIT
"""A hundred charts in the window."""

import os
import subprocess

from charts import STORE, ChartsTest
from desktop import wait_until

COUNT = 100
BORDER = bytes.fromhex("333d4d")


class Hundred(ChartsTest):
    def arrange(self):
        maker = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "long", "store_of_charts")
        subprocess.run([maker, str(COUNT), "200000", self.config / STORE], check=True)

    def place(self):
        # No picture can be taken of a window that reaches beyond the screen.
        self.desktop.xdotool("windowmove", self.window, 100, 30)
        self.desktop.resize(self.window, 580, 700)

    def bands(self):
        """Returns the number of charts between borders, in a column of pixels that no caption reaches."""
        picture = self.picture()
        column = picture.crop(picture.width - 12, 0, 1, picture.height)
        is_border = [column.pixel(0, y) == tuple(BORDER) for y in range(column.height)]
        return sum(here and not below for here, below in zip(is_border, is_border[1:]))

    def test_have_a_band_each(self):
        # Two borders touch between charts, so there is one more of them than charts.
        wait_until(lambda: self.bands() >= COUNT, "a band for each chart")
        self.assertEqual(self.quit().count(b"ChartType"), COUNT)

    def test_leave_the_window_at_hand(self):
        self.popup()
        self.await_change()
        self.choose("d")
        self.assertEqual(self.quit().count(b"ChartType"), COUNT - 1)
