# SPDX-License-Identifier: MIT
"""The settings that a settings daemon gives all programs through the X server."""

import struct

from xclient import Client

INTEGER, STRING, COLOR = 0, 1, 2


def padded(data):
    return data + bytes(-len(data) % 4)


class SettingsManager:
    """Owns the settings of a display as long as it is open. Removes settings whose value is None.

    For example: SettingsManager(display, {"Xft/DPI": 96 * 1024, "Net/ThemeName": "Adwaita"}). Integers, strings, and
    colours as four numbers up to 65535.
    """

    def __init__(self, display, settings=None):
        self._client = Client(display)
        self._window = self._client.make_window()
        self._settings = {}
        """The value of each setting, and the number of its last change."""
        self._serial = 0
        self.set(settings or {})
        # Programs read the settings when they learn of a new owner.
        self._client.own_selection(b"_XSETTINGS_S0", self._window)

    def close(self):
        self._client.close()

    def set(self, settings):
        """Changes some of them, all in one step; the others stay the same."""
        self._serial += 1
        for name, value in settings.items():
            if value is None:
                self._settings.pop(name, None)
            elif self._settings.get(name, (None,))[0] != value:
                self._settings[name] = (value, self._serial)
        self._client.set_bytes(self._window, b"_XSETTINGS_SETTINGS", self._encoded())

    def set_scale(self, scale):
        """Sets it as a desktop does that scales by the font resolution."""
        self.set({"Xft/DPI": round(96 * 1024 * scale)})

    def _encoded(self):
        encoded = struct.pack("<BxxxII", 0, self._serial, len(self._settings))
        for name, (value, serial) in sorted(self._settings.items()):
            if isinstance(value, str):
                kind, data = STRING, struct.pack("<I", len(value.encode())) + padded(value.encode())
            elif isinstance(value, int):
                kind, data = INTEGER, struct.pack("<i", value)
            else:
                kind, data = COLOR, struct.pack("<HHHH", *value)
            encoded += struct.pack("<BxH", kind, len(name.encode())) + padded(name.encode())
            encoded += struct.pack("<I", serial) + data
        return encoded
