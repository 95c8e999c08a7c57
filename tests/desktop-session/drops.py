# SPDX-License-Identifier: MIT
"""Another program to drag from."""

import os
import subprocess

from charts import ChartsTest
from desktop import wait_until

MESSAGE = "application/x-kits-message"
NAME = "Drag source"
PLACE = (960, 100)
MSG_SOURCE_DROP = 0x3F6212A4


def head(kind, number):
    """Returns the head of a CBOR value."""
    if number < 24:
        return bytes([kind << 5 | number])
    if number < 0x100:
        return bytes([kind << 5 | 24, number])
    size, mark = (2, 25) if number < 0x10000 else (4, 26)
    return bytes([kind << 5 | mark]) + number.to_bytes(size, "big")


def cbor(value):
    if isinstance(value, int):
        return head(0, value)
    if isinstance(value, str):
        return head(3, len(value.encode())) + value.encode()
    if isinstance(value, list):
        return head(4, len(value)) + b"".join(cbor(item) for item in value)
    return head(5, len(value)) + b"".join(cbor(key) + cbor(item) for key, item in value.items())


def message(what, **fields):
    """Returns a flattened message; each field is a list of its type's code and the values."""
    body = cbor({"what": what, "fields": fields})
    return b"\xd9\xd9\xf7\x82\x1a" + len(body).to_bytes(4, "big") + body


def sources(count):
    source = {"what": 0, "fields": {"Target": ["LONG", 2051], "Flags": ["LONG", 0]}}
    return message(MSG_SOURCE_DROP, ValueProvider=["MSGG"] + [source] * count)


class DropsTest(ChartsTest):
    def open_source(self, **content):
        """Starts a program to drag this from: text, color or message, and its bytes."""
        arguments = []
        for index, (form, data) in enumerate(content.items()):
            path = self.config / f"dragged-{index}"
            path.write_bytes(data)
            arguments += [{"text": "text/plain", "color": "application/x-color", "message": MESSAGE}[form], str(path)]
        self.told = self.config / "told"
        program = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "desktop-session", "drag_source")
        with self.told.open("wb") as output:
            process = subprocess.Popen([program, NAME, *arguments], env=self.desktop.environment,
                                       stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.source = self.desktop.window(f"^{NAME}$", process.pid)
        self.desktop.xdotool("windowmove", self.source, *PLACE)
        wait_until(lambda: self.desktop.geometry(self.source)[0] >= PLACE[0], "the drag source at its place")

    def begin_foreign_drag(self, x, y):
        """Drags from the other program onto a place of the window, and holds there."""
        start = self.on_screen(self.source, 80, 50)
        end = self.on_screen(self.window, x, y)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        for step in range(1, 21):
            self.desktop.xdotool("mousemove", *(round(a + (b - a) * step / 20) for a, b in zip(start, end)))
        # The source sends the target one place after another, and the next one only after the target has answered the
        # last. So the target may miss the first of these, but not the second.
        for aside in (1, 0):
            x, y = end[0] + aside, end[1]

            def is_there():
                self.desktop.xdotool("mousemove", x + 1, y, "mousemove", x, y)  # a hand trembles
                return self.told.read_text().endswith(f"at {x} {y}\n")

            wait_until(is_there, "the drag at its end")
            self.settle()

    def ends(self):
        """Returns, for each drag so far, whether it was taken."""
        return [line == "taken" for line in self.told.read_text().splitlines() if line in ("taken", "refused")]

    def drop(self, x, y):
        """Returns whether it was taken."""
        before = self.ends()
        self.begin_foreign_drag(x, y)
        self.desktop.xdotool("mouseup", 1)
        return wait_until(lambda: self.ends()[len(before) :], "the end of the drag")[0]
