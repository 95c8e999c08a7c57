"""The average of the wallpaper on a real desktop, and charts that scroll on beside it."""

import os
import signal
import subprocess

import wallpaper
from charts import STORE
from desktop import wait_until
from prefs import DESKTOP_COLOR, PICK_DESKTOP, SWATCH, PrefsTest
from real import RealTest


class PictureTest(RealTest, PrefsTest):
    def await_average(self, pixel, what):
        wait_until(lambda: wallpaper.is_near(pixel(), wallpaper.AVERAGE), what)

    def assert_lives(self):
        self.settle()
        self.quit()


class Prefs(PictureTest):
    def place(self):
        PrefsTest.place(self)

    def test_pick_desktop_takes_the_average(self):
        self.open_prefs()
        self.show("Colors")
        self.click(PICK_DESKTOP)
        self.await_average(lambda: self.page().pixel(*SWATCH), "the average in the swatch")
        self.assert_lives()

    def test_a_chart_in_the_colour_of_the_desktop_has_the_average(self):
        self.open_prefs()
        self.click(DESKTOP_COLOR)
        self.await_average(lambda: self.chart(0).pixel(540, 60), "a chart in the average of the picture")
        self.assert_lives()


class Transparent(PictureTest):
    def arrange(self):
        maker = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "long", "store_of_charts")
        subprocess.run([maker, "3", "200000", self.config / STORE, "transparent"], check=True)

    def test_a_chart_on_the_desktop_scrolls(self):
        self.drag_out(704, 304)
        chart = self.replicant()
        for _ in range(3):
            before = self.desktop.picture(chart)
            wait_until(lambda: self.desktop.picture(chart) != before, "a chart on the desktop that scrolls")
        self.end_host(signal.SIGTERM)
        self.assert_lives()
