# SPDX-License-Identifier: MIT
"""Shared by tests on a real desktop. The variable QEL_DESKTOP names the desktop; all tests of a run use the same
session."""

import atexit
import os

import wallpaper
from desktop import wait_until
from gnome import Gnome, GnomeIcons
from lxqt import Lxqt
from mate import Mate
from plasma import Plasma
from replicants import AUTOSTART, OneReplicantTest
from xfce import Xfce

DESKTOPS = {"xfce": Xfce, "plasma": Plasma, "lxqt": Lxqt, "mate": Mate, "gnome": Gnome, "gnome-icons": GnomeIcons}
DESKTOP = DESKTOPS[os.environ["QEL_DESKTOP"]]
SHARED = []
GROUND = (16, 21, 29)
"""The background of the charts at the first start."""


def shared():
    if not SHARED:
        SHARED.append(DESKTOP())
        atexit.register(SHARED[0].close)
    return SHARED[0]


class OnRealDesktop:
    """Adds the shared session and its screen to a test that works on any desktop."""

    @classmethod
    def setUpClass(cls):
        cls.desktop = shared()

    def make_config(self):
        config = self.desktop.config
        for file in [*config.glob("x-vnd.kvt-Qel*"), config / AUTOSTART]:
            file.unlink(missing_ok=True)
        return config

    def picture_name(self):
        return f"{os.environ['QEL_DESKTOP']}.{self.id()}"

    # What the screen shows.

    def shows_wallpaper(self, left, top, width, height):
        """Returns whether the wallpaper alone is there: no chart, drawing or remains."""
        picture = self.desktop.picture()
        return all(wallpaper.is_near(picture.pixel(x, y), wallpaper.color_at(x, y))
                   for y in range(top, top + height, 4) for x in range(left, left + width, 4))

    def shows_chart(self, left, top, width, height):
        """Returns whether a whole chart is there: its ground up to each edge, and the wallpaper around it."""
        picture = self.desktop.picture()
        edges = [(x, y) for x in range(left + 12, left + width - 12, 12) for y in (top + 2, top + height - 3)]
        around = [(x, y) for x in range(left, left + width, 12) for y in (top - 3, top + height + 2)]
        around += [(x, y) for y in range(top, top + height, 12) for x in (left - 3, left + width + 2)]
        return (picture.crop(left, top, width, height).count(GROUND) > width * height / 3
                and sum(picture.pixel(*place) == GROUND for place in edges) > len(edges) / 2
                and all(wallpaper.is_near(picture.pixel(*place), wallpaper.color_at(*place)) for place in around))

    def await_chart(self, *frame):
        wait_until(lambda: self.shows_chart(*frame), f"a chart at {frame}")

    def await_wallpaper(self, *frame):
        wait_until(lambda: self.shows_wallpaper(*frame), f"the wallpaper at {frame}")


class RealTest(OnRealDesktop, OneReplicantTest):
    """The program in the top left corner of the screen, and at most one chart torn off."""
