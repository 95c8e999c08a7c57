# SPDX-License-Identifier: MIT
"""The program and the host of desktop charts on Wayland."""

import signal
import unittest

from compositor import Weston
from programs import BACKGROUND, MENU, PANEL, SwayTest, WaylandTest, ctrl


def first_run(picture, color, length, top=0):
    """Returns left, top and length of the first run of this colour that is that long, from row top on."""
    run = bytes(color) * length
    start = picture.data.find(run, 3 * top * picture.width)
    while start % 3 != 0:
        start = picture.data.find(run, start + 1)
    top, left = divmod(start // 3, picture.width)
    end = left
    while end < picture.width and picture.pixel(end, top) == color:
        end += 1
    return left, top, end - left


class OnWeston(WaylandTest):
    make = Weston

    def test_shows_its_charts_and_ends(self):
        program = self.start()
        self.await_charts()
        self.await_change()
        program.send_signal(signal.SIGTERM)
        self.assert_ends_well(program)
        self.assertTrue((self.config / "x-vnd.kvt-Qel.user").stat().st_size > 1000)

    def test_pictures_its_window(self):
        file = self.desktop.folder / "window.png"
        self.assert_ends_well(self.start("--snapshot", str(file)))
        self.assertTrue(file.read_bytes().startswith(b"\x89PNG"))


class OnSway(SwayTest):
    def test_opens_every_window_by_keyboard(self):
        program = self.start()
        self.await_focus("Qel")
        self.assertEqual(self.desktop.windows()[0][1], "org.example.qel")
        self.await_charts()

        plain = self.count(PANEL)
        charts = self.desktop.picture()
        self.open_menu()
        left, top, width = first_run(charts, BACKGROUND, 400)
        # In the middle of the chart that has the focus: the charts stand in one column.
        self.assertLess(abs(first_run(self.desktop.picture(), MENU, 100, top)[0] - left - width // 2), 8)
        self.press(lambda: not self.shows_menu(), "the menu to close", ("-k", "Escape"))
        self.assertLess(abs(self.count(PANEL) - plain), 2_000)

        self.press(lambda: self.names()[:1] == ["Global preferences"], "the preferences", ctrl("p"))
        self.focus("Qel")
        self.press(lambda: self.names()[:1] == ["About Qel"], "the about window", ctrl("a"))
        self.press(lambda: "About Qel" not in self.names(), "the about window to close", ("-k", "Escape"))
        self.focus("Qel")
        self.quit(program)

    def test_copies_a_chart_to_the_desktop(self):
        program = self.start()
        self.await_focus("Qel")
        self.await_charts()
        self.open_menu()
        self.press(lambda: len(self.desktop.windows()) == 2, "the chart beside the window", ("c",))
        self.focus("Qel")
        self.quit(program)


if __name__ == "__main__":
    unittest.main()
