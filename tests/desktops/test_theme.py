# SPDX-License-Identifier: MIT
"""Light and dark, chosen in the settings of a real desktop."""

import unittest

from panels import Panels
from real import DESKTOP, RealTest
from session import Session


@unittest.skipIf(DESKTOP.set_dark is Session.set_dark, "this desktop has no light and dark for all programs")
class Theme(Panels, RealTest):
    def arrange(self):
        self.addCleanup(self.desktop.set_dark, False)

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
