# SPDX-License-Identifier: MIT
"""LXQt, with openbox as window manager."""

import pathlib
import shutil

from desktop import TIMEOUT, wait_until
from session import Session


class Lxqt(Session):
    NAME = "LXQt"
    COMMAND = ("startlxqt",)
    MANAGER = "openbox"
    AUTOSTARTED = ("lxqt-desktop.desktop", "lxqt-panel.desktop")
    DESKTOP = ("pcmanfm-qt", "--desktop", "--profile=lxqt")

    def prepare(self):
        folder = self.config / "lxqt"
        folder.mkdir()
        (folder / "session.conf").write_text("[General]\nwindow_manager=openbox\nleave_confirmation=false\n")

    def ask_to_log_out(self):
        self.run("dbus-send", "--session", "--type=method_call", "--dest=org.lxqt.session", "/LXQtSession",
                 "org.lxqt.session.logout")

    TELLS_OF_ITS_END = False

    def log_out(self):
        """Afterwards the login screen ends the X server, which is all that other programs notice, and starts another
        one."""
        super().log_out()
        self.server.terminate()
        self.server.wait(TIMEOUT)
        self.environment = self._bare_environment
        self._open_server()

    def set_wallpaper(self, path):
        self.run("pcmanfm-qt", "--profile=lxqt", f"--set-wallpaper={path}", "--wallpaper-mode=stretch")

    def forget_wallpaper(self):
        # Users without this folder get the system's wallpaper.
        shutil.rmtree(self.config / "pcmanfm-qt")

    def choose_plain(self, color):
        settings = self.config / "pcmanfm-qt/lxqt/settings.conf"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(f"[Desktop]\nWallpaper={self.picture_file}\nWallpaperMode=none\n"
                            f"BgColor=#{bytes(color).hex()}\n")

    def set_dark(self, dark):
        """Does what its settings program does when the user loads a palette; the program opens with the last one
        loaded."""
        if dark:
            palette = pathlib.Path("/usr/share/lxqt/palettes/Dark").read_text()
        else:
            palette = "[Palette]\nbase_color=#ffffff\nwindow_color=#efefef\nwindow_text_color=#000000\n"
        settings = self.config / "lxqt/lxqt.conf"
        written = settings.with_suffix(".new")
        written.write_text(f"[General]\n__userfile__=true\n\n{palette}")
        written.replace(settings)

    def switch_compositing(self, on):
        """The window manager has no compositor: users start one beside it."""
        if on and not self.has_compositor():
            self.compositor = self.launch("xcompmgr")
        elif not on and self.has_compositor():
            self.compositor.terminate()
            self.compositor.wait()
        wait_until(lambda: self.has_compositor() == on, "the compositor")

    def show_desktop_keys(self):
        return ["super+d"]
