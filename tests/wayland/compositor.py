# SPDX-License-Identifier: MIT
"""Compositors without a screen to test the program in. Needs only the standard library."""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "desktop-session"))

from desktop import TIMEOUT, Picture, wait_until  # noqa: E402
from sanitizers import REPORTS  # noqa: E402

SIZE = (1280, 800)
NOBODY = 65534


class Compositor:
    """A compositor, as long as the object is open. Clients get `environment`."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="qel-wayland-"))
        self.processes = []
        # Its own folder, because the compositor may run as another user.
        self.runtime = self.folder / "compositor"
        self.runtime.mkdir(mode=0o700)
        os.chmod(self.folder, 0o711)
        self.environment = {k: v for k, v in os.environ.items()
                            if k not in ("DISPLAY", "QT_QPA_PLATFORM", "SESSION_MANAGER", "DBUS_SESSION_BUS_ADDRESS")}
        self.environment.update(LC_ALL="C.UTF-8", LANGUAGE="", HOME=str(self.folder), XDG_RUNTIME_DIR=str(self.runtime))
        if REPORTS:
            # Graphics drivers are unloaded with memory that they have allocated, and then nothing tells whose leak it
            # was. The toolkit reports that it misses them.
            self.environment.update(__EGL_VENDOR_LIBRARY_FILENAMES=os.devnull,
                                    QT_LOGGING_RULES="qt.qpa.wayland.warning=false")
        try:
            socket = self.open()
        except BaseException:
            self.close()
            raise
        own = self.folder / "run"
        own.mkdir(mode=0o700)
        self.environment.update(WAYLAND_DISPLAY=str(self.runtime / socket), XDG_RUNTIME_DIR=str(own))

    def launch(self, *arguments, **variables):
        with open(self.folder / "log", "ab") as log:
            process = subprocess.Popen(arguments, env=dict(self.environment, **variables), stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=log, cwd=self.runtime)
        self.processes.append(process)
        return process

    def await_socket(self, process, name):
        def is_there():
            if process.poll() is not None:
                raise AssertionError((self.folder / "log").read_text())
            return (self.runtime / name).is_socket()

        wait_until(is_there, f"{type(self).__name__} to start")
        return name

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
            process.wait(TIMEOUT)
        shutil.rmtree(self.folder, ignore_errors=True)

    def picture_of(self, file):
        data = subprocess.run(["convert", file, "-depth", "8", "rgb:-"], capture_output=True, timeout=TIMEOUT,
                              check=True).stdout
        return Picture(*SIZE, data)


class Weston(Compositor):
    """Has no keys and no pointer."""

    def open(self):
        width, height = SIZE
        process = self.launch("weston", "--backend=headless-backend.so", "--use-pixman", f"--width={width}",
                              f"--height={height}", "--socket=wayland-test", "--debug", "--no-config", "--idle-time=0")
        return self.await_socket(process, "wayland-test")

    def picture(self):
        before = set(self.runtime.glob("*.png"))
        subprocess.run(["weston-screenshooter"], env=self.environment, cwd=self.runtime, capture_output=True,
                       timeout=TIMEOUT, check=True)
        file = (set(self.runtime.glob("*.png")) - before).pop()
        try:
            return self.picture_of(file)
        finally:
            file.unlink()


class Sway(Compositor):
    """Has keys. It refuses to run as root, so it runs as another user."""

    def open(self):
        config = self.runtime / "config"
        config.write_text(f'output HEADLESS-1 resolution {SIZE[0]}x{SIZE[1]}\nxwayland disable\n'
                          'for_window [app_id=".*"] floating enable\n')
        command = ["sway", "--config", str(config)]
        if os.getuid() == 0:
            os.chown(self.runtime, NOBODY, NOBODY)
            command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] + command
        process = self.launch(*command, WLR_BACKENDS="headless", WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1",
                              SWAYSOCK=str(self.runtime / "ipc"))
        self.await_socket(process, "ipc")
        socket = self.await_socket(process, "wayland-1")
        self.environment.update(SWAYSOCK=str(self.runtime / "ipc"), WAYLAND_DISPLAY=str(self.runtime / socket))
        # A keyboard that stays: when the last one goes, windows lose the focus.
        self.launch("wtype", "-s", "1000000", "-k", "Shift_L")
        return socket

    def picture(self):
        file = self.folder / "picture.png"
        subprocess.run(["grim", str(file)], env=self.environment, capture_output=True, timeout=TIMEOUT, check=True)
        return self.picture_of(file)

    def keys(self, *arguments):
        """Presses keys, given as wtype takes them."""
        subprocess.run(["wtype", *arguments], env=self.environment, capture_output=True,
                       timeout=TIMEOUT, check=True)

    def windows(self):
        """Returns name and application of every window; the focused one first."""
        found = [(not node["focused"], node["name"] or "", node["app_id"]) for node in self._nodes()]
        return [(name, app) for _, name, app in sorted(found)]

    def _nodes(self):
        tree = json.loads(subprocess.run(["swaymsg", "-r", "-t", "get_tree"], env=self.environment,
                                         capture_output=True, timeout=TIMEOUT, check=True).stdout)
        found = []

        def walk(node):
            if node.get("app_id"):
                found.append(node)
            for child in node["nodes"] + node["floating_nodes"]:
                walk(child)

        walk(tree)
        return found

    def command(self, name, *words):
        """Sends a command to the window of this name."""
        subprocess.run(["swaymsg", f'[title="^{name}$"] {" ".join(map(str, words))}'], env=self.environment,
                       capture_output=True, timeout=TIMEOUT, check=True)

    def corner(self, name):
        """Returns left and top of the content of the window of this name."""
        node = next(node for node in self._nodes() if node["name"] == name)
        return tuple(node["rect"][side] + node["window_rect"][side] for side in ("x", "y"))

    def place(self, name, x, y):
        self.command(name, "move", "position", x, y)
        wait_until(lambda: all(0 <= at - to < 40 for at, to in zip(self.corner(name), (x, y))), f"{name} at its place")
