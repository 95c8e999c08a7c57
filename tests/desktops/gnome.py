# SPDX-License-Identifier: MIT
"""GNOME Shell, in an X11 session: bare, and with icons on the desktop."""

import os
import pathlib
import signal
import unittest

from desktop import wait_until
from gsettings import GsettingsSession

SYSTEM_BUS = """<busconfig>
  <type>system</type>
  <listen>unix:path={0}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

SETTINGS = (("org.gnome.mutter", "dynamic-workspaces", "false"),
            ("org.gnome.desktop.wm.preferences", "num-workspaces", "2"),
            ("org.gnome.desktop.interface", "enable-animations", "false"),
            ("org.gnome.desktop.notifications", "show-banners", "false"),
            ("org.gnome.desktop.session", "idle-delay", "0"),
            ("org.gnome.desktop.wm.keybindings", "show-desktop", "['<Super>d']"),
            ("org.gnome.shell", "welcome-dialog-last-shown-version", "'999'"))


class Gnome(GsettingsSession):
    NAME = "GNOME"
    SCHEMAS = "org.gnome.desktop"
    COMMAND = ("/usr/libexec/gnome-session-binary", "--builtin", "--disable-acceleration-check", "--session=tests")
    MANAGER = "gnome-shell"
    AUTOSTARTED = ("org.gnome.SettingsDaemon.XSettings.desktop", "at-spi-dbus-bus.desktop")
    VARIABLES = {"XDG_SESSION_DESKTOP": "gnome", "XDG_MENU_PREFIX": "gnome-"}
    EXTENSIONS = ()
    HAS_RUBBER_BAND = False
    SCALES_LIVE = True
    ALWAYS_COMPOSITES = True

    def prepare(self):
        home = pathlib.Path(self._folder)
        # The shell does not start without a system bus. It is alone on this one.
        address, settings = home / "system-bus", home / "system-bus.conf"
        settings.write_text(SYSTEM_BUS.format(address))
        self._start(["dbus-daemon", f"--config-file={settings}", "--nofork"])
        wait_until(address.exists, "the system bus")
        self._bare_environment["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={address}"
        session = self.config / "gnome-session/sessions/tests.session"
        session.parent.mkdir(parents=True)
        session.write_text("[GNOME Session]\nName=Tests\n"
                           "RequiredComponents=org.gnome.Shell;org.gnome.SettingsDaemon.XSettings;\n")
        extensions = ("org.gnome.shell", "enabled-extensions", str(list(self.EXTENSIONS)))
        self.run_between(*(("set", *setting) for setting in (*SETTINGS, extensions)))

    def log_in(self):
        try:
            super().log_in()
        except RuntimeError as error:
            raise unittest.SkipTest(f"GNOME Shell does not start here: {error}; {self._log}") from error

    def await_desktop(self):
        # The shell begins with its overview, in which users choose a program.
        wait_until(lambda: "true" in self.ask("Get", "OverviewActive"), "the overview")

        def is_closed():
            self.ask("Set", "OverviewActive", "<false>")
            return "false" in self.ask("Get", "OverviewActive")

        wait_until(is_closed, "the end of the overview")

    def restart_manager(self):
        """Does it as users do, with a command of the shell's own."""
        self.key("alt+F2")
        wait_until(lambda: not self.shows_wallpaper(), "the question for a command")
        self.xdotool("type", "r")
        self.key("Return")
        self.await_desktop()
        self.await_manager()

    def restart_desktop(self):
        self.restart_manager()
        self.await_wallpaper()

    def ask(self, method, *arguments):
        """Calls a method on the shell's properties."""
        return self.run("gdbus", "call", "--session", "--dest", "org.gnome.Shell", "--object-path", "/org/gnome/Shell",
                        "--method", f"org.freedesktop.DBus.Properties.{method}", "org.gnome.Shell", *arguments)

    def ask_to_log_out(self):
        self.run("gnome-session-quit", "--logout", "--no-prompt")

    def set_wallpaper(self, path):
        self.set_value("background", "picture-options", "stretched")
        for key in ("picture-uri", "picture-uri-dark"):
            self.set_value("background", key, f"file://{path}")

    def forget_wallpaper(self):
        self.run_between(("reset-recursively", "org.gnome.desktop.background"))

    def set_dark(self, dark):
        self.set_value("interface", "color-scheme", "prefer-dark" if dark else "default")

    def set_scale(self, scale):
        # Its settings program offers no scale of 2 on so small a screen.
        self.run("gsettings", "set", "org.gnome.settings-daemon.plugins.xsettings", "overrides",
                 f"{{'Gdk/WindowScalingFactor': <{scale}>}}")
        self.set_font_scale(1)

    def set_font_scale(self, scale):
        self.set_value("interface", "text-scaling-factor", scale)

    def switch_compositing(self, on):
        pass

    def show_desktop_keys(self):
        return ["super+d"]


class GnomeIcons(Gnome):
    """With the extension that shows desktop icons: a program of its own, which the extension restarts."""

    EXTENSIONS = ("ding@rastersoft.com",)
    HAS_RUBBER_BAND = True

    def await_desktop(self):
        super().await_desktop()
        wait_until(self.desktop_window, "the window of the desktop")

    def restart_desktop(self):
        before = self.desktop_process()
        os.kill(before, signal.SIGKILL)
        wait_until(lambda: self.desktop_process() not in (None, before), "the desktop's second process")
        self.await_wallpaper()

    def desktop_process(self):
        window = self.desktop_window()
        return int(self.output("xdotool", "getwindowpid", str(window), check=True)) if window else None
