# SPDX-License-Identifier: MIT
"""Scale and resolution that change in the settings of a real desktop, if the desktop tells running programs of it."""

import unittest

from desktop import wait_until
from real import DESKTOP, GROUND, RealTest
from charts import RECORDED

SIZE = (400, 300)
"""Size of the window's content, in logical pixels: even at scale 2 it leaves room for the chart beside it."""


@unittest.skipUnless(DESKTOP.SCALES_LIVE, "this desktop's programs have to start anew for another scale")
class Scale(RealTest):
    environment = RECORDED

    def setUp(self):
        self.addCleanup(lambda: self.desktop.set_scale(1))
        super().setUp()
        self.desktop.resize(self.window, *SIZE)
        self.put_chart(440, 200)
        self.await_chart(*self.frame())
        self.resize(self.chart, 160, 90)
        # The window manager places the frame; the content lies within.
        self.left, self.top = self.desktop.geometry(self.window)[:2]
        self.logical = {self.window: (self.left, self.top, *SIZE), self.chart: (440, 200, 160, 90)}

    def await_scale(self, scale):
        def fits():
            return all(abs(found - scale * wanted) < 1.5 for window, frame in self.logical.items()
                       for found, wanted in zip(self.desktop.geometry(window), frame))

        wait_until(fits, f"{self.logical} at {scale}")

    def assert_well_drawn(self, scale):
        """Beside their captions and curves, the charts of the window show their ground and nothing else: no caption of
        another size, no remains of another scale. The chart on the desktop has its ground up to its edges and leaves
        none beside it."""
        def is_clean():
            picture = self.picture()
            height = (SIZE[1] - 52) / 3
            for index in range(3):
                top = round((52 + index * height + 8) * scale)
                crop = picture.crop(round(0.6 * SIZE[0] * scale), top, round(0.3 * SIZE[0] * scale),
                                    round((height - 16) * scale))
                if crop.colors() != {bytes(GROUND)}:
                    return False
            return True

        wait_until(is_clean, f"charts without foreign pixels at {scale}")
        self.await_chart(*self.frame())
        self.await_change()

    def follow(self, change, way):
        for scale in way:
            with self.subTest(scale):
                change(scale)
                self.await_scale(scale)
                self.assert_well_drawn(scale)
                self.await_wallpaper_of_scale(scale)

    def await_wallpaper_of_scale(self, scale):
        """Waits until nothing of the chart is left outside its frame at this scale."""
        left, top, width, height = self.frame()
        self.await_wallpaper(left, top + height + 4, width, 60)

    def test_of_fonts_is_followed(self):
        self.follow(self.desktop.set_font_scale, (2, 1.5, 1, 2, 1))
        self.quit()

    def test_of_windows_is_followed(self):
        self.follow(self.desktop.set_scale, (2, 1, 2, 1))
        self.quit()

    def test_of_windows_leaves_the_logical_size_for_the_next_start(self):
        self.desktop.set_scale(2)
        self.await_scale(2)
        self.assert_well_drawn(2)
        self.quit()
        self.desktop.set_scale(1)
        self.program = self.start(**self.environment)
        self.logical = {self.program.window(): (self.left, self.top, *SIZE), self.chart: (440, 200, 160, 90)}
        self.await_scale(1)
