# SPDX-License-Identifier: MIT
"""Selections and drags of other programs on Wayland, with data given correctly or badly, pasted and dropped on text
fields."""

import signal
import unittest

from charts import STORE
from client import MIDDLE
from desktop import wait_until
from prefs import TITLE_FIELD, values
from programs import ctrl
from selections import BAD, WAITING, SelectionsTest

TEXT_FORMS = ("text/plain;charset=utf-8", "text/plain")
TITLE_COLOR = (242, 245, 249)


class Fields(SelectionsTest):
    """The title of a chart, in its preferences."""

    PREFS = "Chart preferences"

    def setUp(self):
        super().setUp()
        self.open_prefs()
        self.click(self.PREFS, TITLE_FIELD)
        # Nothing may be selected: a selection becomes the primary one, and the toolkit never frees that.
        self.press(lambda: self.title_end() < 0, "no title", ("-k", "End") + 20 * ("-k", "BackSpace"))

    def title_end(self):
        """Returns where the title of the first chart ends, in its window; -1 if there is none."""
        left, top = self.on_screen("Qel", 4, 52)
        title = self.desktop.picture().crop(left, top, 560, 20)
        columns = [at // 3 % title.width for at in range(0, len(title.data), 3)
                   if title.data[at : at + 3] == bytes(TITLE_COLOR)]
        return max(columns, default=-1)

    def paste_clipboard(self, behaviour, data):
        offer = self.client.own(behaviour, data, *TEXT_FORMS)
        self.click(self.PREFS, TITLE_FIELD)
        self.press(offer.asked, "a question for the text", ctrl("v"))
        return offer

    def paste_primary(self, behaviour, data):
        offer = self.client.own(behaviour, data, *TEXT_FORMS, selection="primary")
        self.click(self.PREFS, TITLE_FIELD, MIDDLE)
        wait_until(offer.asked, "a question for the text")
        return offer

    def drop_text(self, behaviour, data):
        offer = self.drag(behaviour, data, TEXT_FORMS, self.PREFS, TITLE_FIELD, is_asked=False)
        self.drop(offer)
        return offer

    def assert_ends_with(self, title):
        self.program.send_signal(signal.SIGTERM)
        self.assert_ends_well(self.program)
        self.assertEqual(values((self.config / STORE).read_bytes(), "Title")[0], title)

    def test_take_a_text_every_way(self):
        self.open_source()
        text = ""
        for behaviour, use in (("good", self.paste_clipboard), ("pieces", self.paste_primary),
                               ("good", self.drop_text), ("pieces", self.drop_text)):
            with self.subTest(behaviour, use=use.__name__):
                before = self.title_end()
                use(behaviour, b"H" * 5)
                text += "H" * 5
                wait_until(lambda: self.title_end() > before, "the text")
        self.assertEqual(self.beeps(), 0)
        self.assert_ends_with(text)

    def test_go_on_and_beep_whatever_the_owner_does(self):
        self.open_source()
        typed = ""
        for use, kinds in ((self.paste_clipboard, BAD), (self.paste_primary, WAITING), (self.drop_text, WAITING)):
            for behaviour in kinds:
                with self.subTest(behaviour, use=use.__name__):
                    beeps = self.beeps()
                    offer = use(behaviour, b"never")
                    # Text typed meanwhile is not lost.
                    before = self.title_end()
                    self.desktop.keys("H")
                    typed += "H"
                    wait_until(lambda: self.title_end() > before, "what was typed")
                    self.await_beep(beeps)
                    offer.answer()
                    self.settle()
        self.assert_ends_with(typed)

    def test_let_the_program_quit_in_the_middle(self):
        self.open_source()
        self.drop_text("silent", b"never")
        self.paste_clipboard("silent", b"never")
        self.paste_primary("silent", b"never")
        self.assert_ends_with("")


if __name__ == "__main__":
    unittest.main()
