"""What plays: the program's own view of it, and players that say what a test has them say."""

import json
import os
import pathlib
import subprocess
import sys
import threading
import time

from .helper import Helper
from .waiting import wait_until

_FAKE = pathlib.Path(__file__).parents[2] / "helpers" / "fake_player.py"

PLAY_PAUSE, NEXT, PREVIOUS = 2, 4, 5


class RunsFrom:
    """A position that was at `start` seconds at some moment within the `with` block, and runs since then."""

    def __init__(self, start):
        self._start = start

    def __enter__(self):
        self._first = time.monotonic()
        return self

    def __exit__(self, *unused):
        self._last = time.monotonic()

    def earliest(self, moment):
        return self._start + moment - self._last

    def latest(self, moment):
        return self._start + moment - self._first


class NowPlaying(Helper):
    """The now-playing framework alone, in a process of its own."""

    def __init__(self, session, env=None):
        super().__init__(session, "now_playing", env)
        self.functions = wait_until(lambda: self.lines, what="the framework is up")[0]

    def question(self, command):
        before = len(self.lines)
        self.send(command)
        return json.loads(wait_until(lambda: self.lines[before:], what=f"an answer to {command!r}")[0])

    @property
    def info(self):
        return self.question("info")

    @property
    def title(self):
        return self.info.get("Title")

    @property
    def process(self):
        return self.question("pid")["pid"]

    def command(self, number):
        return self.question(f"send {number}")["sent"]

    def seek(self, seconds):
        self.question(f"seek {seconds}")

    def wait_for(self, timeout=30.0, **wanted):
        """Until the information has these values; that information."""

        def fitting():
            info = self.info
            return info if all(info.get(key) == value for key, value in wanted.items()) else None

        return wait_until(fitting, timeout, f"{wanted} plays, not {self.info}", interval=0.05)

    def wait_for_position(self, wanted, within=0.25, timeout=30.0, **others):
        """Until the position is near `wanted`, a number or a RunsFrom."""

        def near():
            earliest = wanted.earliest(time.monotonic()) if isinstance(wanted, RunsFrom) else wanted
            info = self.info
            latest = wanted.latest(time.monotonic()) if isinstance(wanted, RunsFrom) else wanted
            fits = all(info.get(key) == value for key, value in others.items())
            return fits and earliest - within <= info.get("position", -1e9) <= latest + within

        return wait_until(near, timeout, f"the position is right: {self.info}", interval=0.05)

    def wait_for_nothing(self):
        wait_until(lambda: self.info == {}, what=f"nothing plays, not {self.info}", interval=0.05)


class FakePlayer:
    """tests/helpers/fake_player.py on the session's bus."""

    def __init__(self, session, name="fake", track=None, status="Playing", root=None, options=None, **values):
        state = {"root": root or {}, "options": options or {}}
        first = {"PlaybackStatus": status, **values}
        if track is not None:
            first["Metadata"] = track
        state["quietly"] = {key: value for key, value in first.items() if value is not None}
        self._popen = subprocess.Popen(
            [sys.executable, str(_FAKE), name, json.dumps(state)],
            env=session.env,
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
            # The bus serves its own user alone.
            user=session.user.pw_uid if session.user else None,
        )
        self.lines = []
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        wait_until(lambda: "ready" in self.lines, 30.0, "the fake player is up")

    def _read(self):
        for line in self._popen.stdout:
            self.lines.append(line.strip())

    @property
    def pid(self):
        return self._popen.pid

    def tell(self, **order):
        """Have it obey, and wait until it has."""
        done = self.lines.count("done")
        self._popen.stdin.write(json.dumps(order) + "\n")
        self._popen.stdin.flush()
        wait_until(lambda: self.lines.count("done") > done, what=f"the fake player obeys {order}")

    def tell_at_once(self, *orders):
        """Several orders, without waiting for one before the next is given."""
        done = self.lines.count("done")
        self._popen.stdin.write("".join(json.dumps(order) + "\n" for order in orders))
        self._popen.stdin.flush()
        wait_until(lambda: self.lines.count("done") >= done + len(orders), what="the fake player obeys")

    def set(self, **values):
        self.tell(set=values)

    @property
    def calls(self):
        """(method, arguments...) of each call so far."""
        records = [json.loads(line) for line in self.lines if line.startswith("{")]
        return [(r["call"], *r["arguments"]) for r in records if "call" in r]

    def wait_for_call(self, *call):
        wait_until(lambda: call in self.calls, what=f"{call} is called, not {self.calls}")

    @property
    def reads(self):
        """How often each property has been read so far."""
        self.tell(options={})
        records = [json.loads(line) for line in self.lines if line.startswith("{")]
        return [r for r in records if "reads" in r][-1]["reads"]

    def send_signal(self, number):
        os.kill(self._popen.pid, number)

    def kill(self):
        self._popen.kill()
        self._popen.wait()

    def quit(self):
        self._popen.stdin.close()
        self._popen.wait(timeout=30)


def track(title="Song", **others):
    """Metadata of a track of four minutes; an argument such as xesam_album is the key xesam:album, and None
    leaves a key out."""
    values = {
        "xesam:title": title,
        "xesam:artist": ["Band"],
        "xesam:album": "Album",
        "mpris:trackid": ["o", "/org/example/track/1"],
        "mpris:length": ["x", 240_000_000],
    }
    values.update({key.replace("_", ":", 1): value for key, value in others.items()})
    return {key: value for key, value in values.items() if value is not None}
