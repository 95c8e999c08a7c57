# SPDX-License-Identifier: MIT
"""A dark desktop according to its portal."""

import os
import pathlib
import shutil
import subprocess
import unittest

from charts import ChartsTest
from panels import KDE_DARK, Panels


@unittest.skipUnless(shutil.which("dbus-daemon"), "there is no dbus-daemon")
class PortalTest(Panels, ChartsTest):
    """The program on a bus of its own, with a portal that reports `scheme` and has more `names`."""

    names = ()

    def open_bus(self):
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], text=True,
                               env=self.desktop.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL)
        self.addCleanup(bus.stdout.close)
        self.addCleanup(bus.wait)
        self.addCleanup(bus.terminate)
        self.environment = dict(self.environment, DBUS_SESSION_BUS_ADDRESS=bus.stdout.readline().strip())

    def open_portal(self, scheme):
        program = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "desktop-session", "portal")
        environment = dict(self.desktop.environment, **self.environment)
        self.portal = subprocess.Popen([program, str(scheme), *self.names], env=environment, text=True,
                                       stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        for pipe in (self.portal.stdin, self.portal.stdout):
            self.addCleanup(pipe.close)
        self.addCleanup(self.portal.wait)
        self.addCleanup(self.portal.terminate)
        self.assertEqual(self.portal.stdout.readline(), "ready\n")

    def arrange(self):
        self.open_bus()
        self.open_portal(self.scheme)

    def offer_portal(self):
        """Offers a portal that the bus starts when somebody asks for it; it notes its start in a file, and never ends
        by itself."""
        folder = pathlib.Path(self.desktop.environment["XDG_RUNTIME_DIR"], "dbus-1/services")
        folder.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, folder.parent)
        program = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "desktop-session", "portal")
        self.ran = self.config / "portal-ran"
        starter = self.config / "start-portal"
        # Its stdin stays open, because it belongs to a program that waits for the end of the bus.
        starter.write_text(f"#!/bin/sh\necho $$ >'{self.ran}'\ntail -f /dev/null --pid=$PPID | "
                           f"exec '{program}' {self.scheme}\n")
        starter.chmod(0o700)
        (folder / "org.freedesktop.portal.Desktop.service").write_text(
            f"[D-BUS Service]\nName=org.freedesktop.portal.Desktop\nExec={starter}\n")

    def say(self, scheme):
        self.portal.stdin.write(str(scheme))
        self.portal.stdin.flush()


class Dark(PortalTest):
    scheme = 1

    def test_is_followed_at_the_start_and_while_the_program_runs(self):
        self.await_dark()
        self.say(2)
        self.await_light()
        self.say(1)
        self.await_dark()
        # No preference has the same effect as no portal.
        self.say(0)
        self.await_light()
        self.quit()


class Light(PortalTest):
    scheme = 2

    def test_becomes_dark_while_the_program_runs(self):
        self.assertEqual(self.portal.stdout.readline(), "asked\n")
        self.await_light()
        self.say(1)
        self.await_dark()


class DarkPlasma(PortalTest):
    """The toolkit takes Plasma's colours at its start, and keeps them."""

    environment = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}
    scheme = 1

    def arrange(self):
        (self.config / "kdeglobals").write_text(KDE_DARK)
        super().arrange()

    def test_becomes_light_and_dark_while_the_program_runs(self):
        self.await_dark()
        self.say(2)
        self.await_light()
        self.say(1)
        self.await_dark()


class OfferedOnGnome(PortalTest):
    """Where nothing else says how dark the desktop is, the portal is started for that."""

    environment = {"XDG_CURRENT_DESKTOP": "GNOME"}
    scheme = 1

    def arrange(self):
        self.offer_portal()
        self.open_bus()

    def test_is_started_and_followed(self):
        self.await_dark()
        self.assertTrue(self.ran.exists())
        self.quit()


class Offered(PortalTest):
    scheme = 1

    def arrange(self):
        self.offer_portal()
        self.open_bus()

    def test_is_not_started_elsewhere(self):
        self.await_light()
        self.desktop.focus(self.window)
        self.settle()
        self.assertFalse(self.ran.exists())
        self.quit()
