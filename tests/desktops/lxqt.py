"""LXQt, with openbox as window manager."""

from desktop import wait_until
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
        self.run("dbus-send", "--session", "--dest=org.lxqt.session", "/LXQtSession", "org.lxqt.session.logout")

    def set_wallpaper(self, path):
        self.run("pcmanfm-qt", "--profile=lxqt", f"--set-wallpaper={path}", "--wallpaper-mode=stretch")

    def forget_wallpaper(self):
        (self.config / "pcmanfm-qt/lxqt/settings.conf").unlink()

    def switch_compositing(self, on):
        """The window manager has none: users start one beside it."""
        if on and not self.has_compositor():
            self.compositor = self.launch("xcompmgr")
        elif not on and self.has_compositor():
            self.compositor.terminate()
            self.compositor.wait()
        wait_until(lambda: self.has_compositor() == on, "the compositor")

    def show_desktop_keys(self):
        return ["super+d"]
