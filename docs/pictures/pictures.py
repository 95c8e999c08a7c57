#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the program on a desktop of its own, as a user would, and takes pictures of it.

    docs/pictures/pictures.py BUILD FOLDER

BUILD is the folder of the programs; the pictures go to FOLDER. docs/pictures/take runs this script.
"""

import contextlib
import os
import pathlib
import subprocess
import sys
import tempfile
import time

PROJECT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "tests/desktop-session"))
sys.dont_write_bytecode = True

from desktop import Desktop, Program, wait_until  # noqa: E402  (lies in another folder)
from machine import Machine

SECONDS_TO_FILL = 55
"""Until a chart is nearly full, at ten samples a second."""

CHART = (300, 90)
"""A place on the first chart, in the window."""

HANDLE = (6, 52)
"""The handle of the first chart, in the window."""

CHART_HEIGHT = 102
"""From one chart to the next one, where there are four."""


class Pictures:
    def __init__(self, build, folder):
        self.build, self.folder = build.resolve(), folder.resolve()
        self.desktop = Desktop()
        self.desktop.environment["LANGUAGE"] = ""
        self.desktop.output("xsetroot", "-solid", "#52708f", check=True)
        self.machine = Machine(PROJECT / "tests/data/machines/eight-processors",
                               pathlib.Path(self.desktop.environment["HOME"]) / "machine")
        self.desktop.environment["KITS_ROOT"] = str(self.machine.folder)
        os.environ["QEL_PROGRAM"] = str(self.build / "qel")

    def save(self, name, window):
        """Saves a window with its frame, or a part of the screen."""
        if isinstance(window, int):
            what = ["-frame", "-window", str(window)]
        else:
            what = ["-window", "root", "-crop", "{2}x{3}+{0}+{1}".format(*window)]
        self.desktop.output("import", "-silent", *what, "+repage", str(self.folder / f"{name}.png"), check=True)
        print(f"took {name}.png", flush=True)

    def start(self, settings=None):
        """Starts the program as at its first start, or with settings given as JSON."""
        config = pathlib.Path(tempfile.mkdtemp(prefix="config-", dir=self.desktop.environment["HOME"]))
        if settings:
            subprocess.run([self.build / "tools/resources/resources", PROJECT / "docs/pictures" / settings,
                            config / "x-vnd.kvt-Qel.user"], check=True, timeout=60)
        program = Program(self.desktop, config)
        window = program.window()
        if not settings:
            self.tell("--set-delay", "0.1")
        time.sleep(SECONDS_TO_FILL)
        return program, window

    def tell(self, *arguments):
        subprocess.run([self.build / "qel", *arguments], env=self.desktop.environment, check=True, timeout=60)

    def quit(self, program):
        self.tell("--quit")
        # Its output may stay open for longer, because charts on the desktop inherit it.
        program.process.wait(60)

    def of_the_first_start(self):
        program, window = self.start()
        self.save("charts", window)

        def shown():
            return set(self.desktop.windows(".*", program.pid))

        before = shown()
        self.desktop.click(window, *CHART, button=3)
        wait_until(lambda: shown() - before, "the menu of a chart")
        time.sleep(1)
        left, top, width, height = self.desktop.geometry(window)
        self.save("menu", (left, top, width, height))
        self.desktop.key("p")
        preferences = program.window("^Chart preferences$")
        for page in ("general", "colours", "sources", "fonts", "sampler"):
            time.sleep(1)
            self.save(page, preferences)
            self.desktop.key("ctrl+Next", window=preferences)
        self.desktop.key("Escape", window=preferences)

        self.desktop.key("ctrl+Next", window=window)
        time.sleep(2)
        self.save("uptime", window)
        self.quit(program)

    def of_the_desktop(self):
        """Takes a chart of each kind, and two charts that were torn off."""
        program, window = self.start("kinds.json")
        self.save("kinds", window)
        left, top, width, _ = self.desktop.geometry(window)

        def torn_off():
            return len(self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "^qel-desktop$").split())

        for index, (x, y) in enumerate(((80, 60), (110, 250))):
            charts = torn_off()
            self.desktop.drag((left + HANDLE[0], top + HANDLE[1] + index * CHART_HEIGHT), (left + width + x, top + y))
            wait_until(lambda: torn_off() > charts, "a chart on the desktop")
        time.sleep(SECONDS_TO_FILL)
        self.save("desktop", (0, 0, 1100, 560))
        self.quit(program)

    def close(self):
        self.machine.close()
        self.desktop.close()


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    with contextlib.closing(Pictures(*map(pathlib.Path, sys.argv[1:]))) as pictures:
        pictures.of_the_first_start()
        pictures.of_the_desktop()


if __name__ == "__main__":
    main()
