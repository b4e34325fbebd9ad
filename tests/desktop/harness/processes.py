"""The processes of one session: started in a clean environment, all gone at its end."""

import ctypes
import os
import pathlib
import select
import signal
import subprocess

from .figures import Figures
from .waiting import wait_until

_libc = ctypes.CDLL(None)
_PR_SET_PDEATHSIG = 1


def _die_with_parent():
    # A test run that is killed outright must not leave servers behind.
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


class Process(Figures):
    """One running program; its output goes to a file that tests may read."""

    def __init__(self, name, argv, env, log, pass_fds=(), user=None):
        self.name = name
        self.log = pathlib.Path(log)
        as_user = {}
        if user is not None:
            as_user = {"user": user.pw_uid, "group": user.pw_gid, "extra_groups": []}
        with open(self.log, "wb") as sink:
            self._popen = subprocess.Popen(
                argv,
                env=env,
                stdin=subprocess.DEVNULL,
                stdout=sink,
                stderr=subprocess.STDOUT,
                cwd=env.get("HOME", "/"),
                start_new_session=True,
                pass_fds=pass_fds,
                preexec_fn=_die_with_parent,
                **as_user,
            )

    @property
    def pid(self):
        return self._popen.pid

    @property
    def output(self):
        """Everything written so far to standard output and standard error."""
        return self.log.read_text(errors="replace")

    @property
    def output_lines(self):
        return [line for line in self.output.splitlines() if line.strip()]

    @property
    def status(self):
        """Exit status as subprocess tells it (negative: signal), None while running."""
        return self._popen.poll()

    @property
    def running(self):
        return self.status is None

    def send(self, signum):
        self._popen.send_signal(signum)

    def wait(self, timeout=30.0):
        """Wait for the end and return the exit status."""
        wait_until(lambda: not self.running, timeout, f"{self.name} has ended")
        return self.status

    def end(self, seconds=10.0):
        """Ask it to end and so to clear away its sockets and locks; `kill` if it doesn't."""
        if self.running:
            self.send(signal.SIGTERM)
            try:
                self._popen.wait(timeout=seconds)
            except subprocess.TimeoutExpired:
                pass
        self.kill()

    def kill(self):
        if self.running:
            try:
                os.killpg(self.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            self._popen.wait(timeout=30)


def read_line_from(fd, timeout, process):
    """One line that `process` writes to the pipe `fd` once it is ready; empty when it ended
    instead. Closes the pipe."""
    line = b""
    try:
        # To the line's end: a writer that finds its pipe closed half way gives up.
        while not line.endswith(b"\n"):
            ready, _, _ = select.select([fd], [], [], timeout)
            assert ready, f"{process.name} did not come up: {process.output.strip()}"
            part = os.read(fd, 4096)
            if not part:
                return ""
            line += part
    finally:
        os.close(fd)
    return line.decode().strip()


def kill_leftovers(marker):
    """Kill whatever still carries `marker` (the session's private folder) in its environment.

    Session services are started by the bus and the window manager, not by us; the folder's
    name is unique to the session, so nobody else's process can match.
    """
    needle = str(marker).encode()
    for entry in os.listdir("/proc"):
        if not entry.isdigit() or int(entry) == os.getpid():
            continue
        try:
            with open(f"/proc/{entry}/environ", "rb") as stream:
                if needle in stream.read():
                    os.kill(int(entry), signal.SIGKILL)
        except OSError:
            continue
