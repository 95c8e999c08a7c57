# SPDX-License-Identifier: MIT
"""Charts on desktops that have a window of their own, which is offered every drag over it."""

import os
import subprocess

from desktop import SCREEN, wait_until
from drops import DropsTest
from replicants import ReplicantsTest
from xclient import Client

COLOR = (0x30, 0x50, 0x70)


class DesktopWindowTest(ReplicantsTest):
    """The program above a desktop that accepts every drop."""

    KIND = ("accept", "typed")

    def arrange(self):
        program = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "desktop-session", "desktop_window")
        self.desktop_told = self.config / "desktop-told"
        with self.desktop_told.open("wb") as output:
            process = subprocess.Popen([program, *self.KIND], env=self.desktop.environment, stdin=subprocess.DEVNULL,
                                       stdout=output, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.desktop.window("^Desktop window$", process.pid)
        wait_until(lambda: self.desktop.picture().pixel(SCREEN[0] - 1, SCREEN[1] - 1) == COLOR, "the desktop window")

    def heard(self):
        """Returns what the desktop has heard of drags, one line each."""
        return self.desktop_told.read_text().splitlines()

    def await_place(self, left, top):
        wait_until(lambda: [place[:2] for place in self.places()] == [(left, top)], f"a chart at {left}, {top}")

    def assert_was_offered_and_got_nothing(self):
        """The desktop has seen each drag enter and leave."""
        wait_until(lambda: self.heard() and self.heard()[-1] == "left", "the end of the last drag over the desktop")
        self.assertEqual(set(self.heard()), {"entered", "left"})


class Accepting(DesktopWindowTest):
    def test_is_where_a_chart_is_dropped_and_gets_no_drop(self):
        self.drag_out(704, 304)
        self.await_place(700, 300)
        self.assert_was_offered_and_got_nothing()
        self.assertEqual(self.quit().count(b"ChartType"), 3)

    def test_lets_charts_be_moved(self):
        self.drag_out(704, 304)
        chart = self.replicant()
        self.await_place(700, 300)
        self.drag_out(304, 604, chart)
        self.await_place(300, 600)
        # Onto itself: the place of the release belongs to the chart.
        self.drag_out(324, 614, chart)
        self.await_place(320, 610)
        self.assert_was_offered_and_got_nothing()

    def test_lets_a_chart_be_moved_at_once_again(self):
        self.drag_out(704, 304)
        chart = self.replicant()
        self.await_place(700, 300)
        self.drag_out(634, 534, chart)
        self.await_place(630, 530)
        for left, top in ((660, 560), (640, 600), (600, 580)):
            with self.subTest(left=left, top=top):
                # The pointer has rested on the handle since the last drop, and leaves it with its first move.
                self.desktop.xdotool("mousedown", 1, "mousemove", left + 4, top + 4)
                wait_until(self.picture_at_pointer, "a drag that is under way")
                self.end_drag()
                self.await_place(left, top)
        self.assert_was_offered_and_got_nothing()

    def test_shows_nothing_after_escape(self):
        self.begin_drag(self.handle(), (700, 500))
        self.desktop.key("Escape")
        self.end_drag()
        self.assert_shows_nothing()
        self.assert_was_offered_and_got_nothing()

    def test_is_not_what_lies_above_it(self):
        self.open_foreign()
        self.drag_out(*self.on_screen(self.foreign, 80, 50))
        self.drag_out(300, 200)
        self.assert_shows_nothing()
        self.assert_was_offered_and_got_nothing()

    def test_gives_charts_back(self):
        self.drag_out(704, 304)
        self.drag_back(280, 160, self.replicant())
        wait_until(lambda: not self.hosts(), "the end of the host")
        self.assertEqual(self.replicants(), [])
        self.assert_was_offered_and_got_nothing()
        self.assertEqual(self.quit().count(b"ChartType"), 4)


class AcceptingOthers(DesktopWindowTest, DropsTest):
    def test_gets_what_other_programs_drop(self):
        """Proves that the tests above would notice a drop."""
        self.open_source(text=b"for everybody")
        self.desktop.drag(self.on_screen(self.source, 80, 50), (700, 600))
        wait_until(lambda: self.heard()[-1:] and self.heard()[-1].startswith("dropped text/plain"), "the drop")


class Refusing(DesktopWindowTest):
    KIND = ("refuse", "typed")

    def cursor(self):
        with Client(self.desktop.environment["DISPLAY"]) as client:
            return client.cursor()

    def await_cursor(self, holds, what):
        def look():
            self.desktop.xdotool("mousemove_relative", "--", 1, 0, "mousemove_relative", "--", -1, 0)
            cursor = self.cursor()
            return cursor if holds(cursor) else None

        return wait_until(look, what)

    def test_is_shown_to_take_what_is_dragged_over_it(self):
        self.begin_drag(self.handle(), (300, 200))
        self.settle()
        forbidden = self.cursor()
        self.desktop.xdotool("mousemove", 704, 304)
        copy = self.await_cursor(lambda cursor: cursor != forbidden, "another pointer over the desktop")
        self.desktop.xdotool("mousemove", 300, 210)
        self.await_cursor(lambda cursor: cursor == forbidden, "the first pointer over the window again")
        self.desktop.xdotool("mousemove", 704, 304)
        self.await_cursor(lambda cursor: cursor == copy, "the other one again")
        self.end_drag()
        self.await_place(700, 300)
        self.begin_drag(self.handle(self.replicant()), (634, 534))
        self.await_cursor(lambda cursor: cursor not in (forbidden, copy), "that of a move")
        self.end_drag()
        self.await_place(630, 530)

    def test_is_where_a_chart_is_dropped_and_moved(self):
        self.drag_out(704, 304)
        self.await_place(700, 300)
        self.drag_out(304, 604, self.replicant())
        self.await_place(300, 600)
        # The toolkit sends no more than that to a window that refuses.
        self.assertEqual(set(self.heard()), {"entered"})


class Untyped(DesktopWindowTest):
    """The window does not declare itself a desktop; it is only the lowest one and covers the screen."""

    KIND = ("accept", "untyped")

    def test_is_where_a_chart_is_dropped_and_moved(self):
        self.drag_out(704, 304)
        self.await_place(700, 300)
        self.drag_out(304, 604, self.replicant())
        self.await_place(300, 600)
        self.assert_was_offered_and_got_nothing()
