# SPDX-License-Identifier: MIT
"""Colours and words that are dragged onto a chart from other programs of a real desktop."""

import pathlib

from charts import TITLE
from desktop import wait_until
from drops import PLACE, DropsTest
from real import OnRealDesktop

COLOR = "#d02090"
WORDS = "Words of another program"
CHART = (500, 80)
"""A place on the first chart's ground, in the window."""
CAPTIONS = (8, 50, 260, 30)


class DropsOfPrograms(OnRealDesktop, DropsTest):
    def place(self):
        self.desktop.xdotool("windowmove", self.window, 20, 40)
        wait_until(lambda: self.desktop.geometry(self.window)[0] < 40, "the window at its place")

    def ground(self):
        return self.picture().pixel(*CHART)

    def await_color(self):
        wait_until(lambda: self.ground() == tuple(bytes.fromhex(COLOR[1:])), "a chart in the colour")

    def await_words(self, before):
        wait_until(lambda: self.picture().crop(*CAPTIONS) != before, "another title")
        self.assertIn(WORDS.encode(), self.quit())


class OfQt(DropsOfPrograms):
    def test_a_color_becomes_the_ground(self):
        self.open_source(color=COLOR.encode())
        self.assertTrue(self.drop(*CHART))
        self.await_color()

    def test_words_become_the_title(self):
        before = self.picture().crop(*CAPTIONS)
        self.open_source(text=WORDS.encode())
        self.assertTrue(self.drop(*TITLE))
        self.await_words(before)


class OfGtk(DropsOfPrograms):
    def setUp(self):
        super().setUp()
        program = pathlib.Path(__file__).with_name("gtk_source.py")
        process = self.desktop.launch("/usr/bin/python3", program, "GTK source", COLOR, WORDS)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.source = self.desktop.window("^GTK source$", process.pid)
        self.desktop.xdotool("windowmove", self.source, *PLACE)
        wait_until(lambda: self.desktop.geometry(self.source)[0] >= PLACE[0], "the window at its place")
        self.desktop.focus(self.source)
        wait_until(lambda: len(self.desktop.picture(self.source).colors()) > 20, "its first picture")

    def drag_here(self, start, end):
        start, end = self.on_screen(self.source, *start), self.on_screen(self.window, *end)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        self.move_by_hand(start, end)
        for aside in (1, 0) * 3:  # a hand trembles
            self.desktop.xdotool("mousemove", end[0] + aside, end[1])
            self.settle()
        self.desktop.xdotool("mouseup", 1)

    def test_a_color_becomes_the_ground(self):
        self.drag_here((100, 30), CHART)
        self.await_color()

    def test_words_become_the_title(self):
        before = self.picture().crop(*CAPTIONS)
        self.drag_here((30, 90), TITLE)
        self.await_words(before)
