# SPDX-License-Identifier: MIT
"""Charts by keyboard alone."""

from charts import TITLE, ChartsTest
from desktop import wait_until
from prefs import CHARTS, PrefsTest, values


class Keys(ChartsTest):
    def open_menu(self, key="Menu"):
        shown = len(self.shown())
        self.desktop.key(key)
        wait_until(lambda: len(self.shown()) > shown, "the menu of the chart with the focus")

    def test_open_and_close_the_menu_of_a_chart(self):
        self.desktop.key("Tab", window=self.window)
        for key in ("Menu", "shift+F10"):
            self.open_menu(key)
            self.choose("Escape")
            self.await_change()
        self.assertEqual(self.quit().count(b"ChartType"), 3)

    def test_delete_a_chart(self):
        self.desktop.key("Tab", window=self.window)
        self.open_menu()
        self.choose("d")
        self.assertEqual(self.quit().count(b"ChartType"), 2)

    def test_delete_a_chart_whose_title_is_held(self):
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        self.desktop.focus(self.window)
        start = self.on_screen(self.window, *TITLE)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        self.desktop.xdotool("mousemove", start[0] + 50, start[1])
        self.open_menu()
        self.choose("d")
        self.await_change()
        self.desktop.xdotool("mouseup", 1)
        stored = self.quit()
        self.assertEqual(stored.count(b"ChartType"), 2)
        self.assertNotIn(b"All CPUs", stored)

    def test_walk_the_tabs_and_open_the_windows(self):
        charts = self.desktop.size(self.window)
        self.desktop.key("ctrl+Next", window=self.window)
        wait_until(lambda: self.desktop.size(self.window) != charts, "the uptimes")
        self.desktop.key("ctrl+Tab", window=self.window)
        wait_until(lambda: self.desktop.size(self.window) == charts, "the charts")
        self.await_change()
        self.desktop.key("ctrl+p", window=self.window)
        self.desktop.key("Tab", "Right", window=self.program.window("^Global preferences$"))
        self.desktop.key("ctrl+a", window=self.window)
        about = self.program.window("^About Qel$")
        self.desktop.key("Escape", window=about)
        wait_until(lambda: about not in self.shown(), "the about window to close")
        self.desktop.key("alt+f", window=self.window)
        wait_until(lambda: len(self.shown()) > 2, "the menu")
        self.desktop.key("q")
        self.assertEqual(self.program.wait(), (0, ""))


class Captions(PrefsTest):
    def corner(self):
        """Returns the first chart's top left corner with its title; nothing is drawn behind the title yet."""
        return self.picture().crop(CHARTS[0][0] + 8, CHARTS[0][1], 120, 60)

    def text(self):
        """Returns the pixels of the title's letters in that corner, whatever is drawn behind them."""
        picture = self.corner()
        return {(x, y) for y in range(60) for x in range(120) if picture.pixel(x, y) == (0xf2, 0xf5, 0xf9)}

    def test_are_moved_and_put_back(self):
        self.desktop.key("Tab", window=self.window)
        before = wait_until(self.text, "the title")
        inner = {(x, y) for x, y in before if 25 < x < 60}
        self.desktop.key("Return", "shift+Right", "shift+Down", "Right")
        wait_until(lambda: {(x + 11, y + 10) for x, y in inner} <= self.text(), "the title to move")
        self.desktop.key("Escape")
        wait_until(lambda: inner <= self.text(), "the title where it was")
        self.desktop.key("Return", "shift+Down")
        wait_until(lambda: {(x, y + 10) for x, y in inner} <= self.text(), "the title to move again")


class Clipboard(PrefsTest):
    def setUp(self):
        super().setUp()
        self.desktop.key("Tab", "Tab", window=self.window)

    def open_prefs_by_key(self, page):
        """Opens the preferences of the second chart, which has the keyboard focus."""
        self.desktop.key("Menu")
        wait_until(lambda: len(self.shown()) == 2, "the menu of the chart with the focus")
        self.desktop.key("p")
        self.prefs = self.program.window("^Chart preferences$")
        self.desktop.focus(self.prefs)
        wait_until(lambda: len(self.page().colors()) > 50, "their first picture")
        if page > 0:
            self.desktop.key(*["Right"] * page)

    def test_settings_go_from_chart_to_chart(self):
        self.desktop.key("ctrl+c", "Tab", "ctrl+v")
        self.await_change()
        self.assertEqual(values(self.quit(), "Title"), ["All CPUs", "Used memory", "Used memory"])

    def test_page_goes_from_its_window_to_a_chart(self):
        self.open_prefs_by_key(page=0)
        self.desktop.key("ctrl+c")
        self.desktop.key("shift+Tab", "ctrl+v", window=self.window)
        self.await_change()
        self.assertEqual(values(self.quit(), "Title"), ["Used memory", "Used memory", "Processors"])

    def test_source_becomes_what_the_value_tells(self):
        def targets():
            try:
                return values(self.stored(), "Target")
            except FileNotFoundError:
                return []  # the file is being replaced

        before = wait_until(targets, "the settings on the disk")
        self.open_prefs_by_key(page=2)
        self.desktop.key("Tab", "Home", "ctrl+c")
        self.desktop.key("shift+Tab", "Return", "Return", "ctrl+v", window=self.window)
        wait_until(lambda: targets() != before, "another source")
        self.assertEqual(len(targets() or before), len(before))

    def test_colour_goes_to_the_background_and_to_a_source(self):
        self.open_prefs_by_key(page=1)
        self.desktop.key("Tab", "End", "ctrl+c")
        self.desktop.key("shift+Tab", "ctrl+v", window=self.window)
        wait_until(lambda: self.chart(0).count((255, 0, 0)) > 10000, "the background")
        self.desktop.key("Tab", "Tab")
        menus = len(self.shown())
        self.desktop.key("Menu", "o")
        wait_until(lambda: len(self.shown()) >= menus + 2, "the sources")
        # The first item is hidden behind the submenu.
        self.desktop.key("Down", "Right")
        wait_until(lambda: len(self.shown()) >= menus + 3, "what can be done to the second")
        self.desktop.key("Down", "Return")
        left, top, width = CHARTS[2][:3]

        def curve():
            """The curve runs along the lower border."""
            picture = self.picture()
            return picture.crop(left, top, width, picture.height - top).count((255, 0, 0))

        wait_until(lambda: curve() > 20, "a curve in that colour")
