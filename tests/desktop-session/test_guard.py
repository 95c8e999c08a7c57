# SPDX-License-Identifier: MIT
"""Nothing that tests have started outlives them."""

import contextlib
import os
import pathlib
import select
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.append(str(pathlib.Path(__file__).parents[1] / "support"))
from guard import descendants
from desktop import TIMEOUT, wait_until

PROGRAMS = pathlib.Path(os.environ["QEL_TEST_PROGRAMS"])
TESTS = pathlib.Path(__file__).parents[1]
GUARD = TESTS / "support" / "guard.py"
DAEMON = "(trap '' TERM HUP; setsid sh -c 'trap \"\" TERM; echo $$ >\"$1\"; while :; do sleep 1; done' - \"$1\" &);"
"""Leaves its parent, its process group and its session, and ignores requests to end."""


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

    def test_ends_everything_when_the_command_is_killed(self):
        process = self.start("echo $$ >\"$1.command\"; exec sleep 1000")
        daemon = self.daemon()
        told = self.told.with_name("pid.command")
        os.kill(int(wait_until(lambda: told.exists() and told.read_text(), "the command")), signal.SIGKILL)
        self.assertNotEqual(process.wait(TIMEOUT), 0)
        self.assertFalse(self.is_running(daemon))

    def test_ends_everything_when_it_is_killed(self):
        process = self.start("sleep 1000")
        daemon = self.daemon()
        process.kill()
        wait_until(lambda: not self.is_running(daemon), "the end of the daemon")


class Users(unittest.TestCase):
    """Scripts that start servers and programs, killed in the middle of that."""

    def assert_nothing_outlives(self, *command, expected):
        """@param expected  names of the processes that must exist before it is killed"""
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        started = {}

        def has_all():
            for pid in descendants(process.pid) - started.keys():
                with contextlib.suppress(ProcessLookupError):
                    started[pid] = os.pidfd_open(pid)
                    self.addCleanup(os.close, started[pid])
            running = [pid for pid, descriptor in started.items() if not has_ended(descriptor)]
            return set(expected) <= {name_of(pid) for pid in running}

        wait_until(has_all, f"{expected} of {command[0]}")
        process.kill()
        wait_until(lambda: all(map(has_ended, started.values())), "the end of all that it had started")

    def test_a_display_for_a_test(self):
        self.assert_nothing_outlives(TESTS / "support" / "with-display", "-wm", "sleep", "1000",
                                     expected=("Xvfb", "openbox", "sleep"))

    def test_the_long_runs(self):
        program = os.environ["QEL_PROGRAM"]
        for script in ("quitting", "restarting"):
            with self.subTest(script):
                self.assert_nothing_outlives(TESTS / "long" / script, "--program", program, "--store-maker",
                                             PROGRAMS / "long" / "store_of_charts", expected=("Xvfb", "qel"))


def has_ended(descriptor):
    return bool(select.select([descriptor], [], [], 0)[0])


def name_of(pid):
    with contextlib.suppress(OSError):
        return pathlib.Path(f"/proc/{pid}/comm").read_text().strip()
    return ""
