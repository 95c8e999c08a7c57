# SPDX-License-Identifier: MIT
"""Selections and drags of other programs, with data given correctly or badly, pasted and dropped on charts, swatches
and text fields."""

import signal
import time

from desktop import wait_until
from drops import MESSAGE, sources
from owners import Owner
from prefs import SWATCH, TARGET, TITLE_FIELD, PrefsTest, values
from xclient import Bells, Client

TEXT = "UTF8_STRING"
COLOR = "application/x-color"
WORDS = b"Words of another program"
NEW = bytes.fromhex("ff00ff")
COLOR_BYTES = b"\xff\xff\x00\x00\xff\xff\xff\xff"
BAD = ("silent", "late", "trickle", "flood", "dies", "refuses", "other")
WAITING = ("silent", "late", "trickle")
"""Behaviours that make the program wait."""
CHART = (500, 100)
SOURCE = 2051
"""The target that drops.sources() names."""
RED = (298, 41)
"""The field for the red part of a colour."""


class SelectionsTest(PrefsTest):
    def setUp(self):
        super().setUp()
        self.bells = Bells(self.desktop.environment["DISPLAY"])
        self.addCleanup(self.bells.close)

    def own(self, behaviour, form=TEXT, data=WORDS, selection="CLIPBOARD", place=()):
        """Starts a program that owns a selection, or drags over a place of the main window."""
        where = [self.window, *self.on_screen(self.window, *place)] if place else []
        self.owner = Owner(self.desktop.environment, self.config, behaviour, form, data, selection, where)
        self.addCleanup(self.owner.close)

    def await_asked(self, form):
        wait_until(lambda: form in self.owner.asked(), f"a question for {form}")

    def await_beep(self, before):
        wait_until(lambda: self.bells.count() > before, "a beep")

    def ground(self):
        return self.chart(0).count(NEW)

    def title(self):
        """Returns the titles of all charts, when the program has ended."""
        return values(self.quit(), "Title")


class Charts(SelectionsTest):
    def paste(self):
        self.desktop.click(self.window, *CHART)
        self.desktop.key("ctrl+v", window=self.window)

    def test_take_the_color_of_a_good_owner(self):
        for behaviour in ("good", "pieces", "twice"):
            with self.subTest(behaviour):
                self.own(behaviour, COLOR, COLOR_BYTES)
                self.paste()
                wait_until(lambda: self.ground() > 1000, "the new ground")
                self.assertEqual(self.bells.count(), 0)
                self.own("good", COLOR, b"\x10\x10\x15\x15\x1d\x1d\xff\xff")
                self.paste()
                wait_until(lambda: self.ground() == 0, "the old ground")

    def test_take_a_color_from_their_menu(self):
        self.own("good", COLOR, COLOR_BYTES)
        self.popup()
        self.choose("t")
        wait_until(lambda: self.ground() > 1000, "the new ground")

    def test_take_a_message_in_many_pieces(self):
        before = values(self.quit(), "Target").count(SOURCE)
        self.open()
        self.own("pieces", MESSAGE, sources(40))
        self.paste()
        alert = self.program.window("^Qel alert$")
        self.desktop.key("Return", window=alert)
        wait_until(lambda: self.shown() == [self.window], "the alert to close")
        self.assertGreater(values(self.quit(), "Target").count(SOURCE), before)

    def test_go_on_and_beep_whatever_the_owner_does(self):
        for behaviour in BAD:
            with self.subTest(behaviour):
                self.own(behaviour, COLOR, COLOR_BYTES)
                beeps = self.bells.count()
                self.paste()
                self.await_asked("TARGETS")
                if behaviour in WAITING and beeps == self.bells.count():
                    # The question stays unanswered, and the columns go on.
                    self.await_change()
                self.await_beep(beeps)
                self.settle()
                self.assertEqual(self.bells.count(), beeps + 1)
                self.assertEqual(self.ground(), 0)

    def test_have_no_use_for_what_comes_too_late(self):
        self.own("late", COLOR, COLOR_BYTES)
        self.paste()
        self.await_beep(0)
        begun = time.monotonic()
        wait_until(lambda: time.monotonic() > begun + 4, "the late answer")
        self.settle()
        self.assertEqual(self.ground(), 0)
        self.assertEqual(self.bells.count(), 1)

    def test_may_go_while_a_paste_is_under_way(self):
        self.own("silent", COLOR, COLOR_BYTES)
        self.paste()
        self.await_asked("TARGETS")
        self.popup(500, 100)
        self.desktop.key("d")
        self.await_beep(0)
        self.settle()
        self.quit()

    def test_quit_in_the_middle_of_a_paste(self):
        for behaviour in WAITING:
            with self.subTest(behaviour):
                self.own(behaviour, COLOR, COLOR_BYTES)
                self.paste()
                self.await_asked("TARGETS")
                self.program.signal(signal.SIGTERM)
                self.assert_ends_well(self.program)
                self.open()


class Keepers(SelectionsTest):
    """The program that keeps the clipboard for programs that have ended."""

    def copy(self):
        self.desktop.click(self.window, *CHART)
        self.desktop.key("ctrl+c", window=self.window)
        with Client(self.desktop.environment["DISPLAY"]) as client:
            wait_until(lambda: client.owner(b"CLIPBOARD"), "the clipboard of the program")

    def test_are_not_waited_for_by_a_program_that_ends(self):
        self.own("silent", selection="CLIPBOARD_MANAGER")
        self.copy()
        self.quit()
        self.assertEqual(self.owner.asked(), ["SAVE_TARGETS"])

    def test_may_refuse_to_keep_it(self):
        self.own("refuses", selection="CLIPBOARD_MANAGER")
        self.copy()
        self.quit()
        self.assertIn("SAVE_TARGETS", self.owner.asked())


class Drops(SelectionsTest):
    def drop(self):
        wait_until(lambda: any(line.startswith("over") for line in self.owner.told()), "an answer to the drag")
        self.owner.drop()

    def await_end(self):
        return wait_until(lambda: [line for line in self.owner.told() if line.startswith("dropped")],
                          "the end of the drop")

    def test_are_taken_from_a_good_source(self):
        for behaviour in ("good", "pieces"):
            with self.subTest(behaviour):
                self.own(behaviour, COLOR, COLOR_BYTES, "XdndSelection", CHART)
                self.drop()
                self.assertEqual(self.await_end(), ["dropped 1"])
                wait_until(lambda: self.ground() > 1000, "the new ground")
                self.own("good", COLOR, b"\x10\x10\x15\x15\x1d\x1d\xff\xff", "XdndSelection", CHART)
                self.drop()
                wait_until(lambda: self.ground() == 0, "the old ground")

    def test_end_without_effect_whatever_the_source_does(self):
        for behaviour in BAD:
            with self.subTest(behaviour):
                self.own(behaviour, COLOR, COLOR_BYTES, "XdndSelection", CHART)
                self.await_asked(COLOR)
                if behaviour == "dies":
                    self.settle()
                    continue
                beeps = self.bells.count()
                self.drop()
                self.await_change()
                if behaviour in WAITING:
                    # The button is released within the second.
                    self.await_beep(beeps)
                self.settle()
                self.assertEqual(self.ground(), 0)
                self.assertNotIn("dropped 1", self.owner.told())

    def test_do_not_keep_the_program_from_quitting(self):
        self.own("silent", COLOR, COLOR_BYTES, "XdndSelection", CHART)
        self.await_asked(COLOR)
        self.drop()
        self.quit()


class Fields(SelectionsTest):
    """The title of a chart, in its preferences."""

    def open_field(self):
        self.open_prefs()
        self.click(TITLE_FIELD)
        self.desktop.key("ctrl+a", window=self.prefs)

    def letters(self, left, width):
        """Returns the pixels of the first chart's title, from there on."""
        return self.picture().crop(left, 52, width, 20).count(bytes.fromhex("f2f5f9"))

    def clear_field(self):
        self.desktop.key("BackSpace", window=self.prefs)
        wait_until(lambda: not self.letters(8, 200), "no title")

    def await_title(self):
        wait_until(lambda: self.letters(100, 200), "the new title")
        self.close_prefs()
        self.assertEqual(self.title()[0], WORDS.decode())

    def test_take_a_text_by_key(self):
        for keys in ("ctrl+v", "shift+Insert"):
            with self.subTest(keys):
                self.own("good")
                self.open_field()
                self.desktop.key(keys)
                self.await_title()
                self.open()

    def test_take_the_primary_selection_by_key_and_by_button(self):
        for use in (lambda: self.desktop.key("ctrl+shift+Insert"), lambda: self.click(TITLE_FIELD, button=2)):
            self.open_field()
            # The selection of the field is the primary selection.
            self.clear_field()
            self.own("pieces", selection="PRIMARY")
            use()
            self.await_title()
            self.open()

    def test_take_a_text_from_their_menu(self):
        self.own("good")
        self.open_field()
        shown = len(self.shown())
        self.click(TITLE_FIELD, button=3)
        wait_until(lambda: len(self.shown()) > shown, "the menu")
        self.desktop.key("p")
        self.await_title()

    def test_take_a_dropped_text(self):
        self.open_field()
        self.clear_field()
        main, self.window = self.window, self.prefs
        self.own("good", selection="XdndSelection", place=TITLE_FIELD)
        Drops.drop(self)
        self.assertEqual(Drops.await_end(self), ["dropped 1"])
        self.window = main
        self.await_title()

    def test_take_a_dropped_text_of_a_silent_source_for_none(self):
        self.open_prefs()
        main, self.window = self.window, self.prefs
        self.own("silent", selection="XdndSelection", place=TITLE_FIELD)
        Drops.drop(self)
        self.await_beep(0)
        Drops.await_end(self)
        self.window = main
        self.await_change()
        self.quit()

    def test_go_on_and_beep_whatever_the_owner_does(self):
        self.open_field()
        self.desktop.key("Right")
        for behaviour in BAD:
            with self.subTest(behaviour):
                self.own(behaviour)
                beeps = self.bells.count()
                self.desktop.key("ctrl+v")
                self.await_asked("TARGETS")
                # Text typed meanwhile is not lost.
                self.desktop.key("x")
                self.await_change()
                self.await_beep(beeps)
        self.close_prefs()
        self.assertTrue(self.title()[0].endswith("x" * len(BAD)))

    def test_open_their_menu_whatever_the_owner_does(self):
        self.own("silent")
        self.open_field()
        shown = len(self.shown())
        self.click(TITLE_FIELD, button=3)
        wait_until(lambda: len(self.shown()) > shown, "the menu")
        self.assertEqual(self.owner.asked(), [])

    def test_may_go_while_a_paste_is_under_way(self):
        self.own("silent")
        self.open_field()
        self.desktop.key("ctrl+v")
        self.await_asked("TARGETS")
        self.close_prefs()
        self.await_beep(0)
        self.settle()
        self.quit()


class Swatches(SelectionsTest):
    """The swatch of the background, in the preferences of the first chart, and the numbers beside it."""

    def setUp(self):
        super().setUp()
        self.open_prefs()
        self.show("Colors")
        self.choose_of(TARGET, 2)

    def test_take_a_color_by_key(self):
        self.own("good", COLOR, COLOR_BYTES)
        self.click(SWATCH)
        self.desktop.key("ctrl+v", window=self.prefs)
        wait_until(lambda: self.ground() > 1000, "the new ground")

    def test_take_a_dropped_color(self):
        main, self.window = self.window, self.prefs
        self.own("pieces", COLOR, COLOR_BYTES, "XdndSelection", SWATCH)
        Drops.drop(self)
        self.window = main
        wait_until(lambda: self.ground() > 1000, "the new ground")

    def test_go_on_and_beep_whatever_the_owner_does(self):
        for behaviour in BAD:
            with self.subTest(behaviour):
                self.own(behaviour, COLOR, COLOR_BYTES)
                beeps = self.bells.count()
                self.click(SWATCH)
                self.desktop.key("ctrl+v", window=self.prefs)
                self.await_asked("TARGETS")
                self.await_change()
                self.await_beep(beeps)
                self.assertEqual(self.ground(), 0)

    def test_have_numbers_that_take_a_text(self):
        before = self.chart(0)
        ground = before.pixel(400, 60)
        self.assertNotEqual(ground[0], 90)
        for use in ("key", "button"):
            self.own("good", data=b"90", selection="CLIPBOARD" if use == "key" else "PRIMARY")
            self.click(RED)
            self.desktop.key("ctrl+a", window=self.prefs)
            if use == "key":
                self.desktop.key("ctrl+v", "Tab")
                red = 90
            else:
                # The field's selection becomes the primary selection, so nothing may be selected.
                self.desktop.key("BackSpace", "1")
                wait_until(lambda: self.chart(0).pixel(400, 60)[0] == 1, "the ground as typed")
                self.own("good", data=b"2", selection="PRIMARY")
                self.click((288, RED[1]), button=2)
                self.await_asked(TEXT)
                self.desktop.key("Tab")
                red = 21
            wait_until(lambda: self.chart(0).pixel(400, 60)[0] == red, "the new ground")

    def test_have_numbers_with_a_menu(self):
        self.own("silent")
        shown = len(self.shown())
        self.click(RED, button=3)
        wait_until(lambda: len(self.shown()) > shown, "the menu")
        self.assertEqual(self.owner.asked(), [])
        self.desktop.key("s")  # a step up
        wait_until(lambda: len(self.shown()) == shown, "the menu to close")
        self.assertEqual(self.bells.count(), 0)
