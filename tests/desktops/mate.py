# SPDX-License-Identifier: MIT
"""MATE."""

import pathlib

from desktop import wait_until
from gsettings import GsettingsSession


class Mate(GsettingsSession):
    NAME = "MATE"
    SCHEMAS = "org.mate"
    COMMAND = ("mate-session",)
    MANAGER = "marco"
    AUTOSTARTED = ("mate-settings-daemon.desktop", "at-spi-dbus-bus.desktop")
    DESKTOP = ("caja", "--force-desktop", "--no-default-window")
    SCALES_LIVE = True

    def prepare(self):
        # The administrator gets no desktop without this entry.
        (self.config / "autostart/caja.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Caja\nExec={' '.join(self.DESKTOP)}\n"
            "X-MATE-Autostart-Phase=Desktop\nX-MATE-Autostart-Notify=true\nX-MATE-AutoRestart=true\n"
            "X-MATE-Provides=filemanager\n")
        # Debian's panel never registers with the session, which would wait half a minute for it at every login.
        applications = pathlib.Path(self._folder) / ".local/share/applications"
        applications.mkdir()
        (applications / "mate-panel.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=Panel\nExec=mate-panel\n"
            "X-MATE-Autostart-Phase=Application\nX-MATE-Provides=panel\n")
        # For another scale the settings daemon kills all panels of the user by name, including those of other sessions.
        tools = pathlib.Path(self._folder) / "bin"
        tools.mkdir()
        restart = tools / "killall"
        restart.write_text('#!/bin/sh\nexec "$1" --replace\n')
        restart.chmod(0o700)
        self._bare_environment["PATH"] = f"{tools}:{self._bare_environment['PATH']}"

    def log_in(self):
        # Its own guess comes from the screen's size in millimetres, which this screen does not have.
        self.run_between(("set", "org.mate.font-rendering", "dpi", "96"))
        super().log_in()

    def ask_to_log_out(self):
        self.run("mate-session-save", "--force-logout")

    def set_wallpaper(self, path):
        self.set_value("background", "picture-options", "stretched")
        self.set_value("background", "picture-filename", path)

    def forget_wallpaper(self):
        (self.config / "dconf/user").unlink()

    def set_dark(self, dark):
        self.set_value("interface", "gtk-theme", "Adwaita-dark" if dark else "Adwaita")

    def set_scale(self, scale):
        before = int(self.value("interface", "window-scaling-factor"))
        if max(before, 1) != scale:  # 0 means the screen's
            # The settings daemon restarts the window manager and the panel.
            with self.new_manager():
                self.set_value("interface", "window-scaling-factor", scale)
        self.set_font_scale(1)

    def set_font_scale(self, scale):
        self.set_value("font-rendering", "dpi", 96 * scale)

    def switch_compositing(self, on):
        self.set_value("Marco.general", "compositing-manager", "true" if on else "false")
        wait_until(lambda: self.has_compositor() == on, "the compositor")

    def show_desktop_keys(self):
        return ["ctrl+alt+d"]
