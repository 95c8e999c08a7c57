"""What becomes of settings that another version of the program left."""

import signal

from desktop import DesktopTest, wait_until

STORE = "x-vnd.kvt-Qel.user"
QUESTION = "^Qel$"


def text(value):
    data = value.encode()
    return bytes([0x60 + len(data)]) + data


def store_of(version):
    """A store with nothing but a version: a CBOR map behind a tag and its length."""
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

    def test_nothing_is_asked_about_this_version(self):
        self.start_with("0.3.0")
        self.assertEqual(self.desktop.size(self.window), (351, 151))
        self.quit()
