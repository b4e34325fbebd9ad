#!/usr/bin/python3
"""What the closed panel costs while a fast mouse moves elsewhere on the screen."""

import argparse
import time

from session import COMPOSITED, Bench, cpu_seconds
from Xlib import X
from Xlib.ext import xtest


def move_for(display, seconds, rate):
    """Move the pointer to and fro below the middle of the screen: the movements made."""
    width, height = display.size
    began = time.monotonic()
    made = 0
    while (elapsed := time.monotonic() - began) < seconds:
        # What is due by now, one request each, so that a late wake-up doesn't lower the rate.
        while made < elapsed * rate:
            x = 100 + made % (width - 200)
            xtest.fake_input(display.connection, X.MotionNotify, x=x, y=height * 3 // 4 + made % 2)
            display.connection.flush()
            made += 1
        # The rate is what is set here, so this sleeps until the next movement is due.
        time.sleep(max(0.0, began + made / rate - time.monotonic()))
    display.connection.sync()
    return made


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seconds", type=float, default=30)
    parser.add_argument("--rate", type=float, default=1000, help="movements a second")
    arguments = parser.parse_args()
    desktop = Bench(wm=COMPOSITED)
    try:
        app = desktop.launch_closed()
        cpu, ticks, wakeups = cpu_seconds(app.pid), app.cpu_seconds(), app.wakeups()
        began = time.monotonic()
        made = move_for(desktop.x, arguments.seconds, arguments.rate)
        took = time.monotonic() - began
        cpu = cpu_seconds(app.pid) - cpu
        ticks = app.cpu_seconds() - ticks
        print(
            f"pointer at {made / took:.0f} movements a second over {took:.0f} s:"
            f" CPU {100 * cpu / took:.2f} % of one core ({100 * ticks / took:.2f} % by utime + stime),"
            f" {(app.wakeups() - wakeups) / took:.0f} wake-ups a second"
        )
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
