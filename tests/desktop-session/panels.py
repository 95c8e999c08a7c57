# SPDX-License-Identifier: MIT
"""Shared by tests of light and dark."""

from desktop import wait_until

PANEL = (2, 380)
"""A place beside the charts of the main window."""
LIGHT = (216, 216, 216)
KDE_LIGHT = "[Colors:Window]\nBackgroundNormal=239,240,241\n[Colors:View]\nBackgroundNormal=255,255,255\n"
KDE_DARK = "[Colors:Window]\nBackgroundNormal=42,46,50\n[Colors:View]\nBackgroundNormal=27,30,32\n"


class Panels:
    """Mixed into a test of the main window; looks at its panels."""

    def panel(self):
        return self.picture().pixel(*PANEL)

    def await_dark(self):
        wait_until(lambda: max(self.panel()) < 100, "dark panels")

    def await_light(self):
        wait_until(lambda: self.panel() == LIGHT, "light panels")
