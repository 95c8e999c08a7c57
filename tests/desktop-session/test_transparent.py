# SPDX-License-Identifier: MIT
"""A transparent chart on the desktop: what shows through it, and through the picture of a drag."""

import ctypes
import os
import subprocess

from charts import STORE
from desktop import wait_until
from replicants import ReplicantsTest

LIGHT, DARK = (80, 160, 240), (16, 32, 48)
"""A checkerboard, the picture of the root window."""


class TransparentTest(ReplicantsTest):
    def arrange(self):
        self.paint()
        maker = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "long", "store_of_charts")
        subprocess.run([maker, "3", "200000", self.config / STORE, "transparent"], check=True)

    def paint(self):
        width, height = 1280, 800
        light, dark = ("rgb({},{},{})".format(*color) for color in (LIGHT, DARK))
        self.desktop.output("convert", "-size", f"{width}x{height}", "pattern:checkerboard", "-fill", light, "-opaque",
                            "#999999", "-fill", dark, "-opaque", "#666666", f"{self.config}/root.png", check=True)
        self.desktop.output("display", "-window", "root", f"{self.config}/root.png")
        wait_until(lambda: self.shows_checkerboard(self.desktop.picture().crop(600, 500, 200, 200)), "the checkerboard")

    @staticmethod
    def shows_checkerboard(picture):
        few = picture.width * picture.height / 8
        return picture.count(LIGHT) > few and picture.count(DARK) > few


class Compositor:
    """Does the one thing by which others recognise a compositor: it owns a selection, until it is closed."""

    def __init__(self, desktop):
        x = ctypes.CDLL("libX11.so.6")
        x.XOpenDisplay.restype = ctypes.c_void_p
        for function in (x.XDefaultRootWindow, x.XInternAtom, x.XCreateSimpleWindow):
            function.restype = ctypes.c_ulong
        connection = ctypes.c_void_p(x.XOpenDisplay(desktop.environment["DISPLAY"].encode()))
        root = ctypes.c_ulong(x.XDefaultRootWindow(connection))
        nothing = ctypes.c_ulong(0)
        window = x.XCreateSimpleWindow(connection, root, 0, 0, 1, 1, 0, nothing, nothing)
        selection = x.XInternAtom(connection, b"_NET_WM_CM_S0", 0)
        x.XSetSelectionOwner(connection, ctypes.c_ulong(selection), ctypes.c_ulong(window), nothing)
        x.XSync(connection, 0)
        self._end = lambda: connection and x.XCloseDisplay(connection)

    def close(self):
        self._end()
        self._end = lambda: None


class Dragging(TransparentTest):
    def test_a_chart_shows_what_lies_below(self):
        self.begin_drag(self.handle(), (700, 600))
        dragged = self.desktop.picture().crop(720, 650, 200, 60)
        self.end_drag()
        self.assertTrue(self.shows_checkerboard(dragged))


class OnDesktop(TransparentTest):
    UNPAINTED = (0, 0, 0)
    """The pixel of a transparent place: without a real compositor, nobody paints what lies below it."""

    def setUp(self):
        super().setUp()
        self.drag_out(654, 604)
        self.replicant()

    def ground(self, left=650, top=600):
        """Returns the chart's ground, where there are neither words nor samples."""
        picture = self.desktop.picture().crop(left + 150, top + 10, 200, 20)
        return picture.pixel(0, 0) if len(picture.colors()) == 1 else None

    def await_painted(self):
        # A colour between the two of the root window's picture.
        wait_until(lambda: all(dark < between < light for dark, between, light in zip(DARK, self.ground() or DARK, LIGHT)),
                   "the color of the desktop")

    def await_transparent(self):
        wait_until(lambda: self.ground() == self.UNPAINTED, "what is transparent for a compositor")

    def test_a_chart_follows_compositors_that_come_and_go(self):
        self.await_painted()
        for _ in range(3):
            compositor = Compositor(self.desktop)
            self.addCleanup(compositor.close)
            self.await_transparent()
            compositor.close()
            self.await_painted()

    def test_a_chart_comes_while_there_is_a_compositor(self):
        compositor = Compositor(self.desktop)
        self.addCleanup(compositor.close)
        self.await_transparent()
        self.drag_out(654, 474)
        self.replicant(2)
        wait_until(lambda: self.ground(650, 470) == self.UNPAINTED, "another one that is transparent")
        # One takes over from another.
        other = Compositor(self.desktop)
        self.addCleanup(other.close)
        compositor.close()
        self.await_transparent()
        other.close()
        self.await_painted()
