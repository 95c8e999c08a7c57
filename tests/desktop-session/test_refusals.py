# SPDX-License-Identifier: MIT
"""What the two programs print when they cannot use something of the user's: one line each, with the consequence."""

import contextlib
import os
import pathlib
import signal
import tempfile
from unittest import mock

from desktop import DesktopTest, wait_until
from replicants import AUTOSTART, HOST, HOST_STORE, ReplicantsTest

NOT_FOUND = "charts on the desktop show nothing, and commands like qel --quit find no running program\n"
NOT_STARTED = "no other program can start this one, and two starts at once may both run\n"


@contextlib.contextmanager
def program(path):
    """Helpers that start "the program" start this one meanwhile."""
    with mock.patch.dict(os.environ, QEL_PROGRAM=str(path)):
        yield


class RuntimeFolderTest(DesktopTest):
    """A folder for the sockets, in which something else is in the way."""

    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory(prefix="qel-runtime-")
        self.addCleanup(folder.cleanup)
        self.runtime = pathlib.Path(folder.name)
        self.kits = self.runtime / "kits"

    def said(self, path, *arguments):
        """Returns the status and output of a run. The host has nothing to show and ends by itself; the window is
        closed."""
        with program(path):
            if path == HOST or arguments:
                status, output, errors = self.run_beside(*arguments, XDG_RUNTIME_DIR=str(self.runtime))
                self.assertEqual(output, "")
                return status, errors
            started = self.start(XDG_RUNTIME_DIR=str(self.runtime))
        started.window()
        started.signal(signal.SIGTERM)
        return started.wait()

    def assert_told(self, what):
        for path, name in ((os.environ["QEL_PROGRAM"], "qel"), (HOST, "qel-desktop")):
            with self.subTest(name):
                self.assertEqual(self.said(path), (0, f"{name}: {self.kits} {what}, so {NOT_FOUND}"))
        with self.subTest("a command"):
            self.assertEqual(self.said(os.environ["QEL_PROGRAM"], "--quit"),
                             (1, f"qel: {self.kits} {what}, so {NOT_FOUND}"))

    def test_a_link(self):
        (self.runtime / "elsewhere").mkdir(0o700)
        self.kits.symlink_to("elsewhere")
        self.assert_told("is a link")
        self.assertEqual(list((self.runtime / "elsewhere").iterdir()), [])

    def test_open_to_others(self):
        self.kits.mkdir()
        self.kits.chmod(0o755)
        self.assert_told("is open to other users")

    def test_of_somebody_else(self):
        if os.geteuid() != 0:
            self.skipTest("only root can give a folder away")
        self.kits.mkdir(0o700)
        os.chown(self.kits, 12345, 12345)
        self.assert_told("belongs to another user")

    def test_no_folder(self):
        self.kits.write_text("")
        self.assert_told("is not a folder")
        self.assertEqual(self.kits.read_text(), "")

    def test_a_lock_that_is_a_link(self):
        self.kits.mkdir(0o700)
        for path, name in ((os.environ["QEL_PROGRAM"], "x-vnd.kvt-Qel"), (HOST, "x-vnd.kvt-Qel-Desktop")):
            with self.subTest(name):
                lock = self.kits / (name + ".lock")
                lock.symlink_to("elsewhere")
                status, errors = self.said(path)
                said = pathlib.Path(path).name
                self.assertEqual((status, errors), (0, f"{said}: {lock} is a link, so {NOT_STARTED}"))
        self.assertEqual(self.said(os.environ["QEL_PROGRAM"], "--quit"), (1, "qel: the program is not running\n"))
        self.assertFalse((self.kits / "elsewhere").exists())


class SettingsTest(DesktopTest):
    """One line says that nothing is saved, however often saving was tried."""

    def said(self, **environment):
        started = self.start(**environment)
        alert = started.window("^Qel alert$")
        self.desktop.key("Return", window=alert)
        wait_until(lambda: not self.desktop.windows("^Qel alert$", started.pid), "the alert to close")
        started.signal(signal.SIGTERM)
        return started.wait()

    def test_without_a_home(self):
        home = self.config / "nobody"
        expected = "the settings could not be saved: XDG_CONFIG_HOME is not set, and there is no home folder\n"
        for environment in ({"HOME": str(home)}, {"HOME": ""}):
            with self.subTest(environment):
                self.assertEqual(self.said(XDG_CONFIG_HOME="", **environment), (1, "qel: " + expected))
                with program(HOST):
                    self.assertEqual(self.run_beside(XDG_CONFIG_HOME="", **environment),
                                     (1, "", "qel-desktop: " + expected))
        self.assertFalse(home.exists(), "nobody's home is made")

    def test_a_folder_that_cannot_be_made(self):
        status, errors = self.said(XDG_CONFIG_HOME="/proc/nowhere")
        self.assertEqual(status, 1)
        self.assertRegex(errors, r"\Aqel: the settings could not be saved in /proc/nowhere: [^\n]+\n\Z")


class GtkSettingsTest(DesktopTest):
    def test_nobody_is_waited_for_at_a_pipe(self):
        for version in ("gtk-3.0", "gtk-4.0"):
            folder = self.config / version
            folder.mkdir()
            os.mkfifo(folder / "settings.ini", 0o600)
        started = self.start()
        started.window()
        started.signal(signal.SIGTERM)
        self.assertEqual(started.wait(), (0, ""))


class AutostartTest(ReplicantsTest):
    def test_a_link_is_left(self):
        mine = self.config / "mine"
        for target in (mine, self.config / "nowhere"):
            with self.subTest(target.name):
                mine.write_text("mine")
                entry = self.config / AUTOSTART
                entry.parent.mkdir(exist_ok=True)
                entry.unlink(missing_ok=True)
                entry.symlink_to(target)
                before = len(self.program.errors())
                self.drag_out(700, 500)
                self.replicant()
                self.end_host(signal.SIGTERM)
                self.assertEqual(self.program.errors()[before:],
                                 f"qel-desktop: the autostart entry {entry} could not be written (It is a link), so the "
                                 "charts on the desktop will not come back with the next session\n")
                self.assertTrue(entry.is_symlink())
                self.assertEqual(mine.read_text(), "mine")
                self.assertFalse((self.config / "nowhere").exists())
                (self.config / HOST_STORE).unlink()
