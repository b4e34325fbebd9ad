#!/usr/bin/python3
"""The memory of the closed panel: after the start, and after many openings.

The proportional set size (PSS) shrinks while other programs on the machine use the same libraries.
"""

import argparse
import pathlib

from session import COMPOSITED, Bench, FrameWatch


def resident_kib(pid):
    """Resident set size: all that is mapped in, whoever shares it."""
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text(encoding="utf-8").splitlines():
        if line.startswith("Rss:"):
            return int(line.split()[1])
    raise AssertionError("no Rss in smaps_rollup")


def tell_memory(when, app):
    print(
        f"{when}: PSS {app.pss_kib() / 1024:.1f} MiB, RSS {resident_kib(app.pid) / 1024:.1f} MiB", flush=True
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--openings", type=int, default=200)
    openings = parser.parse_args().openings
    desktop = Bench(wm=COMPOSITED)
    try:
        app = desktop.launch_closed()
        tell_memory("closed after the start", app)
        watch = FrameWatch(desktop.env["DISPLAY"])
        watch.watch_panel(desktop)
        for _ in range(openings):
            desktop.enter()
            watch.first_frame()
            # It goes on to open for 0.4 s, and rests only once it has closed again.
            desktop.leave()
            watch.frames_until_rest()
        app.wait_until_idle(quiet=1.0, timeout=60.0)
        tell_memory(f"closed after {openings} openings", app)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
