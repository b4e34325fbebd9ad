"""Players on the session bus that do as they are told, and what a program that plays by scripts makes of them."""

import json
import pathlib
import subprocess

from .waiting import wait_until

_FAKE_PLAYER = pathlib.Path(__file__).parents[2] / "helpers" / "fake_player.py"


class ScriptedPlayer:
    """A fake player with the bus name org.mpris.MediaPlayer2.`name`, which calls itself `identity`."""

    def __init__(self, session, name, identity, status="Playing", **properties):
        self.name = name
        self.log = session.logs / f"player-{name}-{len(list(session.logs.iterdir())):02d}.log"
        first = {
            "root": {"Identity": identity},
            "set": {"PlaybackStatus": status, "Shuffle": False, "LoopStatus": "None", **properties},
        }
        with open(self.log, "wb") as sink:
            self._popen = subprocess.Popen(
                ["/usr/bin/python3", "-B", str(_FAKE_PLAYER), name, json.dumps(first)],
                env=session.env,
                stdin=subprocess.PIPE,
                stdout=sink,
                stderr=subprocess.STDOUT,
            )
        wait_until(lambda: "ready" in self._lines(), 30, f"{name} is on the bus")

    def _lines(self):
        text = self.log.read_text(errors="replace")
        return text[: text.rfind("\n") + 1].splitlines()

    def tell(self, **order):
        """Give an order of fake_player.py and wait until it is obeyed."""
        before = self._lines().count("done")
        self._popen.stdin.write(json.dumps(order).encode() + b"\n")
        self._popen.stdin.flush()
        wait_until(lambda: self._lines().count("done") > before, what=f"{self.name} obeys {order}")

    def play(self, title, track, art="", seconds=180, **more):
        self.tell(set={"Metadata": metadata(title, track, art, seconds), "PlaybackStatus": "Playing", **more})

    @property
    def calls(self):
        """What it was told, as [METHOD, ARGUMENT...], without readings."""
        answers = [json.loads(line) for line in self._lines() if line.startswith("{")]
        return [[each["call"], *each["arguments"]] for each in answers if "call" in each]

    def wait_for_call(self, *call):
        wait_until(lambda: list(call) in self.calls, 20, f"{call} arrives at {self.name}: {self.calls}")

    def close(self):
        self._popen.kill()
        self._popen.wait()
        self._popen.stdin.close()


class ScriptedMedia:
    """The looks that the program takes at them; `helper` is the started scripted_media."""

    def __init__(self, helper):
        self.helper = helper
        self.send = helper.send

    def _told(self, key):
        lines = [json.loads(line) for line in self.helper.lines if line.startswith("{")]
        return [line[key] for line in lines if key in line]

    @property
    def snapshots(self):
        return self._told("snapshot")

    @property
    def fetched(self):
        return self._told("fetch")

    def wait_for(self, condition, what):
        """The first look from now on of which `condition` holds."""
        before = len(self.snapshots)

        def found():
            return next((look for look in self.snapshots[before:] if condition(look)), False)

        return wait_until(found, 30, what)

    def wait_for_title(self, title):
        return self.wait_for(lambda look: look and look["title"] == title, f"{title} plays")

    def wait_for_nothing(self):
        before = len(self.snapshots)
        wait_until(lambda: None in self.snapshots[before:], 30, "nothing plays")

    def wait_for_looks(self, count):
        """Let the program look so many times more."""
        end = len(self.snapshots) + count
        wait_until(lambda: len(self.snapshots) >= end, 30, f"{count} looks are taken")

    def ask_main_thread(self):
        before = len(self._told("pong"))
        self.send("ping")
        wait_until(lambda: len(self._told("pong")) > before, what="the main thread answers")


def metadata(title, track, art="", seconds=180):
    values = {
        "xesam:title": title,
        "xesam:artist": ["Kraftwerk"],
        "xesam:album": "Autobahn",
        "mpris:length": ["x", seconds * 1_000_000],
    }
    if track:
        values["mpris:trackid"] = ["o", track]
    if art:
        values["mpris:artUrl"] = art
    return values
