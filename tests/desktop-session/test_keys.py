"""Charts by keyboard alone."""

from charts import TITLE, ChartsTest
from desktop import wait_until


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
        self.desktop.xdotool("mousemove", *start, "mousedown", 1, "mousemove", start[0] + 50, start[1])
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
