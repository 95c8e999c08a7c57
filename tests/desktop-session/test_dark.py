# SPDX-License-Identifier: MIT
"""A dark desktop according to its settings: those of a settings daemon, or the desktop's own files."""

from charts import ChartsTest
from panels import KDE_DARK, KDE_LIGHT, Panels
from xsettings import SettingsManager


class Daemon(Panels, ChartsTest):
    """XFCE, MATE and Cinnamon publish the theme's name through the X server."""

    def arrange(self):
        self.daemon = self.open_daemon("Greybird-dark")

    def open_daemon(self, theme):
        daemon = SettingsManager(self.desktop.environment["DISPLAY"], {"Net/ThemeName": theme})
        self.addCleanup(daemon.close)
        return daemon

    def test_is_followed_at_the_start_and_while_the_program_runs(self):
        self.await_dark()
        self.daemon.set({"Net/ThemeName": "Greybird"})
        self.await_light()
        self.daemon.set({"Net/ThemeName": "Adwaita-dark"})
        self.await_dark()
        self.daemon.set({"Net/ThemeName": "Adwaita"})
        self.await_light()
        self.daemon.set({"Gtk/ApplicationPreferDarkTheme": 1})
        self.await_dark()

    def test_is_followed_when_another_daemon_takes_over(self):
        self.await_dark()
        self.open_daemon("Adwaita")
        self.await_light()


class Plasma(Panels, ChartsTest):
    """Plasma keeps its colours in a file, which it replaces. No portal runs."""

    environment = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}
    colors = KDE_LIGHT

    def arrange(self):
        self.write(self.colors)

    def write(self, text):
        new = self.config / "kdeglobals.new"
        new.write_text(text)
        new.rename(self.config / "kdeglobals")

    def test_is_followed_to_dark_and_back(self):
        self.await_light()
        for _ in range(2):
            self.write(KDE_DARK)
            self.await_dark()
            self.write(KDE_LIGHT)
            self.await_light()


class DarkPlasma(Plasma):
    colors = KDE_DARK

    def test_is_followed_to_dark_and_back(self):
        self.await_dark()
        self.write(KDE_LIGHT)
        self.await_light()
        self.write(KDE_DARK)
        self.await_dark()
