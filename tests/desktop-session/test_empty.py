# SPDX-License-Identifier: MIT
"""A window without any chart."""

from charts import ChartsTest
from desktop import wait_until

MIDDLE = (300, 230)


class Empty(ChartsTest):
    def setUp(self):
        super().setUp()
        for _ in range(3):
            self.popup()
            self.choose("d")
        wait_until(self.is_empty, "an empty window")
        self.empty = self.picture()

    def is_empty(self):
        """Charts are dark."""
        picture = self.picture()
        return all(min(picture.pixel(x, y)) > 100 for x in (100, 500) for y in (100, 200, 300, 400))

    def is_open(self):
        return len(self.shown()) > 1

    def click(self, *where, button=1):
        self.desktop.click(self.window, *where, button=button)
        wait_until(self.is_open, "the menu")
        # The button was released long before that many pictures were taken.
        for _ in range(3):
            self.picture()
        self.assertTrue(self.is_open())

    def choose_add(self):
        self.desktop.key("Down", "Return")
        wait_until(lambda: not self.is_open(), "the menu to close")

    def test_a_click_opens_a_menu_that_stays_open(self):
        for button in (1, 2, 3):
            for where in ((60, 90), MIDDLE, (520, 400)):
                with self.subTest(button=button, where=where):
                    self.click(*where, button=button)
                    self.desktop.key("Escape")
                    wait_until(lambda: not self.is_open(), "the menu to close")
        self.assertTrue(self.is_empty())

    def test_a_click_on_the_item_adds_a_chart(self):
        self.click(*MIDDLE)
        self.desktop.xdotool("mousemove_relative", 20, 12, "click", 1)
        wait_until(lambda: not self.is_empty(), "a chart")
        self.assertEqual(self.quit().count(b"ChartType"), 1)

    def test_the_keyboard_adds_a_chart(self):
        self.click(*MIDDLE)
        self.choose_add()
        wait_until(lambda: not self.is_empty(), "a chart")
        self.assertEqual(self.quit().count(b"ChartType"), 1)

    def test_a_line_tells_what_to_do(self):
        panel = self.empty.pixel(60, 90)
        row = self.empty.crop(4, 80, self.empty.width - 8, self.empty.height - 90)
        darkest = min(row.colors(), key=sum)
        self.assertEqual(len(set(darkest)), 1, "grey")
        self.assertGreater(panel[0] - darkest[0], 100)
        self.assertGreater(darkest[0], 0)
        # In the middle, and one line high.
        text = [y for y in range(80, self.empty.height - 10)
                if self.empty.crop(4, y, self.empty.width - 8, 1).colors() != {bytes(panel)}]
        self.assertLess(max(text) - min(text), 20)
        self.assertLess(abs((max(text) + min(text)) // 2 - (50 + self.empty.height) // 2), 20)
