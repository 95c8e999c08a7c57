# SPDX-License-Identifier: MIT
"""The rooms of kits/ and src/, and the check of their includes."""

import os
import pathlib
import re

ROOMS = """
kits/kernel
kits/kernel/process
kits/kernel/threads
kits/kernel/clock
kits/kernel/record
kits/support
kits/storage
kits/storage/files
kits/application
kits/application/messages
kits/application/language
kits/application/delivery
kits/application/teams
kits/application/program
kits/interface
kits/interface/platform/selections
kits/interface/platform/x11
kits/interface/platform/wayland
kits/interface/platform/desktops
kits/interface/platform
kits/interface/drawing
kits/interface/core
kits/interface/controls
kits/interface/startup
kits/interface/shortcuts
kits/pictures
src/support
src/prefs/store
src/sampling
src/sampling/sources
src/support/ui
src/sampling/list
src/prefs
src/chart
src/pages
src/desktop
src/app
""".split()
"""From the lowest to the highest. A room may include itself and the rooms before it."""

FORBIDDEN = [("src/app", "src/desktop"), ("src", "kits/pictures")]
"""Pairs of rooms: the first must not include the second, although the order would allow it."""

PROGRAMS = {"kits/pictures": "kits/kernel"}
"""Programs that live among the kits, each with the only kit that it may include. They have no public headers."""

STANDARD = set("""algorithm any array atomic bit bitset cassert cctype cerrno cfloat charconv chrono cinttypes climits
cmath compare concepts condition_variable csignal cstddef cstdint cstdio cstdlib cstring ctime deque exception
filesystem forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator limits
list locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex set
shared_mutex source_location span sstream stack stdexcept streambuf string string_view syncstream system_error thread
tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector version""".split())
"""Headers in angle brackets that src/ may include."""

INCLUDE = re.compile(r'\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)')
CONDITION = re.compile(r"\s*#\s*if(n?def)?\b")


def starts(path, folder):
    return path == folder or path.startswith(folder + "/")


class House:
    """The sources below a root folder, and the faults that were found in them."""

    def __init__(self, root):
        self.faults = []
        self.lines = {}
        """Path to lines."""
        self.code = {}
        """(kit, name without suffix) to the folders that have a .cpp file of this name."""
        self.users = {}
        """Header to the files that include it."""
        self.uses = {}
        """Room to the rooms that it includes, each with the first (path, line) that does."""
        for top in ("kits", "src"):
            for path in sorted((pathlib.Path(root) / top).rglob("*")):
                if path.suffix in (".h", ".cpp"):
                    name = str(path.relative_to(root))
                    self.lines[name] = path.read_text(encoding="utf-8").split("\n")
                    if path.suffix == ".cpp":
                        self.code.setdefault((name.split("/")[1], path.stem), []).append(os.path.dirname(name))

    def say(self, path, line, text):
        self.faults.append(f"{path}:{line}: {text}")

    @staticmethod
    def is_public(path):
        folder = os.path.dirname(path)
        return folder.startswith("kits/") and folder.count("/") == 1 and path.endswith(".h") and folder not in PROGRAMS

    def room_of(self, path):
        """A public header belongs to the room of its .cpp file; without one, to its kit's lowest room."""
        if self.is_public(path):
            stem = os.path.basename(path)[: -len(".h")]
            folders = self.code.get((path.split("/")[1], stem), [])
            if len(folders) == 1:
                return folders[0]
        return os.path.dirname(path)

    @staticmethod
    def may_include(room, other):
        if room == other:
            return True
        if room in PROGRAMS:
            return starts(other, PROGRAMS[room])
        if any(starts(room, above) and starts(other, below) for above, below in FORBIDDEN):
            return False
        return ROOMS.index(other) < ROOMS.index(room)

    def read(self, path):
        room = self.room_of(path)
        if room not in ROOMS:
            self.say(path, 1, f"{room} is no room")
            return
        for number, line in enumerate(self.lines[path], 1):
            if path.startswith("src/") and CONDITION.match(line):
                self.say(path, number, "#if in src/")
            match = INCLUDE.match(line)
            if not match:
                continue
            header, system_header = match.groups()
            if header:
                self.read_include(path, number, room, header)
            elif path.startswith("src/") and system_header not in STANDARD:
                self.say(path, number, f"<{system_header}> in src/")

    def read_include(self, path, number, room, header):
        if header not in self.lines:
            self.say(path, number, f'no such file: "{header}"')
            return
        self.users.setdefault(header, set()).add(path)
        other = self.room_of(header)
        if other not in ROOMS:
            return
        if path.startswith("kits/") and header.startswith("src/"):
            self.say(path, number, f"kits know nothing of {header}")
        elif not self.may_include(room, other):
            self.say(path, number, f"{header} ({other}) is above {room}")
        elif room != other:
            self.uses.setdefault(room, {}).setdefault(other, (path, number))
        if path.startswith("src/") and header.startswith("kits/") and not self.is_public(header):
            self.say(path, number, f"{header} is private to its kit")

    def find_private_headers(self):
        """A public header is one that another kit or src/ includes, or that such a header includes."""
        def kit(path):
            return path.split("/")[:2]

        public = {header for header in self.lines if self.is_public(header)}
        needed = {header for header in public
                  if any(kit(user) != kit(header) for user in self.users.get(header, ()))}
        while more := {header for header in public - needed if self.users.get(header, set()) & needed}:
            needed |= more
        for header in sorted(public - needed):
            self.say(header, 1, "nobody outside its kit needs this header")

    def find_cycles(self):
        entered, left = [], set()

        def visit(room):
            entered.append(room)
            for other, (path, number) in sorted(self.uses.get(room, {}).items()):
                if other in entered:
                    cycle = entered[entered.index(other):] + [other]
                    self.say(path, number, "closes the cycle " + " -> ".join(cycle))
                elif other not in left:
                    visit(other)
            entered.pop()
            left.add(room)

        for room in ROOMS:
            if room not in left:
                visit(room)


def faults(root):
    """Returns the faults as sorted lines "path:line: fault"; none if the house is in order."""
    house = House(root)
    for path in house.lines:
        house.read(path)
    house.find_private_headers()
    house.find_cycles()
    return sorted(house.faults)
