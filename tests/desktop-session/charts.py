# SPDX-License-Identifier: MIT
"""Shared by tests of charts."""

import pathlib
import signal

from desktop import DesktopTest, wait_until

STORE = "x-vnd.kvt-Qel.user"
TITLE = (40, 62)
"""A place on the first chart's title, in the window."""


# A recorded machine: a third of its memory is in use, whatever this machine does.
RECORDED = {"KITS_ROOT": str(pathlib.Path(__file__).resolve().parent.parent / "data/machines/two-processors")}


class ChartsTest(DesktopTest):
    """The program with the charts of its first start; `arrange` may change them first, and `place` the window."""

    environment = {}
    """Further variables of the program's environment."""

    def arrange(self):
        pass

    def place(self):
        pass

    def setUp(self):
        super().setUp()
        self.arrange()
        self.open()

    def open(self):
        self.program = self.start(**self.environment)
        self.window = self.program.window()
        self.place()
        self.await_change()

    def picture(self):
        return self.desktop.picture(self.window)

    def await_change(self):
        before = self.picture()
        wait_until(lambda: self.picture() != before, "charts that scroll")

    def settle(self):
        """Waits until the program has handled everything that was sent to it: the second of two changes began after
        that."""
        self.await_change()
        self.await_change()

    def shown(self):
        """Returns all windows of the program, including menus and alerts."""
        return self.desktop.windows(".*", self.program.pid)

    def on_screen(self, window, x, y):
        left, top = self.desktop.geometry(window)[:2]
        return left + x, top + y

    def popup(self, x=400, y=120):
        self.desktop.focus(self.window)
        menus = set(self.shown())
        self.desktop.click(self.window, x, y, button=3)
        wait_until(lambda: set(self.shown()) - menus, "the pop-up")

    def choose(self, key):
        """Chooses an item by its underlined letter."""
        shown = len(self.shown())
        self.desktop.key(key)
        wait_until(lambda: len(self.shown()) < shown, "the pop-up to close")

    # Drags within the program, as a hand does them.

    def take_hold(self, start, aside=None, button=1):
        """Drags from a place of the screen until the drag has begun; by way of another place, or of one near by."""
        shown = set(self.shown())

        def dragged():
            """Returns the place of the drag's picture."""
            return [self.desktop.geometry(window)[:2] for window in set(self.shown()) - shown]

        self.dragged, self.button, self.held = dragged, button, aside or (start[0] + 36, start[1] - 24)
        self.desktop.xdotool("mousemove", *start, "mousedown", button)
        self.addCleanup(self.desktop.xdotool, "mouseup", button)
        way = [tuple(round(a + (b - a) * step / 12) for a, b in zip(start, self.held)) for step in range(1, 13)]

        def begun():
            self.desktop.xdotool("mousemove", *(way.pop(0) if way else (self.held[0] + 1, self.held[1])))
            self.desktop.xdotool("mousemove_relative", "--", -1, 0)
            return not way and dragged()

        wait_until(begun, "the drag")

    def let_go(self, end):
        """Drops at a place of the screen."""
        self.move_by_hand(self.held, end)
        for aside in (1, 0) * 3:  # a hand trembles
            self.desktop.xdotool("mousemove", end[0] + aside, end[1])
            self.settle()
        self.desktop.xdotool("mouseup", self.button)
        wait_until(lambda: not self.dragged(), "the drop")

    def move_by_hand(self, start, end):
        for step in range(1, 13):
            self.desktop.xdotool("mousemove", *(round(a + (b - a) * step / 12) for a, b in zip(start, end)))

    def stored(self):
        return (self.config / STORE).read_bytes()

    def quit(self):
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)
        return self.stored()
