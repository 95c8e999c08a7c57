# SPDX-License-Identifier: MIT
"""Reports of sanitizers about the programs, if these were built with one (the presets asan and tsan). Reports count
whichever process has started a program, because programs inherit the variables that say where to report."""

import contextlib
import os
import pathlib
import tempfile

SUPPRESSIONS = pathlib.Path(__file__).resolve().parent.parent / "support" / "lsan.supp"


def is_sanitized(program, by=(b"asan", b"tsan")):
    data = pathlib.Path(program).read_bytes()
    return any(b"__" + name + b"_init" in data for name in by)


class Reports:
    """Each report is a file of its own. A killed program leaves none."""

    def __init__(self):
        self._home = tempfile.TemporaryDirectory(prefix="qel-reports-")
        self.folder = pathlib.Path(self._home.name)
        # ThreadSanitizer does not see how threads wait for each other in libraries that were built without it, and
        # reports races on what these share. So it checks our own code alone. Beside AddressSanitizer,
        # UndefinedBehaviorSanitizer ignores log_path and writes to stderr, so it aborts, and AddressSanitizer
        # reports the abort. The caller's options stand last and take precedence.
        for name, options in {"ASAN": "handle_abort=1", "UBSAN": "abort_on_error=1",
                              "LSAN": f"suppressions={SUPPRESSIONS}:print_suppressions=0",
                              "TSAN": "ignore_noninstrumented_modules=1"}.items():
            variable = f"{name}_OPTIONS"
            os.environ[variable] = ":".join([f"log_path={self.folder}/report", options, os.environ.get(variable, "")])

    def take(self):
        """Returns the reports since the last call."""
        texts = []
        for file in sorted(self.folder.iterdir()):
            with contextlib.suppress(FileNotFoundError):
                texts.append(file.read_text(errors="replace"))
                file.unlink()
        return "\n".join(text for text in texts if text)

    def writers(self):
        """Returns the processes that could still report something."""
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                if str(self.folder).encode() in (process / "environ").read_bytes() and is_sanitized(process / "exe"):
                    found.append(int(process.name))
        return found


PROGRAM = os.environ.get("QEL_PROGRAM")
REPORTS = Reports() if PROGRAM and is_sanitized(PROGRAM) else None
SLOWNESS = 3 if REPORTS else 1
"""Factor by which a wait takes longer."""
