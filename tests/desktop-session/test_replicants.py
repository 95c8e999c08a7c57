# SPDX-License-Identifier: MIT
"""Charts that are dragged out of the window onto the desktop."""

import signal
import time

from desktop import TIMEOUT, wait_until
from replicants import AUTOSTART, HOST_STORE, OneReplicantTest, ReplicantsTest


class DragOut(ReplicantsTest):
    def test_shows_the_chart_where_it_was_dropped(self):
        width = self.desktop.size(self.window)[0]
        self.drag_out(700, 500)
        replicant = self.replicant()
        wait_until(lambda: self.desktop.geometry(replicant)[:3] == (696, 496, width - 6), "the place of the drop")
        # It is a copy.
        self.assertEqual(self.quit().count(b"ChartType"), 3)
        self.assertEqual(self.replicants(), [replicant])

    def test_again_and_again_shows_as_many(self):
        for count in range(3):
            self.drag_out(700, 500 + 20 * count)
            self.replicant(count + 1)
        wait_until(lambda: [top for _, top, _, _ in self.places()] == [496, 516, 536], "the places of the drops")
        self.assertEqual(len(self.hosts()), 1)

    def test_that_is_given_up_by_escape_shows_nothing(self):
        self.begin_drag(self.handle(), (700, 500))
        self.desktop.xdotool("key", "Escape")
        self.end_drag()
        self.assert_shows_nothing()

    def test_onto_the_window_itself_shows_nothing(self):
        for place in ((300, 200), (300, 30)):
            with self.subTest(place):
                self.drag_out(*place)
        self.assert_shows_nothing()
        self.assertEqual(self.quit().count(b"ChartType"), 3)

    def test_onto_a_foreign_window_shows_nothing(self):
        self.open_foreign()
        self.drag_out(*self.on_screen(self.foreign, 80, 50))
        self.assert_shows_nothing()

    def test_needs_a_move(self):
        self.desktop.xdotool("mousemove", *self.handle(), "click", 1)
        self.assert_shows_nothing()


class Copy(ReplicantsTest):
    def test_by_the_keyboard_needs_no_pointer(self):
        self.desktop.focus(self.window)
        self.desktop.key("Tab")
        shown = set(self.shown())
        self.desktop.key("shift+F10")
        wait_until(lambda: set(self.shown()) - shown, "the pop-up")
        self.desktop.key("c")
        self.replicant()

    def test_by_the_menu_of_the_handle(self):
        for count in (1, 2):
            shown = set(self.shown())
            self.desktop.xdotool("mousemove", *self.handle(), "click", 3)
            wait_until(lambda: set(self.shown()) - shown, "the pop-up")
            self.desktop.key("Down", "Return")
            self.replicant(count)
        (_, top, _, height), (_, below, _, _) = self.places()
        self.assertGreaterEqual(below, top + height)


class OnDesktop(OneReplicantTest):
    """One chart on the desktop, at (600, 560)."""

    def setUp(self):
        super().setUp()
        self.put_chart(600, 560)

    def active(self):
        return self.desktop.output("xdotool", "getactivewindow").strip()

    def go_to_desktop(self):
        """Goes there from the window, which has the focus, by the menu of a chart in it."""
        self.desktop.key("Tab")
        shown = set(self.shown())
        self.desktop.key("Menu")
        wait_until(lambda: set(self.shown()) - shown, "the pop-up")
        self.desktop.key("g")
        wait_until(lambda: self.active() == str(self.chart), "the focus")

    def stored_places(self):
        store = self.config / HOST_STORE
        return store.read_bytes() if store.exists() else b""

    def test_scrolls(self):
        self.await_scrolling()
        self.await_change()

    def test_is_used_by_keyboard(self):
        self.desktop.focus(self.window)
        self.go_to_desktop()
        width, height = self.desktop.size(self.chart)
        self.desktop.key("shift+Left", "shift+Left", "Up")
        self.await_place(580, 559)
        self.desktop.key("ctrl+shift+Left", "ctrl+Down")
        wait_until(lambda: self.desktop.size(self.chart) == (width - 10, height + 1), "the new size")
        shown = set(self.host_windows())
        self.desktop.key("Menu")
        wait_until(lambda: set(self.host_windows()) - shown, "the pop-up")
        self.desktop.key("Up", "Return")
        wait_until(lambda: not self.hosts(), "the end of the host")

    def test_takes_no_focus_by_itself(self):
        self.desktop.focus(self.window)
        self.desktop.xdotool("mousemove", 700, 600, "click", 1)
        self.await_scrolling()
        self.assertEqual(self.active(), str(self.window))
        # Also after the chart was asked to take it and gave it up.
        self.go_to_desktop()
        self.desktop.focus(self.window)
        # The toolkit waits for a while to see whether the focus comes back.
        wait_until(lambda: "focus: False" in self.desktop.output("xprop", "-id", str(self.chart), "WM_HINTS"),
                   "the end of its wish for the focus")
        self.desktop.xdotool("mousemove", 700, 600, "click", 1)
        self.await_scrolling()
        self.assertEqual(self.active(), str(self.window))

    def test_is_moved_by_its_handle(self):
        self.drag_out(304, 604, self.chart)
        self.await_place(300, 600)
        # Also by less than its own size.
        self.drag_out(324, 614, self.chart)
        self.await_place(320, 610)
        self.assertEqual(len(self.replicants()), 1)

    def test_stays_when_a_move_is_given_up(self):
        self.begin_drag(self.handle(self.chart), (300, 600))
        self.desktop.key("Escape")
        self.end_drag()
        self.drag_out(304, 564, self.chart)
        self.await_place(300, 560)

    def test_stays_when_it_is_dropped_on_a_foreign_window(self):
        self.open_foreign()
        self.drag_out(*self.on_screen(self.foreign, 80, 50), self.chart)
        self.assertEqual(self.places()[0][:2], (600, 560))

    def test_is_resized_by_its_corner_to_20_at_least(self):
        self.resize(self.chart, 300, 100)
        self.await_scrolling()
        self.resize(self.chart, 5, 5, expected=(21, 21))
        self.resize(self.chart, 200, 90)
        self.await_place(600, 560)

    def test_is_removed_by_its_menu_and_the_host_ends(self):
        wait_until((self.config / AUTOSTART).exists, "the autostart entry")
        self.choose_from_handle("Up", "Return")
        wait_until(lambda: not self.hosts(), "the end of the host")
        self.assertEqual(self.replicants(), [])
        self.assertFalse((self.config / AUTOSTART).exists())
        self.assertNotIn(b"ChartType", self.stored_places())

    def test_goes_back_into_the_window(self):
        self.drag_back(280, 160, self.chart)
        wait_until(lambda: not self.hosts(), "the end of the host")
        self.assertEqual(self.replicants(), [])
        self.assertEqual(self.quit().count(b"ChartType"), 4)

    def test_stays_when_the_window_has_no_place_for_charts(self):
        self.desktop.click(self.window, 30, 34)
        self.drag_back(280, 160, self.chart)
        self.assertEqual(self.places()[0][:2], (600, 560))
        self.assertEqual(self.quit().count(b"ChartType"), 3)

    def test_tells_about_the_program(self):
        self.choose_from_handle("Down", "Return")
        self.program.window("^About Qel$")

    def test_is_of_the_same_class_as_the_window(self):
        """Panels and the menu entry recognise the windows of a program by their class, the second of these names."""
        names = [self.desktop.output("xprop", "-id", str(window), "WM_CLASS").partition("= ")[2].strip()
                 for window in (self.window, self.chart)]
        self.assertEqual(names, ['"qel", "Qel"', '"qel-desktop", "Qel"'])

    def test_never_gets_the_focus_and_stays_below(self):
        self.desktop.focus(self.window)
        self.desktop.xdotool("windowmove", self.window, 500, 400)
        wait_until(lambda: self.desktop.geometry(self.window)[0] >= 500, "the window over the chart")
        self.desktop.focus(self.window)
        self.desktop.click(self.chart, 400, 100)
        self.desktop.xdotool("windowmove", self.window, 20, 40)
        self.assertEqual(self.desktop.output("xdotool", "getactivewindow").strip(), str(self.window))
        state = self.desktop.output("xprop", "-id", str(self.chart), "_NET_WM_STATE", "_NET_WM_DESKTOP",
                                    "_NET_WM_WINDOW_TYPE")
        for word in ("BELOW", "SKIP_TASKBAR", "SKIP_PAGER", "4294967295"):
            self.assertIn(word, state)
        # A click would raise the desktop's own window over it.
        self.assertNotIn("TYPE_DESKTOP", state)


class Session(ReplicantsTest):
    """Charts on the desktop when programs end and start."""

    def arrange_two(self):
        self.drag_out(304, 564)
        self.resize(self.replicant(), 200, 100)
        self.drag_out(654, 604)
        self.replicant(2)
        return self.places()

    def await_stored(self, count):
        store = self.config / HOST_STORE
        wait_until(lambda: store.exists() and store.read_bytes().count(b"ChartType") == count, "the store")

    def await_scrolling(self):
        for window in self.replicants():
            before = self.desktop.picture(window)
            wait_until(lambda: self.desktop.picture(window) != before, "charts on the desktop that scroll")

    def log_in(self, places):
        self.start_host()
        self.replicant(len(places))
        wait_until(lambda: self.places() == places, f"the places {places}")

    def test_everything_is_where_it_was_after_the_next_login(self):
        places = self.arrange_two()
        self.end_host(signal.SIGTERM)
        self.quit()
        entry = (self.config / AUTOSTART).read_text()
        self.assertIn("qel-desktop", entry)
        self.log_in(places)
        self.assertEqual((self.config / AUTOSTART).read_text(), entry)

    def test_everything_is_where_it_was_after_the_host_was_killed(self):
        places = self.arrange_two()
        self.await_stored(2)
        # The program promises to have the size on the disk five seconds later, and nothing announces it.
        arranged = time.monotonic()
        wait_until(lambda: time.monotonic() > arranged + 6, "six seconds")
        self.end_host(signal.SIGKILL)
        self.log_in(places)

    def test_the_application_comes_back_and_the_charts_go_on(self):
        self.arrange_two()
        self.await_scrolling()
        self.program.signal(signal.SIGKILL)
        self.program.wait()
        self.program = self.start()
        self.window = self.program.window()
        for window in self.replicants():
            before = self.desktop.picture(window)
            wait_until(lambda: self.desktop.picture(window) != before, "samples")

    def test_the_host_alone_starts_the_application_minimised(self):
        places = self.arrange_two()
        self.await_stored(2)
        self.end_host(signal.SIGTERM)
        self.quit()
        self.log_in(places)
        self.await_scrolling()
        self.assertEqual(self.desktop.windows("^Qel$"), [])
        self.assertEqual(len(self.applications()), 1)

    def test_a_host_without_charts_ends_at_once(self):
        self.assertEqual(self.start_host().wait(TIMEOUT), 0)
        self.assertFalse((self.config / AUTOSTART).exists())

    def test_a_second_host_ends_at_once(self):
        self.drag_out(304, 564)
        self.replicant()
        self.assertEqual(self.start_host().wait(TIMEOUT), 0)
        self.assertEqual(len(self.replicants()), 1)
