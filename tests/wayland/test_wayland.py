"""The program and the host of desktop charts on Wayland."""

import contextlib
import os
import pathlib
import signal
import subprocess
import tempfile
import time
import unittest

from compositor import SIZE, Sway, Weston, wait_until
from desktop import TIMEOUT, stop_process

PROGRAM = os.environ["QEL_PROGRAM"]
BACKGROUND = (16, 21, 29)
"""Of the charts of the first start."""
PANEL = (216, 216, 216)
CHARTS = 100_000
"""Pixels that they cover at least."""
MENU = (255, 255, 255)
COLOR = (255, 0, 255)
OTHER_COLOR = (128, 128, 0)


def ctrl(key):
    return ("-M", "ctrl", key, "-m", "ctrl")


def first_run(picture, color, length, top=0):
    """Left, top and length of the first run of this colour that is so long, from row top on."""
    run = bytes(color) * length
    start = picture.data.find(run, 3 * top * picture.width)
    while start % 3 != 0:
        start = picture.data.find(run, start + 1)
    top, left = divmod(start // 3, picture.width)
    end = left
    while end < picture.width and picture.pixel(end, top) == color:
        end += 1
    return left, top, end - left


class WaylandTest(unittest.TestCase):
    def setUp(self):
        self.desktop = self.make()
        self.addCleanup(self.desktop.close)
        self.config = self.desktop.folder / "settings"
        self.said = self.desktop.folder / "said"

    def tearDown(self):
        outcome = self._outcome.result
        if any(test is self for test, _ in outcome.failures + outcome.errors):
            path = os.path.join(tempfile.gettempdir(), f"{self.id()}.ppm")
            try:
                picture = self.desktop.picture()
            except (subprocess.SubprocessError, OSError):
                return
            pathlib.Path(path).write_bytes(b"P6 %d %d 255\n" % SIZE + picture.data)
            print(f"\n    the screen at the end: {path}")

    def start(self, *arguments):
        # A file: the host of desktop charts, which outlives the program, has it too.
        with open(self.said, "wb") as said:
            program = subprocess.Popen([PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                       stderr=said,
                                       env=dict(self.desktop.environment, XDG_CONFIG_HOME=str(self.config)))
        self.addCleanup(self.end, program)
        return program

    def end(self, program):
        if program.poll() is None:
            program.kill()
        program.wait(TIMEOUT)

    def count(self, color):
        """Nearly how many pixels of this colour the screen has."""
        return self.desktop.picture().data.count(bytes(color))

    def await_charts(self):
        return wait_until(lambda: self.count(BACKGROUND) > CHARTS, "charts")

    def assert_ends_well(self, program):
        """No word on stderr: nothing that Wayland does not allow is an error."""
        self.assertEqual((program.wait(TIMEOUT), self.said.read_text()), (0, ""))


class OnWeston(WaylandTest):
    make = Weston

    def test_shows_its_charts_and_ends(self):
        program = self.start()
        self.await_charts()
        before = self.desktop.picture()
        wait_until(lambda: self.desktop.picture() != before, "charts that scroll")
        program.send_signal(signal.SIGTERM)
        self.assert_ends_well(program)
        self.assertTrue((self.config / "x-vnd.kvt-Qel.user").stat().st_size > 1000)

    def test_pictures_its_window(self):
        file = self.desktop.folder / "window.png"
        self.assert_ends_well(self.start("--snapshot", str(file)))
        self.assertTrue(file.read_bytes().startswith(b"\x89PNG"))


class OnSway(WaylandTest):
    make = Sway

    def names(self):
        return [name for name, _ in self.desktop.windows()]

    def await_focus(self, name):
        wait_until(lambda: self.names()[:1] == [name], f"the window {name}")

    def test_opens_every_window_by_keyboard(self):
        program = self.start()
        self.await_focus("Qel")
        self.assertEqual(self.desktop.windows()[0][1], "org.example.qel")
        self.await_charts()

        plain = self.count(PANEL)
        charts = self.desktop.picture()
        self.open_menu()
        left, top, width = first_run(charts, BACKGROUND, 400)
        # In the middle of the chart that has the keyboard: the charts stand in one column.
        self.assertLess(abs(first_run(self.desktop.picture(), MENU, 100, top)[0] - left - width // 2), 8)
        self.press(lambda: not self.shows_menu(), "the menu to close", ("-k", "Escape"))
        self.assertLess(abs(self.count(PANEL) - plain), 2_000)

        self.press(lambda: self.names()[:1] == ["Global preferences"], "the preferences", ctrl("p"))
        self.focus("Qel")
        self.press(lambda: self.names()[:1] == ["About Qel"], "the about window", ctrl("a"))
        self.press(lambda: "About Qel" not in self.names(), "the about window to close", ("-k", "Escape"))
        self.focus("Qel")
        self.quit(program)

    def quit(self, program):
        self.press(lambda: program.poll() is not None, "the program to end", ctrl("q"))
        self.assert_ends_well(program)

    def press(self, condition, what, *keys):
        """Presses keys, one after the other, until they are answered: a key that comes when the window has the focus
        for the compositor and does not know it yet is lost."""
        end = time.monotonic() + TIMEOUT
        while True:
            for key in keys:
                self.desktop.keys(*key)
            with contextlib.suppress(AssertionError):
                return wait_until(condition, what, min(5, TIMEOUT))
            self.assertLess(time.monotonic(), end, what)

    def shows_menu(self):
        return self.count(MENU) > 10_000

    def open_menu(self):
        self.press(self.shows_menu, "the menu of a chart", ("-k", "Tab"), ("-k", "Menu"))

    def focus(self, name):
        subprocess.run(["swaymsg", f'[title="^{name}$"] focus'], env=self.desktop.environment, capture_output=True,
                       timeout=TIMEOUT, check=True)
        self.await_focus(name)

    def test_copies_a_chart_to_the_desktop(self):
        program = self.start()
        self.await_focus("Qel")
        self.await_charts()
        self.open_menu()
        self.press(lambda: len(self.desktop.windows()) == 2, "the chart beside the window", ("c",))
        self.focus("Qel")
        self.quit(program)

    # What another program owns.

    def own(self, color):
        """Starts a program that has a colour on the clipboard."""
        file = self.desktop.folder / "color"
        file.write_bytes(b"".join(bytes([part, part]) for part in (*color, 255)))
        with file.open("rb") as content:
            owner = subprocess.Popen(["wl-copy", "--foreground", "--type", "application/x-color"], stdin=content,
                                     env=self.desktop.environment)
        self.addCleanup(self.end, owner)
        self.addCleanup(owner.send_signal, signal.SIGCONT)

        def given():
            return subprocess.run(["wl-paste", "--type", "application/x-color"], env=self.desktop.environment,
                                  capture_output=True, timeout=TIMEOUT).stdout

        wait_until(lambda: given() == file.read_bytes(), "the clipboard")
        return owner

    def paste(self):
        """By the menu of a chart."""
        self.open_menu()
        self.press(lambda: not self.shows_menu(), "the menu to close", ("t",))

    def await_change(self):
        before = self.desktop.picture()
        wait_until(lambda: self.desktop.picture() != before, "charts that scroll")

    def test_pastes_what_another_program_owns(self):
        program = self.start()
        self.await_focus("Qel")
        self.await_charts()
        self.own(COLOR)
        self.paste()
        wait_until(lambda: self.count(COLOR) > CHARTS // 4, "a chart in the colour")
        self.quit(program)

    def test_goes_on_when_the_owner_does_not_answer(self):
        program = self.start()
        self.await_focus("Qel")
        self.await_charts()
        owner = self.own(COLOR)
        stop_process(owner.pid)
        self.paste()
        begun = time.monotonic()
        self.await_change()
        wait_until(lambda: time.monotonic() > begun + 3, "the end of the paste")
        # Its answer comes too late.
        owner.send_signal(signal.SIGCONT)
        self.own(OTHER_COLOR)
        self.paste()
        wait_until(lambda: self.count(OTHER_COLOR) > CHARTS // 4, "a chart in the other colour")
        self.assertEqual(self.count(COLOR), 0)
        self.quit(program)

    def test_quits_in_the_middle_of_a_paste(self):
        program = self.start()
        self.await_focus("Qel")
        self.await_charts()
        stop_process(self.own(COLOR).pid)
        self.paste()
        program.send_signal(signal.SIGTERM)
        self.assert_ends_well(program)


if __name__ == "__main__":
    unittest.main()
