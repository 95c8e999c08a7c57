#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tests the installed package on a desktop of its own.

    packaging/tests/installed.py root FOLDER PACKAGE.deb    a system that has just been made: installs it there, tries it,
                                                            removes it, and looks what is left
    packaging/tests/installed.py tree FOLDER                the unpacked package: tests it with the machine's libraries

build/ must contain the build, whose pictures have to be the same.
"""

import configparser
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile

PROJECT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "tests/desktop-session"))
sys.dont_write_bytecode = True

from desktop import Desktop, wait_until  # noqa: E402  (lies in another folder)

ENTRY = "usr/share/applications/org.example.qel.desktop"
STORE = "x-vnd.kvt-Qel.user"
USER = 1000
# Position of the first chart's handle in the window.
HANDLE = (6, 52)
# The time until the charts of settings.json are full, even on a busy machine.
SECONDS_TO_FILL = (12, 45)
# Files that the package manager, the linker and the caches of the desktop keep for themselves.
KEPT_BY_OTHERS = re.compile(r"/(var/lib/(dpkg|apt)|var/log|var/cache|etc/ld\.so\.cache)(/|$)")


def say(text):
    print(f"    {text}", flush=True)


def run(*arguments, **options):
    return subprocess.run([str(argument) for argument in arguments], check=True, text=True, timeout=600,
                          stdin=subprocess.DEVNULL, **options)


def check(condition, what):
    if not condition:
        sys.exit(f"packaging/tests/installed.py: {what}")


class Place:
    """A place where the package is installed, and a user with a home there.

    folder: the system's root; home: the user's home, as seen from here.
    """

    def __init__(self, folder):
        self.folder = pathlib.Path(folder).resolve()
        self.home = self._make_home()
        (self.home / "run").mkdir(mode=0o700, exist_ok=True)
        (self.home / ".config").mkdir(exist_ok=True)
        shutil.copytree(PROJECT / "tests/data/machines/two-processors", self.home / "machine")
        # Uses the same font, whatever else the machines have.
        (self.home / "fonts.conf").write_text(
            '<?xml version="1.0"?>\n<!DOCTYPE fontconfig SYSTEM "fonts.dtd">\n'
            f"<fontconfig><dir>/usr/share/fonts/truetype/dejavu</dir><cachedir>{self.inside(self.home)}/fonts</cachedir>"
            '<match><edit name="family" mode="assign" binding="same"><string>DejaVu Sans</string></edit></match>'
            "</fontconfig>\n")
        run(PROJECT / "build/tools/resources/resources", PROJECT / "packaging/tests/settings.json",
            self.home / ".config" / STORE)
        self._own()

    def environment(self, desktop):
        home = self.inside(self.home)
        return {"PATH": self.path(), "HOME": home, "XDG_RUNTIME_DIR": f"{home}/run", "LC_ALL": "C.UTF-8",
                "DISPLAY": desktop.environment["DISPLAY"], "KITS_ROOT": f"{home}/machine",
                "FONTCONFIG_FILE": f"{home}/fonts.conf"}

    def start(self, desktop, command):
        """Starts a command line there as the user; the caller waits for the process."""
        environment = [f"{name}={value}" for name, value in self.environment(desktop).items()]
        return subprocess.Popen([*self.prefix(), "env", "-i", *environment, *command], stdin=subprocess.DEVNULL)

    def finish(self, process, what):
        check(process.wait(120) == 0, f"{what} ended with {process.returncode}")


class Root(Place):
    """A whole system in a folder."""

    def _make_home(self):
        home = self.folder / "home/somebody"
        home.mkdir(parents=True)
        return home

    def _own(self):
        for path in (self.home, *self.home.rglob("*")):
            os.chown(path, USER, USER)

    def inside(self, path):
        return "/" + str(path.relative_to(self.folder))

    def path(self):
        return "/usr/bin:/bin"

    def prefix(self):
        return ["chroot", f"--userspec={USER}:{USER}", str(self.folder)]

    def as_root(self, *command):
        run("chroot", self.folder, "env", "-i", "PATH=/usr/sbin:/usr/bin:/sbin:/bin", "HOME=/root", "LC_ALL=C.UTF-8",
            "DEBIAN_FRONTEND=noninteractive", *command, stdout=subprocess.DEVNULL)

    def files(self):
        """Returns everything that lies in the system, as seen from inside."""
        found = set()
        for parent, folders, files in os.walk(self.folder):
            inside = "/" + os.path.relpath(parent, self.folder)
            if inside == "/.":
                folders[:] = set(folders) - {"proc", "sys", "dev", "run", "tmp", "home"}
            found.update(os.path.normpath(f"{inside}/{name}") for name in (*folders, *files))
        return {path for path in found if not KEPT_BY_OTHERS.match(path)}


class Tree(Place):
    """An unpacked package."""

    def _make_home(self):
        return pathlib.Path(tempfile.mkdtemp(prefix="qel-home-", dir=self.folder.parent))

    def _own(self):
        pass

    def inside(self, path):
        return str(path)

    def path(self):
        return f"{self.folder}/usr/bin:/usr/bin:/bin"

    def prefix(self):
        return []


class Build(Tree):
    """The build, with the settings and the fonts of another place."""

    def path(self):
        return f"{PROJECT}/build:/usr/bin:/bin"


def snapshot(place, desktop, seconds):
    """Returns the pixels of the window after a while."""
    file = place.home / "picture.png"
    file.unlink(missing_ok=True)
    place.finish(place.start(desktop, ["qel", "--snapshot", place.inside(file), "--after", str(seconds)]), "--snapshot")
    return run("convert", file, "-depth", "8", "ppm:-", stdout=subprocess.PIPE, encoding="latin-1").stdout


def try_pictures(place, desktop):
    build = Build(place.folder)
    for seconds in SECONDS_TO_FILL:
        if snapshot(place, desktop, seconds) == snapshot(build, desktop, seconds):
            say("its picture is that of the build")
            shutil.rmtree(build.home)
            return
    kept = pathlib.Path(tempfile.mkdtemp(prefix="qel-pictures-"))
    shutil.copy(place.home / "picture.png", kept / "installed.png")
    shutil.move(build.home / "picture.png", kept / "built.png")
    shutil.rmtree(build.home)
    check(False, f"its picture is not that of the build; both are kept in {kept}")


def try_wallpaper(place, desktop):
    """Makes the program that reads wallpapers for the others read a picture."""
    icon = place.inside(place.folder / "usr/share/icons/hicolor/48x48/apps/org.example.qel.png")
    reader = place.inside(place.folder / "usr/libexec/qel/average-picture")
    place.finish(place.start(desktop, ["sh", "-c", f"{reader} {icon} >/dev/null"]), "the reader of wallpapers")
    say("it reads wallpapers")


def try_desktop(place, desktop, window):
    """Tears a chart off: the program finds the one that shows it, which will start with the session."""

    def shown():
        return desktop.output("xdotool", "search", "--onlyvisible", "--classname", "^qel-desktop$").split()

    left, top = desktop.geometry(window)[:2]
    desktop.drag((left + HANDLE[0], top + HANDLE[1]), (900, 300))
    chart = wait_until(shown, "a chart on the desktop")[0]
    entry = place.home / ".config/autostart/org.example.qel.desktop-charts.desktop"
    wait_until(entry.is_file, "the autostart entry")
    run("desktop-file-validate", entry)
    program = place.inside(place.folder / "usr/bin/qel-desktop")
    check(f"TryExec={program}\n" in entry.read_text(), f"the session would not start {program}")
    os.kill(int(desktop.output("xdotool", "getwindowpid", chart)), signal.SIGTERM)
    wait_until(lambda: not shown(), "the chart to go with its program")
    say("a chart can be torn off")


def try_entry(place, desktop):
    """Starts the programs as the desktop would: the entry, then each of its actions, the last of which quits."""
    entry = configparser.ConfigParser(interpolation=None, delimiters="=")
    entry.optionxform = str
    entry.read(place.folder / ENTRY)
    main = entry["Desktop Entry"]
    program = main["TryExec"]
    check(shutil.which(program, path=f"{place.folder}/usr/bin"), f"TryExec: there is no {program}")
    check((place.folder / f"usr/share/icons/hicolor/48x48/apps/{main['Icon']}.png").is_file(), "Icon: there is none")

    process = place.start(desktop, shlex.split(main["Exec"]))
    window = desktop.window("^Qel$")
    name = desktop.output("xprop", "-id", str(window), "WM_CLASS")
    check(f'"{main["StartupWMClass"]}"' in name, f"StartupWMClass is not that of the window: {name}")
    say("its menu entry opens the window")

    try_desktop(place, desktop, window)
    actions = [entry[f"Desktop Action {name}"] for name in main["Actions"].strip(";").split(";")]
    check(actions[-1]["Exec"].endswith("--quit"), "the last action does not quit")
    for action in actions:
        place.finish(place.start(desktop, shlex.split(action["Exec"])), action["Exec"])
        say(f"its menu's action \"{action['Name']}\" does its work")
    place.finish(process, main["Exec"])


def try_all(place):
    desktop = Desktop()
    try:
        try_pictures(place, desktop)
        try_wallpaper(place, desktop)
        try_entry(place, desktop)
    finally:
        desktop.close()


def install_try_and_remove(folder, package):
    shutil.copy(package, pathlib.Path(folder) / "tmp")
    root = Root(folder)
    root.as_root("apt-get", "install", "-y", "--no-install-recommends", f"/tmp/{pathlib.Path(package).name}")
    say("it installs, and brings what it needs")
    for tool in ("cc", "c++", "cmake", "make", "ninja"):
        check(shutil.which(tool, path=f"{folder}/usr/bin:{folder}/bin") is None, f"it brings {tool}")
    before = root.files()
    own = set(run("chroot", folder, "dpkg", "-L", "qel", stdout=subprocess.PIPE).stdout.split())

    try_all(root)

    root.as_root("apt-get", "purge", "-y", "qel")
    after = root.files()
    check(not after - before, f"removed, it leaves {sorted(after - before)}")
    check(not before - after - own, f"removed, it takes along {sorted(before - after - own)}")
    left = [path for path in sorted(own & after) if not (root.folder / path.lstrip("/")).is_dir()]
    check(not left, f"removed, it leaves {left}")
    check(not [path for path in after if "qel" in path.lower()], "removed, it leaves something of its name")
    check((root.home / ".config" / STORE).is_file(), "removed, it takes the user's settings along")
    say("removed, it leaves nothing but the user's settings")


def main():
    if len(sys.argv) == 4 and sys.argv[1] == "root":
        install_try_and_remove(sys.argv[2], sys.argv[3])
    elif len(sys.argv) == 3 and sys.argv[1] == "tree":
        try_all(Tree(sys.argv[2]))
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
