#!/usr/bin/python3
"""The proportional set size of the closed panel: after the start, and after many openings."""

import argparse

from session import COMPOSITED, Bench, FrameWatch


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--openings", type=int, default=200)
    openings = parser.parse_args().openings
    desktop = Bench(wm=COMPOSITED)
    try:
        app = desktop.launch_closed()
        print(f"PSS closed after the start: {app.pss_kib() / 1024:.1f} MiB", flush=True)
        watch = FrameWatch(desktop.env["DISPLAY"])
        watch.watch_panel(desktop)
        for _ in range(openings):
            desktop.enter()
            watch.first_frame()
            # It goes on to open for 0.4 s, and rests only once it has closed again.
            desktop.leave()
            watch.frames_until_rest()
        app.wait_until_idle(quiet=1.0, timeout=60.0)
        print(f"PSS closed after {openings} openings: {app.pss_kib() / 1024:.1f} MiB")
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
