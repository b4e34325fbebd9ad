"""Takes pictures of the closed and the open panel on the display of $DISPLAY."""

import argparse
import pathlib
import subprocess
import sys
import time

from PIL import Image, ImageChops, ImageGrab

# Seconds after which a picture that should have come is given up.
PATIENCE = 20.0
# Seconds without a change after which a picture counts as settled; longer than any pause in the animation.
STILL = 0.5
# The open panel changes far more than the notch: at least this many pixels.
PANEL_AREA = 300 * 100


def take_picture() -> Image.Image:
    return ImageGrab.grab().convert("RGB")


def changed_area(before: Image.Image, after: Image.Image) -> int:
    """The area of the box around all that differs, in pixels."""
    box = ImageChops.difference(before, after).getbbox()
    return (box[2] - box[0]) * (box[3] - box[1]) if box else 0


def await_picture(program: int, empty: Image.Image, at_least: int, what: str) -> Image.Image:
    """Waits until the screen differs from `empty` in `at_least` pixels and has come to rest."""
    deadline = time.monotonic() + PATIENCE
    last, since = take_picture(), time.monotonic()
    while True:
        now = take_picture()
        if changed_area(last, now):
            last, since = now, time.monotonic()
        if changed_area(empty, now) >= at_least and time.monotonic() - since >= STILL:
            return now
        if not is_running(program):
            sys.exit(f"Quillbar ended before {what} was on the screen")
        if time.monotonic() > deadline:
            sys.exit(f"{what} did not come up within {PATIENCE:.0f} seconds")
        time.sleep(0.02)


def is_running(program: int) -> bool:
    try:
        state = pathlib.Path(f"/proc/{program}/stat").read_text().rpartition(")")[2].split()[0]
    except FileNotFoundError:
        return False
    return state != "Z"


def move_pointer(x: int, y: int) -> None:
    # An absolute move is a warp, which no input device has made and nobody hears of; the step is a real one.
    subprocess.run(["xdotool", "mousemove", str(x), str(y - 1), "mousemove_relative", "0", "1"], check=True)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=int, required=True, help="process id of Quillbar")
    parser.add_argument("--folder", type=pathlib.Path, required=True)
    arguments = parser.parse_args()

    # The closed panel is black on the background, at the top centre of the screen.
    background = Image.new("RGB", take_picture().size, (0x3A, 0x6E, 0xA5))
    closed = await_picture(arguments.program, background, 100 * 10, "the closed panel")
    move_pointer(closed.width // 2, 5)
    opened = await_picture(arguments.program, closed, PANEL_AREA, "the open panel")

    for picture, name in ((closed, "panel-closed.png"), (opened, "panel-open.png")):
        path = (arguments.folder / name).resolve()
        picture.save(path)
        print(path)


if __name__ == "__main__":
    main()
