# SPDX-License-Identifier: MIT
"""The preferences: every setting is changed while the program runs, and reverted."""

import itertools
import time

from desktop import wait_until
from prefs import (BORDER, CANCEL, DRAW_BORDER, MODE, RAMPS, REVERT, REVERT_ALL, SHOW_TITLE, TARGET, TITLE_FIELD, TRANSPARENT,
                   PrefsTest, values)

TITLE_COLOR = bytes.fromhex("f2f5f9")
BACKGROUND = bytes.fromhex("10151d")
MEMORY = bytes.fromhex("2a9d78")


class Sampler(PrefsTest):
    SAMPLES, DELAY = (35, 78), (34, 154)
    RIGHT_END = 387

    def columns(self):
        """Returns how many columns the chart of the memory has drawn, and when."""
        row = self.picture().crop(4, 291, 567, 1)
        return row.count(MEMORY), time.monotonic()

    def rate(self):
        """Returns the columns per second, over at least a fifth of one."""
        first, start = self.columns()
        for _ in range(100):
            last, end = self.columns()
            if end - start > 0.2:
                break
        return (last - first) / (end - start)

    def slide(self, handle, x):
        self.desktop.drag(self.on_screen(self.prefs, *handle), self.on_screen(self.prefs, x, handle[1]))

    def test_delay_slider_changes_the_rate_of_the_charts(self):
        self.open_global()
        self.slide(self.DELAY, 10)
        wait_until(lambda: self.rate() > 12, "charts that draw fast")
        self.slide((20, self.DELAY[1]), self.RIGHT_END)
        wait_until(lambda: self.rate() == 0, "charts that wait")
        self.close_prefs()
        self.assertEqual(values(self.quit(), "Delay")[:1], [5000000])

    def test_samples_slider_changes_the_history(self):
        self.open_global()
        self.slide(self.SAMPLES, self.RIGHT_END)
        self.close_prefs()
        self.assertEqual(values(self.quit(), "NodesToKeep"), [200])

    def test_charts_go_on_while_a_slider_is_moved(self):
        self.open_global()
        x, y = self.on_screen(self.prefs, *self.SAMPLES)
        aside = itertools.cycle(range(0, 200, 7))
        self.desktop.xdotool("mousemove", x, y, "mousedown", 1)
        first, _ = self.columns()

        def move():
            self.desktop.xdotool("mousemove", x + next(aside), y)
            return self.columns()[0] >= first + 5

        wait_until(move, "charts that draw under a slider that moves all the time")
        self.desktop.xdotool("mouseup", 1)
        self.close_prefs()
        self.assertNotEqual(values(self.quit(), "NodesToKeep"), [10])

    def test_cancel_takes_both_back(self):
        self.open_global()
        self.slide(self.SAMPLES, 200)
        self.slide(self.DELAY, 200)
        self.click((353, 229))
        wait_until(lambda: self.shown() == [self.window], "the preferences to close")
        stored = self.quit()
        self.assertEqual(values(stored, "NodesToKeep"), [10])


class General(PrefsTest):
    def setUp(self):
        super().setUp()
        self.open_prefs()

    def test_chart_becomes_a_gauge_and_points(self):
        self.cancel()
        self.open_prefs(chart=1)

        def column():
            return self.chart(1).crop(20, 25, 1, 40).count(MEMORY)

        # A gauge fills the height at once; the curve of the memory stays below, even when it has reached that column.
        self.assertEqual(column(), 0)
        self.choose_of(MODE, 1, 0)
        wait_until(lambda: column() == 40, "the gauge")
        self.choose_of(MODE, 0, 2)
        wait_until(lambda: column() == 0, "the chart")
        wait_until(lambda: 0 < self.chart(1).count(MEMORY) < 100, "points")
        self.close_prefs()
        self.assertEqual(values(self.quit(), "ChartType"), [1, 3, 1])

    def test_title_follows_each_key(self):
        before = self.title()
        self.click(TITLE_FIELD)
        self.desktop.key("ctrl+a")
        for key in "Wide":
            self.desktop.key(key)
            wait_until(lambda: self.title() != before, "another title")
            before = self.title()
        self.close_prefs()
        self.assertIn("Wide", values(self.quit(), "Title"))

    def test_boxes_hide_title_and_border(self):
        self.click(SHOW_TITLE)
        wait_until(lambda: self.chart(0).crop(10, 4, 100, 16).count(TITLE_COLOR) == 0, "no title")
        border = self.picture().pixel(*BORDER)
        self.click(DRAW_BORDER)
        wait_until(lambda: self.picture().pixel(*BORDER) != border, "no border")
        self.close_prefs()

    def test_revert_and_cancel_take_back(self):
        def type_title():
            self.click(TITLE_FIELD)
            self.desktop.key("ctrl+a")
            self.desktop.xdotool("type", "Other")
            wait_until(lambda: self.title() != before, "the other title")

        before = self.title()
        for button in (REVERT, REVERT_ALL):
            type_title()
            self.click(button)
            wait_until(lambda: self.title() == before, "the title from before")
        type_title()
        self.cancel()
        wait_until(lambda: self.title() == before, "the title from before")
        self.assertIn("All CPUs", values(self.quit(), "Title"))

    def title(self):
        """Returns the shape of the title, whatever the chart draws behind it."""
        picture = self.chart(0).crop(10, 2, 120, 18)
        return [picture.pixel(x, y) == tuple(TITLE_COLOR) for y in range(18) for x in range(120)]


class Colors(PrefsTest):
    def setUp(self):
        super().setUp()
        self.open_prefs(chart=1)
        self.show("Colors")

    def pick(self, **parts):
        """Picks a colour from the ramps, 0 to 255 each."""
        for part, value in parts.items():
            self.click((5 + value, RAMPS[part]))

    def test_of_a_curve_changes_what_is_drawn_already(self):
        self.choose_of(TARGET, 1)
        self.assertGreater(self.chart(1).count(MEMORY), 0)
        self.pick(red=255, green=0, blue=255)
        wait_until(lambda: self.chart(1).count(MEMORY) == 0, "the new colour")

        def purple():
            return {color for color in self.chart(1).colors() if color[0] > 250 and color[1] < 5 and color[2] > 250}

        wait_until(purple, "the picked colour")
        self.click(REVERT)
        wait_until(lambda: self.chart(1).count(MEMORY) > 0, "the colour from before")

    def test_of_the_background(self):
        self.choose_of(TARGET, 2)
        self.pick(red=90)
        wait_until(lambda: self.chart(1).count(BACKGROUND) == 0, "the new background")
        self.click(CANCEL)
        wait_until(lambda: self.chart(1).count(BACKGROUND) > 10000, "the background from before")

    def test_background_that_is_transparent_shows_the_window(self):
        self.click(TRANSPARENT)
        wait_until(lambda: self.chart(1).count(BACKGROUND) < 10000, "what lies below")
        self.click(TRANSPARENT)
        self.close_prefs()
