#!/usr/bin/python3
"""How soon the panel answers a pointer that is already moving when it comes to the notch, at 1000 Hz."""

import argparse
import random
import time

from session import COMPOSITED, Bench, FrameWatch, tell

START_ROW = 260
STEP_SECONDS = 0.001


def notch_height(desktop):
    """The rows that the closed panel's black covers at its middle."""
    panel = desktop.panel.geometry
    row = 0
    while desktop.x.pixel(panel.x + panel.width // 2, row) == (0, 0, 0):
        row += 1
    return row


def glide_in(desktop, watch, edge):
    """Move up a row a step until the panel answers: the seconds from the step that crosses `edge`."""
    middle = desktop.x.size[0] // 2
    due = time.monotonic()
    crossed = None
    for row in range(START_ROW + random.randrange(20), 1, -1):
        now = time.monotonic()
        if row <= edge and crossed is None:
            crossed = now
        desktop.x.move_pointer(middle, row)
        due += STEP_SECONDS
        while (left := due - time.monotonic()) > 0:
            for when, event in watch.events(left):
                if watch.is_drawing(event):
                    return when - crossed
    return watch.first_frame().here - crossed


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--openings", type=int, default=100)
    openings = parser.parse_args().openings
    desktop = Bench(wm=COMPOSITED)
    try:
        desktop.launch_closed()
        edge = notch_height(desktop)
        watch = FrameWatch(desktop.env["DISPLAY"])
        watch.watch_panel(desktop)
        answers = []
        for _ in range(openings):
            answers.append(glide_in(desktop, watch, edge) * 1000)
            desktop.leave()
            watch.frames_until_rest()
        tell(f"gliding over the notch's edge (row {edge}) to first frame", answers, "ms")
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
