#!/usr/bin/python3
"""What the closed panel costs while nothing happens: CPU and wake-ups."""

import argparse
import time

from session import COMPOSITED, Bench, cpu_seconds


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seconds", type=float, default=300)
    seconds = parser.parse_args().seconds
    desktop = Bench(wm=COMPOSITED)
    try:
        app = desktop.launch_closed()
        began, cpu, ticks, wakeups = time.monotonic(), cpu_seconds(app.pid), app.cpu_seconds(), app.wakeups()
        # The time itself is what is measured over.
        time.sleep(seconds)
        took = time.monotonic() - began
        cpu = cpu_seconds(app.pid) - cpu
        ticks = app.cpu_seconds() - ticks
        wakeups = app.wakeups() - wakeups
        print(
            f"idle over {took:.0f} s: CPU {100 * cpu / took:.4f} % of one core ({cpu * 1000:.1f} ms;"
            f" {ticks * 1000:.0f} ms by utime + stime), {wakeups} wake-ups = {wakeups / took:.3f} a second"
        )
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
