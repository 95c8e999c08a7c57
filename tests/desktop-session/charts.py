"""What tests of charts share."""

import pathlib
import signal

from desktop import DesktopTest, wait_until

STORE = "x-vnd.kvt-Qel.user"
TITLE = (40, 62)
"""On the first chart's title, in the window."""


# A third of its memory is in use, whatever this machine does.
RECORDED = {"KITS_ROOT": str(pathlib.Path(__file__).resolve().parent.parent / "data/machines/two-processors")}


class ChartsTest(DesktopTest):
    """The program with the charts of its first start; `arrange` may change them before, `place` the window."""

    environment = {}
    """Of the program."""

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

    def shown(self):
        """All windows of the program, menus and alerts too."""
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
        """An item by the letter that is underlined in it."""
        shown = len(self.shown())
        self.desktop.key(key)
        wait_until(lambda: len(self.shown()) < shown, "the pop-up to close")

    def stored(self):
        return (self.config / STORE).read_bytes()

    def quit(self):
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)
        return self.stored()
