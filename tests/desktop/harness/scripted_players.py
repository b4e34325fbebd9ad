"""The players that scripts know, on the session bus, and what a program that plays by scripts makes of them."""

import json

from .players import FakePlayer, track
from .waiting import wait_until


class ScriptedPlayer(FakePlayer):
    """One with the bus name org.mpris.MediaPlayer2.`name`, which calls itself `identity`."""

    def __init__(self, session, name, identity, status="Playing", **properties):
        first = {"Shuffle": False, "LoopStatus": "None", **properties}
        super().__init__(session, name, status=status, root={"Identity": identity}, **first)

    def play(self, title, track_id, art="", seconds=180, **more):
        self.set(Metadata=metadata(title, track_id, art, seconds), PlaybackStatus="Playing", **more)


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


def metadata(title, track_id, art="", seconds=180):
    return track(
        title,
        xesam_artist=["Kraftwerk"],
        xesam_album="Autobahn",
        mpris_length=["x", int(seconds * 1_000_000)],
        mpris_trackid=["o", track_id] if track_id else None,
        mpris_artUrl=art or None,
    )
