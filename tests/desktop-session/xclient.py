# SPDX-License-Identifier: MIT
"""Requests that only a client of the X server can make."""

import ctypes
import math
import time

XID = ctypes.c_ulong
CLIENT_MESSAGE = 33
STRUCTURE_NOTIFY = 1 << 17
REDIRECT_AND_NOTIFY = 1 << 20 | 1 << 19


class CursorImage(ctypes.Structure):
    _fields_ = [("place", ctypes.c_short * 2), ("width", ctypes.c_ushort), ("height", ctypes.c_ushort),
                ("hot_spot", ctypes.c_ushort * 2), ("serial", ctypes.c_ulong),
                ("pixels", ctypes.POINTER(ctypes.c_ulong)), ("name", XID), ("name_text", ctypes.c_char_p)]


class Event(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", XID), ("message_type", XID), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24)]


class Image(ctypes.Structure):
    """The beginning of the library's structure."""
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("offset", ctypes.c_int), ("format", ctypes.c_int),
                ("data", ctypes.c_void_p), ("order", ctypes.c_int * 4), ("depth", ctypes.c_int),
                ("bytes_per_line", ctypes.c_int)]


def library():
    x = ctypes.CDLL("libX11.so.6")
    display = ctypes.c_void_p
    for name, result, arguments in (
            ("XOpenDisplay", display, [ctypes.c_char_p]),
            ("XCloseDisplay", ctypes.c_int, [display]),
            ("XDefaultRootWindow", XID, [display]),
            ("XInternAtom", XID, [display, ctypes.c_char_p, ctypes.c_int]),
            ("XCreateSimpleWindow", XID, [display, XID] + [ctypes.c_int] * 2 + [ctypes.c_uint] * 3 + [XID] * 2),
            ("XMapWindow", ctypes.c_int, [display, XID]),
            ("XMoveWindow", ctypes.c_int, [display, XID] + [ctypes.c_int] * 2),
            ("XReparentWindow", ctypes.c_int, [display, XID, XID] + [ctypes.c_int] * 2),
            ("XSendEvent", ctypes.c_int, [display, XID, ctypes.c_int, ctypes.c_long, ctypes.POINTER(Event)]),
            ("XListProperties", ctypes.c_void_p, [display, XID, ctypes.POINTER(ctypes.c_int)]),
            ("XChangeProperty", ctypes.c_int, [display, XID, XID, XID, ctypes.c_int, ctypes.c_int, ctypes.c_char_p,
                                               ctypes.c_int]),
            ("XSetSelectionOwner", ctypes.c_int, [display, XID, XID, ctypes.c_ulong]),
            ("XGetSelectionOwner", XID, [display, XID]),
            ("XGetGeometry", ctypes.c_int, [display, XID, ctypes.POINTER(XID)] + [ctypes.POINTER(ctypes.c_int)] * 6),
            ("XGetImage", ctypes.POINTER(Image), [display, XID] + [ctypes.c_int] * 2 + [ctypes.c_uint] * 2
             + [ctypes.c_ulong, ctypes.c_int]),
            ("XDestroyImage", ctypes.c_int, [ctypes.POINTER(Image)]),
            ("XSetErrorHandler", ctypes.c_void_p, [ctypes.c_void_p]),
            ("XSync", ctypes.c_int, [display, ctypes.c_int]),
            ("XFree", ctypes.c_int, [ctypes.c_void_p])):
        function = getattr(x, name)
        function.restype, function.argtypes = result, arguments
    return x


X = library()
IGNORE = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda *_: 0)
"""Ignores an error, which would otherwise end this process."""


class Bells:
    """Counts the beeps of a display from here on."""

    EVENT_SIZE = 192
    CORE_KEYBOARD = 0x100
    NOTIFY, MASK = 8, 1 << 8

    def __init__(self, display):
        for name, result in (("XkbQueryExtension", ctypes.c_int), ("XkbSelectEvents", ctypes.c_int),
                             ("XPending", ctypes.c_int), ("XNextEvent", ctypes.c_int)):
            getattr(X, name).restype = result
        self._display = ctypes.c_void_p(X.XOpenDisplay(display.encode()))
        numbers = [ctypes.c_int() for _ in range(5)]
        numbers[3].value = 1
        if not X.XkbQueryExtension(self._display, *(ctypes.byref(number) for number in numbers)):
            raise RuntimeError("the X server has no keyboard extension")
        self._code = numbers[1].value
        X.XkbSelectEvents(self._display, self.CORE_KEYBOARD, self.MASK, self.MASK)
        X.XSync(self._display, 0)
        self._count = 0

    def close(self):
        X.XCloseDisplay(self._display)

    def count(self):
        event = ctypes.create_string_buffer(self.EVENT_SIZE)
        while X.XPending(self._display):
            X.XNextEvent(self._display, event)
            kind = ctypes.c_int.from_buffer(event).value
            # After the type: serial, whether it was sent, display, time, and the number of the extension's event.
            which = ctypes.c_int.from_buffer(event, 40).value
            self._count += kind == self._code and which == self.NOTIFY
        return self._count


class Client:
    def __init__(self, display):
        self._display = X.XOpenDisplay(display.encode())
        if not self._display:
            raise RuntimeError(f"no X server at {display}")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        X.XCloseDisplay(self._display)

    def _atom(self, name):
        return X.XInternAtom(self._display, name, 0)

    def make_window(self):
        """Makes a window that is never shown."""
        return X.XCreateSimpleWindow(self._display, X.XDefaultRootWindow(self._display), 0, 0, 1, 1, 0, 0, 0)

    # Actions of a window manager.

    def make_frame(self, left, top, width, height):
        """Makes a window that is shown, as a frame for another window."""
        frame = X.XCreateSimpleWindow(self._display, X.XDefaultRootWindow(self._display), left, top, width, height, 0, 0,
                                      0)
        X.XMapWindow(self._display, frame)
        return frame

    def put_into(self, frame, window, left, top):
        """Puts a window into a frame, at this place within it, or back into the root window if the frame is None."""
        X.XReparentWindow(self._display, window, frame or X.XDefaultRootWindow(self._display), left, top)
        X.XSync(self._display, 0)

    def move(self, window, left, top):
        X.XMoveWindow(self._display, window, left, top)
        X.XSync(self._display, 0)

    def sync(self):
        """Waits until the server has done everything."""
        X.XSync(self._display, 0)

    def set_bytes(self, window, name, data):
        """Sets a property of bytes whose type has its name."""
        X.XChangeProperty(self._display, window, self._atom(name), self._atom(name), 8, 0, data, len(data))
        X.XSync(self._display, 0)

    def own_selection(self, name, window):
        """Owns it, and announces that to clients that wait for an owner."""
        X.XSetSelectionOwner(self._display, self._atom(name), window, 0)
        if X.XGetSelectionOwner(self._display, self._atom(name)) != window:
            raise RuntimeError(f"cannot own {name}")
        root = X.XDefaultRootWindow(self._display)
        event = Event(type=CLIENT_MESSAGE, window=root, format=32, message_type=self._atom(b"MANAGER"))
        event.data[:3] = (0, self._atom(name), window)
        X.XSendEvent(self._display, root, 0, STRUCTURE_NOTIFY, ctypes.byref(event))
        X.XSync(self._display, 0)

    def _ask(self, request, window, *data):
        root = X.XDefaultRootWindow(self._display)
        event = Event(type=CLIENT_MESSAGE, window=window, format=32,
                      message_type=self._atom(request))
        event.data[: len(data)] = data
        X.XSendEvent(self._display, root, 0, REDIRECT_AND_NOTIFY, ctypes.byref(event))

    def owner(self, selection):
        """Returns the window that owns a selection, or 0."""
        return X.XGetSelectionOwner(self._display, self._atom(selection))

    def content(self, window):
        """Returns the pixels of a window from the server. All of it has to be on the screen."""
        X.XSetErrorHandler(IGNORE)
        numbers = [ctypes.c_int() for _ in range(6)]
        X.XGetGeometry(self._display, window, ctypes.byref(XID()), *map(ctypes.byref, numbers))
        image = X.XGetImage(self._display, window, 0, 0, numbers[2].value, numbers[3].value, ~0, 2)
        if not image:
            raise RuntimeError("no picture of the window")
        try:
            return ctypes.string_at(image.contents.data, image.contents.bytes_per_line * image.contents.height)
        finally:
            X.XDestroyImage(image)

    def close_window(self, window):
        """Asks the window manager to close it, as a pager does."""
        self._ask(b"_NET_CLOSE_WINDOW", window, 0, 2)

    def set_maximised(self, window, maximised):
        """Maximises it as its button does."""
        self._ask(b"_NET_WM_STATE", window, int(maximised), self._atom(b"_NET_WM_STATE_MAXIMIZED_VERT"),
                  self._atom(b"_NET_WM_STATE_MAXIMIZED_HORZ"), 2)

    def cursor(self):
        """Returns the picture of the pointer: its width and its pixels."""
        fixes = ctypes.CDLL("libXfixes.so.3")
        fixes.XFixesGetCursorImage.restype = ctypes.POINTER(CursorImage)
        fixes.XFixesGetCursorImage.argtypes = [ctypes.c_void_p]
        image = fixes.XFixesGetCursorImage(self._display)
        try:
            width, height = image.contents.width, image.contents.height
            return width, tuple(image.contents.pixels[: width * height])
        finally:
            X.XFree(image)

    def show_desktop(self, shown):
        """Asks for the bare desktop, as a button in the panel does, or for the windows again."""
        root = X.XDefaultRootWindow(self._display)
        self._ask(b"_NET_SHOWING_DESKTOP", root, int(shown))
        X.XSync(self._display, 0)

    def await_manager(self, timeout):
        """The window manager sees every press first and holds the pointer back until it has handled it; keys overtake
        that. It handles everything in order, so once it answers this question, it has handled the press."""
        windows = []
        count = ctypes.c_int(0)
        end = time.monotonic() + timeout
        asked = -math.inf
        while count.value == 0:
            now = time.monotonic()
            if now > end:
                raise AssertionError(f"waited {timeout} s in vain for an answer of the window manager")
            # A starting window manager may lose messages, and ignores older windows as others' business.
            if now > asked + 1:
                windows.append(self.make_window())
                self._ask(b"_NET_REQUEST_FRAME_EXTENTS", windows[-1])
                asked = now
            time.sleep(0.002)
            for window in windows:
                if count.value == 0:
                    X.XFree(X.XListProperties(self._display, window, ctypes.byref(count)))
