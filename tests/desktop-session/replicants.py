# SPDX-License-Identifier: MIT
"""Shared by tests of charts on the desktop."""

import contextlib
import os
import pathlib
import re
import signal
import subprocess

from charts import ChartsTest
from desktop import wait_until

HOST = pathlib.Path(os.environ["QEL_PROGRAM"]).with_name("qel-desktop")
HOST_STORE = "x-vnd.kvt-Qel-Desktop.user"
AUTOSTART = "autostart/org.example.qel.desktop-charts.desktop"
CHART = "^Qel chart$"
ABOVE = 48
"""Distance from the window's top to the first chart's."""


class ReplicantsTest(ChartsTest):
    """The program in the top left corner of the screen, and the charts that are dragged out of it."""

    def setUp(self):
        super().setUp()
        self.addCleanup(self.end_all)
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)

    def place(self):
        self.desktop.xdotool("windowmove", self.window, 20, 40)
        wait_until(lambda: self.desktop.geometry(self.window)[0] < 40, "the window at its place")

    # The host, which only the program starts.

    def hosts(self):
        """Returns the processes that show charts with the settings of this test."""
        return self.running(HOST)

    def applications(self):
        return self.running(os.environ["QEL_PROGRAM"])

    def host(self):
        return wait_until(self.hosts, "the host")[0]

    def end_host(self, number=signal.SIGKILL):
        """Ends later ones too: the application restarts a killed host, and a host that it has started may wait for
        another one to end and then take its place."""
        told = set()

        def is_gone():
            running = self.hosts()
            for pid in set(running) - told:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(pid, number)
                told.add(pid)
            return not running

        wait_until(is_gone, "the end of the host")

    def end_all(self):
        """Ends both programs together: each starts the other one when it misses it."""
        def are_gone():
            running = self.hosts() + self.applications()
            for pid in running:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(pid, signal.SIGKILL)
            return not running

        wait_until(are_gone, "the end of the application and the host")

    def start_host(self):
        """Starts it as the session does when the user logs in."""
        process = subprocess.Popen([HOST], env=dict(self.desktop.environment, XDG_CONFIG_HOME=str(self.config)),
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    # Charts on the desktop.

    def replicants(self):
        return self.desktop.windows(CHART)

    def replicant(self, count=1):
        def look():
            found = self.replicants()
            return found if len(found) == count else None

        return wait_until(look, f"{count} charts on the desktop")[-1]

    def places(self):
        try:
            return sorted(self.desktop.geometry(window) for window in self.replicants())
        except subprocess.CalledProcessError:
            return self.places()  # one went in between

    def handle(self, window=None):
        """Returns the middle of a chart's handle, on the screen: of the program's first chart, or of a replicant."""
        if window is None:
            return self.on_screen(self.window, 3 + 4, self.first_chart() + 4)
        return self.on_screen(window, 4, 4)

    def first_chart(self):
        """Returns the row of the window at which the first chart begins."""
        return ABOVE

    def picture_at_pointer(self):
        """Returns whether a drag shows its picture: a window without a frame that the toolkit names after the program.
        """
        tree = self.desktop.output("xwininfo", "-root", "-tree")
        named = re.findall(r'^ {5}(0x[0-9a-f]+) "Qel": [^\n]* [0-9]{2}', tree, re.MULTILINE)
        told = [self.desktop.output("xwininfo", "-id", window) for window in named]
        return any("IsViewable" in window and "Override Redirect State: yes" in window for window in told)

    def begin_drag(self, start, end):
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        for step in range(1, 13):
            self.desktop.xdotool("mousemove", *(round(a + (b - a) * step / 12) for a, b in zip(start, end)))

        def begun():
            for aside in (1, 0):  # a hand trembles
                self.desktop.xdotool("mousemove", end[0] + aside, end[1])
            return self.picture_at_pointer()

        wait_until(begun, "a drag that is under way")

    def end_drag(self):
        self.desktop.xdotool("mouseup", 1)
        wait_until(lambda: not self.picture_at_pointer(), "the end of the drag")

    def drag_out(self, x, y, window=None):
        self.begin_drag(self.handle(window), (x, y))
        self.end_drag()

    def drag_back(self, x, y, window):
        """Drags a chart on the desktop onto a place of the program's window."""
        self.carry_back(x, y, window)
        self.end_drag()

    def carry_back(self, x, y, window):
        """Does the same, but stops before the drop."""
        end = self.on_screen(self.window, x, y)
        self.begin_drag(self.handle(window), end)
        # The host sends the program one place after another, and the next one only after the program has answered the
        # last. So the program may miss the first of these, but not the others.
        for aside in (1, 0) * 2:
            self.desktop.xdotool("mousemove", end[0] + aside, end[1])
            for _ in range(2):
                before = self.desktop.picture(window)
                wait_until(lambda: self.desktop.picture(window) != before, "a chart on the desktop that scrolls")
            self.settle()

    def resize(self, window, width, height, expected=None):
        """Drags the corner of a chart on the desktop until the chart has this size."""
        left, top, old_width, old_height = self.desktop.geometry(window)
        # Takes hold of the last pixel: in a small chart, captions reach nearly as far and have precedence over the
        # corner.
        self.desktop.xdotool("mousemove", left + old_width - 1, top + old_height - 1, "mousedown", 1)
        for part in (2, 1):
            self.desktop.xdotool("mousemove", left + (old_width - width) // part * (part - 1) + width - 1,
                                 top + (old_height - height) // part * (part - 1) + height - 1)
        expected = expected or (width, height)
        wait_until(lambda: self.desktop.size(window) == expected, f"the size {expected}")
        self.desktop.xdotool("mouseup", 1)

    def open_foreign(self):
        """Opens a window of another program, to the right of ours."""
        program = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "desktop-session", "drag_source")
        process = subprocess.Popen([program, "Foreign", "text/plain", os.devnull], env=self.desktop.environment,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.foreign = self.desktop.window("^Foreign$", process.pid)
        self.desktop.xdotool("windowmove", self.foreign, 960, 100)
        wait_until(lambda: self.desktop.geometry(self.foreign)[0] >= 960, "the foreign window at its place")

    def assert_shows_nothing(self):
        """Drags out another chart afterwards and expects it to be the only one."""
        self.drag_out(690, 640)
        self.replicant()
        self.assertEqual(self.places()[0][:2], (686, 636))


class OneReplicantTest(ReplicantsTest):
    """One chart on the desktop, which a test puts there."""

    def put_chart(self, left, top):
        """Tears one off, so that its top left corner lies there."""
        self.drag_out(left + 4, top + 4)
        self.chart = self.replicant()
        self.await_place(left, top)

    def frame(self):
        return self.desktop.geometry(self.chart)

    def await_place(self, left, top):
        wait_until(lambda: self.frame()[:2] == (left, top), f"the place {left}, {top}")

    def seen(self, window=None):
        """Returns its picture from the screen, so nothing else may cover it."""
        return self.desktop.picture().crop(*self.desktop.geometry(window or self.chart))

    def await_scrolling(self, window=None):
        before = self.seen(window)
        wait_until(lambda: self.seen(window) != before, "a chart on the desktop that scrolls")

    def host_windows(self):
        return self.desktop.windows(".*", self.host())

    def choose_from_handle(self, *keys):
        shown = set(self.host_windows())
        self.desktop.xdotool("mousemove", *self.handle(self.chart), "click", 3)
        wait_until(lambda: set(self.host_windows()) - shown, "the pop-up")
        self.desktop.key(*keys)
