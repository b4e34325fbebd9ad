#!/usr/bin/python3
"""How soon the panel answers the pointer, and how many frames are late while it opens and closes."""

import argparse
from typing import NamedTuple

from session import BARE, COMPOSITED, Bench, FrameWatch, tell

LATE = 0.020
# From then on an edge moves less than a pixel a frame, so that a frame may have nothing to draw.
MOTION_SECONDS = 0.35


class Interval(NamedTuple):
    """Between two frames, in seconds."""

    here: float
    server: float
    kept: float


def intervals(frames):
    """Those of the motion."""
    return [
        Interval(after.here - before.here, (after.server - before.server) / 1000, after.kept - before.kept)
        for before, after in zip(frames, frames[1:])
        if after.here - frames[0].here <= MOTION_SECONDS
    ]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--openings", type=int, default=100)
    parser.add_argument("--no-compositor", action="store_true", help="a window manager alone")
    arguments = parser.parse_args()
    desktop = Bench(wm=BARE if arguments.no_compositor else COMPOSITED)
    try:
        app = desktop.launch_closed()
        watch = FrameWatch(desktop.env["DISPLAY"], [app, desktop.xvfb])
        watch.watch_panel(desktop)
        answers = []
        phases = {"opening": [], "closing": []}
        for _ in range(arguments.openings):
            moved = desktop.enter()
            frames = watch.frames_until_rest()
            answers.append((frames[0].here - moved) * 1000)
            phases["opening"].append(frames)
            desktop.leave()
            first = watch.first_frame()
            phases["closing"].append(watch.frames_until_rest(first))
        tell("pointer at the notch to first frame", answers, "ms")
        for name, runs in phases.items():
            report_phase(name, runs)
    finally:
        desktop.close()


def report_phase(name, runs):
    all_intervals = [each for run in runs for each in intervals(run)]
    tell(f"{name}, between frames", [each.here * 1000 for each in all_intervals], "ms")
    late = [each for each in all_intervals if each.here > LATE]
    by_others = sum(each.kept > each.here - LATE for each in late)
    print(
        f"{name}: {len(late)} of {len(all_intervals)} frames later than {LATE * 1000:.0f} ms"
        f" ({sum(each.server > LATE for each in all_intervals)} by the X server's clock);"
        f" before {by_others} of the {len(late)}, other programs held the cores for longer than they were late"
    )


if __name__ == "__main__":
    main()
