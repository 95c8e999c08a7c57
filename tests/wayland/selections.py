# SPDX-License-Identifier: MIT
"""Shared by tests of selections and drags of other programs on Wayland."""

import os
import time

from charts import RECORDED
from client import Client
from compositor import SIZE
from desktop import TIMEOUT, wait_until
from programs import CHARTS, SwayTest
from sanitizers import REPORTS

WITNESS = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "wayland", "libwitness.so")
COLOR_FORM = "application/x-color"
COLOR = (255, 0, 255)
OLD_COLOR = (16, 21, 29)
OTHER_COLOR = (128, 128, 0)
GROUND = CHARTS // 4
"""The minimum number of pixels of a chart's ground."""
WAITING = ("late", "trickle")
"""Behaviours that make the program wait. Until the deadline, "silent" looks the same as "late"."""
BAD = (*WAITING, "flood", "refuses")
CHART = (400, 110)
"""A place on the ground of the first chart, in its window, that no curve reaches meanwhile."""
SOURCE = "Drag source"
SOURCE_COLOR = (0, 128, 255)
WINDOW_AT, PREFS_AT, SOURCE_AT = (20, 20), (640, 20), (1000, 600)


def color_bytes(color):
    return b"".join(bytes([part, part]) for part in (*color, 255))


class SelectionsTest(SwayTest):
    def setUp(self):
        super().setUp()
        self.witness = self.desktop.folder / "witness"
        self.client = self.connect()
        self.open()

    def connect(self):
        client = Client(self.desktop.environment["WAYLAND_DISPLAY"], SIZE)
        self.addCleanup(client.close)
        return client

    def open(self):
        variables = dict(RECORDED, LD_PRELOAD=WITNESS, QEL_TEST_WITNESS=str(self.witness))
        if REPORTS:
            variables["ASAN_OPTIONS"] = os.environ["ASAN_OPTIONS"] + ":verify_asan_link_order=0"
        self.program = self.start(**variables)
        self.await_focus("Qel")
        self.await_charts()
        self.desktop.place("Qel", *WINDOW_AT)

    def open_source(self):
        self.dragger = self.connect()
        self.source = self.dragger.open_window(SOURCE, 160, 100, SOURCE_COLOR, self.client)
        wait_until(lambda: SOURCE in self.names(), "the window to drag from")
        self.desktop.place(SOURCE, *SOURCE_AT)
        wait_until(lambda: self.count(SOURCE_COLOR) > 1000, "the colour to drag from")

    def open_prefs(self):
        self.focus("Qel")
        self.open_menu()
        self.press(lambda: "Chart preferences" in self.names(), "the preferences", ("p",))
        self.desktop.place("Chart preferences", *PREFS_AT)
        self.focus("Chart preferences")

    def on_screen(self, name, x, y):
        left, top = self.desktop.corner(name)
        return left + x, top + y

    def click(self, name, place, button=None):
        where = self.on_screen(name, *place)
        self.client.click(*where, *([button] if button else []))

    def beeps(self):
        return self.witness.read_bytes().count(b"!")

    def await_beep(self, before):
        wait_until(lambda: self.beeps() > before, "a beep")

    def settle(self):
        """Waits until the program has handled everything that was sent to it: the second of two changes began after
        that."""
        self.await_change()
        self.await_change()

    def await_color(self, color=COLOR):
        wait_until(lambda: self.count(color) > GROUND, "a chart in the colour")

    # Drags.

    def drag(self, behaviour, data, forms, name, place, is_asked=True):
        """Drags from the source to a place of a window of the program, which has answered and has asked for the data.
        """
        offer = self.source.drag(SOURCE_AT[0] + 80, SOURCE_AT[1] + 50, behaviour, data, *forms)
        x, y = self.on_screen(name, *place)

        def is_there():
            self.client.move(x + 1, y)  # a hand trembles
            self.client.move(x, y)
            return any(line.startswith("wanted") for line in offer.told) and (offer.asked() or not is_asked)

        wait_until(is_there, "an answer to the drag")
        return offer

    def drop(self, offer):
        self.client.release()
        wait_until(lambda: "finished" in offer.told, "the end of the drop")

    def drop_color(self, behaviour, color, name="Qel", place=CHART):
        offer = self.drag(behaviour, color_bytes(color), [COLOR_FORM], name, place)
        self.drop(offer)
        return offer

    def await_beep_while_charts_move(self, act):
        """The program must show something between an act and its beep. On a busy machine it may not manage that within
        the second, so the test tries again."""
        end = time.monotonic() + TIMEOUT
        while True:
            beeps = self.beeps()
            offer = act()
            before = self.witness.read_bytes()
            self.await_beep(beeps)
            shown = self.witness.read_bytes()[len(before) :].split(b"!")[0]
            if before.count(b"!") == beeps and len(shown) > 1:
                return offer
            self.assertLess(time.monotonic(), end, "charts that scroll before the beep")
