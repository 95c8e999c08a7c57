# SPDX-License-Identifier: MIT
"""Several starts of the program, and what one can tell another."""

import contextlib
import json
import os
import pathlib
import random
import re
import signal
import socket
import struct
import subprocess
import tempfile
import unittest

from charts import STORE, ChartsTest
from desktop import TIMEOUT, Desktop, DesktopTest, wait_until


class ProcessesTest(DesktopTest):
    def assert_one_line(self, result, status):
        self.assertEqual(result[:2], (status, ""))
        self.assertRegex(result[2], r"\Aqel: [^\n]+\n\Z")


class SecondStart(ProcessesTest, ChartsTest):
    def setUp(self):
        super().setUp()
        self.assertEqual(len(self.shown()), 1)

    def assert_brings_the_first_to_the_front(self):
        self.assertEqual(self.run_beside(), (0, "", ""))
        wait_until(lambda: self.desktop.output("xdotool", "getactivewindow").strip() == str(self.window),
                   "the window to be the active one")
        # The window manager may hide the window and show it again in between.
        wait_until(lambda: self.shown() == [self.window] and self.picture(), "a window that stays")
        self.await_change()

    def test_brings_back_what_was_minimised(self):
        self.desktop.xdotool("windowminimize", self.window)
        wait_until(lambda: not self.shown(), "the window to go")
        self.assert_brings_the_first_to_the_front()

    def test_brings_what_is_on_another_workspace(self):
        for state in ("shown", "minimised"):
            with self.subTest(state):
                if state == "minimised":
                    self.desktop.xdotool("windowminimize", self.window)
                here = self.desktop.xdotool("get_desktop").strip()
                there = "1" if here == "0" else "0"
                self.desktop.xdotool("set_desktop", there)
                self.addCleanup(self.desktop.xdotool, "set_desktop", here)
                wait_until(lambda: not self.shown(), "a workspace without the window")
                self.assert_brings_the_first_to_the_front()
                self.assertEqual(self.desktop.xdotool("get_desktop").strip(), there)

    def test_brings_forward_what_is_behind_another_program(self):
        other = subprocess.Popen(["xmessage", "-title", "another program", "in front"], env=self.desktop.environment)
        self.addCleanup(other.wait)
        self.addCleanup(other.kill)
        self.desktop.focus(self.desktop.window("^another program$"))
        self.assert_brings_the_first_to_the_front()

    def test_reads_and_takes_pictures_beside_it(self):
        status, output, errors = self.run_beside("--read", "--json")
        self.assertEqual((status, errors), (0, ""))
        self.assertTrue(json.loads(output)["sources"])
        picture = self.config / "a.png"
        self.assertEqual(self.run_beside("--snapshot", str(picture), "--after", "0"), (0, "", ""))
        self.assertTrue(picture.exists())
        self.await_change()

    def test_on_another_display_says_where_the_first_is(self):
        other = Desktop(window_manager=False)
        self.addCleanup(other.close)
        display = self.desktop.environment["DISPLAY"]
        there = {"DISPLAY": other.environment["DISPLAY"]}
        result = self.run_beside(**there)
        self.assert_one_line(result, 1)
        self.assertIn(display, result[2])
        self.assertEqual(other.windows("Qel"), [])
        self.await_change()
        # A command needs no window, so it is not on another display.
        self.assertEqual(self.run_beside("--set-delay", "0.1", **there), (0, "", ""))

    def test_says_that_the_first_hangs(self):
        self.program.stop()
        self.assert_one_line(self.run_beside(), 1)
        self.program.signal(signal.SIGCONT)
        self.assert_brings_the_first_to_the_front()

    def test_opens_its_own_window_when_the_first_was_killed(self):
        self.program.close()
        self.open()

    def test_right_after_the_end_has_what_was_stored_then(self):
        for turn in range(5):
            self.desktop.resize(self.window, 500 + 20 * turn, 300)
            self.settle()
            self.assertEqual(self.run_beside("--quit"), (0, "", ""))
            program, self.program = self.program, self.start()
            self.window = self.program.window()
            self.assert_ends_well(program)
            self.assertEqual(self.desktop.size(self.window), (500 + 20 * turn, 300))


class Telling(ProcessesTest):
    def test_the_running_program(self):
        program = self.start()
        program.window()
        self.assertEqual(self.run_beside("--set-delay", "0.75", "--set-history", "123"), (0, "", ""))
        self.assertEqual(self.run_beside("--quit"), (0, "", ""))
        self.assert_ends_well(program)
        self.assertRegex((self.config / STORE).read_bytes(), rb"NodesToKeep[^\x7b]{0,20}\x7b")
        status, output, errors = self.run_beside("--read", "--json", "--samples", "2")
        self.assertEqual((status, errors), (0, ""))
        times = [json.loads(line)["time_us"] for line in output.splitlines()]
        self.assertGreaterEqual(times[1] - times[0], 700_000)

    def test_nobody(self):
        for arguments in (["--quit"], ["--set-delay", "1"], ["--set-history", "20"]):
            with self.subTest(arguments):
                self.assert_one_line(self.run_beside(*arguments), 1)

    def test_what_is_out_of_range(self):
        program = self.start()
        program.window()
        for arguments in (["--set-delay", "0.001"], ["--set-delay", "6"], ["--set-history", "1"],
                          ["--set-history", "201"], ["--set-delay", "soon"], ["--set-history"], ["--quit=now"]):
            with self.subTest(arguments):
                self.assert_one_line(self.run_beside(*arguments), 2)
        self.assertIsNone(program.process.poll())

    def test_one_that_hangs(self):
        program = self.start()
        program.window()
        program.stop()
        self.assert_one_line(self.run_beside("--set-delay", "1"), 1)


class Noise(ProcessesTest, ChartsTest):
    """Connections to the socket by which other processes reach the program."""

    def door(self):
        folder = pathlib.Path(self.desktop.environment["XDG_RUNTIME_DIR"]) / "kits"
        return str(wait_until(lambda: list(folder.glob(f"x-vnd.kvt-Qel@*{self.program.pid:08x}*")), "the socket")[0])

    def knock(self, data=b""):
        visitor = socket.socket(socket.AF_UNIX)
        visitor.settimeout(TIMEOUT)
        # The program may close a connection that waits in the queue for too long; that is as good a noise as any other.
        with contextlib.suppress(OSError):
            visitor.connect(self.door_path)
            visitor.sendall(data)
        return visitor

    def setUp(self):
        super().setUp()
        self.door_path = self.door()
        self.files = len(os.listdir(f"/proc/{self.program.pid}/fd"))

    def assert_serves(self):
        self.assertEqual(self.run_beside("--set-delay", "0.1"), (0, "", ""))
        self.await_change()
        wait_until(lambda: len(os.listdir(f"/proc/{self.program.pid}/fd")) <= self.files, "no connection left over")

    def test_of_any_bytes_changes_nothing(self):
        draw = random.Random(9)
        for _ in range(1000):
            self.knock(draw.randbytes(draw.randrange(300))).close()
        self.assert_serves()

    def test_of_frames_that_never_end_or_never_should_changes_nothing(self):
        visitors = [self.knock(struct.pack("<I", length) + b"\1kits")
                    for length in (0, 1, 5, 17, 64, 65, 1 << 20, 1 << 24, (1 << 24) + 9000, (1 << 32) - 1)]
        # They are still there.
        self.assertEqual(self.run_beside("--set-delay", "0.1"), (0, "", ""))
        self.await_change()
        for visitor in visitors:
            visitor.close()
        self.assert_serves()

    def test_of_ten_thousand_connections_changes_nothing(self):
        for _ in range(10_000):
            self.knock().close()
        self.assert_serves()


class Planted(ProcessesTest):
    """Something else in place of the folder in which processes meet: whatever it is, the programs put nothing there."""

    TIMES = 20

    def plant(self, kind, runtime):
        place, elsewhere = runtime / "kits", self.config / "elsewhere"
        elsewhere.mkdir(mode=0o700, exist_ok=True)
        if kind == 0:
            place.symlink_to(elsewhere)
        elif kind == 1:
            place.write_text("a file")
        elif kind == 2:
            place.mkdir()
            place.chmod(0o777)
            elsewhere = place
        else:
            place.symlink_to("/nowhere/to/be/found")
        return elsewhere

    def test_is_left_alone_and_the_program_is_alone(self):
        for turn in range(self.TIMES):
            with tempfile.TemporaryDirectory(prefix="qel-runtime-") as folder, self.subTest(turn):
                runtime = pathlib.Path(folder)
                elsewhere = self.plant(turn % 4, runtime)
                before = os.stat(runtime / "kits", follow_symlinks=False)
                program = self.start(XDG_RUNTIME_DIR=folder)
                program.window()
                self.assert_one_line(self.run_beside("--set-delay", "1", XDG_RUNTIME_DIR=folder), 1)
                program.signal(signal.SIGTERM)
                status, errors = program.wait()
                self.assertEqual(status, 0)
                self.assertRegex(errors, rf"\Aqel: {re.escape(folder)}/kits is [^\n]+\n\Z")
                after = os.stat(runtime / "kits", follow_symlinks=False)
                self.assertEqual((after.st_ino, after.st_mode), (before.st_ino, before.st_mode))
                self.assertEqual(list(elsewhere.iterdir()), [])

    def test_left_by_the_dead_is_removed(self):
        kits = pathlib.Path(self.desktop.environment["XDG_RUNTIME_DIR"]) / "kits"
        for turn in range(self.TIMES):
            program = self.start()
            program.window()
            program.signal(signal.SIGKILL)
            program.wait()
            left = list(kits.glob("x-vnd.kvt-Qel@*"))
            self.assertEqual(len(left), 1)
            self.assert_one_line(self.run_beside("--set-delay", "1"), 1)
            self.assertEqual([path for path in left if path.exists()], [])


if __name__ == "__main__":
    unittest.main()
