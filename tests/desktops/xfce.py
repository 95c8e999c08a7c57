# SPDX-License-Identifier: MIT
"""XFCE."""

from desktop import wait_until
from session import Session

BACKDROP = "/backdrop/screen0/monitorscreen/workspace0"


class Xfce(Session):
    NAME = "XFCE"
    COMMAND = ("xfce4-session",)
    DESKTOP = ("xfdesktop",)
    MANAGER = "xfwm4"
    AUTOSTARTED = ("xfsettingsd.desktop", "at-spi-dbus-bus.desktop")
    LIGHT, DARK = "Adwaita", "Adwaita-dark"

    def query(self, channel, name, *change):
        return self.run("xfconf-query", "-c", channel, "-p", name, *change).strip()

    def set_value(self, channel, name, kind, value):
        self.query(channel, name, "-n", "-t", kind, "-s", value)

    def ask_to_log_out(self):
        self.run("xfce4-session-logout", "--logout", "--fast")

    def set_wallpaper(self, path):
        self.set_value("xfce4-desktop", f"{BACKDROP}/image-style", "int", 5)
        self.set_value("xfce4-desktop", f"{BACKDROP}/last-image", "string", path)

    def forget_wallpaper(self):
        (self.config / "xfce4/xfconf/xfce-perchannel-xml/xfce4-desktop.xml").unlink()

    def set_dark(self, dark):
        self.set_value("xsettings", "/Net/ThemeName", "string", self.DARK if dark else self.LIGHT)

    SCALES_LIVE = True

    def set_scale(self, scale):
        self.set_value("xsettings", "/Gdk/WindowScalingFactor", "int", scale)
        self.set_font_scale(1)

    def set_font_scale(self, scale):
        self.set_value("xsettings", "/Xft/DPI", "int", round(96 * scale))

    def switch_compositing(self, on):
        self.set_value("xfwm4", "/general/use_compositing", "bool", "true" if on else "false")
        wait_until(lambda: self.has_compositor() == on, "the compositor")

    def show_desktop_keys(self):
        return ["ctrl+alt+d"]
