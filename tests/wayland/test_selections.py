# SPDX-License-Identifier: MIT
"""Selections and drags of other programs on Wayland, with data given correctly or badly, pasted and dropped on charts
and swatches."""

import signal
import subprocess
import unittest

from desktop import TIMEOUT, stop_process, wait_until
from prefs import SWATCH, TABS
from programs import ctrl
from selections import (BAD, CHART, COLOR, COLOR_FORM, GROUND, OLD_COLOR, OTHER_COLOR, SOURCE, WAITING, SelectionsTest,
                        color_bytes)


class Charts(SelectionsTest):
    def paste(self):
        """Pastes with the menu of a chart."""
        self.open_menu()
        self.press(lambda: not self.shows_menu(), "the menu to close", ("t",))

    def paste_color(self, behaviour, color):
        offer = self.client.own(behaviour, color_bytes(color), COLOR_FORM)
        self.click("Qel", CHART)
        self.press(offer.asked, "a question for the data", ctrl("v"))
        return offer

    def test_take_a_pasted_color_from_their_menu(self):
        self.client.own("good", color_bytes(COLOR), COLOR_FORM)
        self.paste()
        self.await_color()
        self.assertEqual(self.beeps(), 0)
        self.quit(self.program)

    def test_beep_for_a_paste_whatever_the_owner_does(self):
        for behaviour in BAD:
            with self.subTest(behaviour):
                beeps = self.beeps()
                self.assert_has_no_effect(behaviour, self.paste_color)
                self.await_beep(beeps)
        self.paste_color("pieces", COLOR)
        self.await_color()
        self.quit(self.program)

    def assert_has_no_effect(self, behaviour, use):
        if behaviour in WAITING:
            offer = self.await_beep_while_charts_move(lambda: use(behaviour, COLOR))
            # Too late.
            offer.answer()
        else:
            use(behaviour, COLOR)
        self.settle()
        self.assertLess(self.count(COLOR), GROUND)

    def test_go_on_when_the_owner_stands_still(self):
        """A program of its own, which answers when it is continued."""
        file = self.desktop.folder / "color"
        file.write_bytes(color_bytes(COLOR))
        command = ["wl-copy", "--foreground", "--type", COLOR_FORM]
        with file.open("rb") as content:
            owner = subprocess.Popen(command, stdin=content, env=self.desktop.environment)
        self.addCleanup(self.end, owner)

        def given():
            return subprocess.run(["wl-paste", "--type", COLOR_FORM], env=self.desktop.environment,
                                  capture_output=True, timeout=TIMEOUT).stdout

        wait_until(lambda: given() == color_bytes(COLOR), "the clipboard")
        stop_process(owner.pid)
        self.click("Qel", CHART)
        self.press(self.beeps, "a beep", ctrl("v"))
        owner.send_signal(signal.SIGCONT)
        self.settle()
        self.assertLess(self.count(COLOR), GROUND)
        self.paste_color("good", COLOR)
        self.await_color()
        self.quit(self.program)

    def test_take_a_dropped_color(self):
        self.open_source()
        for behaviour in ("good", "pieces"):
            with self.subTest(behaviour):
                self.drop_color(behaviour, COLOR)
                self.await_color()
                self.drop_color("good", OLD_COLOR)
                wait_until(lambda: self.count(COLOR) < GROUND, "the old ground")
        self.assertEqual(self.beeps(), 0)
        self.quit(self.program)

    def test_go_on_after_a_drop_whatever_the_source_does(self):
        self.open_source()
        for behaviour in BAD:
            with self.subTest(behaviour):
                self.assert_has_no_effect(behaviour, self.drop_color)
        self.drop_color("good", COLOR)
        self.await_color()
        self.quit(self.program)

    def test_take_a_drop_while_another_one_waits(self):
        self.open_source()
        self.drop_color("silent", OTHER_COLOR)
        self.drop_color("good", COLOR)
        self.await_color()
        self.await_beep(0)
        # The deadline passes while something else is over the chart.
        self.drop_color("silent", OTHER_COLOR)
        offer = self.drag("good", color_bytes(OLD_COLOR), [COLOR_FORM], "Qel", CHART)
        self.await_beep(1)
        self.settle()
        self.drop(offer)
        wait_until(lambda: self.count(COLOR) < GROUND, "the old ground")
        self.assertLess(self.count(OTHER_COLOR), GROUND)
        self.quit(self.program)

    def test_go_on_when_the_source_ends(self):
        for moment in ("over a chart", "after the drop"):
            with self.subTest(moment):
                self.open_source()
                offer = self.drag("silent", color_bytes(COLOR), [COLOR_FORM], "Qel", CHART)
                if moment == "after the drop":
                    self.drop(offer)
                self.dragger.close()
                if moment == "over a chart":
                    self.client.release()
                wait_until(lambda: SOURCE not in self.names(), "the window to go")
                self.settle()
                self.assertLess(self.count(COLOR), GROUND)
        self.open_source()
        self.drop_color("good", COLOR)
        self.await_color()
        self.quit(self.program)

    def test_quit_in_the_middle(self):
        self.open_source()
        for use in (self.paste_color, self.drop_color):
            for behaviour in ("silent", "trickle"):
                with self.subTest(behaviour, use=use.__name__):
                    use(behaviour, COLOR)
                    self.program.send_signal(signal.SIGTERM)
                    self.assert_ends_well(self.program)
                    self.open()
        self.quit(self.program)


class Swatches(SelectionsTest):
    def test_take_a_dropped_color(self):
        self.open_source()
        self.open_prefs()
        before = self.desktop.picture()
        self.click("Chart preferences", TABS["Colors"])
        wait_until(lambda: self.desktop.picture() != before, "the page")
        self.settle()
        plain = self.count(COLOR)
        self.await_beep_while_charts_move(lambda: self.drop_color("silent", COLOR, "Chart preferences", SWATCH))
        self.assertEqual(self.count(COLOR), plain)
        self.drop_color("good", COLOR, "Chart preferences", SWATCH)
        wait_until(lambda: self.count(COLOR) > plain + 500, "the colour")
        self.program.send_signal(signal.SIGTERM)
        self.assert_ends_well(self.program)


if __name__ == "__main__":
    unittest.main()
