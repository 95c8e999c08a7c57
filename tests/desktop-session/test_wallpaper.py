# SPDX-License-Identifier: MIT
"""A desktop whose own settings name a picture: the charts take its average, and scroll on."""

import os
import pathlib
import signal
import subprocess

from charts import RECORDED, STORE
from desktop import wait_until
from prefs import DESKTOP_COLOR, PICK_DESKTOP, SWATCH, PrefsTest
from replicants import ReplicantsTest

PICTURES = pathlib.Path(__file__).resolve().parent.parent / "data/pictures"
AVERAGE = (102, 7, 135)
"""The approximate average of all of them: some round colours."""
DIFFERENT = (0, 64, 128)
"""The average of the picture that somebody else sets."""

TOOL = """#!/bin/sh
# Stands for the tool of XFCE's settings: one workspace, whose picture a file names.
workspace=/backdrop/screen0/monitorscreen/workspace0
case "$*" in
"-c xfce4-desktop -l -v")
    echo "$workspace/image-style  5"
    echo "$workspace/last-image  $(cat "$QEL_TEST_WALLPAPER/picture")"
    ;;
"-c xfce4-desktop -m") exec tail -n +1 -f "$QEL_TEST_WALLPAPER/news" ;;
*) exit 1 ;;
esac
"""


class WallpaperTest(ReplicantsTest, PrefsTest):
    """The preferences open beside the window, which stands on the right as in other tests of them."""

    picture_file = "half.jpg"

    def arrange(self):
        self.wallpaper = self.config / "wallpaper"
        self.wallpaper.mkdir()
        tool = self.wallpaper / "xfconf-query"
        tool.write_text(TOOL)
        tool.chmod(0o700)
        (self.wallpaper / "news").touch()
        self.set_wallpaper(PICTURES / self.picture_file)
        self.environment = dict(RECORDED, XDG_CURRENT_DESKTOP="XFCE", QEL_TEST_WALLPAPER=str(self.wallpaper),
                                PATH=f"{self.wallpaper}:{os.environ['PATH']}")

    def set_wallpaper(self, path):
        (self.wallpaper / "picture").write_text(f"{path}\n")
        with open(self.wallpaper / "news", "a") as news:
            news.write("set: /backdrop/screen0/monitorscreen/workspace0/last-image\n")

    @staticmethod
    def is_near(color, other):
        return all(abs(a - b) <= 1 for a, b in zip(color, other))

    def await_color(self, pixel, color, what):
        wait_until(lambda: self.is_near(pixel(), color), what)

    def readers(self):
        """Returns the processes that read a picture for a program of this test."""
        return self.running(pathlib.Path(os.environ["QEL_PROGRAM"]).with_name("average-picture"))

    def assert_lives(self):
        """The charts scroll, a menu opens and closes, and the program ends on request."""
        self.settle()
        self.desktop.key("alt+f", window=self.window)
        shown = wait_until(lambda: self.shown() != [self.window] and self.shown(), "a menu")
        self.settle()
        self.desktop.key("Escape")
        wait_until(lambda: len(self.shown()) < len(shown), "the menu to close")
        self.quit()


class Prefs(WallpaperTest):
    def place(self):
        PrefsTest.place(self)

    def test_its_average_is_picked(self):
        self.open_prefs()
        self.show("Colors")
        self.click(PICK_DESKTOP)
        self.await_color(lambda: self.page().pixel(*SWATCH), AVERAGE, "the average in the swatch")
        self.close_prefs()
        self.assert_lives()

    def test_its_average_is_followed(self):
        self.open_prefs()
        self.click(DESKTOP_COLOR)
        right = lambda: self.chart(0).pixel(540, 60)  # noqa: E731
        self.await_color(right, AVERAGE, "a chart in the average of the picture")
        self.desktop.output("convert", "-size", "8x8", "xc:rgb({},{},{})".format(*DIFFERENT),
                            f"png8:{self.wallpaper}/other.png", check=True)
        self.set_wallpaper(self.wallpaper / "other.png")
        self.await_color(right, DIFFERENT, "the average of the next picture")
        self.close_prefs()
        self.assert_lives()


class Drawing(Prefs):
    picture_file = "half.svg"

    def arrange(self):
        super().arrange()
        reader = pathlib.Path(os.environ["QEL_PROGRAM"]).with_name("average-picture")
        if subprocess.run([reader, PICTURES / self.picture_file], capture_output=True).returncode != 0:
            self.skipTest("the toolkit of this machine has no plugin for drawings")


class Broken(WallpaperTest):
    def place(self):
        PrefsTest.place(self)

    def test_a_reader_that_never_ends_holds_nothing_up(self):
        drawing = self.wallpaper / "endless.svg"
        rect = '<rect width="64" height="64" fill-opacity="0.5"/>'
        drawing.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64">{rect * 400000}</svg>')
        self.set_wallpaper(drawing)
        self.open_prefs()
        self.click(DESKTOP_COLOR)
        wait_until(self.readers, "the program that reads the picture")
        self.close_prefs()
        self.assert_lives()
        self.assertEqual(self.readers(), [])


class OnDesktop(WallpaperTest):
    def arrange(self):
        super().arrange()
        maker = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "long", "store_of_charts")
        subprocess.run([maker, "3", "200000", self.config / STORE, "transparent"], check=True)

    def test_a_transparent_chart_has_its_average(self):
        self.drag_out(654, 604)
        chart = self.replicant()
        ground = lambda: self.desktop.picture().pixel(650 + 200, 600 + 15)  # noqa: E731
        self.await_color(ground, AVERAGE, "a chart in the average of the picture")
        for _ in range(2):
            before = self.desktop.picture(chart)
            wait_until(lambda: self.desktop.picture(chart) != before, "a chart on the desktop that scrolls")
        self.end_host(signal.SIGTERM)
        self.assert_lives()
