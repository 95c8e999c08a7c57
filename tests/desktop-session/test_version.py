# SPDX-License-Identifier: MIT
"""Settings that another version of the program has left."""

import signal
import time

from desktop import DesktopTest, wait_until

STORE = "x-vnd.kvt-Qel.user"
QUESTION = "^Qel$"


def text(value):
    data = value.encode()
    return bytes([0x60 + len(data)]) + data


def store_of(version):
    """Returns a store with nothing but a version: a CBOR map behind a tag and its length."""
    fields = b"\xa1" + text("Version") + b"\x82" + text("CSTR") + text(version)
    message = b"\xa2" + text("what") + text("pref") + text("fields") + fields
    return b"\xd9\xd9\xf7\x82\x1a" + len(message).to_bytes(4, "big") + message


class VersionTest(DesktopTest):
    def start_with(self, version):
        self.before = store_of(version)
        (self.config / STORE).write_bytes(self.before)
        self.program = self.start()
        self.window = self.program.window(QUESTION)

    def stored(self):
        return (self.config / STORE).read_bytes()

    def await_main_window(self):
        def look():
            found = self.desktop.windows("^Qel$", self.program.pid)
            return found and self.window not in found

        wait_until(look, "the main window in place of the question")

    def quit(self):
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)

    def test_closing_the_question_writes_nothing(self):
        for version in ("0.2.9", "0.3.1"):
            with self.subTest(version):
                self.start_with(version)
                self.desktop.key("alt+F4", window=self.window)
                self.assert_ends_well(self.program)
                self.assertEqual(self.stored(), self.before)

    def test_a_signal_ends_the_question_and_writes_nothing(self):
        self.start_with("0.2.9")
        self.program.signal(signal.SIGTERM)
        self.program.wait()
        self.assertEqual(self.stored(), self.before)

    def test_load_goes_on_with_what_is_stored(self):
        self.start_with("0.2.9")
        self.desktop.key("Return", window=self.window)
        self.await_main_window()
        self.quit()
        self.assertIn(b"0.3.0", self.stored())
        self.assertNotIn(b"0.2.9", self.stored())
        # Nothing else was stored, so the window is that of an empty store.
        self.assertNotIn(b"All CPUs", self.stored())

    def test_use_defaults_goes_on_with_the_defaults(self):
        self.start_with("0.3.1")
        self.desktop.key("shift+Tab", "space", window=self.window)
        self.await_main_window()
        self.quit()
        self.assertIn(b"0.3.0", self.stored())
        self.assertIn(b"All CPUs", self.stored())
        self.assertEqual((self.config / f"{STORE}.0.3.1").read_bytes(), self.before)

    def test_the_quit_key_ends_the_question_and_writes_nothing(self):
        self.start_with("0.2.9")
        self.desktop.key("ctrl+q", window=self.window)
        self.assert_ends_well(self.program)
        self.assertEqual(self.stored(), self.before)

    def start_again_elsewhere(self):
        """Starts it from another workspace; waits until the question is there."""
        self.desktop.xdotool("set_desktop", 1)
        self.addCleanup(self.desktop.xdotool, "set_desktop", 0)
        wait_until(lambda: self.window not in self.desktop.windows(QUESTION), "a workspace without the question")
        second = self.start()
        wait_until(lambda: self.window in self.desktop.windows(QUESTION), "the question on this workspace")
        wait_until(lambda: self.desktop.output("xdotool", "getactivewindow").strip() == str(self.window), "its focus")
        self.assertEqual(len(self.desktop.windows(QUESTION)), 1)
        self.assertIsNone(second.process.poll())
        return second

    def test_a_second_start_raises_the_question_and_ends_when_it_is_answered(self):
        self.start_with("0.2.9")
        second = self.start_again_elsewhere()
        # Longer than a program may take to answer.
        begun = time.monotonic()
        wait_until(lambda: time.monotonic() > begun + 6, "six seconds")
        self.desktop.key("Return", window=self.window)
        self.await_main_window()
        self.assert_ends_well(second)
        self.quit()

    def test_a_second_start_opens_its_window_when_the_first_ends_at_the_question(self):
        self.start_with("0.2.9")
        second = self.start_again_elsewhere()
        (self.config / STORE).write_bytes(store_of("0.3.0"))
        self.desktop.key("ctrl+q", window=self.window)
        self.assert_ends_well(self.program)
        self.program = second
        self.await_main_window()
        self.quit()

    def test_nothing_is_asked_about_this_version(self):
        self.start_with("0.3.0")
        self.assertEqual(self.desktop.size(self.window), (351, 151))
        self.quit()
