# SPDX-License-Identifier: MIT
"""What other programs can drop on a chart."""

from charts import RECORDED, TITLE
from desktop import wait_until
from drops import DropsTest, sources

TITLE_COLOR = bytes.fromhex("f2f5f9")
BACKGROUND = bytes.fromhex("10151d")
MEMORY = bytes.fromhex("2a9d78")
NEW = bytes.fromhex("ff00ff")


class Text(DropsTest):
    def right_of_title(self):
        return self.picture().crop(150, 52, 150, 20).count(TITLE_COLOR)

    def test_becomes_the_title_it_is_dropped_on(self):
        self.open_source(text=b"HHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHH")
        self.assertEqual(self.right_of_title(), 0)
        self.assertTrue(self.drop(*TITLE))
        wait_until(self.right_of_title, "the new title")
        self.assertIn(b"HHHHHHHHHHHH", self.quit())

    def test_is_nothing_beside_a_title(self):
        self.open_source(text=b"not for here")
        self.drop(500, 120)
        self.await_change()
        self.assertNotIn(b"not for here", self.quit())


class Color(DropsTest):
    environment = RECORDED

    def chart(self):
        """Returns the chart of the memory, whose curve is flat."""
        return self.picture().crop(0, 180, 570, 113)

    def find(self, color):
        """Returns the middle of a square of this colour, in the window; for the background, one that no curve reaches
        for long."""
        chart = self.chart()
        row = color * 3
        for top in range(chart.height - 3, -1, -1):
            start = 3 * top * chart.width
            line = chart.data[start : start + 3 * (chart.width - 20)]
            x = line.rfind(row) if color == BACKGROUND else line.find(row)
            if x >= 0 and x % 3 == 0 and chart.crop(x // 3, top, 3, 3).colors() == {color}:
                return x // 3 + 1, 180 + top + 1
        return None

    def drop_on(self, color):
        """Drops a colour on the part that has this one."""
        self.open_source(color=b"#ff00ff")
        self.assertEqual(self.chart().count(NEW), 0)
        place = wait_until(lambda: self.find(color), "a place of this colour")
        self.assertTrue(self.drop(*place))
        wait_until(lambda: self.chart().count(NEW) > 8 and self.chart().count(color) == 0, "the new colour")
        self.await_change()

    def test_becomes_that_of_the_background(self):
        self.drop_on(BACKGROUND)
        self.assertGreater(self.chart().count(MEMORY), 0)

    def test_becomes_that_of_a_source(self):
        self.drop_on(MEMORY)
        self.assertGreater(self.chart().count(BACKGROUND), 0)


class Noise(DropsTest):
    def assert_changes_nothing(self, data):
        before = self.quit()
        self.assertEqual(before.count(b"ChartType"), 3)
        self.open()
        self.open_source(message=data)
        self.drop(300, 120)
        self.await_change()
        self.assertEqual(self.shown(), [self.window])
        self.assertEqual(self.quit(), before)

    def test_of_ten_megabytes_changes_nothing(self):
        self.assert_changes_nothing(bytes(range(251)) * (10_000_000 // 251))


class Sources(DropsTest):
    def test_too_many_raise_one_alert(self):
        self.open_source(message=sources(1000))
        self.assertEqual(len(self.shown()), 1)
        self.assertTrue(self.drop(300, 120))
        alert = self.program.window("^Qel alert$")
        self.await_change()
        self.desktop.key("Return", window=alert)
        wait_until(lambda: len(self.shown()) == 1, "the alert to close, and no other")
        self.quit()
