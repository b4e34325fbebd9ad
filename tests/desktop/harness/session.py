"""What an X11 and a Wayland session have in common: folders, bus, clean environment, the program."""

import json
import os
import pathlib
import pwd
import shutil
import tempfile

from . import clock
from .processes import Process, kill_leftovers, read_line_from
from .waiting import wait_until

REPOSITORY = pathlib.Path(__file__).resolve().parents[3]
DEFAULT_BINARY = REPOSITORY / "build" / "release" / "bin" / "quillbar"
FAILURES = REPOSITORY / "out" / "desktop-failures"

# The only services that a session's bus may start. The machine's own list stays out of reach.
BUS_SERVICES = ("org.a11y.Bus", "org.xfce.Xfconf")


class Session:
    """Owns a private folder tree, a session bus and every process that it starts."""

    def __init__(self, user=None):
        self.user = user
        # Short, because socket paths below it are limited to 108 bytes.
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="qb-"))
        self.home = self._folder("home")
        self.config_home = self._folder("home/.config")
        self.data_home = self._folder("home/.local/share")
        self.runtime = self._folder("run")
        self.runtime.chmod(0o700)
        self.logs = self._folder("logs")
        self.processes = []
        self.bus = None
        self.env = {
            "PATH": "/usr/bin:/bin",
            "HOME": str(self.home),
            "TMPDIR": str(self._folder("tmp")),
            "LANG": "C.UTF-8",
            "XDG_CONFIG_HOME": str(self.config_home),
            "XDG_DATA_HOME": str(self.data_home),
            "XDG_STATE_HOME": str(self._folder("home/.local/state")),
            "XDG_CACHE_HOME": str(self._folder("home/.cache")),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "GSETTINGS_BACKEND": "memory",
            "NO_AT_BRIDGE": "1",  # for the other programs; Qt asks its own variable
        }
        if user is not None:
            os.chown(self.root, user.pw_uid, user.pw_gid)
            self.env["USER"] = self.env["LOGNAME"] = user.pw_name

    def _folder(self, name):
        path = self.root
        for part in name.split("/"):
            path = path / part
            path.mkdir(exist_ok=True)
            if self.user is not None:
                os.chown(path, self.user.pw_uid, self.user.pw_gid)
        return path

    def configure(self, **settings):
        """Write the preferences that the program finds at its start."""
        folder = self._folder("home/.config/Quillbar")
        (folder / "defaults.json").write_text(json.dumps(settings))

    # -- processes -------------------------------------------------------------------------

    def start(self, name, argv, env=None, pass_fds=()):
        """Start a program inside the session. `env` adds to the session's environment; a value
        of None takes a variable away."""
        merged = {**self.env, **(env or {})}
        merged = {key: value for key, value in merged.items() if value is not None}
        log = self.logs / f"{len(self.processes):02d}-{name}.log"
        process = Process(name, [str(word) for word in argv], merged, log, pass_fds, self.user)
        self.processes.append(process)
        return process

    def start_bus(self):
        """Start (or start again) the private session bus."""
        services = self._folder("bus-services")
        for service in BUS_SERVICES:
            installed = pathlib.Path(f"/usr/share/dbus-1/services/{service}.service")
            if installed.exists():
                shutil.copy(installed, services)
        config = self.root / "bus.conf"
        config.write_text(
            '<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"'
            ' "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">\n'
            "<busconfig><type>session</type>"
            f"<listen>unix:path={self.runtime}/bus</listen><auth>EXTERNAL</auth>"
            f"<servicedir>{services}</servicedir>"
            '<policy context="default"><allow send_destination="*" eavesdrop="true"/>'
            '<allow eavesdrop="true"/><allow own="*"/></policy></busconfig>\n'
        )
        config.chmod(0o644)
        read_end, write_end = os.pipe()
        self.bus = self.start(
            "dbus-daemon",
            [
                "dbus-daemon",
                f"--config-file={config}",
                "--nofork",
                "--nopidfile",
                f"--print-address={write_end}",
            ],
            pass_fds=(write_end,),
        )
        os.close(write_end)
        assert read_line_from(read_end, 30.0, self.bus), f"no session bus: {self.bus.output}"
        self.env["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={self.runtime}/bus"

    # -- the program -----------------------------------------------------------------------

    def binary(self):
        path = pathlib.Path(os.environ.get("QUILLBAR_BINARY", DEFAULT_BINARY))
        assert path.exists(), f"no program at {path}: build it, or set QUILLBAR_BINARY"
        if self.user is None:
            return path
        # The unprivileged user may not be able to reach the build folder.
        copy = self.home / "quillbar"
        if not copy.exists():
            shutil.copy(path, copy)
            copy.chmod(0o755)
        return copy

    def start_quillbar(self, env=None, arguments=(), under=()):
        """Start the program without waiting for anything; `under` is a command that becomes the program."""
        additions = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "NO_AT_BRIDGE": None}
        additions.update(env or {})
        return self.start("quillbar", [*under, self.binary(), *arguments], additions)

    # -- end -------------------------------------------------------------------------------

    def keep_evidence(self, name):
        """Keep what helps to understand a failed test in out/desktop-failures/<name>/."""
        folder = FAILURES / name
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        try:
            self.screenshot().save(folder / "screen.png")
        except Exception as problem:  # the display itself may be what is gone
            (folder / "screen.txt").write_text(f"no screenshot: {problem}\n")
        for process in self.processes:
            shutil.copy(process.log, folder)

    def screenshot(self):
        raise NotImplementedError

    def close(self):
        # Programs first, then what they run on. A display server must clear its socket away.
        for process in reversed(self.processes):
            if process.name in ("xvfb", "sway", "stage"):
                process.end()
            else:
                process.kill()
            clock.forget(process.pid)
        kill_leftovers(self.root)
        shutil.rmtree(self.root, ignore_errors=True)


def test_user():
    """The unprivileged user for programs that refuse to run as root; None when we aren't root."""
    import subprocess

    if os.geteuid() != 0:
        return None
    name = "quillbar-test"
    try:
        return pwd.getpwnam(name)
    except KeyError:
        subprocess.run(
            ["/usr/sbin/useradd", "--system", "--no-create-home", "--shell", "/usr/sbin/nologin", name],
            check=False,
        )
        # Two test files may come here at the same time; who lost the race finds the user.
        return wait_until(lambda: _user_named(name), 10.0, f"the user {name} exists")


def _user_named(name):
    try:
        return pwd.getpwnam(name)
    except KeyError:
        return None
