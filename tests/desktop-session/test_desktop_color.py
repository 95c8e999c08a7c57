# SPDX-License-Identifier: MIT
"""The colour of the desktop: followed, tested, and restored."""

import signal

from desktop import wait_until
from prefs import DESKTOP_COLOR, PICK_DESKTOP, RAMPS, SWATCH, TEST_ON_DESKTOP, PrefsTest
from replicants import ReplicantsTest

BARE = (1270, 790)
"""A place of the screen that no window covers."""


class DesktopColor(PrefsTest):
    def arrange(self):
        self.paint("#204060")

    def paint(self, color):
        """Paints the desktop as another program does."""
        width, height = self.desktop.picture().width, self.desktop.picture().height
        self.desktop.output("display", "-window", "root", "-size", f"{width}x{height}", f"xc:{color}")
        wait_until(lambda: self.bare() == tuple(bytes.fromhex(color[1:])), "the colour on the desktop")

    def bare(self):
        return self.desktop.picture().pixel(*BARE)

    def start_test(self):
        self.open_prefs()
        self.show("Colors")
        self.click((5 + 200, RAMPS["red"]))
        self.click(TEST_ON_DESKTOP)
        wait_until(lambda: self.bare() != (32, 64, 96), "the picked colour on the desktop")

    def test_is_picked_as_it_is_now(self):
        self.open_prefs()
        self.show("Colors")
        # xsetroot notifies nobody, and leaves the name of the previous picture.
        self.paint("#204060")
        for color in ("#806040", "#408060"):
            self.desktop.output("xsetroot", "-solid", color)
            self.click(PICK_DESKTOP)
            expected = tuple(bytes.fromhex(color[1:]))
            wait_until(lambda: self.page().pixel(*SWATCH) == expected, f"{color} in the swatch")

    def test_is_followed_by_a_locked_chart(self):
        self.open_prefs()
        self.click(DESKTOP_COLOR)
        right = lambda: self.chart(0).pixel(540, 60)  # noqa: E731
        wait_until(lambda: right() == (32, 64, 96), "a chart in the colour of the desktop")
        self.paint("#605040")
        wait_until(lambda: right() == (96, 80, 64), "the next colour")

    def drop_swatch(self):
        """Drops the swatch onto the bare desktop."""
        self.take_hold(self.on_screen(self.prefs, *SWATCH))
        self.let_go(BARE)

    def test_is_that_of_a_swatch_dropped_on_it_for_good(self):
        self.open_prefs()
        self.show("Colors")
        self.click((5 + 200, RAMPS["red"]))
        color = wait_until(lambda: max(self.page().pixel(*SWATCH)) and self.page().pixel(*SWATCH), "a colour")
        self.drop_swatch()
        wait_until(lambda: self.bare() == color, "the dropped colour on the desktop")
        self.cancel()
        self.quit()
        self.assertEqual(self.bare(), color)
        self.assertFalse((self.config / "kits-desktop.kept").exists())
        self.program = self.start()
        self.program.window()
        self.assertEqual(self.bare(), color)

    def test_is_put_back_no_further_than_to_a_dropped_swatch(self):
        self.start_test()
        self.drop_swatch()
        dropped = self.bare()
        wait_until(lambda: not (self.config / "kits-desktop.kept").exists(), "nothing to put back")
        self.click((5 + 100, RAMPS["green"]))
        wait_until(lambda: self.bare() != dropped, "the next colour to be tried")
        self.click(TEST_ON_DESKTOP)
        wait_until(lambda: self.bare() == dropped, "the dropped colour")

    def test_is_not_changed_by_a_swatch_that_is_given_up(self):
        self.open_prefs()
        self.show("Colors")
        self.take_hold(self.on_screen(self.prefs, *SWATCH), BARE)
        self.desktop.key("Escape")
        self.desktop.xdotool("mouseup", 1)
        self.settle()
        self.assertEqual(self.bare(), (32, 64, 96))

    def test_is_put_back_when_the_box_is_off(self):
        self.start_test()
        self.click(TEST_ON_DESKTOP)
        wait_until(lambda: self.bare() == (32, 64, 96), "the desktop as before")

    def test_is_put_back_by_cancel_and_by_the_end(self):
        self.start_test()
        self.cancel()
        wait_until(lambda: self.bare() == (32, 64, 96), "the desktop as before")
        self.start_test()
        self.quit()
        self.assertEqual(self.bare(), (32, 64, 96))

    def test_is_put_back_at_the_next_start_after_a_kill(self):
        self.start_test()
        picked = self.bare()
        self.program.signal(signal.SIGKILL)
        self.program.wait()
        self.assertEqual(self.bare(), picked)
        self.program = self.start()
        wait_until(lambda: self.bare() == (32, 64, 96), "the desktop as before")


class OnDesktop(ReplicantsTest, PrefsTest):
    def test_a_chart_takes_a_swatch_itself(self):
        self.drag_out(104, 664)
        chart = self.replicant()
        wait_until(lambda: self.desktop.geometry(chart)[:2] == (100, 660), "the place of the chart")
        place = self.on_screen(chart, 500, 60)  # no curve reaches this place for a long time
        self.open_prefs()
        self.show("Colors")
        self.click((5 + 200, RAMPS["red"]))
        color = wait_until(lambda: max(self.page().pixel(*SWATCH)) and self.page().pixel(*SWATCH), "a colour")
        bare = self.desktop.picture().pixel(*BARE)
        self.assertNotEqual(bare, color)
        self.take_hold(self.on_screen(self.prefs, *SWATCH))
        self.let_go(place)
        wait_until(lambda: self.desktop.picture().pixel(*place) == color, "the colour on the chart")
        self.settle()
        self.assertEqual(self.desktop.picture().pixel(*BARE), bare)
