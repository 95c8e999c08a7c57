#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Types into bash and zsh, and checks what the tab key completes.

    packaging/tests/completion.py TREE

TREE is an unpacked package. Every option in a program's --help must be completed, and so must file names after options
that take one.
"""

import fcntl
import os
import pathlib
import pty
import re
import select
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

TREE = pathlib.Path()
TIMEOUT = 30
PROGRAMS = ("qel", "qel-desktop")


class Shell:
    """An interactive shell on a terminal. The programs in its path only print their arguments."""

    def __init__(self, arguments, setup, folder):
        for program in PROGRAMS:
            stub = folder / program
            stub.write_text("#!/bin/sh\nprintf '<%s>' \"$@\"\n")
            stub.chmod(0o755)
        environment = {"PATH": f"{folder}:/usr/bin:/bin", "HOME": str(folder), "TERM": "dumb", "LC_ALL": "C.UTF-8",
                       "BASH_COMPLETION_USER_DIR": str(TREE / "usr/share/bash-completion")}
        self._pid, self._terminal = pty.fork()
        if self._pid == 0:
            os.chdir(folder)
            os.execvpe(arguments[0], arguments, environment)
        fcntl.ioctl(self._terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 50, 500, 0, 0))
        for line in [*setup, "PS1='ready''> '"]:
            os.write(self._terminal, f"{line}\n".encode())
        self._until("ready> $")

    def close(self):
        os.close(self._terminal)
        os.waitpid(self._pid, 0)

    def _until(self, pattern):
        """Returns the shell's output up to a match of the pattern at its end."""
        text, end = "", time.monotonic() + TIMEOUT
        while not re.search(pattern, text):
            if not select.select([self._terminal], [], [], max(end - time.monotonic(), 0))[0]:
                raise AssertionError(f"waited in vain for {pattern!r}, got {text!r}")
            text += os.read(self._terminal, 65536).decode(errors="replace")
        return text

    def arguments(self, typed):
        """Returns the arguments that a program gets after this was typed; tabs complete."""
        # The shell handles keys in order, so the line ends after everything before it has been completed.
        os.write(self._terminal, f"{typed}\n".encode())
        return re.findall("<(.*?)>", self._until("(?s)\n.*ready> $").split("\n", 1)[1])


class Bash(Shell):
    def __init__(self, folder):
        super().__init__(["bash", "--norc", "-i"], [". /usr/share/bash-completion/bash_completion"], folder)


class Zsh(Shell):
    def __init__(self, folder):
        super().__init__(["zsh", "-f", "-i"],
                         [f"fpath=({TREE}/usr/share/zsh/vendor-completions $fpath)", "unset zle_bracketed_paste",
                          "autoload -U compinit", "compinit -u -D"], folder)


def options(program):
    """Yields pairs of an action and an option that needs it (or no action), as --help lists them."""
    text = subprocess.run([TREE / "usr/bin" / program, "--help"], capture_output=True, text=True, check=True,
                          timeout=TIMEOUT).stdout
    action = None
    for indent, option, value in re.findall(r"^( {2,4})(--[a-z-]+)(?: ([A-Z]+))?", text, re.MULTILINE):
        if len(indent) == 2:
            action = f"{option} x" if value else option
            yield program, "", option
        else:
            yield program, action, option


class CompletionTest:
    kind = Shell

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="qel-shell-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.shell = self.kind(self.folder)
        self.addCleanup(self.shell.close)

    def test_completes_every_option(self):
        count = 0
        for program in PROGRAMS:
            known = list(options(program))
            for _, action, option in known:
                # Takes the shortest prefix that no other option shares.
                others = [other for _, _, other in known if other != option]
                length = next(n for n in range(3, len(option) + 1)
                              if not any(other.startswith(option[:n]) for other in others))
                with self.subTest(program=program, option=option):
                    got = self.shell.arguments(f"{program} {action} {option[:length]}\t")
                    self.assertEqual(got[-1].rstrip("="), option)
                count += 1
        self.assertGreater(count, 12)

    def test_completes_the_file_of_a_picture(self):
        (self.folder / "load-of-today.png").touch()
        self.assertEqual(self.shell.arguments("qel --snapshot loa\t"), ["--snapshot", "load-of-today.png"])

    def test_offers_no_file_where_none_belongs(self):
        (self.folder / "load-of-today.png").touch()
        self.assertEqual(self.shell.arguments("qel --read loa\t"), ["--read", "loa"])


class BashTest(CompletionTest, unittest.TestCase):
    kind = Bash


class ZshTest(CompletionTest, unittest.TestCase):
    kind = Zsh


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    TREE = pathlib.Path(sys.argv.pop()).resolve()
    unittest.main()
