# SPDX-License-Identifier: MIT
"""Charts on the desktop while the window manager shows the desktop, which hides all windows."""

from desktop import wait_until
from replicants import OneReplicantTest
from xclient import Client


class ShowDesktop(OneReplicantTest):
    def setUp(self):
        super().setUp()
        self.put_chart(600, 560)
        self.addCleanup(self.show_desktop, False)

    def show_desktop(self, shown):
        with Client(self.desktop.environment["DISPLAY"]) as client:
            client.show_desktop(shown)
        wait_until(lambda: f"= {int(shown)}" in self.desktop.output("xprop", "-root", "_NET_SHOWING_DESKTOP"),
                   "what the window manager shows")
        self.desktop.await_manager()

    def seen(self, window=None):
        self.assertEqual(self.replicants(), [self.chart])
        return super().seen(window)

    def test_leaves_them_where_they_are(self):
        self.show_desktop(True)
        self.assertEqual(self.desktop.windows("^Qel$"), [])
        self.await_scrolling()
        self.await_place(600, 560)
        self.drag_out(304, 364, self.chart)
        self.await_place(300, 360)
        self.resize(self.chart, 200, 90)
        self.await_scrolling()
        self.assertEqual(self.desktop.windows("^Qel$"), [])

    def test_leaves_them_below_all_windows_afterwards(self):
        self.show_desktop(True)
        self.await_scrolling()
        self.show_desktop(False)
        wait_until(lambda: self.desktop.windows("^Qel$") == [self.window], "the window")
        order = self.desktop.output("xprop", "-root", "_NET_CLIENT_LIST_STACKING").partition("#")[2]
        numbers = [int(number, 16) for number in order.split(",")]
        self.assertLess(numbers.index(self.chart), numbers.index(self.window))
        # Nor does a click bring them to the front.
        self.desktop.xdotool("windowmove", self.window, 300, 300)
        wait_until(lambda: self.desktop.geometry(self.window)[0] >= 300, "the window over the chart")
        place = self.on_screen(self.chart, 300, 60)
        self.desktop.xdotool("mousemove", *place, "click", 1)
        self.await_change()
        left, top, width, _ = self.desktop.geometry(self.window)
        picture = self.desktop.picture()
        edge = {picture.pixel(left + width - 1, top + y) for y in range(60, 380)}
        self.assertEqual(len(edge), 1, "the chart covers a part of the window's edge")

    def test_leaves_them_after_they_had_the_keyboard(self):
        self.desktop.focus(self.window)
        self.desktop.key("Tab")
        shown = set(self.shown())
        self.desktop.key("Menu")
        wait_until(lambda: set(self.shown()) - shown, "the pop-up")
        self.desktop.key("g")
        wait_until(lambda: self.desktop.output("xdotool", "getactivewindow").strip() == str(self.chart), "the focus")
        self.desktop.key("Up")
        self.await_place(600, 559)
        self.show_desktop(True)
        self.await_scrolling()
        self.show_desktop(False)
        wait_until(lambda: self.desktop.windows("^Qel$") == [self.window], "the window")
        self.desktop.focus(self.window)
        wait_until(lambda: "focus: False" in self.desktop.output("xprop", "-id", str(self.chart), "WM_HINTS"),
                   "the end of its wish for the focus")
        self.show_desktop(True)
        self.await_scrolling()
