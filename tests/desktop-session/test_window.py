# SPDX-License-Identifier: MIT
"""The main window: its charts, its tabs, and what it remembers."""

import signal
import time

from desktop import DesktopTest, wait_until


class MainWindowTest(DesktopTest):
    def open(self, *arguments):
        self.program = self.start(*arguments)
        self.window = self.program.window()
        return self.window

    def picture(self):
        return self.desktop.picture(self.window)

    def shows_charts(self):
        """Charts are dark, and the page with the uptimes is not."""
        page = self.picture()
        page = page.crop(0, page.height // 2, page.width, page.height // 2)
        dark = sum(sum(page.pixel(x, y)) < 200 for x in range(0, page.width, 5) for y in range(0, page.height, 5))
        return dark > page.width * page.height / 25 / 3

    def await_tab(self, charts):
        wait_until(lambda: self.shows_charts() == charts, "the charts" if charts else "the uptimes")

    def select_tab(self, charts):
        self.desktop.click(self.window, 96 if charts else 30, 34)
        self.await_tab(charts)


class Charts(MainWindowTest):
    def test_scroll_with_the_machine(self):
        self.open()
        self.await_tab(charts=True)
        before = self.picture()
        for _ in range(3):
            wait_until(lambda: self.picture() != before, "another picture")
            before = self.picture()
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)


class Tabs(MainWindowTest):
    def test_are_switched_by_clicks(self):
        self.open()
        self.await_tab(charts=True)
        self.select_tab(charts=False)
        uptimes = self.picture()
        wait_until(lambda: self.picture() != uptimes, "the next second")
        self.select_tab(charts=True)

    def test_have_sizes_of_their_own(self):
        self.open()
        self.await_tab(charts=True)
        self.desktop.resize(self.window, 420, 310)
        self.select_tab(charts=False)
        self.desktop.resize(self.window, 520, 230)
        for charts, size in ((True, (420, 310)), (False, (520, 230)), (True, (420, 310))):
            self.select_tab(charts)
            wait_until(lambda: self.desktop.size(self.window) == size, f"the size {size}")


class Memory(MainWindowTest):
    def arrange(self):
        """Gives both tabs sizes of their own, and leaves the chart tab in front."""
        self.open()
        self.await_tab(charts=True)
        self.select_tab(charts=False)
        self.desktop.resize(self.window, 540, 260)
        self.select_tab(charts=True)
        self.desktop.resize(self.window, 410, 330)

    def assert_arranged(self):
        self.open()
        self.await_tab(charts=True)
        wait_until(lambda: self.desktop.size(self.window) == (410, 330), "the size of the chart tab")
        self.select_tab(charts=False)
        wait_until(lambda: self.desktop.size(self.window) == (540, 260), "the size of the other tab")

    def quit_by_key(self):
        self.desktop.key("ctrl+q", window=self.window)

    def test_survives_the_menu(self):
        self.arrange()
        self.quit_by_key()
        self.assert_ends_well(self.program)
        self.assert_arranged()

    def test_survives_closing_the_window(self):
        self.arrange()
        self.desktop.key("alt+F4", window=self.window)
        self.assert_ends_well(self.program)
        self.assert_arranged()

    def test_survives_signals(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number):
                self.arrange()
                self.program.signal(number)
                self.assert_ends_well(self.program)
                self.assert_arranged()
                self.program.close()

    def test_keeps_the_tab_in_front(self):
        self.open()
        self.await_tab(charts=True)
        self.select_tab(charts=False)
        self.quit_by_key()
        self.assert_ends_well(self.program)
        self.open()
        self.await_tab(charts=False)

    def test_survives_being_killed(self):
        self.arrange()
        # The program promises to have the arrangement on the disk five seconds later, and nothing announces it.
        arranged = time.monotonic()
        wait_until(lambda: time.monotonic() > arranged + 6, "six seconds")
        self.program.signal(signal.SIGKILL)
        self.program.wait()
        self.assert_arranged()
