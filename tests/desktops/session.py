# SPDX-License-Identifier: MIT
"""A real desktop: an X server and the programs that a login starts, with a home of its own and a picture as wallpaper.
"""

import contextlib
import os
import pathlib
import signal
import subprocess
import time

import wallpaper
from desktop import SCREEN, TIMEOUT, Desktop, wait_until
from xclient import Client

LOGGED_IN = "org.example.session-is-there.desktop"
"""An autostart entry that keeps the session's environment for us: desktops start these last."""


class Session(Desktop):
    """Shared by all desktops. A derived class names its commands and knows its settings. The setters (`set_…`) act as a
    user's own settings program does, and return when the change has taken effect."""

    NAME = ""
    """The name in XDG_CURRENT_DESKTOP."""
    COMMAND = ()
    """The command with which a login screen starts the session."""
    VARIABLES = {}
    AUTOSTARTED = ()
    """The machine's autostart entries that belong to the desktop. The others are switched off."""
    MANAGER = ""
    """The process of the window manager, which can replace another one."""
    DESKTOP = ()
    """The command of the program that shows the wallpaper."""
    HAS_RUBBER_BAND = True
    """Whether its icons can be selected by drawing around them."""
    BARE = ((260, 700), (1240, 520), (1250, 60))
    """Places of the screen that show the wallpaper alone: no icon, no panel, and no window of the tests."""

    def __init__(self):
        self._session = None
        super().__init__()

    # Login and logout.

    def _open_manager(self):
        home = pathlib.Path(self._folder)
        passed = ("PATH", "TMPDIR", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS")
        self._bare_environment = {name: os.environ[name] for name in passed if name in os.environ}
        self._bare_environment.update(
            {name: self.environment[name] for name in ("HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "LC_ALL", "DISPLAY")},
            XDG_CURRENT_DESKTOP=self.NAME, XDG_SESSION_TYPE="x11", XDG_SESSION_CLASS="user",
            # Nothing of this machine: no login manager, no power, no disks.
            DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nonexistent", LIBGL_ALWAYS_SOFTWARE="1", QT_QUICK_BACKEND="software",
            **self.VARIABLES)
        self.environment = self._bare_environment
        self.picture_file = home / "wallpaper.png"
        wallpaper.write(self.picture_file)
        failures = pathlib.Path(os.environ["QEL_PROGRAM"]).with_name("failures")
        failures.mkdir(exist_ok=True)
        self._log = failures / f"{type(self).__name__}.log"
        self._log.write_bytes(b"")
        self._said = home / "environment"
        teller = home / "tell-environment"
        teller.write_text(f"#!/bin/sh\nenv -0 >'{self._said}.new' && mv '{self._said}.new' '{self._said}'\n")
        teller.chmod(0o700)
        # If a user has no such folders, Plasma notices new ones only at its next login.
        for folder in ("Desktop", ".local/share"):
            (home / folder).mkdir(parents=True)
        self.config = home / "config"
        autostart = self.config / "autostart"
        autostart.mkdir(parents=True)
        (autostart / LOGGED_IN).write_text(f"[Desktop Entry]\nType=Application\nName=Tests\nExec={teller}\n")
        for entry in pathlib.Path("/etc/xdg/autostart").glob("*.desktop"):
            if entry.name not in self.AUTOSTARTED:
                (autostart / entry.name).write_text("[Desktop Entry]\nType=Application\nName=None\nHidden=true\n")
        self.prepare()
        self.log_in()
        self.set_wallpaper(self.picture_file)
        self.await_wallpaper()

    def prepare(self):
        """Writes settings before the first login."""

    def log_in(self):
        self._said.unlink(missing_ok=True)
        self.environment = self._bare_environment
        with open(self._log, "ab") as log:
            self._session = subprocess.Popen(["dbus-run-session", "--", *self.COMMAND], env=self.environment,
                                             stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd=self._folder)

        def told():
            if self._session.poll() is not None:
                raise RuntimeError(f"{self.COMMAND[0]} ended with {self._session.returncode}")
            return self._said.exists()

        wait_until(told, "the programs that the session starts")
        lines = self._said.read_bytes().decode().split("\0")
        self.environment = dict(line.split("=", 1) for line in lines if "=" in line)
        self.environment.pop("DESKTOP_AUTOSTART_ID", None)
        wait_until(self.has_manager, "the window manager")
        self.await_desktop()
        # Compositing charts without a graphics card keeps a processor busy; tests switch it on where they need it.
        self.switch_compositing(False)

    def await_desktop(self):
        """Waits after a login until everything is shown."""
        wait_until(self.desktop_window, "the window of the desktop")
        wait_until(lambda: self.windows_of_type("DOCK"), "the panel")

    def ask_to_log_out(self):
        raise NotImplementedError

    TELLS_OF_ITS_END = True
    """Whether the session asks programs to quit when it ends. Otherwise they lose the screen without warning."""

    def log_out(self):
        """Logs out as the button in the menu does; the session tells its programs."""
        self.ask_to_log_out()
        self._session.wait(TIMEOUT)

    def close(self):
        if self._session and self._session.poll() is None:
            self._session.send_signal(signal.SIGTERM)
            self._session.wait(TIMEOUT)
        super().close()

    # What the screen shows.

    def clients(self):
        """Returns all windows, the lowest first."""
        said = self.output("xprop", "-root", "_NET_CLIENT_LIST_STACKING").partition("#")[2]
        return [int(number, 16) for number in said.split(",") if number.strip()]

    def windows_of_type(self, name):
        return [window for window in self.clients()
                if f"_NET_WM_WINDOW_TYPE_{name}" in self.output("xprop", "-id", str(window), "_NET_WM_WINDOW_TYPE")
                and "IsViewable" in self.output("xwininfo", "-id", str(window))]

    def desktop_window(self):
        """Returns the desktop's own window, which shows the wallpaper."""
        return next((window for window in self.windows_of_type("DESKTOP") if self.size(window) == SCREEN), None)

    def await_wallpaper(self):
        wait_until(self.shows_wallpaper, "the picture on the desktop")

    def shows_wallpaper(self):
        picture = self.picture()
        return all(wallpaper.is_near(picture.pixel(*place), wallpaper.color_at(*place)) for place in self.BARE)

    def pixel(self, x, y):
        return self.picture().pixel(x, y)

    def run(self, *arguments):
        """Runs a command within the session, which must succeed."""
        return self.output(*(str(argument) for argument in arguments), check=True)

    # Programs of the desktop.

    def processes(self, name):
        """Returns those of the session, by the name of their executable."""
        found = []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if (os.path.basename(os.readlink(folder / "exe")).split()[0] == name
                        and f"XDG_CONFIG_HOME={self.config}".encode() in (folder / "environ").read_bytes().split(b"\0")):
                    found.append(int(folder.name))
            except OSError:
                pass
        return found

    def launch(self, *arguments):
        """Starts a program within the session; it ends with the session."""
        return self._start([str(argument) for argument in arguments])

    def restart_manager(self):
        """Replaces the window manager by another one of its kind, as users do when it hangs."""
        with self.new_manager():
            self.launch(self.MANAGER, "--replace")

    @contextlib.contextmanager
    def new_manager(self):
        """Wraps the replacement of the window manager: returns when the new one has taken over all windows."""
        before = set(self.processes(self.MANAGER))
        yield
        wait_until(lambda: not before & set(self.processes(self.MANAGER)), "the end of the first window manager")
        wait_until(self.has_manager, "the second window manager")
        self.await_manager()

    def restart_desktop(self):
        """Ends the program that shows the wallpaper, and starts it again."""
        before = self.processes(self.DESKTOP[0])
        for pid in before:
            os.kill(pid, signal.SIGKILL)
        wait_until(lambda: not set(before) & set(self.processes(self.DESKTOP[0])), "the end of the desktop")
        wait_until(lambda: not self.desktop_window(), "the end of the desktop's window")
        if not self.processes(self.DESKTOP[0]):  # some sessions restart a crashed program
            self.launch(*self.DESKTOP)
        wait_until(self.desktop_window, "the desktop's window")
        self.await_wallpaper()

    # Settings.

    def set_wallpaper(self, path):
        raise NotImplementedError

    def forget_wallpaper(self):
        """Makes the user one who has never chosen a wallpaper. Call it between sessions."""
        raise NotImplementedError

    def choose_plain(self, color):
        """Makes the user one who has chosen a colour instead of a picture. Call it between sessions. Only for desktops
        that keep this in no setting that other programs can change."""
        raise NotImplementedError

    def set_dark(self, dark):
        """Only for desktops that have light and dark for all programs."""
        raise NotImplementedError

    SCALES_LIVE = False
    """Whether the desktop tells running programs of another scale. If so, the class has `set_scale`, which scales
    everything by an integer factor, and `set_font_scale`, which changes the font resolution."""

    ALWAYS_COMPOSITES = False
    """Whether its compositor cannot be switched off; then switching it does nothing."""

    REDRAW = ("xrefresh",)
    """The command that makes a newly started compositor draw the whole screen."""

    def switch_compositing(self, on):
        raise NotImplementedError

    def set_compositing(self, on):
        """Without a graphics card, a change of the compositor may leave parts of the screen undrawn for long."""
        self.switch_compositing(on)
        tried = time.monotonic()
        remedy = self.REDRAW if on else ("xrefresh",)
        self.run("xrefresh")

        def is_drawn():
            nonlocal tried
            if time.monotonic() > tried + 3:
                tried = time.monotonic()
                self.run(*remedy)
            return self.shows_wallpaper()

        wait_until(is_drawn, "a screen that is drawn anew")

    def has_compositor(self):
        with Client(self.environment["DISPLAY"]) as client:
            return client.owner(b"_NET_WM_CM_S0") != 0

    # Habits.

    def show_desktop_keys(self):
        """Returns the keys that show the desktop, and hide it again."""
        raise NotImplementedError

    def left_on_desktop(self):
        """Returns files, notes and the like."""
        return sorted((pathlib.Path(self._folder) / "Desktop").iterdir())
