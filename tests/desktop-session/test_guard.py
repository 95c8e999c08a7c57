"""Nothing that tests have started outlives them."""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

from desktop import TIMEOUT, wait_until

GUARD = pathlib.Path(__file__).with_name("guard.py")
DAEMON = "(trap '' TERM HUP; setsid sh -c 'trap \"\" TERM; echo $$ >\"$1\"; while :; do sleep 1; done' - \"$1\" &);"
"""Leaves its parent, its process group and its session, and does not listen."""


class Guard(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="qel-guard-")
        self.addCleanup(folder.cleanup)
        self.told = pathlib.Path(folder.name) / "pid"

    def start(self, script, seconds=TIMEOUT):
        process = subprocess.Popen([sys.executable, GUARD, str(seconds), "sh", "-c", DAEMON + script, "-", self.told],
                                   stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def daemon(self):
        return int(wait_until(lambda: self.told.exists() and self.told.read_text(), "the daemon"))

    @staticmethod
    def is_running(pid):
        return os.path.exists(f"/proc/{pid}/exe")

    def test_ends_what_is_left_and_hands_on_the_status(self):
        process = self.start('while [ ! -s "$1" ]; do sleep 0.01; done; exit 3')
        self.assertEqual(process.wait(TIMEOUT), 3)
        self.assertFalse(self.is_running(self.daemon()))

    def test_removes_temporary_files(self):
        process = self.start('echo "$TMPDIR" >"$1.folder"; touch "$TMPDIR/file"; while [ ! -s "$1" ]; do sleep 0.01; done')
        self.assertEqual(process.wait(TIMEOUT), 0)
        folder = self.told.with_name("pid.folder").read_text().strip()
        self.assertIn("qel-tests-", folder)
        self.assertFalse(os.path.exists(folder))

    def test_ends_what_takes_too_long(self):
        process = self.start("sleep 1000", seconds=1)
        self.assertEqual(process.wait(TIMEOUT), 124)
        self.assertFalse(self.is_running(self.daemon()))

    def test_ends_everything_when_it_is_told_to_end(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number):
                self.told.unlink(missing_ok=True)
                process = self.start("sleep 1000")
                daemon = self.daemon()
                process.send_signal(number)
                self.assertNotEqual(process.wait(TIMEOUT), 0)
                self.assertFalse(self.is_running(daemon))

    def test_ends_everything_when_it_is_killed(self):
        process = self.start("sleep 1000")
        daemon = self.daemon()
        process.kill()
        wait_until(lambda: not self.is_running(daemon), "the end of the daemon")
