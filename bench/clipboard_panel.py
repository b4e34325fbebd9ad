#!/usr/bin/python3
"""How soon the clipboard panel answers: to its shortcut, to a key in the search, and to the wheel."""

import argparse
import base64
import io
import json
import random
import string
import time
import uuid

from session import BARE, COMPOSITED, Bench, FrameWatch, tell

from harness.waiting import wait_until
from PIL import Image
from Xlib import X

SHORTCUT = "super+shift+v"
CLIPS = 100
LATE = 0.033
# From the panel's top left corner, in points: amid the list.
LIST = (190, 320)


def clip(age, **fields):
    number = str(uuid.uuid4()).upper()
    minute, hour = age % 60, 12 - age // 60
    return {"id": number, "uuid": number, "date": f"2026-11-20T{hour:02}:{59 - minute:02}:00Z", **fields}


def texts():
    """100 clips of 10 KB."""
    chance = random.Random(1)
    words = ["".join(chance.choices(string.ascii_lowercase, k=chance.randrange(2, 9))) for _ in range(500)]
    return [clip(i, kind="text", text=" ".join(chance.choices(words, k=1900))[:10_000]) for i in range(CLIPS)]


def mixed():
    """100 rows of images, links and texts by turns."""
    chance = random.Random(2)
    clips = []
    for i in range(CLIPS):
        if i % 3 == 0:
            file = io.BytesIO()
            noise = Image.frombytes("RGB", (64, 48), chance.randbytes(64 * 48 * 3))
            noise.resize((640, 480)).save(file, "png")
            clips.append(clip(i, kind="image", imageData=base64.b64encode(file.getvalue()).decode()))
        elif i % 3 == 1:
            link = f"http://127.0.0.1:9/{i}"
            clips.append(clip(i, kind="text", text=link, detectedKind={"type": "link", "value": link}))
        else:
            clips.append(
                clip(i, kind="text", text=f"Row {i} with a text that goes on into a second line " * 2)
            )
    return clips


class Panel:
    """The clipboard panel of a running program, opened and closed by its shortcut."""

    def __init__(self, desktop, clips):
        self.desktop, self.x = desktop, desktop.x
        folder = desktop.data_home / "Quillbar"
        folder.mkdir(parents=True)
        (folder / "clipboard.json").write_text(json.dumps({"schemaVersion": 2, "clips": clips, "boards": []}))
        desktop.configure(clipboardMaxItems=CLIPS)
        self.app = desktop.launch_closed()
        self.window = None

    def open(self):
        """Milliseconds from the shortcut until the panel is drawn and has the keyboard."""
        watch = FrameWatch(self.desktop.env["DISPLAY"])
        watch.connection.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        watch.connection.sync()
        began = time.monotonic()
        self.x.press_key(SHORTCUT)
        drawn = set()
        while (focused := self.x.focus_id()) not in drawn:
            assert time.monotonic() - began < 10, "no panel"
            for _, event in watch.events(0.001):
                if event.type == X.CreateNotify and event.override:
                    watch.watch(event.window)
                elif watch.is_drawing(event):
                    drawn.add(event.drawable.id)
        answer = (time.monotonic() - began) * 1000
        self.window = focused
        watch.close()
        self.app.wait_until_idle(quiet=0.3)
        return answer

    def close(self):
        self.x.press_key("Escape")
        wait_until(lambda: self.x.focus_id() != self.window, what="the panel has let go of the keyboard")
        self.app.wait_until_idle(quiet=0.5)

    def watch(self):
        watch = FrameWatch(self.desktop.env["DISPLAY"], [self.app, self.desktop.xvfb])
        watch.watch(watch.connection.create_resource_object("window", self.window))
        watch.forget()
        return watch


def openings(desktop, count):
    panel = Panel(desktop, texts())
    answers = []
    for _ in range(count):
        answers.append(panel.open())
        panel.close()
    tell("shortcut to the panel drawn, with the keyboard", answers, "ms")
    panel.open()
    keys(panel, count)


def keys(panel, count):
    watch = panel.watch()
    answers = []
    for i in range(count):
        # Away from the blinks of the text cursor.
        watch.frames_until_rest()
        watch.first_frame()
        panel.app.wait_until_idle(quiet=0.1)
        watch.forget()
        began = time.monotonic()
        panel.x.press_key("BackSpace" if i % 2 else random.choice("aeinst"))
        answers.append((watch.first_frame().here - began) * 1000)
    watch.close()
    tell(f"a key in the search over {CLIPS} clips of 10 KB to the changed frame", answers, "ms")


def scrolling(desktop, rounds):
    panel = Panel(desktop, mixed())
    panel.open()
    place = panel.x.connection.create_resource_object("window", panel.window).get_geometry()
    panel.x.move_pointer(place.x + LIST[0], place.y + LIST[1])
    gaps = []
    for _ in range(rounds):
        for button in (5, 4):
            watch = panel.watch()
            frames = []
            beat = time.monotonic()
            for _ in range(90):
                panel.x.click(button=button)
                beat += 0.016
                while (rest := beat - time.monotonic()) > 0:
                    frames += [when for when, event in watch.events(rest) if watch.is_drawing(event)]
            watch.close()
            # What is drawn within a few milliseconds belongs to one frame.
            frames = [now for before, now in zip([0.0, *frames], frames) if now - before > 0.004]
            gaps += [(now - before) * 1000 for before, now in zip(frames, frames[1:])]
    tell("between frames while scrolling 100 rows with images and links", gaps, "ms")
    late = [each for each in gaps if each > LATE * 1000]
    print(
        f"above {LATE * 1000:.0f} ms: {len(late)} of {len(gaps)} {[round(each) for each in late]}", flush=True
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--count", type=int, default=40, help="openings, and keys")
    parser.add_argument("--rounds", type=int, default=5, help="of scrolling down and up")
    parser.add_argument("--no-compositor", action="store_true", help="a window manager alone")
    arguments = parser.parse_args()
    manager = BARE if arguments.no_compositor else COMPOSITED
    for measure, times in ((openings, arguments.count), (scrolling, arguments.rounds)):
        desktop = Bench(wm=manager)
        try:
            measure(desktop, times)
        finally:
            desktop.close()


if __name__ == "__main__":
    main()
