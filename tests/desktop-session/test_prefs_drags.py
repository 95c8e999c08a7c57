# SPDX-License-Identifier: MIT
"""Drags out of the preferences: sources, groups of them, pages, colours."""

from desktop import wait_until
from prefs import ADD, CHARTS, FIND, FIRST_SOURCE, MIDDLES, RAMPS, REVERT, SWATCH, TABS, PrefsTest, values

MEMORY = bytes.fromhex("2a9d78")
TITLE_COLOR = bytes.fromhex("f2f5f9")
TITLE, VALUE = (40, 62), (40, 84)
"""Places on the first chart."""
ROW = 14


class Sources(PrefsTest):
    def setUp(self):
        super().setUp()
        self.open_prefs(chart=1)
        self.show("Sources")

    def row(self, index):
        return FIRST_SOURCE[0], FIRST_SOURCE[1] + ROW * index

    def test_one_is_added_to_the_chart_it_is_dropped_on(self):
        before = self.targets()
        self.drag_to_chart(self.row(0), *MIDDLES[1])
        self.await_targets(len(before) + 1)

    def test_one_on_a_title_names_the_chart(self):
        self.targets()
        self.drag_to_chart(self.row(11), *TITLE)
        wait_until(lambda: "Used memory (exp. averaged)" in self.kept("Title"), "the new title")

    def test_one_on_a_value_is_what_the_value_tells(self):
        before = self.targets()
        self.drag_to_chart(self.row(8), *VALUE)
        wait_until(lambda: self.targets() != before, "the other source")
        self.assertEqual(len(self.targets()), len(before))

    def test_group_is_added_whole(self):
        before = self.targets()
        self.find("CPU 1 average")
        self.drag_to_chart(self.row(2), *MIDDLES[1])
        self.await_targets(len(before) + 2)

    def test_enter_and_the_button_add_what_is_selected(self):
        before = self.targets()
        self.click(self.row(2))
        self.desktop.key("Return")
        self.await_targets(len(before) + 1)
        self.click(self.row(4))
        self.click(ADD)
        self.await_targets(len(before) + 2)
        self.click(REVERT)
        self.await_targets(len(before))

    def test_typing_narrows_the_list(self):
        whole = self.list()
        self.find("memory")
        self.click(FIND)
        self.desktop.key("ctrl+a", "BackSpace")
        wait_until(lambda: self.list() == whole, "all of it")

    def list(self):
        return self.page().crop(20, 37, 390, 185)

    def find(self, text):
        self.click(FIND)
        self.desktop.xdotool("type", text)
        wait_until(lambda: self.list().crop(0, 150, 390, 30).colors() == {b"\xff\xff\xff"}, "a short list")

    def kept(self, name):
        """Returns the values of a field on the disk; none while the file is being replaced."""
        try:
            return values(self.stored(), name)
        except FileNotFoundError:
            return []

    def targets(self):
        """Returns the targets of all sources of all charts."""
        return wait_until(lambda: self.kept("Target"), "the settings on the disk")

    def await_targets(self, count):
        wait_until(lambda: len(self.targets()) == count, f"{count} sources")


class Pages(PrefsTest):
    def setUp(self):
        super().setUp()
        self.open_prefs(chart=1)

    def test_one_goes_with_the_first_button(self):
        self.drag_to_chart(TABS["General"], *MIDDLES[0])
        wait_until(lambda: self.title(0) == self.title(1), "the same title")
        self.assertEqual(self.chart(0).count(MEMORY), 0)
        self.assertEqual(values(self.quit(), "Title"), ["Used memory", "Used memory", "Processors"])

    def test_all_go_with_another_button(self):
        self.drag_to_chart(TABS["General"], *MIDDLES[0], button=3)
        wait_until(lambda: self.title(0) == self.title(1), "the same title")
        wait_until(lambda: self.chart(0).count(MEMORY) > 0, "the same curve")
        # Beyond the curves both are the same to the pixel; the curves began at different times.
        right = [self.chart(index).crop(400, 0, 170, 118) for index in (0, 1)]
        self.assertEqual(*right)
        self.close_prefs()
        self.assertEqual(values(self.quit(), "Title"), ["Used memory", "Used memory", "Processors"])

    def title(self, index):
        """Returns the shape of the title, whatever the chart draws behind it."""
        picture = self.chart(index).crop(6, 2, 250, 20)
        return [picture.pixel(x, y) == tuple(TITLE_COLOR) for y in range(20) for x in range(250)]


class Colors(PrefsTest):
    def test_go_from_the_swatch_onto_a_curve(self):
        self.open_prefs(chart=0)
        self.show("Colors")
        self.click((5 + 250, RAMPS["red"]))
        place = wait_until(self.curve, "some columns")
        before = self.chart(1).count(MEMORY)
        self.assertGreater(before, 0)
        self.drag_to_chart(SWATCH, *place)
        wait_until(lambda: self.chart(1).count(MEMORY) == 0, "the curve in the colour of the swatch")

    def curve(self):
        """Returns a place inside the curve of the memory, in the window."""
        left, top, width, height = CHARTS[1]
        chart = self.chart(1)
        for y in range(height - 3, 0, -1):
            for x in range(2, 30):
                if chart.crop(x - 1, y - 1, 3, 3).colors() == {MEMORY}:
                    return left + x, top + y
        return None
