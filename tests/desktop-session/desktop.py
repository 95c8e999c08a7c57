# SPDX-License-Identifier: MIT
"""A desktop to test the program on: X server, window manager, pointer, keys and pictures.

Nothing here sleeps for a fixed time: tests await conditions, with a bound. Needs only the standard library.
"""

import contextlib
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
import zlib

import wallpaper
from sanitizers import SLOWNESS
from screen import SCREEN
from xclient import Client

# A script's background processes ignore these signals, and every program started from here would inherit that.
for number in (signal.SIGINT, signal.SIGHUP, signal.SIGTERM):
    signal.signal(number, signal.SIG_DFL)

TIMEOUT = float(os.environ.get("QEL_TEST_PATIENCE", 60)) * SLOWNESS


def stop_process(pid):
    """Stops the process and returns when all its threads stand still: they may run on for a moment after the signal."""
    os.kill(pid, signal.SIGSTOP)

    def is_stopped(thread):
        return (thread / "stat").read_text().rpartition(")")[2].split()[0] == "T"

    wait_until(lambda: all(map(is_stopped, pathlib.Path(f"/proc/{pid}/task").iterdir())), "all threads to stop")


def wait_until(condition, what, timeout=TIMEOUT):
    """Repeats the question until the answer is true, and returns it. The object of the question may vanish meanwhile:
    then a tool that no longer finds it gives no answer."""
    end = time.monotonic() + timeout
    while True:
        failure = None
        try:
            answer = condition()
        except subprocess.CalledProcessError as error:
            answer, failure = None, error
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"waited {timeout} s in vain for: {what}") from failure
        time.sleep(0.03)


class Picture:
    """Pixels of a window or of the screen, three bytes each."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data

    def pixel(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.data[start : start + 3])

    def crop(self, left, top, width, height):
        rows = (self.data[3 * (y * self.width + left) : 3 * (y * self.width + left + width)]
                for y in range(top, top + height))
        return Picture(width, height, b"".join(rows))

    def colors(self):
        return {self.data[i : i + 3] for i in range(0, len(self.data), 3)}

    def count(self, color):
        color = bytes(color)
        return sum(self.data[i : i + 3] == color for i in range(0, len(self.data), 3))

    def __eq__(self, other):
        return (self.width, self.height, self.data) == (other.width, other.height, other.data)


class Desktop:
    """An X server and a window manager, as long as the object is open."""

    def __init__(self, window_manager=True):
        self._processes = []
        self._is_managed = False
        self._folder = tempfile.mkdtemp(prefix="qel-desktop-")
        self.environment = {k: v for k, v in os.environ.items()
                            if k not in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "SESSION_MANAGER")}
        self.environment.update(HOME=self._folder, XDG_RUNTIME_DIR=self._folder, LC_ALL="C.UTF-8", LANGUAGE="",
                                XDG_CONFIG_HOME=os.path.join(self._folder, "config"))
        try:
            self._open_server()
            if window_manager:
                self._open_manager()
                self._is_managed = True
                self.await_manager()
        except BaseException:
            self.close()
            raise

    def _open_server(self):
        read, write = os.pipe()
        # Without -noreset the server starts over when its first client leaves, and drops the others.
        self.server = self._start(["Xvfb", "-displayfd", str(write), "-noreset", "-nolisten", "tcp",
                                   "-screen", "0", f"{SCREEN[0]}x{SCREEN[1]}x24"], pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb does not start")
        self.environment["DISPLAY"] = f":{number}"

    def _open_manager(self):
        manager = self._start(["openbox", "--sm-disable"])

        def is_there():
            if manager.poll() is not None:
                raise RuntimeError(f"openbox ended with {manager.returncode}")
            return self.has_manager()

        wait_until(is_there, "the window manager")

    def has_manager(self):
        return "window id" in self.output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK")

    def show_wallpaper(self):
        """Paints it on the root window, as programs do on desktops without a desktop window."""
        file = pathlib.Path(self._folder) / "wallpaper.png"
        wallpaper.write(file)
        self.output("hsetroot", "-cover", str(file), check=True)
        places = ((0, 0), (SCREEN[0] - 1, SCREEN[1] - 1))

        def is_there():
            picture = self.picture()
            return all(wallpaper.is_near(picture.pixel(*place), wallpaper.color_at(*place)) for place in places)

        wait_until(is_there, "the picture on the root window")

    def _start(self, arguments, **options):
        process = subprocess.Popen(arguments, env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)
        self._processes.append(process)
        return process

    def close(self):
        for process in reversed(self._processes):
            process.terminate()
        for process in self._processes:
            process.wait(TIMEOUT)
        shutil.rmtree(self._folder, ignore_errors=True)

    def output(self, *arguments, check=False):
        return subprocess.run(arguments, env=self.environment, capture_output=True, text=True, timeout=TIMEOUT,
                              check=check).stdout

    def xdotool(self, *arguments):
        output = self.output("xdotool", *(str(argument) for argument in arguments), check=True)
        if "mousedown" in arguments or "click" in arguments:
            self.await_manager()
        return output

    def await_manager(self):
        """Waits until the window manager has handled everything so far."""
        if self._is_managed:
            with Client(self.environment["DISPLAY"]) as client:
                client.await_manager(TIMEOUT)

    # Windows, by their X number.

    def windows(self, name, pid=None):
        """Returns the shown windows with this title (a regular expression)."""
        of = ["--pid", str(pid)] if pid else []
        found = self.output("xdotool", "search", "--onlyvisible", "--all", *of, "--name", name)
        return [int(line) for line in found.split()]

    def window(self, name, pid=None):
        return wait_until(lambda: self.windows(name, pid), f"a window named {name}")[-1]

    def geometry(self, window):
        """Returns left, top, width and height of the content, on the screen."""
        # xdotool counts the frame twice when a window manager has put one around the window.
        text = self.output("xwininfo", "-id", str(window), check=True)
        return tuple(int(re.search(rf"{name}: +(-?[0-9]+)", text).group(1))
                     for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def size(self, window):
        return self.geometry(window)[2:]

    def resize(self, window, width, height):
        self.xdotool("windowsize", window, width, height)
        wait_until(lambda: self.size(window) == (width, height), f"the size {width} x {height}")

    def picture(self, window="root"):
        """Returns what a window, or the screen, shows now."""
        end = time.monotonic() + TIMEOUT
        while time.monotonic() < end:
            width, height = SCREEN if window == "root" else self.size(window)
            result = subprocess.run(["import", "-silent", "-window", str(window), "-depth", "8", "rgb:-"],
                                    env=self.environment, capture_output=True, timeout=TIMEOUT, check=True)
            if len(result.stdout) == 3 * width * height:
                return Picture(width, height, result.stdout)
            # It was resized in between, or reaches beyond the screen.
        raise AssertionError(f"no whole picture of window {window}")

    # The pointer and the keyboard.

    def move(self, window, x, y):
        self.xdotool("mousemove", "--window", window, x, y)

    def click(self, window, x, y, button=1):
        self.move(window, x, y)
        self.xdotool("click", button)

    def drag(self, start, end, button=1, steps=8):
        """Drags from one place of the screen to another, as a hand does."""
        self.xdotool("mousemove", *start)
        self.xdotool("mousedown", button)
        for step in range(1, steps + 1):
            self.xdotool("mousemove", *(round(a + (b - a) * step / steps) for a, b in zip(start, end)))
        self.xdotool("mouseup", button)

    def key(self, *keys, window=None):
        if window is not None:
            self.focus(window)
        self.xdotool("key", *keys)

    def focus(self, window):
        self.xdotool("windowactivate", window)
        wait_until(lambda: self.output("xdotool", "getactivewindow").strip() == str(window), "the focus")
        self.await_manager()


class Program:
    """The program under test, running on a desktop with settings of its own."""

    def __init__(self, desktop, config, *arguments, **environment):
        self.desktop = desktop
        env = {**desktop.environment, "XDG_CONFIG_HOME": str(config), **environment}
        # Not a pipe: programs that it starts inherit it, and may outlive it.
        self._said = tempfile.TemporaryFile("w+")
        self.process = subprocess.Popen([os.environ["QEL_PROGRAM"], *arguments], env=env, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=self._said)

    @property
    def pid(self):
        return self.process.pid

    def window(self, name="^Qel$"):
        def look():
            if self.process.poll() is not None:
                raise AssertionError(f"the program ended with {self.process.returncode}: {self.errors()}")
            return self.desktop.windows(name, self.pid)

        return wait_until(look, f"the window {name}")[-1]

    def errors(self):
        self._said.seek(0)
        return self._said.read()

    def wait(self):
        """Returns the exit status and the output on stderr."""
        return self.process.wait(TIMEOUT), self.errors()

    def signal(self, number):
        self.process.send_signal(number)

    def stop(self):
        stop_process(self.pid)

    def close(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
        self.process.wait(TIMEOUT)
        self._said.close()


class DesktopTest(unittest.TestCase):
    """A test with the desktop of its class, a settings folder of its own, and a picture of the screen if it fails."""

    desktop: Desktop

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop()
        cls.addClassCleanup(cls.desktop.close)
        if cls.has_wallpaper():
            cls.desktop.show_wallpaper()

    @classmethod
    def has_wallpaper(cls):
        """Half of the classes, always the same ones, have a picture as root background; the others have none."""
        return zlib.crc32(f"{cls.__module__}.{cls.__qualname__}".encode()) % 2 == 0

    def setUp(self):
        self.config = self.make_config()

    def make_config(self):
        """Makes the folder of the settings, without any settings of the program."""
        folder = tempfile.TemporaryDirectory(prefix="qel-config-")
        self.addCleanup(folder.cleanup)
        return pathlib.Path(folder.name)

    def doCleanups(self):
        """Keeps a picture of a failure, even one in setUp, while everything is still there."""
        outcome = self._outcome.result
        if any(test is self for test, _ in outcome.failures + outcome.errors):
            folder = pathlib.Path(os.environ["QEL_PROGRAM"]).with_name("failures")
            folder.mkdir(exist_ok=True)
            path = str(folder / f"{self.picture_name()}.png")
            with contextlib.suppress(subprocess.SubprocessError):
                self.desktop.output("import", "-silent", "-window", "root", path)
                print(f"\n    the screen at the end: {path}")
        return super().doCleanups()

    def picture_name(self):
        return self.id()

    def start(self, *arguments, **environment):
        program = Program(self.desktop, self.config, *arguments, **environment)
        self.addCleanup(program.close)
        return program

    def run_beside(self, *arguments, **environment):
        """Starts the program once more with the same settings; returns its exit status, stdout and stderr."""
        env = dict(self.desktop.environment, XDG_CONFIG_HOME=str(self.config))
        env.update(environment)
        result = subprocess.run([os.environ["QEL_PROGRAM"], *arguments], env=env, stdin=subprocess.DEVNULL,
                                capture_output=True, text=True, timeout=TIMEOUT)
        return result.returncode, result.stdout, result.stderr

    def running(self, executable):
        """Returns all processes of a program that use the settings of this test."""
        found = []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                if (os.readlink(folder / "exe") == str(executable)
                        and str(self.config).encode() in (folder / "environ").read_bytes()):
                    found.append(int(folder.name))
        return found

    def assert_ends_well(self, program):
        status, errors = program.wait()
        self.assertEqual((status, errors), (0, ""))
