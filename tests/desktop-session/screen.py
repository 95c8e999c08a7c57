# SPDX-License-Identifier: MIT
"""The screen of every desktop that the tests start."""

SCREEN = (1280, 800)
"""Its width and height."""
