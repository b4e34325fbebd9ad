"""A helper program of tests/helpers: takes commands on its standard input and answers by lines."""

import os
import pathlib
import shutil
import subprocess

from .waiting import wait_until

_BUILT = pathlib.Path(__file__).parents[3] / "build" / "release" / "bin"


class Helper:
    """`name` as in tests/helpers; QUILLBAR_<NAME> names another program than the built one."""

    def __init__(self, session, name, env=None):
        self.name = name
        program = os.environ.get(f"QUILLBAR_{name.upper()}") or _BUILT / f"quillbar_{name}"
        as_user = {}
        if session.user is not None:
            # The unprivileged user may not be able to reach the build folder.
            program = shutil.copy(program, session.home)
            as_user = {"user": session.user.pw_uid, "group": session.user.pw_gid, "extra_groups": []}
        self.log = session.logs / f"{name}-{len(list(session.logs.iterdir())):02d}.out"
        with open(self.log, "wb") as sink:
            self._popen = subprocess.Popen(
                [str(program)],
                env={**session.env, **(env or {})},
                stdin=subprocess.PIPE,
                stdout=sink,
                stderr=subprocess.STDOUT,
                **as_user,
            )

    @property
    def pid(self):
        return self._popen.pid

    @property
    def lines(self):
        """The whole lines written so far."""
        text = self.log.read_text(errors="replace")
        return text[: text.rfind("\n") + 1].splitlines()

    def send(self, command):
        assert self._popen.poll() is None, f"{self.name} has ended: {self.lines}"
        self._popen.stdin.write(command.encode() + b"\n")
        self._popen.stdin.flush()

    def ask(self, command, *answers):
        """Give a command and return the first line that is one of `answers` and came after it."""
        before = len(self.lines)
        self.send(command)

        def answer():
            return next((line for line in self.lines[before:] if line in answers), None)

        return wait_until(answer, what=f"{self.name} answers {command!r}")

    def wait_for(self, line, count=1):
        wait_until(lambda: self.lines.count(line) >= count, what=f"{self.name} writes {line!r}")

    def close(self):
        """End the program by the end of its input; it must end well."""
        self._popen.stdin.close()
        try:
            assert self._popen.wait(timeout=20) == 0, f"{self.name} ended badly: {self.lines}"
        finally:
            self._popen.kill()
            self._popen.wait()
