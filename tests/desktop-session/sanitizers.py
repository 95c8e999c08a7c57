# SPDX-License-Identifier: MIT
"""What sanitizers say of the programs, when these were built with one (the presets asan and tsan). It counts whoever has
started a program: the variables that tell where to report to are inherited."""

import contextlib
import os
import pathlib
import tempfile

SUPPRESSIONS = pathlib.Path(__file__).resolve().parent.parent / "support" / "lsan.supp"


def is_sanitized(program, by=(b"asan", b"tsan")):
    data = pathlib.Path(program).read_bytes()
    return any(b"__" + name + b"_init" in data for name in by)


class Reports:
    """Each in a file of its own. A program that is killed leaves none."""

    def __init__(self):
        self._home = tempfile.TemporaryDirectory(prefix="qel-reports-")
        self.folder = pathlib.Path(self._home.name)
        # ThreadSanitizer does not see how threads wait for each other in libraries that were built without it, and takes
        # what these share for races. So it looks at our own code alone.
        # Beside AddressSanitizer the one of undefined behaviour writes to stderr, wherever it is told to, so it aborts,
        # which the former reports. What the caller wants stands last and counts.
        for name, options in {"ASAN": "handle_abort=1", "UBSAN": "abort_on_error=1",
                              "LSAN": f"suppressions={SUPPRESSIONS}:print_suppressions=0",
                              "TSAN": "ignore_noninstrumented_modules=1"}.items():
            variable = f"{name}_OPTIONS"
            os.environ[variable] = ":".join([f"log_path={self.folder}/report", options, os.environ.get(variable, "")])

    def take(self):
        """What was reported since the last time."""
        texts = []
        for file in sorted(self.folder.iterdir()):
            with contextlib.suppress(FileNotFoundError):
                texts.append(file.read_text(errors="replace"))
                file.unlink()
        return "\n".join(text for text in texts if text)

    def writers(self):
        """The processes that could still report something."""
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                if str(self.folder).encode() in (process / "environ").read_bytes() and is_sanitized(process / "exe"):
                    found.append(int(process.name))
        return found


PROGRAM = os.environ.get("QEL_PROGRAM")
REPORTS = Reports() if PROGRAM and is_sanitized(PROGRAM) else None
SLOWNESS = 3 if REPORTS else 1
"""How much longer to wait for something."""
