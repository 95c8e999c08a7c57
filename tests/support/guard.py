# SPDX-License-Identifier: MIT
"""Runs a command so that no process it has started, however indirectly, outlives it or the caller.

    guard.py SECONDS COMMAND [ARGUMENT...]

Exits with the status of the command, or with 124 if it takes longer than SECONDS. Temporary files of the command lie in
a folder of their own, which is removed with it. Desktops start daemons that leave their process group and their parent.
So a keeper stands in between, which inherits orphans from the kernel; it ends all of them when the command has ended,
when the time is over, or when this process has ended, even by SIGKILL.

A script that starts processes first calls guarded(), which restarts the script under a guard. C++ test programs, which
may be killed without a guard above them, use tests/support/BoundProcess.h.
"""

import contextlib
import ctypes
import os
import pathlib
import selectors
import shutil
import signal
import sys
import tempfile
import time

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
TIMED_OUT = 124
LIBC = ctypes.CDLL(None, use_errno=True)
KEEPER = "TEST_KEEPER"
"""The environment variable that tells a command the process id of its keeper."""
PATIENCE = 1
"""Seconds that processes have to end by themselves."""


def parents():
    """Returns a dictionary from every process to its parent."""
    found = {}
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            found[int(folder.name)] = int((folder / "stat").read_text().rpartition(")")[2].split()[1])
    return found


def descendants(ancestor):
    parent_of, found = parents(), {ancestor}
    while True:
        children = {pid for pid, parent in parent_of.items() if parent in found} - found
        if not children:
            return found - {ancestor}
        found |= children


def reap():
    """Collects the status of ended children. Returns whether children are left."""
    with contextlib.suppress(ChildProcessError):
        while os.waitpid(-1, os.WNOHANG)[0]:
            pass
        return True
    return False


def end_descendants():
    end = time.monotonic() + PATIENCE
    number = signal.SIGTERM
    told = set()
    while reap():
        for pid in descendants(os.getpid()) - told:
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, number)
                told.add(pid)
        if number == signal.SIGTERM and time.monotonic() > end:
            number, told = signal.SIGKILL, set()
        time.sleep(0.02)


def keep(caller, seconds, command):
    """Runs in the keeper: runs the command, and ends the processes that it leaves. `caller` is a pipe that closes when
    the caller ends."""
    os.setsid()
    folder = tempfile.mkdtemp(prefix="qel-tests-")
    os.chmod(folder, 0o711)  # a compositor may run as another user, in a folder of its own
    os.environ["TMPDIR"] = folder
    LIBC.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    ended, tell = os.pipe()
    os.set_blocking(tell, False)
    signal.set_wakeup_fd(tell)
    signal.signal(signal.SIGCHLD, lambda *_: None)
    keeper = os.getpid()
    child = os.fork()
    if child == 0:
        LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)
        if os.getppid() != keeper:
            os._exit(1)
        signal.set_wakeup_fd(-1)
        signal.signal(signal.SIGCHLD, signal.SIG_DFL)
        os.close(caller)
        os.environ[KEEPER] = str(keeper)
        try:
            os.execvp(command[0], command)
        except OSError as error:
            print(f"{command[0]}: {error.strerror}", file=sys.stderr)
            os._exit(127)

    selector = selectors.DefaultSelector()
    selector.register(caller, selectors.EVENT_READ)
    selector.register(ended, selectors.EVENT_READ)
    end, status = time.monotonic() + seconds, None
    while status is None:
        ready = [key.fd for key, _ in selector.select(max(0, end - time.monotonic()))]
        if ended in ready:
            os.read(ended, 4096)
        with contextlib.suppress(ChildProcessError):
            while status is None and (result := os.waitpid(-1, os.WNOHANG))[0]:
                if result[0] == child:
                    status = os.waitstatus_to_exitcode(result[1])
        if status is None and caller in ready:
            status = 1
        elif status is None and time.monotonic() >= end:
            print(f"stopped after {seconds} seconds", file=sys.stderr)
            status = TIMED_OUT
    end_descendants()
    shutil.rmtree(folder, ignore_errors=True)
    return status if status >= 0 else 128 - status


def guarded(seconds):
    """Restarts the script in a process under a guard, unless this process has a keeper already."""
    if os.environ.get(KEEPER) != str(os.getppid()):
        sys.stdout.flush()
        os.execv(sys.executable, [sys.executable, __file__, str(seconds), sys.executable, *sys.argv])


def main():
    seconds, command = float(sys.argv[1]), sys.argv[2:]
    ours, keepers = os.pipe()
    keeper = os.fork()
    if keeper == 0:
        os.close(keepers)
        os._exit(keep(ours, seconds, command))
    os.close(ours)

    def stop(*_):
        nonlocal keepers
        if keepers is not None:
            os.close(keepers)
            keepers = None

    for number in (signal.SIGINT, signal.SIGHUP, signal.SIGTERM):
        signal.signal(number, stop)
    return os.waitstatus_to_exitcode(os.waitpid(keeper, 0)[1])


if __name__ == "__main__":
    sys.exit(main())
