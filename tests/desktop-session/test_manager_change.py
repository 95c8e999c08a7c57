# SPDX-License-Identifier: MIT
"""Window managers that take over from another one and forget the places of windows."""

from charts import ChartsTest
from desktop import Desktop, wait_until
from xclient import Client

MARGINS = (3, 23)
"""Distance from the corner of a frame to that of the content."""


class ManagerChange(ChartsTest):
    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(window_manager=False)
        cls.addClassCleanup(cls.desktop.close)

    def test_the_window_asks_for_its_place(self):
        place = self.desktop.geometry(self.window)[:2]
        corner = tuple(at - margin for at, margin in zip(place, MARGINS))
        wrong = tuple(at - margin for at, margin in zip(corner, MARGINS))
        with Client(self.desktop.environment["DISPLAY"]) as client:
            client.put_into(client.make_frame(*corner, 700, 600), self.window, *MARGINS)
            self.settle()
            # As Marco does: the content goes to the corner of its old frame, and gets the next frame there.
            client.put_into(None, self.window, *corner)
            client.put_into(client.make_frame(*wrong, 1000, 700), self.window, *MARGINS)
            client.move(self.window, 0, 0)
            client.move(self.window, *MARGINS)
            # No window manager is running, so the server treats the place that the window asks for as relative to the
            # frame.
            asked = tuple(at + frame for at, frame in zip(place, wrong))
            wait_until(lambda: self.desktop.geometry(self.window)[:2] == asked, f"the window at {asked}")
            self.quit()
