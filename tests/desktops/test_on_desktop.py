# SPDX-License-Identifier: MIT
"""Charts on a real desktop: torn off, moved, resized, dropped back and removed, and what the desktop does around them."""

import unittest

from desktop import wait_until
from real import DESKTOP, RealTest

PLACE = (690, 300)
ELSEWHERE = (300, 540)
BARE = (640, 120)
"""A place of the desktop beside the window and above the chart."""


class TearOff(RealTest):
    def test_leaves_a_chart_where_it_was_dropped_and_nothing_else(self):
        before = self.desktop.left_on_desktop()
        self.put_chart(*PLACE)
        self.await_chart(*self.frame())
        self.assertEqual(self.desktop.left_on_desktop(), before)

    def test_given_up_by_escape_leaves_nothing(self):
        self.begin_drag(self.handle(), PLACE)
        self.desktop.key("Escape")
        self.end_drag()
        self.put_chart(ELSEWHERE[0], ELSEWHERE[1])
        self.assertEqual(len(self.replicants()), 1)
        self.await_wallpaper(*PLACE, 400, 100)

    def test_onto_another_window_leaves_nothing(self):
        self.open_foreign()
        self.drag_out(*self.on_screen(self.foreign, 80, 50))
        self.put_chart(*ELSEWHERE)
        self.assertEqual(len(self.replicants()), 1)
        self.await_wallpaper(*PLACE, 400, 100)


class OnDesktop(RealTest):
    """One chart on the desktop."""

    def setUp(self):
        super().setUp()
        self.put_chart(*PLACE)
        self.await_chart(*self.frame())

    def behind_window(self):
        """Returns a place without desktop icons."""
        left, top, width, height = self.desktop.geometry(self.window)
        return left + 200, top, width - 200, height

    def assert_still_there(self):
        """The chart is visible, scrolls, and is where it was, also for the hand: it is moved from there."""
        frame = self.frame()
        self.assertEqual(frame[:2], PLACE)
        self.await_chart(*frame)
        before = self.desktop.picture().crop(*frame)
        wait_until(lambda: self.desktop.picture().crop(*frame) != before, "a chart on the desktop that scrolls")
        self.drag_out(ELSEWHERE[0] + 4, ELSEWHERE[1] + 4, self.chart)
        self.await_place(*ELSEWHERE)
        self.await_chart(*self.frame())
        self.await_wallpaper(*frame)

    def test_is_moved_by_its_handle(self):
        self.desktop.focus(self.window)
        self.assert_still_there()
        # The window manager still knows which window has the keyboard focus.
        self.assertEqual(self.desktop.output("xdotool", "getactivewindow").strip(), str(self.window))

    def test_is_resized_by_its_corner(self):
        left, top, width, height = self.frame()
        self.resize(self.chart, 300, 90)
        self.await_chart(left, top, 300, 90)
        self.await_wallpaper(left, top + 94, width, height - 94)
        self.resize(self.chart, 420, 160)
        self.await_chart(left, top, 420, 160)

    def test_goes_back_into_the_window(self):
        frame = self.frame()
        self.drag_back(280, 160, self.chart)
        wait_until(lambda: not self.hosts(), "the end of the host")
        self.await_wallpaper(*frame)
        self.assertEqual(self.quit().count(b"ChartType"), 4)

    def test_is_removed_by_its_menu(self):
        frame = self.frame()
        self.choose_from_handle("Up", "Return")
        wait_until(lambda: not self.hosts(), "the end of the host")
        self.await_wallpaper(*frame)

    def test_stays_in_front_when_the_desktop_is_clicked(self):
        for _ in range(2):
            self.desktop.xdotool("mousemove", *BARE, "click", 1)
            self.await_wallpaper(BARE[0] - 8, BARE[1] - 8, 16, 16)
        self.assert_still_there()

    @unittest.skipUnless(DESKTOP.HAS_RUBBER_BAND, "this desktop has no icons")
    def test_stays_when_a_rubber_band_is_drawn_around_it(self):
        left, top, width, height = self.frame()
        start, end = (left - 20, top - 60), (left + width + 6, top + height + 60)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        steps = [tuple(round(a + (b - a) * step / 8) for a, b in zip(start, end)) for step in range(1, 9)]
        for step in steps:
            self.desktop.xdotool("mousemove", *step)
        beside = (start[0] + 10, start[1] + 10, width, 40)

        def band():
            self.desktop.xdotool("mousemove", end[0] - 1, end[1], "mousemove", *end)
            return not self.shows_wallpaper(*beside)

        wait_until(band, "a rubber band")
        self.desktop.xdotool("mouseup", 1)
        self.await_wallpaper(*beside)
        self.assert_still_there()

    def test_stays_while_the_menu_of_the_desktop_is_open(self):
        self.desktop.xdotool("mousemove", *BARE, "click", 3)
        wait_until(lambda: not self.shows_wallpaper(BARE[0] + 12, BARE[1] + 12, 32, 32), "the menu of the desktop")
        self.desktop.key("Escape")
        self.await_wallpaper(BARE[0], BARE[1], 32, 32)
        self.assert_still_there()

    def test_stays_when_the_desktop_is_shown(self):
        for keys in self.desktop.show_desktop_keys():
            with self.subTest(keys):
                window = self.behind_window()
                self.desktop.focus(self.window)
                self.desktop.key(keys)
                self.await_wallpaper(*window)
                self.await_chart(*self.frame())
                self.desktop.key(keys)
                wait_until(lambda: not self.shows_wallpaper(*window), "the window")
        self.assert_still_there()

    def test_is_on_every_workspace(self):
        window = self.behind_window()
        self.desktop.xdotool("set_desktop", 1)
        self.await_wallpaper(*window)
        self.await_chart(*self.frame())
        self.desktop.xdotool("set_desktop", 0)
        wait_until(lambda: not self.shows_wallpaper(*window), "the window")
        self.assert_still_there()

    @unittest.skipIf(DESKTOP.ALWAYS_COMPOSITES, "this desktop's compositor is always on")
    def test_stays_when_a_compositor_comes_and_goes(self):
        self.addCleanup(self.desktop.set_compositing, False)
        for on in (True, False):
            self.desktop.set_compositing(on)
            self.await_chart(*self.frame())
        self.assert_still_there()

    @unittest.skipIf(DESKTOP.ALWAYS_COMPOSITES, "this desktop's compositor is always on")
    def test_is_moved_while_there_is_a_compositor(self):
        self.addCleanup(self.desktop.set_compositing, False)
        self.desktop.set_compositing(True)
        self.assert_still_there()

    def test_stays_in_front_when_the_desktop_starts_anew(self):
        self.desktop.restart_desktop()
        self.desktop.xdotool("mousemove", *BARE, "click", 1)
        self.assert_still_there()

    def test_stays_when_the_window_manager_starts_anew(self):
        window = self.desktop.geometry(self.window)
        self.desktop.restart_manager()
        wait_until(lambda: self.desktop.geometry(self.window) == window, f"the window at {window}")
        self.assert_still_there()
