# SPDX-License-Identifier: MIT
"""Shared by tests of the preferences windows."""

from charts import RECORDED, ChartsTest
from desktop import wait_until

TABS = {"General": (36, 14), "Colors": (101, 14), "Sources": (172, 14), "Fonts": (234, 14), "Sysinfo": (302, 14)}
"""Places in a chart's preferences window, at the size at which it opens."""
REVERT_ALL, REVERT, CANCEL = (177, 269), (284, 269), (391, 269)

SHOW_TITLE, DRAW_BORDER, DESKTOP_COLOR = (21, 117), (21, 165), (21, 212)
MODE, TITLE_FIELD = (334, 47), (334, 73)
TARGET, TEST_ON_DESKTOP, TRANSPARENT = (125, 144), (192, 122), (192, 159)
SWATCH, PICK_DESKTOP = (380, 50), (378, 84)
RAMPS = {"red": 40, "green": 61, "blue": 82}
FIRST_SOURCE, FIND, ADD = (80, 44), (190, 235), (395, 235)

CHARTS = ((4, 50, 570, 118), (4, 173, 570, 118), (4, 296, 570, 118))
"""The insides of the three charts of the first start, in the main window."""
BORDER = (400, 48)
"""A place on the border of the first chart."""
MIDDLES = ((300, 120), (300, 240), (300, 365))


def values(stored, name):
    """Returns all values of the fields of this name in a stored message."""
    found = []
    key = bytes([0x60 | len(name)]) + name.encode()
    start = stored.find(key)
    while start >= 0:
        field = stored[start + len(key) :]
        start = stored.find(key, start + 1)
        if field[:2] != b"\x82\x64":
            continue
        major, rest = field[6] >> 5, field[6] & 31
        if major == 7:
            found.append(rest == 21)
        elif major == 3:
            size, at = (rest, 7) if rest < 24 else (field[7], 8)
            found.append(field[at : at + size].decode())
        else:
            size = 0 if rest < 24 else 1 << (rest - 24)
            found.append(int.from_bytes(field[7 : 7 + size], "big") if size else rest)
    return found


class PrefsTest(ChartsTest):
    environment = RECORDED

    def place(self):
        # The preferences open to the left of it.
        self.desktop.xdotool("windowmove", self.window, 640, 60)
        wait_until(lambda: self.desktop.geometry(self.window)[0] >= 640, "the window at its place")

    def chart(self, index):
        left, top, width, height = CHARTS[index]
        return self.picture().crop(left, top, width, height)

    def open_prefs(self, chart=0):
        """Opens the preferences of a chart by its menu."""
        def windows():
            return set(self.desktop.windows("^Chart preferences$", self.program.pid))

        before = windows()
        self.popup(*MIDDLES[chart])
        self.desktop.key("p")
        self.prefs = wait_until(lambda: windows() - before, "the preferences").pop()
        self.desktop.focus(self.prefs)
        wait_until(lambda: len(self.page().colors()) > 50, "their first picture")

    def open_global(self):
        self.desktop.key("alt+f", window=self.window)
        wait_until(lambda: len(self.shown()) == 2, "the menu")
        self.desktop.key("p")
        self.prefs = self.program.window("^Global preferences$")
        self.desktop.focus(self.prefs)

    def page(self):
        return self.desktop.picture(self.prefs)

    def click(self, place, button=1):
        self.desktop.click(self.prefs, *place, button=button)

    def show(self, tab):
        before = self.page()
        self.click(TABS[tab])
        wait_until(lambda: self.page() != before, f"the page {tab}")
        self.settle()

    def choose_of(self, place, *rows):
        """Opens a menu of the page and chooses with the mouse: a row of it, then a row of the submenu."""
        shown = set(self.shown())

        def menus():
            """Returns the open menus from left to right, as submenus open."""
            return sorted(self.desktop.geometry(window) for window in set(self.shown()) - shown)

        self.click(place)
        wait_until(menus, "the menu")
        for depth, row in enumerate(rows):
            left, top = wait_until(lambda: menus()[depth : depth + 1], "the menu of this row")[0][:2]
            x, y = left + 20, top + 13 + 22 * row
            self.desktop.xdotool("mousemove", x + 1, y, "mousemove", x, y)
            if depth + 1 < len(rows):
                # The submenu of the previously marked row is still open, and closes first.
                wait_until(lambda: [y - 20 < menu[1] < y for menu in menus()[depth + 1 :]] == [True], "the submenu")
        self.desktop.xdotool("click", 1)
        wait_until(lambda: set(self.shown()) == shown, "the menu to close")

    def close_prefs(self):
        self.desktop.key("alt+F4", window=self.prefs)
        wait_until(lambda: self.shown() == [self.window], "the preferences to close")

    def cancel(self):
        self.click(CANCEL)
        wait_until(lambda: self.shown() == [self.window], "the preferences to close")

    def drag_to_chart(self, start, x, y, button=1):
        """Drags from a place of the preferences onto one of the main window. A page leaves its window across the tabs.
        """
        start = self.on_screen(self.prefs, *start)
        top = self.desktop.geometry(self.prefs)[1]
        above = (start[0], top - 10) if start[1] < top + 25 else None
        self.take_hold(start, above, button)
        self.let_go(self.on_screen(self.window, x, y))
