# SPDX-License-Identifier: MIT
"""Desktops that keep their settings in gsettings."""

import shlex
import subprocess

from desktop import TIMEOUT
from session import Session


class GsettingsSession(Session):
    SCHEMAS = ""
    """The prefix of their names."""

    def value(self, schema, key):
        return self.run("gsettings", "get", f"{self.SCHEMAS}.{schema}", key).strip()

    def set_value(self, schema, key, value):
        self.run("gsettings", "set", f"{self.SCHEMAS}.{schema}", key, value)

    def run_between(self, *commands):
        """Runs gsettings commands while no session runs."""
        lines = "".join(shlex.join(("gsettings", *command)) + "\n" for command in commands)
        subprocess.run(["dbus-run-session", "--", "sh", "-e"], env=self._bare_environment, input=lines, text=True,
                       check=True, capture_output=True, timeout=TIMEOUT)
