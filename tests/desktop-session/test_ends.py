# SPDX-License-Identifier: MIT
"""Ends in the middle of an action: by a signal, by closing the window, by the loss of the screen."""

import signal
import time

from charts import TITLE, ChartsTest
from desktop import Desktop, wait_until
from drops import DropsTest, head, sources
from test_portal import PortalTest
from xclient import Client


class EndTest(DropsTest):
    """In each of these the charts scroll on, and the end saves everything that was arranged."""

    def setUp(self):
        super().setUp()
        self.popup()
        self.choose("a")

    def assert_ends(self):
        self.await_change()
        self.end()
        self.assert_ends_well(self.program)
        self.assertEqual(self.stored().count(b"ChartType"), 4)

    def press(self, x, y):
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        self.desktop.xdotool("mousemove", *self.on_screen(self.window, x, y), "mousedown", 1)

    def check_menu(self):
        self.popup()
        self.assert_ends()

    def check_caption(self):
        before = self.picture().crop(200, 50, 120, 40)
        self.press(*TITLE)
        self.desktop.move(self.window, TITLE[0] + 100, TITLE[1])
        self.desktop.move(self.window, TITLE[0] + 200, TITLE[1] + 10)
        wait_until(lambda: self.picture().crop(200, 50, 120, 40) != before, "the title under the pointer")
        self.assert_ends()

    def check_own_drag(self):
        self.desktop.key("ctrl+a", window=self.window)
        about = self.program.window("^About Qel$")
        self.take_hold(self.on_screen(about, 60, 151))
        self.move_by_hand(self.held, self.on_screen(self.window, 300, 120))
        self.assert_ends()

    def check_foreign_drag(self):
        self.open_source(text=b"held over a chart")
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        self.begin_foreign_drag(300, 110)
        self.assert_ends()

    def check_alert(self):
        self.open_source(message=sources(9))
        self.assertTrue(self.drop(300, 110))
        self.program.window("^Qel alert$")
        self.assert_ends()


class Signal(EndTest):
    def end(self):
        self.program.signal(signal.SIGTERM)

    test_in_a_menu = EndTest.check_menu
    test_while_a_caption_is_moved = EndTest.check_caption
    test_in_a_drag_of_ours = EndTest.check_own_drag
    test_in_a_drag_of_another_program = EndTest.check_foreign_drag
    test_in_an_alert = EndTest.check_alert


class OfOthers(ChartsTest):
    def test_a_connection_whose_other_end_is_gone_ends_nothing(self):
        # The toolkit's libraries write to some connections without asking for an error instead of the signal.
        for _ in range(3):
            self.program.signal(signal.SIGPIPE)
            self.await_change()
        self.quit()


class SessionOfLxqt(PortalTest):
    scheme = 1
    names = ("org.lxqt.session",)
    environment = {"XDG_CURRENT_DESKTOP": "LXQt"}

    def test_that_leaves_the_bus_ends_the_program(self):
        # Once the portal was asked, the program listens on the bus.
        self.await_dark()
        self.popup()
        self.choose("a")
        self.await_change()
        self.portal.terminate()
        self.assert_ends_well(self.program)
        self.assertEqual(self.stored().count(b"ChartType"), 4)


class Key(EndTest):
    def end(self):
        self.desktop.key("ctrl+q")

    test_in_an_alert = EndTest.check_alert


class Closing(EndTest):
    def end(self):
        """Closes the window as a task bar does, whatever has keyboard and pointer."""
        with Client(self.desktop.environment["DISPLAY"]) as client:
            client.close_window(self.window)

    test_in_a_menu = EndTest.check_menu
    test_while_a_caption_is_moved = EndTest.check_caption
    test_in_a_drag_of_ours = EndTest.check_own_drag
    test_in_a_drag_of_another_program = EndTest.check_foreign_drag

    def test_in_an_alert_waits_for_it(self):
        self.open_source(message=sources(9))
        self.assertTrue(self.drop(300, 110))
        alert = self.program.window("^Qel alert$")
        self.end()
        self.await_change()
        self.desktop.key("Return", window=alert)
        wait_until(lambda: self.shown() == [self.window], "the alert to close")
        self.assert_ends()


class SixSecondsLater(ChartsTest):
    """The program is killed six seconds after something was arranged: charts, the sampler, the window."""

    SIZE = (520, 410)
    HALF_A_SECOND = head(0, 500_000)

    def arrange_and_wait(self):
        self.popup()
        self.choose("a")
        self.assertEqual(self.run_beside("--set-delay", "0.5"), (0, "", ""))
        self.desktop.resize(self.window, *self.SIZE)
        # The program promises to have the arrangement on the disk five seconds later, and nothing announces it.
        arranged = time.monotonic()
        wait_until(lambda: time.monotonic() > arranged + 6, "six seconds")

    def assert_stored(self, stored):
        self.assertEqual(stored.count(b"ChartType"), 4)
        self.assertIn(b"Delay", stored)
        self.assertIn(self.HALF_A_SECOND, stored)

    def assert_all_is_there(self):
        self.assert_stored(self.stored())
        self.program = self.start()
        self.window = self.program.window()
        wait_until(lambda: self.desktop.size(self.window) == self.SIZE, "the size of the window")
        self.await_change()
        self.assert_stored(self.quit())


class Killed(SixSecondsLater):
    def test_leaves_what_was_arranged(self):
        self.arrange_and_wait()
        self.program.signal(signal.SIGKILL)
        self.program.wait()
        self.assert_all_is_there()


class Screen(SixSecondsLater):
    def setUp(self):
        self.shared, self.desktop = self.desktop, Desktop()
        self.addCleanup(self.desktop.close)
        super().setUp()

    def test_that_goes_ends_the_program_with_what_was_arranged(self):
        self.arrange_and_wait()
        self.desktop.server.kill()
        self.program.wait()
        self.desktop = self.shared
        self.assert_all_is_there()
