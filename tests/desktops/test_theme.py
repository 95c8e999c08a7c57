"""Light and dark, as the user chooses it in the settings of a real desktop."""

import unittest

from desktop import wait_until
from real import DESKTOP, RealTest
from session import Session
from test_portal import LIGHT, PANEL


@unittest.skipIf(DESKTOP.set_dark is Session.set_dark, "this desktop has no light and dark for all programs")
class Theme(RealTest):
    def arrange(self):
        self.addCleanup(self.desktop.set_dark, False)

    def panel(self):
        return self.picture().pixel(*PANEL)

    def await_dark(self):
        wait_until(lambda: max(self.panel()) < 100, "dark panels")

    def await_light(self):
        wait_until(lambda: self.panel() == LIGHT, "light panels")

    def test_is_followed_while_the_program_runs(self):
        self.await_light()
        for _ in range(2):
            self.desktop.set_dark(True)
            self.await_dark()
            self.desktop.set_dark(False)
            self.await_light()
        self.quit()

    def test_is_there_at_the_start(self):
        self.quit()
        for dark, await_it in ((True, self.await_dark), (False, self.await_light)):
            self.desktop.set_dark(dark)
            self.open()
            await_it()
            self.quit()
