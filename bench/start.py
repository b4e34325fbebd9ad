#!/usr/bin/python3
"""How long a warm start takes, from before fork and exec until the panel's notch is drawn."""

import argparse

from session import COMPOSITED, Bench, measured_start, tell


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runs", type=int, default=30)
    runs = parser.parse_args().runs
    desktop = Bench(wm=COMPOSITED)
    try:
        times = []
        for run in range(runs + 1):
            app, seconds = measured_start(desktop)
            app.wait_until_idle()
            app.end()
            # The first run reads the program from the disk.
            if run > 0:
                times.append(seconds * 1000)
        tell("start to first frame", times, "ms")
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
