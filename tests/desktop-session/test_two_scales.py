# SPDX-License-Identifier: MIT
"""Two screens of different scale, side by side: windows and charts that move from one to the other."""

from charts import RECORDED
from desktop import SCREEN, Desktop, wait_until
from replicants import ReplicantsTest

HALF = SCREEN[0] // 2
SIZE = (300, 200)
"""Size of the window's content, in logical pixels."""
PLACE = (20, 40)


class TwoScales(ReplicantsTest):
    LEFT, RIGHT = 1, 2

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        for name, left, output in (("left", 0, "screen"), ("right", HALF, "none")):
            self.desktop.output("xrandr", "--setmonitor", name, f"{HALF}/160x{SCREEN[1]}/200+{left}+0", output,
                                check=True)
        self.environment = dict(RECORDED, QT_SCREEN_SCALE_FACTORS=f"left={self.LEFT};right={self.RIGHT}")
        super().setUp()

    def place(self):
        super().place()
        self.desktop.resize(self.window, *(self.LEFT * extent for extent in SIZE))
        # If the program learned of a new size and of another screen together, the size would count as set on that
        # screen.
        self.settle()

    def handle(self, window=None):
        scale = self.scale_at(window or self.window)
        place = (7, self.first_chart() + 4) if window is None else (4, 4)
        return self.on_screen(window or self.window, *(scale * number for number in place))

    def scale_at(self, window):
        left, _, width, _ = self.desktop.geometry(window)
        return self.LEFT if left + width / 2 < HALF else self.RIGHT

    def await_size(self, window, scale, size=SIZE):
        wait_until(lambda: self.scale_at(window) == scale and self.desktop.size(window)
                   == tuple(scale * extent for extent in size), f"the size {size} at {scale}")

    def move(self, left, top):
        self.desktop.xdotool("windowmove", self.window, left, top)

    def pause(self):
        """Pauses all charts, and returns what the window shows from then on."""
        for y in (65, 115, 165):
            self.popup(self.LEFT * 150, self.LEFT * y)
            self.choose("u")
        return self.still()

    def still(self):
        """Returns what the window shows once it no longer changes."""
        pictures = [None]

        def is_still():
            pictures.append(self.picture())
            return len(pictures) > 4 and all(picture == pictures[-1] for picture in pictures[-4:])

        wait_until(is_still, "a picture that stays")
        return pictures[-1]

    def test_a_window_has_its_size_on_each(self):
        before = self.pause()
        pictures = []
        for _ in range(2):
            self.move(700, 100)
            self.await_size(self.window, self.RIGHT)
            pictures.append(self.still())
            left, top, width, _ = self.desktop.geometry(self.window)
            self.assertTrue(left >= HALF and left + width <= SCREEN[0], (left, width))
            self.move(*PLACE)
            self.await_size(self.window, self.LEFT)
            self.assertEqual(self.still(), before)
        self.assertEqual(pictures[0], pictures[1])

    def test_a_window_keeps_its_size_under_the_hand(self):
        size = self.desktop.size(self.window)
        left, top = self.desktop.geometry(self.window)[:2]
        title = (left + 40, top - 8)
        self.desktop.xdotool("mousemove", *title, "mousedown", 1)
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        for step in range(1, 20):
            self.desktop.xdotool("mousemove", title[0] + 34 * step, title[1] + 5 * step)
        wait_until(lambda: self.scale_at(self.window) == self.RIGHT, "the window on the other screen")
        self.settle()
        self.settle()
        self.assertEqual(self.desktop.size(self.window), size)
        self.desktop.xdotool("mouseup", 1)
        self.await_size(self.window, self.RIGHT)
        self.await_change()

    def test_the_size_that_the_hand_gives_it_across_the_screens_stays(self):
        self.move(HALF - 350, 100)
        left, top, width, height = self.desktop.geometry(self.window)
        corner = (left + width - 4, top + height + 2)
        self.desktop.xdotool("mousemove", *corner, "mousedown", 1)
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        for step in range(1, 21):
            self.desktop.xdotool("mousemove", corner[0] + 26 * step, corner[1])
        pointer = min(corner[0] + 26 * 20, SCREEN[0] - 1)

        def edge():
            left, _, width, _ = self.desktop.geometry(self.window)
            return left + width

        wait_until(lambda: abs(edge() - pointer) <= 8, "the edge under the pointer")
        self.assertEqual(self.scale_at(self.window), self.RIGHT)
        size = self.desktop.size(self.window)
        self.desktop.xdotool("mouseup", 1)
        for _ in range(3):
            self.settle()
        self.assertEqual(self.desktop.size(self.window), size)

    def test_a_window_between_the_screens_comes_to_rest(self):
        for left in range(HALF - 320, HALF + 40, 24):
            self.move(left, 100)
            self.await_change()
            self.await_size(self.window, self.scale_at(self.window))
        places = []
        for _ in range(4):
            self.settle()
            places.append(self.desktop.geometry(self.window))
        self.assertEqual(len(set(places)), 1, places)

    def test_the_size_is_saved(self):
        self.move(700, 100)
        self.await_size(self.window, self.RIGHT)
        place = self.desktop.geometry(self.window)
        self.settle()
        self.quit()
        self.program = self.start(**self.environment)
        self.window = self.program.window()
        wait_until(lambda: self.desktop.geometry(self.window) == place, f"the place {place}")

    def test_a_chart_on_the_desktop_has_its_size_on_each(self):
        self.drag_out(664, 500)
        chart = self.replicant()
        wait_until(lambda: self.desktop.geometry(chart)[0] == 664 - 4 * self.RIGHT, "the chart on the right")
        wide, high = self.desktop.size(chart)
        size = wide // self.RIGHT, high // self.RIGHT
        self.assertEqual(size[0], SIZE[0] - 6)
        for place, scale in (((100, 500), self.LEFT), ((664, 300), self.RIGHT), ((60, 600), self.LEFT)):
            self.drag_out(*place, chart)
            self.await_size(chart, scale, size)
            before = self.desktop.picture(chart)
            wait_until(lambda: self.desktop.picture(chart) != before, "a chart on the desktop that scrolls")


class LargeOnTheLeft(TwoScales):
    LEFT, RIGHT = 2, 1
