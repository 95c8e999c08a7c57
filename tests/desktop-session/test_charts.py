# SPDX-License-Identifier: MIT
"""Charts under the mouse: the pop-up menu, drags within the program, and ends in the middle of them."""

from charts import TITLE, ChartsTest
from desktop import wait_until


class Menu(ChartsTest):
    def test_adds_and_deletes_charts(self):
        self.popup()
        self.choose("a")
        self.popup()
        self.choose("a")
        self.popup()
        self.choose("d")
        stored = self.quit()
        self.assertEqual(stored.count(b"ChartType"), 4)
        self.assertNotIn(b"All CPUs", stored)

    def test_leaves_the_charts_scrolling(self):
        self.popup()
        self.await_change()
        self.desktop.key("Escape")

    def test_is_closed_by_the_end_of_the_program(self):
        self.popup()
        self.assertEqual(self.quit().count(b"ChartType"), 3)


class Screen(ChartsTest):
    def test_shows_what_an_exposed_window_shows(self):
        """The columns that samples sent to the screen one by one equal those of the window's whole picture."""
        # These columns stay unchanged until the charts wrap; they lie below the captions.
        columns = 40

        def drawn():
            picture = self.picture()
            return [picture.crop(5, top, columns, 60).data for top in (110, 232, 356)]

        def reached():
            """Some memory is always in use."""
            picture = self.picture()
            return any(picture.pixel(x, 290) != picture.pixel(500, 290) for x in range(columns + 5, columns + 15))

        wait_until(reached, "the columns")
        shown = drawn()
        self.desktop.output("xrefresh", check=True)
        wait_until(lambda: drawn() == shown, "the same columns, painted anew")


class Dragging(ChartsTest):
    def test_moves_a_title(self):
        start = self.on_screen(self.window, *TITLE)
        before = self.picture().crop(200, 50, 120, 40)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        self.desktop.xdotool("mousemove", start[0] + 100, start[1], "mousemove", start[0] + 200,
                             start[1] + 10)
        wait_until(lambda: self.picture().crop(200, 50, 120, 40) != before, "the title under the pointer")
        self.await_change()
        self.desktop.xdotool("mouseup", 1)
        self.quit()

    def test_of_text_onto_a_title_sets_it(self):
        self.desktop.key("ctrl+a", window=self.window)
        about = self.program.window("^About Qel$")
        start = self.on_screen(about, 60, 151)
        self.take_hold(start)
        self.let_go(self.on_screen(self.window, *TITLE))
        self.desktop.key("ctrl+q", window=self.window)
        self.assert_ends_well(self.program)
        self.assertIn(b"qel@example.org", self.stored())

    def test_is_ended_by_the_end_of_the_program(self):
        start = self.on_screen(self.window, *TITLE)
        self.desktop.xdotool("mousemove", *start)
        self.desktop.xdotool("mousedown", 1)
        self.desktop.xdotool("mousemove", start[0] + 60, start[1])
        self.quit()
        self.desktop.xdotool("mouseup", 1)


class About(ChartsTest):
    def test_is_closed_by_its_button(self):
        self.desktop.key("ctrl+a", window=self.window)
        about = self.program.window("^About Qel$")
        self.desktop.click(about, 340, 198)
        wait_until(lambda: not self.desktop.windows("^About Qel$", self.program.pid), "the about window to close")
        self.await_change()
        self.quit()

    def test_is_opened_once(self):
        for _ in range(2):
            self.desktop.key("ctrl+a", window=self.window)
            self.program.window("^About Qel$")
        self.settle()
        self.assertEqual(len(self.desktop.windows("^About Qel$", self.program.pid)), 1)
        self.quit()
