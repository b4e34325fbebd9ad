#!/usr/bin/python3
"""What the closed panel costs, CPU and wake-ups: while nothing happens, or while the timer runs."""

import argparse
import pathlib
import time
from typing import NamedTuple

from session import COMPOSITED, Bench

from harness.waiting import wait_until

MODES = {"timer": "Timer", "pomodoro": "Pomodoro", "stopwatch": "Stopwatch"}


def shown_node(desktop, app, name):
    """The control of that name in the open panel: of several the last, which is below the icon bar."""
    nodes = [node for _, node in desktop.accessible(app).walk() if node.name == name and node.extents[2] > 0]
    return nodes[-1] if nodes else None


def places_of(*names):
    """Where the open panel has these controls, asked of a program of its own: assistive software has a
    price, which the measured program is not to pay."""
    desktop = Bench(wm=COMPOSITED)
    try:
        app = desktop.launch()
        desktop.open_panel()
        places = []
        for name in names:
            wait_until(lambda: shown_node(desktop, app, name), what=f"{name} is in sight")
            app.wait_until_idle(quiet=0.5)
            node = shown_node(desktop, app, name)
            x, y, width, height = node.extents
            places.append((x + width // 2, y + height // 2))
            node.press()
        return places
    finally:
        desktop.close()


def peek_pixels(desktop):
    middle = desktop.top_centre[0]
    return desktop.screenshot().crop((middle - 200, 0, middle + 200, 24)).tobytes()


def run_timer(desktop, app, places):
    """Click at these places, the last of which starts the run; then close the panel and see it count."""
    bare = peek_pixels(desktop)
    desktop.open_panel()
    for place in places:
        app.wait_until_idle(quiet=0.5)
        desktop.x.click(*place)
    desktop.leave()
    desktop.panel.wait_until_closed()
    wait_until(lambda: peek_pixels(desktop) != bare, what="the time is told")
    # Between two ticks, a fifth of a second apart, it sleeps once the panel has closed for good.
    app.wait_until_idle(quiet=0.15)
    told = peek_pixels(desktop)
    wait_until(lambda: peek_pixels(desktop) != told, what="it counts")


class Spent(NamedTuple):
    """What a thread has spent so far."""

    name: str
    cpu_seconds: float
    wakeups: int


def spent_by_thread(pid):
    spent = {}
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        status = dict(line.split(":\t", 1) for line in (task / "status").read_text().splitlines())
        on_core = int((task / "schedstat").read_text().split()[0]) / 1e9
        spent[task.name] = Spent(status["Name"], on_core, int(status["voluntary_ctxt_switches"]))
    return spent


def measure(app, seconds):
    began, ticks, before = time.monotonic(), app.cpu_seconds(), spent_by_thread(app.pid)
    # The time itself is what is measured over.
    time.sleep(seconds)
    took = time.monotonic() - began
    ticks = app.cpu_seconds() - ticks
    # Thread by thread: one that has ended meanwhile takes along what it had spent before.
    spent = [
        Spent(now.name, now.cpu_seconds - then.cpu_seconds, now.wakeups - then.wakeups)
        for thread, now in spent_by_thread(app.pid).items()
        for then in [before.get(thread, Spent("", 0, 0))]
    ]
    cpu, wakeups = sum(each.cpu_seconds for each in spent), sum(each.wakeups for each in spent)
    print(
        f"over {took:.0f} s: CPU {100 * cpu / took:.4f} % of one core ({cpu * 1000:.1f} ms;"
        f" {ticks * 1000:.0f} ms by utime + stime), {wakeups} wake-ups = {wakeups / took:.3f} a second"
    )
    for each in spent:
        if each.wakeups:
            print(f"  {each.name}: {each.wakeups / took:.3f} wake-ups a second")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seconds", type=float, default=300)
    parser.add_argument("--running", choices=MODES, help="what runs meanwhile; else nothing does")
    arguments = parser.parse_args()
    places = places_of("Timer", MODES[arguments.running], "Start") if arguments.running else []
    desktop = Bench(wm=COMPOSITED)
    try:
        app = desktop.launch_closed()
        if places:
            run_timer(desktop, app, places)
        measure(app, arguments.seconds)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
