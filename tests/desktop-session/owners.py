# SPDX-License-Identifier: MIT
"""Other programs that own a selection, for tests of the desktop session."""

import os
import subprocess

from desktop import TIMEOUT, wait_until

PROGRAM = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "desktop-session", "selection_owner")


class Owner:
    """A program that owns a selection until `close`; selection-owner.cpp describes its behaviours."""

    def __init__(self, environment, folder, behaviour, form, data, selection="CLIPBOARD", where=()):
        """The folder holds its data and its output. With a window and a place, it drags over that window."""
        content = folder / "owned"
        content.write_bytes(data)
        self._told = folder / "told"
        with self._told.open("wb") as output:
            self.process = subprocess.Popen([PROGRAM, behaviour, form, content, selection, *map(str, where)],
                                            env=environment, stdin=subprocess.PIPE, stdout=output)
        try:
            wait_until(lambda: "ready" in self.told(), "the owner of the selection")
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self.process.kill()
        self.process.wait(TIMEOUT)
        self.process.stdin.close()

    def told(self):
        """Returns its lines so far."""
        return self._told.read_text().splitlines()

    def asked(self):
        """Returns the forms that it was asked for, in order."""
        return [line.removeprefix("asked ") for line in self.told() if line.startswith("asked ")]

    def drop(self):
        self.process.stdin.write(b"drop\n")
        self.process.stdin.flush()
