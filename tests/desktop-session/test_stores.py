# SPDX-License-Identifier: MIT
"""What the programs tell the user about settings that they cannot read or save, and what they do with them."""

import fcntl
import os
import pathlib
import signal
import tempfile
from unittest import mock

from desktop import DesktopTest, wait_until
from test_version import STORE, store_of

ALERT = "^Qel alert$"
KEPT = STORE + ".kept"


class UnreadTest(DesktopTest):
    """A store that another program has locked when the program starts."""

    def setUp(self):
        super().setUp()
        self.before = store_of("0.3.0")
        (self.config / STORE).write_bytes(self.before)
        self.holder = open(self.config / STORE, "rb")
        self.addCleanup(self.holder.close)
        fcntl.flock(self.holder, fcntl.LOCK_EX)
        self.program = self.start()
        self.alert = self.program.window(ALERT)

    def await_main_window(self):
        self.program.window("^Qel$")

    def end(self):
        self.program.signal(signal.SIGTERM)
        return self.program.wait()

    def test_another_attempt_reads_it(self):
        fcntl.flock(self.holder, fcntl.LOCK_UN)
        self.desktop.key("Return", window=self.alert)
        self.await_main_window()
        self.assertEqual(self.end(), (0, ""))
        self.assertFalse((self.config / KEPT).exists())

    def test_an_attempt_in_vain_asks_again(self):
        self.desktop.key("Return", window=self.alert)
        wait_until(lambda: self.alert not in self.desktop.windows(ALERT, self.program.pid), "the next question")
        again = self.program.window(ALERT)
        fcntl.flock(self.holder, fcntl.LOCK_UN)
        self.desktop.key("Return", window=again)
        self.await_main_window()
        self.assertEqual(self.end(), (0, ""))

    def test_the_defaults_keep_it(self):
        self.desktop.key("shift+Tab", "space", window=self.alert)
        self.await_main_window()
        self.assertEqual((self.config / STORE).read_bytes(), self.before)
        fcntl.flock(self.holder, fcntl.LOCK_UN)
        status, errors = self.end()
        self.assertEqual(status, 0)
        self.assertIn("kept as " + KEPT, errors)
        self.assertEqual((self.config / KEPT).read_bytes(), self.before)
        self.assertIn(b"All CPUs", (self.config / STORE).read_bytes())

    def test_quitting_writes_nothing(self):
        self.desktop.key("alt+F4", window=self.alert)
        self.assert_ends_well(self.program)
        self.assertEqual((self.config / STORE).read_bytes(), self.before)
        self.assertEqual([path.name for path in self.config.glob("*.common")], [])


class BrokenTest(DesktopTest):
    def test_is_kept_and_told_of(self):
        (self.config / STORE).write_bytes(b"broken")
        program = self.start()
        alert = program.window(ALERT)
        self.desktop.key("Return", window=alert)
        wait_until(lambda: not self.desktop.windows(ALERT, program.pid), "the alert to close")
        program.signal(signal.SIGTERM)
        status, errors = program.wait()
        self.assertEqual(status, 0)
        self.assertIn(str(self.config / STORE), errors)
        self.assertEqual((self.config / KEPT).read_bytes(), b"broken")

    def test_is_told_of_without_windows(self):
        (self.config / STORE).write_bytes(b"broken")
        status, _, errors = self.run_beside("--read", "--interval", "0.05")
        self.assertEqual(status, 0)
        self.assertEqual(errors, f"qel: the settings in {self.config / STORE} could not be read "
                                 "(Damaged, or no settings)\n")
        picture = self.config / "picture.png"
        status, _, errors = self.run_beside("--snapshot", str(picture), "--after", "0.1")
        self.assertEqual(status, 0)
        self.assertIn(str(self.config / STORE), errors)
        self.assertEqual((self.config / STORE).read_bytes(), b"broken")


class FullTest(DesktopTest):
    """There is no room for the user's store: files cannot grow beyond a kilobyte."""

    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory(prefix="qel-limited-")
        self.addCleanup(folder.cleanup)
        wrapper = pathlib.Path(folder.name) / "limited"
        wrapper.write_text("#!/bin/sh\nexec env --ignore-signal=XFSZ prlimit --fsize=1024 "
                           f"'{os.environ['QEL_PROGRAM']}'\n")
        wrapper.chmod(0o755)
        with mock.patch.dict(os.environ, QEL_PROGRAM=str(wrapper)):
            self.program = self.start()
        self.window = self.program.window()

    def test_is_told_once_and_at_the_end(self):
        alert = self.program.window(ALERT)
        self.desktop.key("Return", window=alert)
        wait_until(lambda: not self.desktop.windows(ALERT, self.program.pid), "the alert to close")
        self.program.signal(signal.SIGTERM)
        status, errors = self.program.wait()
        self.assertEqual(status, 1)
        self.assertEqual(errors, f"qel: the settings could not be saved in {self.config / STORE}: No space left\n")
