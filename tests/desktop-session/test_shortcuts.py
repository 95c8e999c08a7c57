# SPDX-License-Identifier: MIT
"""The two keys that work in every window, and the titles of windows."""

import re
import signal

from desktop import DesktopTest, wait_until

GERMAN = {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}


class WindowsTest(DesktopTest):
    def open(self, **environment):
        self.program = self.start(**environment)
        self.main = self.program.window()

    def open_about(self):
        self.desktop.key("ctrl+a", window=self.main)
        return self.program.window("^About Qel$")

    def open_sampler(self):
        self.desktop.key("ctrl+p", window=self.main)
        return self.program.window("^Global preferences$")

    def chart_item(self, *keys):
        self.desktop.focus(self.main)
        shown = len(self.all_windows())
        self.desktop.click(self.main, 400, 120, button=3)
        wait_until(lambda: len(self.all_windows()) > shown, "the menu of a chart")
        self.desktop.key(*keys)

    def open_preferences(self):
        self.chart_item("p")
        return self.program.window("^Chart preferences$")

    def open_panel(self):
        self.chart_item("v")
        return wait_until(lambda: set(self.shown()) - {self.main}, "a file panel").pop()

    def shown(self):
        """Windows with a title."""
        return self.desktop.windows(".+", self.program.pid)

    def all_windows(self):
        """Returns all windows, including menus."""
        return self.desktop.windows(".*", self.program.pid)

    def await_closed(self, window):
        wait_until(lambda: window not in self.shown(), "the window to close")

    def quit(self):
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)


class Shortcuts(WindowsTest):
    OPEN = {"the about window": WindowsTest.open_about, "the sampler's preferences": WindowsTest.open_sampler,
            "a chart's preferences": WindowsTest.open_preferences, "a file panel": WindowsTest.open_panel}

    def test_ctrl_w_closes_the_window_that_has_the_keyboard(self):
        self.open()
        for name, open_window in self.OPEN.items():
            with self.subTest(name):
                window = open_window(self)
                self.desktop.key("ctrl+w", window=window)
                self.await_closed(window)
        self.desktop.key("ctrl+w", window=self.main)
        self.assert_ends_well(self.program)

    def test_ctrl_q_ends_the_program_in_every_window(self):
        for name, open_window in self.OPEN.items():
            with self.subTest(name):
                self.open()
                self.desktop.key("ctrl+q", window=open_window(self))
                self.assert_ends_well(self.program)

    def test_other_keys_do_neither(self):
        self.open()
        for keys in ("w", "q", "shift+ctrl+w", "alt+ctrl+q"):
            self.desktop.key(keys, window=self.open_about())
        self.desktop.key("ctrl+w")
        self.quit()


class Titles(WindowsTest):
    def test_are_in_the_language_of_the_session(self):
        for environment, sampler, chart in ((GERMAN, "Allgemeine Einstellungen", "Einstellungen des Diagramms"),
                                            ({}, "Global preferences", "Chart preferences"),
                                            (GERMAN, "Allgemeine Einstellungen", "Einstellungen des Diagramms")):
            self.open(**environment)
            self.desktop.key("ctrl+p", window=self.main)
            windows = [self.program.window(f"^{sampler}$")]
            self.chart_item("Down", "Return")
            windows.append(self.program.window(f"^{chart}$"))
            # A closed window is remembered.
            for window in windows:
                self.desktop.key("ctrl+w", window=window)
                self.await_closed(window)
            self.quit()


class About(WindowsTest):
    def test_has_a_border_alone_and_is_a_window_like_others(self):
        self.open()
        about = self.open_about()
        properties = self.desktop.output("xprop", "-id", str(about), "_NET_WM_WINDOW_TYPE", "_NET_FRAME_EXTENTS")
        self.assertIn("= _NET_WM_WINDOW_TYPE_NORMAL\n", properties)
        left, right, top, bottom = map(int, re.search(r"EXTENTS.*= (.*)", properties).group(1).split(","))
        # A title bar would be higher, and would have buttons in it.
        self.assertEqual({left, right, top, bottom}, {left})
        self.assertGreater(left, 0)
        self.desktop.key("alt+F4", window=about)
        self.await_closed(about)
        self.quit()
