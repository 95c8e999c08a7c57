# SPDX-License-Identifier: MIT
"""Shared by tests of the program on Wayland."""

import contextlib
import os
import pathlib
import subprocess
import tempfile
import time
import unittest

from compositor import SIZE, Sway, wait_until
from desktop import TIMEOUT

PROGRAM = os.environ["QEL_PROGRAM"]
BACKGROUND = (16, 21, 29)
"""The background of the charts at the first start."""
PANEL = (216, 216, 216)
CHARTS = 100_000
"""The minimum number of pixels that they cover."""
MENU = (255, 255, 255)


def ctrl(key):
    return ("-M", "ctrl", key, "-m", "ctrl")


class WaylandTest(unittest.TestCase):
    def setUp(self):
        self.desktop = self.make()
        self.addCleanup(self.desktop.close)
        self.config = self.desktop.folder / "settings"
        self.said = self.desktop.folder / "said"

    def tearDown(self):
        outcome = self._outcome.result
        if any(test is self for test, _ in outcome.failures + outcome.errors):
            path = os.path.join(tempfile.gettempdir(), f"{self.id()}.ppm")
            try:
                picture = self.desktop.picture()
            except (subprocess.SubprocessError, OSError):
                return
            pathlib.Path(path).write_bytes(b"P6 %d %d 255\n" % SIZE + picture.data)
            print(f"\n    the screen at the end: {path}")

    def start(self, *arguments, **variables):
        # A file, because the host of desktop charts inherits it and outlives the program.
        with open(self.said, "wb") as said:
            program = subprocess.Popen([PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                       stderr=said, env=dict(self.desktop.environment,
                                                             XDG_CONFIG_HOME=str(self.config), **variables))
        self.addCleanup(self.end, program)
        return program

    def end(self, program):
        if program.poll() is None:
            program.kill()
        program.wait(TIMEOUT)

    def count(self, color):
        """Returns roughly how many pixels of the screen have this colour."""
        return self.desktop.picture().data.count(bytes(color))

    def await_charts(self):
        return wait_until(lambda: self.count(BACKGROUND) > CHARTS, "charts")

    def await_change(self):
        before = self.desktop.picture()
        wait_until(lambda: self.desktop.picture() != before, "charts that scroll")

    def assert_ends_well(self, program):
        """It prints nothing on stderr: what Wayland does not allow is no error."""
        self.assertEqual((program.wait(TIMEOUT), self.said.read_text()), (0, ""))


class SwayTest(WaylandTest):
    make = Sway

    def names(self):
        return [name for name, _ in self.desktop.windows()]

    def await_focus(self, name):
        wait_until(lambda: self.names()[:1] == [name], f"the window {name}")

    def quit(self, program):
        self.press(lambda: program.poll() is not None, "the program to end", ctrl("q"))
        self.assert_ends_well(program)

    def press(self, condition, what, *keys):
        """Presses keys one after the other until they take effect: a key is lost if it comes when the compositor has
        given the window the focus and the window does not know it yet."""
        end = time.monotonic() + TIMEOUT
        while True:
            for key in keys:
                self.desktop.keys(*key)
            with contextlib.suppress(AssertionError):
                return wait_until(condition, what, min(5, TIMEOUT))
            self.assertLess(time.monotonic(), end, what)

    def shows_menu(self):
        return self.count(MENU) > 10_000

    def open_menu(self):
        self.press(self.shows_menu, "the menu of a chart", ("-k", "Tab"), ("-k", "Menu"))

    def focus(self, name):
        self.desktop.command(name, "focus")
        self.await_focus(name)
