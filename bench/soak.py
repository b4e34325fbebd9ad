#!/usr/bin/python3
"""The memory over thousands of openings and switches of mode, and how many frames are late while a mode
is switched.

For the memory the program's clock hurries, so that its grace and its animations are short; the frames are
counted at true speed, in a start of its own.
"""

import argparse

from opening import report_phase
from session import COMPOSITED, Bench, FrameWatch

from harness.clock import hurried
from harness.soaking import Soak

WARM_UP = 100


def tell_growth(what, act, count, soak):
    """Does `act` `count` times and tells the memory a few times on the way."""
    warm = None
    for done in range(1, count + 1):
        act()
        if done == WARM_UP or done % 2000 == 0 or done == count:
            now = (soak.memory_at_rest(), soak.app.pss_kib())
            warm = warm or now
            own, pss = (f"{each} KiB ({each - first:+d})" for each, first in zip(now, warm))
            print(f"{done} {what}: own memory {own}, PSS {pss}; since the first {WARM_UP}", flush=True)


def soak_memory(openings, switches, hurry):
    desktop = Bench(wm=COMPOSITED)
    try:
        soak = Soak(desktop, desktop.launch(hurried(hurry)))
        tell_growth("openings", soak.open_and_close, openings, soak)
        tell_growth("switches of mode", soak.switch_mode, switches, soak)
    finally:
        desktop.close()


def count_late_frames(switches):
    desktop = Bench(wm=COMPOSITED)
    try:
        app = desktop.launch()
        soak = Soak(desktop, app)
        soak.switch_mode()
        watch = FrameWatch(desktop.env["DISPLAY"], [app, desktop.xvfb])
        watch.watch_panel(desktop)
        watch.frames_until_rest()
        runs = []
        for _ in range(switches):
            soak.click_next_mode()
            runs.append(watch.frames_until_rest(watch.first_frame()))
        report_phase("switching the mode", runs)
    finally:
        desktop.close()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--openings", type=int, default=10000)
    parser.add_argument("--switches", type=int, default=10000)
    parser.add_argument("--hurry", type=int, default=10, help="how many seconds pass for the program in one")
    parser.add_argument("--watched-switches", type=int, default=100, help="those whose frames are counted")
    arguments = parser.parse_args()
    soak_memory(arguments.openings, arguments.switches, arguments.hurry)
    count_late_frames(arguments.watched_switches)


if __name__ == "__main__":
    main()
