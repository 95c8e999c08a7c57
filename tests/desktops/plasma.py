# SPDX-License-Identifier: MIT
"""KDE Plasma."""

from desktop import wait_until
from session import Session


class Plasma(Session):
    NAME = "KDE"
    COMMAND = ("startplasma-x11",)
    DESKTOP = ("plasmashell", "--no-respawn")
    MANAGER = "kwin_x11"
    AUTOSTARTED = ("org.kde.plasmashell.desktop", "at-spi-dbus-bus.desktop")

    def prepare(self):
        # We could not end a session that the system's own manager starts.
        (self.config / "startkderc").write_text("[General]\nsystemdBoot=false\n")
        (self.config / "kwinrc").write_text("[Desktops]\nNumber=2\nRows=1\n")
        (self.config / "kscreenlockerrc").write_text("[Daemon]\nAutolock=false\nLockOnResume=false\n")
        (self.config / "ksmserverrc").write_text("[General]\nconfirmLogout=false\n")
        (self.config / "ksplashrc").write_text("[KSplash]\nEngine=none\nTheme=None\n")
        (self.config / "kwalletrc").write_text("[Wallet]\nEnabled=false\nFirst Use=false\n")

    def ask(self, service, path, method, *arguments):
        return self.run("qdbus", service, path, method, *arguments).strip()

    def ask_to_log_out(self):
        self.ask("org.kde.ksmserver", "/KSMServer", "org.kde.KSMServerInterface.logout", 0, 0, 0)

    def set_wallpaper(self, path):
        # A desktop that has just started does not listen yet.
        wait_until(lambda: self.run("plasma-apply-wallpaperimage", path), "the desktop to take the picture")

    def forget_wallpaper(self):
        (self.config / "plasma-org.kde.plasma.desktop-appletsrc").unlink()

    def set_dark(self, dark):
        self.run("plasma-apply-colorscheme", "BreezeDark" if dark else "BreezeLight")

    REDRAW = ("qdbus", "org.kde.KWin", "/KWin", "org.kde.KWin.reconfigure")

    def switch_compositing(self, on):
        self.ask("org.kde.KWin", "/Compositor", f"org.kde.kwin.Compositing.{'resume' if on else 'suspend'}")
        wait_until(lambda: self.has_compositor() == on, "the compositor")

    def left_on_desktop(self):
        notes = self.run("grep", "-c", "^plugin=", self.config / "plasma-org.kde.plasma.desktop-appletsrc")
        return [*super().left_on_desktop(), notes]

    def show_desktop_keys(self):
        return ["super+d"]
