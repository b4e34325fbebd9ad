#!/usr/bin/python3
"""What showing what plays costs; and following a player, beside playerctl and Waybar.

First Quillbar alone beside a compositor, while a player plays: closed, with the bars moving beside the notch, and
open: its CPU, what it draws and how often. Then all three follow the same player at the same time, in one Wayland
session. Debian builds Waybar without its module for players, so it shows what a playerctl of its own prints, the
way its manual tells; the CPU of that one is not counted in. First the CPU of each while it plays, a new track now and then, Quillbar closed with its cover and bars
beside the notch. Then, the player paused so that nothing else is drawn, the time from a new title on the bus to the
line of the one, the commit of the other's surface, and the first frame of Quillbar's open panel.
"""

import argparse
import json
import os
import random
import shlex
import threading
import time

from PIL import Image
from session import COMPOSITED, ONE_FRAME, Bench, FrameWatch, cpu_seconds, tell

from harness.players import FakePlayer, track
from harness.sway import SwayDesktop
from harness.waiting import wait_until

FOLLOW = ["playerctl", "--follow", "metadata", "--format", "{{title}}"]
# Its text and nothing else: no clock, no other module.
BAR = {"layer": "bottom", "modules-left": ["custom/media"], "custom/media": {"exec": shlex.join(FOLLOW)}}
# Further apart than the beat on which Quillbar looks, and not in step with it.
BETWEEN_TRACKS = (2.0, 3.0)
LONG_TITLE = "Suite for a Slow River and Two Very Patient Ferrymen, Third Movement (Evening)"
# Drawing of less than this part of the window is bars, scrubber or title; of more, a change of track or of size.
SMALL = 0.1
# Longer than the beat on which Quillbar looks, so that what was changed has been seen.
STEADY = 1.5


class Lines:
    """When the lines of a growing log came that say `mark`."""

    def __init__(self, process, mark):
        self.times = []
        self._mark = mark
        self._log = open(process.log, errors="replace")
        threading.Thread(target=self._follow, daemon=True).start()

    def _follow(self):
        while True:
            line = wait_until(self._log.readline, 3600.0, "a line is written", interval=0.0005)
            if self._mark in line:
                self.times.append(time.monotonic())

    def first_since(self, began):
        return wait_until(
            lambda: next((when for when in self.times if when > began), None), what=self._mark, interval=0.001
        )


class Session(SwayDesktop):
    def __init__(self):
        super().__init__()
        self.player = FakePlayer(self, track=track("Before"), CanPlay=True)
        config = self.root / "bar.json"
        config.write_text(json.dumps(BAR))
        config.chmod(0o644)
        self.bar_command = ["waybar", "--config", config, "--style", "/dev/null"]

    def play(self, title, **others):
        """Have the player say so; the time just before."""
        began = time.monotonic()
        self.player.set(Metadata=track(title), **others)
        return began

    def start_followers(self, env=None):
        return self.start("playerctl", FOLLOW), self.start("waybar", self.bar_command, env)

    def start_closed(self):
        self.move_pointer(640, 780)
        app = self.start("quillbar", [self.binary()])
        wait_until(self.panel.windows, 20.0, "the panel is on the screen")
        return app


def wait_until_steady(desktop):
    """Until for a while something is drawn all the time, and only what moves while a track plays."""
    watch = FrameWatch(desktop.env["DISPLAY"])
    watch.watch_panel(desktop)
    window = desktop.panel.geometry
    drawn = []

    def steady():
        drawn.extend((when, event.area) for when, event in watch.events(0.1) if watch.is_drawing(event))
        large = [
            when for when, area in drawn if area.width * area.height > SMALL * window.width * window.height
        ]
        since = max(large, default=drawn[0][0] if drawn else time.monotonic())
        return drawn and drawn[-1][0] - since > STEADY

    wait_until(steady, 30.0, "only bars, scrubber and title move")
    watch.close()


def tell_drawing(name, desktop, app, seconds):
    """The CPU and the drawing of so many seconds."""
    watch = FrameWatch(desktop.env["DISPLAY"])
    watch.watch_panel(desktop)
    frames, areas = [], []
    cpu, began = cpu_seconds(app.pid), time.monotonic()
    while (left := began + seconds - time.monotonic()) > 0:
        for when, event in watch.events(left):
            if watch.is_drawing(event):
                areas.append(event.area.width * event.area.height)
                if not frames or when - frames[-1] > ONE_FRAME:
                    frames.append(when)
    took = time.monotonic() - began
    cpu = cpu_seconds(app.pid) - cpu
    window = desktop.panel.geometry
    print(
        f"{name}, {took:.0f} s: CPU {100 * cpu / took:.2f} % of a core; {len(frames) / took:.1f} frames a second;"
        f" largest area drawn at once {max(areas)} of the window's {window.width * window.height} pixels"
    )
    tell(f"{name}, between frames", [(b - a) * 1000 for a, b in zip(frames, frames[1:])], "ms")
    watch.close()


def measure_drawing(seconds):
    desktop = Bench(wm=COMPOSITED)
    try:
        cover = desktop.home / "cover.png"
        Image.effect_noise((600, 600), 60).convert("RGB").save(cover)
        player = FakePlayer(desktop, track=track(LONG_TITLE, mpris_artUrl=cover.as_uri()), CanPlay=True)
        desktop.leave()
        app = desktop.start_plain()
        desktop.panel.wait_until_shown()
        wait_until_steady(desktop)
        tell_drawing("closed while it plays", desktop, app, seconds)
        desktop.open_panel()
        wait_until_steady(desktop)
        tell_drawing("open, a long title running", desktop, app, seconds)
        player.set(Metadata=track("Short", mpris_artUrl=cover.as_uri()))
        wait_until_steady(desktop)
        tell_drawing("open", desktop, app, seconds)
    finally:
        desktop.close()


def measure_cpu(seconds, every):
    session = Session()
    try:
        app = session.start_closed()
        followers = session.start_followers()
        for process in followers:
            process.wait_until_idle(quiet=1.0, timeout=30.0)
        before = [cpu_seconds(each.pid) for each in (app, *followers)]
        began = time.monotonic()
        number = 0
        while (left := began + seconds - time.monotonic()) > 0:
            # The time itself is what is measured over.
            time.sleep(min(left, every))
            number += 1
            session.play(f"Track {number}")
        took = time.monotonic() - began
        for process, then in zip((app, *followers), before):
            spent = cpu_seconds(process.pid) - then
            print(
                f"{process.name}: {spent:.2f} s of CPU in {took:.0f} s = {100 * spent / took:.3f} % of a core"
            )
    finally:
        session.close()


def measure_latency(count):
    session = Session()
    try:
        app = session.start_closed()
        playerctl, waybar = session.start_followers({"WAYLAND_DEBUG": "1"})
        lines, commits = Lines(playerctl, "Track"), Lines(waybar, ".commit()")
        session.play("Track 0", PlaybackStatus="Paused")
        session.move_pointer(640, 4)
        session.panel.wait_until_open()
        watch = FrameWatch(session.env["DISPLAY"], user=session.user)
        watch.watch_panel(session)
        # Between two beats of a second it sleeps once the panel stands open.
        app.wait_until_idle(quiet=0.5, timeout=30.0)
        told = {"playerctl": [], "Waybar": [], "Quillbar": []}
        for number in range(1, count + 1):
            # The random time is the subject: a track may begin at any moment between two looks.
            time.sleep(random.uniform(*BETWEEN_TRACKS))
            watch.forget()
            began = session.play(f"Track {number}")
            told["Quillbar"].append((watch.first_frame().here - began) * 1000)
            told["playerctl"].append((lines.first_since(began) - began) * 1000)
            told["Waybar"].append((commits.first_since(began) - began) * 1000)
            watch.frames_until_rest()
        watch.close()
        for name, times in told.items():
            tell(f"{name}, a new track to its title", times, "ms")
    finally:
        session.close()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument(
        "--drawing", type=float, default=60, help="seconds of each state of Quillbar's; 0: none"
    )
    parser.add_argument("--seconds", type=float, default=300, help="of playing for the CPU figures; 0: none")
    parser.add_argument("--every", type=float, default=20, help="seconds from one track to the next")
    parser.add_argument("--tracks", type=int, default=30, help="for the times; 0: none")
    arguments = parser.parse_args()
    print(f"{os.cpu_count()} cores, load {os.getloadavg()[0]:.1f}")
    if arguments.drawing:
        measure_drawing(arguments.drawing)
    if arguments.seconds:
        measure_cpu(arguments.seconds, arguments.every)
    if arguments.tracks:
        measure_latency(arguments.tracks)


if __name__ == "__main__":
    main()
