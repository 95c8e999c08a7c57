# SPDX-License-Identifier: MIT
"""A client that speaks a compositor's protocol: it moves the pointer, and owns data to paste and drop, which it gives
correctly or badly. Needs only the standard library."""

import array
import contextlib
import mmap
import os
import select
import socket
import struct
import threading
import time

from desktop import wait_until

LEFT, MIDDLE = 0x110, 0x112
GLOBALS = {"wl_compositor": 4, "wl_shm": 1, "wl_seat": 5, "wl_data_device_manager": 3, "xdg_wm_base": 1,
           "zwlr_virtual_pointer_manager_v1": 1, "zwlr_data_control_manager_v1": 2}
"""The interfaces that the client uses, with their versions."""
COPY = 1
"""The action of a drag."""
TRICKLE = 0.1
"""Seconds between two bytes."""


def encoded(argument):
    if isinstance(argument, str):
        text = argument.encode() + b"\0"
        return struct.pack("=I", len(text)) + text + bytes(-len(text) % 4)
    return struct.pack("=I", argument & 0xFFFFFFFF)


def decoded(kinds, body):
    """Returns the arguments of an event; kinds has u for a number and s for a text, which may be absent."""
    arguments = []
    for kind in kinds:
        number = struct.unpack_from("=I", body)[0]
        body = body[4:]
        if kind == "s":
            arguments.append(body[: number - 1].decode() if number else None)
            body = body[number + -number % 4 :]
        else:
            arguments.append(number)
    return arguments


class Client:
    """A connection to a compositor, as long as the object is open. A thread of its own handles events."""

    def __init__(self, path, size):
        self._size = size
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.connect(path)
        self._lock = threading.RLock()
        self._ids = 1
        self._handlers = {1: {0: ("uus", self._failed)}}
        self._found = {}
        self._descriptors = []
        self._streams = {}
        self._held = []
        self._received = b""
        self._error = None
        self._is_closed = False
        self._wake = os.pipe()
        registry = self._make(1, 1, events={0: ("usu", lambda number, name, _: self._found.update({name: number}))})
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()
        self.settle()
        self._globals = {name: self._bind(registry, name, version) for name, version in GLOBALS.items()}
        self._handlers[self._globals["xdg_wm_base"]] = {
            0: ("u", lambda serial: self._send(self._globals["xdg_wm_base"], 3, serial))}
        self._pointer = self._make(self._globals["zwlr_virtual_pointer_manager_v1"], 0,
                                   self._globals["wl_seat"], None)
        self._control = self._make(self._globals["zwlr_data_control_manager_v1"], 1, None, self._globals["wl_seat"])

    def close(self):
        """Does nothing if it is closed already."""
        with self._lock:
            if self._is_closed:
                return
            self._is_closed = True
        os.write(self._wake[1], b"x")
        self._thread.join()
        self._socket.close()
        for descriptor in [*self._wake, *self._held, *self._streams, *self._descriptors]:
            os.close(descriptor)

    def settle(self):
        """Returns when the compositor has handled all requests, and this client has handled all events that they
        caused."""
        done = threading.Event()
        self._make(1, 0, events={0: ("u", lambda _: done.set())})
        wait_until(lambda: done.is_set() or self._error, "the compositor")
        if self._error:
            raise AssertionError(self._error)

    # The protocol.

    def _send(self, target, code, *arguments, descriptor=None):
        body = b"".join(map(encoded, arguments))
        ancillary = [] if descriptor is None else [(socket.SOL_SOCKET, socket.SCM_RIGHTS,
                                                    array.array("i", [descriptor]))]
        with self._lock:
            self._socket.sendmsg([struct.pack("=IHH", target, code, len(body) + 8) + body], ancillary)

    def _make(self, target, code, *arguments, events=None, descriptor=None):
        """Sends a request for a new object, whose place among the arguments is that of None, or else the first."""
        with self._lock:
            self._ids += 1
            number = self._ids
            self._handlers[number] = events or {}
            if None not in arguments:
                arguments = (None, *arguments)
            self._send(target, code, *(number if argument is None else argument for argument in arguments),
                       descriptor=descriptor)
        return number

    def _bind(self, registry, name, version):
        return self._make(registry, 0, self._found[name], name, version, None)

    def _failed(self, _, code, text):
        self._error = f"the compositor says {code}: {text}"

    def _run(self):
        while not self._is_closed:
            due = [next_due for next_due in self._streams.values() if next_due is not None]
            wait = max(0, min(due) - time.monotonic()) if due else None
            floods = [descriptor for descriptor, next_due in self._streams.items() if next_due is None]
            readable, writable, _ = select.select([self._socket, self._wake[0]], floods, [], wait)
            if self._socket in readable and not self._read():
                return
            for descriptor in writable:
                self._write(descriptor, bytes(65536))
            for descriptor, next_due in list(self._streams.items()):
                if next_due is not None and next_due <= time.monotonic():
                    self._write(descriptor, b"\0")
                    if descriptor in self._streams:
                        self._streams[descriptor] = time.monotonic() + TRICKLE

    def _read(self):
        data, descriptors, _, _ = socket.recv_fds(self._socket, 65536, 28)
        self._descriptors += descriptors
        self._received += data
        while len(self._received) >= 8:
            target, code, size = struct.unpack_from("=IHH", self._received)
            if len(self._received) < size:
                break
            body, self._received = self._received[8:size], self._received[size:]
            with self._lock:
                kinds, handle = self._handlers.get(target, {}).get(code, ("", lambda: None))
            handle(*decoded(kinds, body))
        return bool(data)

    def _write(self, descriptor, data):
        """Writes to a reader that may be gone."""
        try:
            os.write(descriptor, data)
        except BlockingIOError:
            return
        except BrokenPipeError:
            del self._streams[descriptor]
            os.close(descriptor)

    # The pointer.

    def move(self, x, y):
        self._send(self._pointer, 1, 0, round(x), round(y), *self._size)
        self._send(self._pointer, 4)
        self.settle()

    def press(self, button=LEFT):
        self._button(button, 1)

    def release(self, button=LEFT):
        self._button(button, 0)

    def click(self, x, y, button=LEFT):
        self.move(x, y)
        self.press(button)
        self.release(button)

    def _button(self, button, state):
        self._send(self._pointer, 2, 0, button, state)
        self._send(self._pointer, 4)
        self.settle()

    # The data that it owns.

    def own(self, behaviour, data, *forms, selection="clipboard"):
        """Owns it until somebody else does. See Offer for the behaviour."""
        offer = Offer(self, behaviour, data)
        source = self._make(self._globals["zwlr_data_control_manager_v1"], 0,
                            events={0: ("s", offer.give), 1: ("", lambda: offer.tell("cancelled"))})
        for form in forms:
            self._send(source, 0, form)
        self._send(self._control, {"clipboard": 0, "primary": 2}[selection], source)
        self.settle()
        return offer

    def open_window(self, name, width, height, color, hand):
        """Opens a window to drag from with the pointer of another client, which survives this one."""
        return Window(self, name, width, height, color, hand)


class Offer:
    """The data that the client offers, and their fate. It answers a question for them according to its behaviour:
          good      at once
          pieces    in single bytes, one after the other
          late      when `answer` is called
          silent    never: it holds the pipe open
          trickle   with a byte again and again, without end
          flood     with as many bytes as are read, without end
          refuses   by closing the pipe, with nothing in it"""

    def __init__(self, client, behaviour, data):
        self._client, self.behaviour, self._data = client, behaviour, data
        self._waiting = []
        self.told = []

    def tell(self, line):
        self.told.append(line)

    def asked(self):
        """Returns the forms it was asked for, in order."""
        return [line.removeprefix("asked ") for line in self.told if line.startswith("asked ")]

    def give(self, form):
        client = self._client
        descriptor = client._descriptors.pop(0)
        if self.behaviour in ("trickle", "flood"):
            os.set_blocking(descriptor, False)
            client._streams[descriptor] = time.monotonic() if self.behaviour == "trickle" else None
        elif self.behaviour == "silent":
            client._held.append(descriptor)
        elif self.behaviour == "late":
            self._waiting.append(descriptor)
            client._held.append(descriptor)
        else:
            with os.fdopen(descriptor, "wb", buffering=0) as pipe, contextlib.suppress(BrokenPipeError):
                pieces = [self._data[i : i + 1] for i in range(len(self._data))]
                for piece in {"good": [self._data], "pieces": pieces, "refuses": []}[self.behaviour]:
                    pipe.write(piece)
        self.tell(f"asked {form}")

    def answer(self):
        """Answers late. Returns whether anybody still reads the answer."""
        is_read = False
        for descriptor in self._waiting:
            with contextlib.suppress(BrokenPipeError):
                os.write(descriptor, self._data)
                is_read = True
            self._client._held.remove(descriptor)
            os.close(descriptor)
        self._waiting.clear()
        return is_read


class Window:
    """A window of one colour, to drag from."""

    def __init__(self, client, name, width, height, color, hand):
        self._client, self._hand = client, hand
        self._serial = None
        self.is_under_pointer = False
        globals_of = client._globals
        client._make(globals_of["wl_seat"], 0, events={
            0: ("uuuu", lambda *_: setattr(self, "is_under_pointer", True)),
            1: ("uu", lambda *_: setattr(self, "is_under_pointer", False)),
            3: ("uuuu", self._pressed)})
        self._device = client._make(globals_of["wl_data_device_manager"], 1, None, globals_of["wl_seat"])
        self._surface = client._make(globals_of["wl_compositor"], 0)
        shell = client._make(globals_of["xdg_wm_base"], 2, None, self._surface, events={0: ("u", self._configured)})
        self._shell = shell
        top_level = client._make(shell, 1)
        client._send(top_level, 2, name)
        client._send(top_level, 3, "drag-source")
        self._buffer = self._make_buffer(width, height, color)
        client._send(self._surface, 6)
        client.settle()

    def _make_buffer(self, width, height, color):
        client = self._client
        size = 4 * width * height
        descriptor = os.memfd_create("window")
        try:
            os.ftruncate(descriptor, size)
            with mmap.mmap(descriptor, size) as memory:
                memory.write(bytes((*reversed(color), 255)) * (width * height))
            pool = client._make(client._globals["wl_shm"], 0, None, size, descriptor=descriptor)
        finally:
            os.close(descriptor)
        return client._make(pool, 0, None, 0, width, height, 4 * width, 1)

    def _configured(self, serial):
        client = self._client
        client._send(self._shell, 4, serial)
        client._send(self._surface, 1, self._buffer, 0, 0)
        client._send(self._surface, 2, 0, 0, 0x7FFFFFFF, 0x7FFFFFFF)
        client._send(self._surface, 6)

    def _pressed(self, serial, _, button, state):
        self._serial = serial if state == 1 and button == LEFT else None

    def drag(self, x, y, behaviour, data, *forms):
        """Begins to drag from this place of the screen, which must be over the window."""
        client = self._client
        self._hand.move(x, y)
        wait_until(lambda: self.is_under_pointer, "the pointer over the window")
        self._hand.press()
        serial = wait_until(lambda: self._serial, "the press of the button")
        offer = Offer(client, behaviour, data)
        source = client._make(client._globals["wl_data_device_manager"], 0, events={
            0: ("s", lambda form: offer.tell(f"wanted {form}" if form else "unwanted")),
            1: ("s", offer.give),
            2: ("", lambda: offer.tell("cancelled")),
            3: ("", lambda: offer.tell("dropped")),
            4: ("", lambda: offer.tell("finished"))})
        for form in forms:
            client._send(source, 0, form)
        client._send(source, 2, COPY)
        client._send(self._device, 0, source, self._surface, 0, serial)
        client.settle()
        return offer
