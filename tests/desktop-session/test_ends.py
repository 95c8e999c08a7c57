"""Ends in the middle of something: by a signal, by closing the window, by the loss of the screen."""

import ctypes
import signal
import time

from charts import TITLE, ChartsTest
from desktop import Desktop, wait_until
from drops import DropsTest, sources


def close_window(display, window):
    """What a task bar does: asks the window manager to close a window, whatever has keyboard and pointer."""

    class Event(ctypes.Structure):
        _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                    ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                    ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24)]

    x = ctypes.CDLL("libX11.so.6")
    x.XOpenDisplay.restype = ctypes.c_void_p
    for function in (x.XDefaultRootWindow, x.XInternAtom):
        function.restype = ctypes.c_ulong
    connection = ctypes.c_void_p(x.XOpenDisplay(display.encode()))
    event = Event(type=33, window=window, format=32, message_type=x.XInternAtom(connection, b"_NET_CLOSE_WINDOW", 0))
    event.data[1] = 2  # a pager
    redirect_and_notify = 1 << 20 | 1 << 19
    root = ctypes.c_ulong(x.XDefaultRootWindow(connection))
    x.XSendEvent(connection, root, 0, ctypes.c_long(redirect_and_notify), ctypes.byref(event))
    x.XCloseDisplay(connection)


class EndTest(DropsTest):
    """In each of these the charts scroll on, and an end is one with all that was arranged."""

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
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        start, end = self.on_screen(about, 60, 151), self.on_screen(self.window, 300, 120)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        for step in range(1, 11):
            self.desktop.xdotool("mousemove", *(round(a + (b - a) * step / 10) for a, b in zip(start, end)))
        self.assert_ends()

    def check_foreign_drag(self):
        self.open_source(text=b"held over a chart")
        self.addCleanup(self.desktop.xdotool, "mouseup", 1)
        self.begin_drag(300, 110)
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


class Closing(EndTest):
    def end(self):
        close_window(self.desktop.environment["DISPLAY"], self.window)

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


class Screen(ChartsTest):
    def setUp(self):
        self.shared, self.desktop = self.desktop, Desktop()
        self.addCleanup(self.desktop.close)
        super().setUp()

    def test_that_goes_ends_the_program_with_what_was_arranged(self):
        self.popup()
        self.choose("a")
        # What was arranged is promised to be on the disk five seconds later, and nothing tells when it is.
        arranged = time.monotonic()
        wait_until(lambda: time.monotonic() > arranged + 6, "six seconds")
        self.desktop.server.kill()
        self.program.wait()
        self.assertEqual(self.stored().count(b"ChartType"), 4)

        self.desktop = self.shared
        self.program = self.start()
        self.window = self.program.window()
        self.await_change()
        self.assertEqual(self.quit().count(b"ChartType"), 4)
