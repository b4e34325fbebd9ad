#!/usr/bin/python3
"""How long other programs' clipboards hold the main thread up: Quillbar on a desktop with each of them in turn.

The main thread is pinged without a pause the way window managers do (_NET_WM_PING) and its longest answer told.
That contains two ways through the X server and every wait for a core, so three more figures stand beside it:
how long the thread itself was at work and how long it waited for a core at most between two answers, and the
server's longest answer to the measuring script. After each owner an honest copy must be recorded.
"""

import argparse
import io
import multiprocessing
import pathlib
import random
import subprocess
import time

from session import Bench

from harness.figures import Figures
from harness.history import PAST_A_BEAT, History
from harness.pasteboard import Owner
from harness.waiting import holds_for, wait_until
from harness.x11 import connect
from PIL import Image, ImageDraw
from Xlib import X
from Xlib.protocol import event as events

PAUSE = 0.0005
UHD = (3840, 2160)
COLUMNS = ("answer", "work", "kept from a core", "X server")


class Pinger:
    """Pings the window from a process of its own, so that nothing this one does is measured. Rests at first."""

    def __init__(self, desktop, app):
        self._ours, theirs = multiprocessing.Pipe()
        window = desktop.panel.window.id
        arguments = (self._ours, theirs, desktop.env["DISPLAY"], window, app.pid)
        self._process = multiprocessing.Process(target=_ping_when_told, args=arguments, daemon=True)
        self._process.start()
        theirs.close()

    def go(self):
        self._ours.send("go")

    def rest(self):
        """The longest since go(), by COLUMNS in milliseconds, and the number of pings, at least one."""
        self._ours.send("rest")
        return self._ours.recv()

    def close(self):
        self._process.terminate()
        self._process.join()


def _ping_when_told(other_end, pipe, display, number, pid):
    other_end.close()  # It is the other process that keeps it open.
    connection = connect(display)
    root = connection.screen().root
    root.change_attributes(event_mask=X.SubstructureNotifyMask | X.StructureNotifyMask)
    window = connection.create_resource_object("window", number)
    protocols, ping = connection.intern_atom("WM_PROTOCOLS"), connection.intern_atom("_NET_WM_PING")
    question = events.ClientMessage(
        window=window, client_type=protocols, data=(32, [ping, X.CurrentTime, number, 0, 0])
    )
    schedule = pathlib.Path(f"/proc/{pid}/task/{pid}/schedstat")
    while True:
        pipe.recv()
        longest, count = [0.0] * len(COLUMNS), 0
        work, kept = _times(schedule)
        while not count or not pipe.poll(PAUSE):
            count += 1
            start = time.monotonic()
            window.send_event(question)
            connection.flush()
            while not _is_answer(connection.next_event(), protocols, ping):
                pass
            answered = time.monotonic()
            work_before, kept_before = work, kept
            work, kept = _times(schedule)
            asked = time.monotonic()
            connection.sync()
            served = time.monotonic() - asked
            now = (answered - start, work - work_before, kept - kept_before, served)
            longest = [max(pair) for pair in zip(longest, now)]
        pipe.recv()
        pipe.send(([each * 1000 for each in longest], count))


def _is_answer(event, protocols, ping):
    return event.type & 0x7F == X.ClientMessage and (event.client_type, event.data[1][0]) == (protocols, ping)


def _times(schedule):
    work, kept, _ = schedule.read_text().split()
    return int(work) / 1e9, int(kept) / 1e9


def screenshot():
    """Windows full of lines of words on a coloured ground."""
    chance = random.Random(1)
    picture = Image.linear_gradient("L").resize(UHD).convert("RGB")
    draw = ImageDraw.Draw(picture)
    for left in range(100, UHD[0] - 900, 950):
        draw.rectangle((left, 100, left + 900, UHD[1] - 100), fill=(245, 245, 250))
        for top in range(120, UHD[1] - 130, 22):
            x = left + 10
            while x < left + 800:
                word = "".join(chance.choices("abcdefghijklmnopqrstuvwxyz", k=chance.randrange(2, 10)))
                draw.text((x, top), word, fill=(30, 30, chance.randrange(90)))
                x += 8 * len(word) + 8
    return picture


class ClipboardThread(Figures):
    """The program's thread that talks to the clipboard's owners; pings leave it asleep."""

    def __init__(self, app):
        self.pid = app.pid
        tasks = pathlib.Path(f"/proc/{self.pid}/task").iterdir()
        self.numbers = [each.name for each in tasks if (each / "comm").read_text() == "pasteboard\n"]
        assert len(self.numbers) == 1, f"{len(self.numbers)} threads have the clipboard"

    def _threads(self):
        return self.numbers


class Measure:
    def __init__(self, desktop):
        self.desktop = desktop
        self.history = History(desktop)
        self.app = desktop.launch_closed()
        self.thread = ClipboardThread(self.app)
        self.pinger = Pinger(desktop, self.app)
        print(f"{'':28}" + "".join(f"{name:>18}" for name in COLUMNS) + "     pings   own memory", flush=True)

    def run(self, what, act):
        """Prints what held the main thread up during `act` and until an honest copy is recorded after it."""
        self.pinger.go()
        act()
        text = f"honest after {what}"
        self.desktop.copy_text(text)
        wait_until(lambda: self.history.texts()[:1] == [text], 60.0, f"{text} is recorded", interval=0.1)
        longest, count = self.pinger.rest()
        self.app.wait_until_idle(quiet=PAST_A_BEAT, timeout=60.0)
        memory = self.app.own_memory_kib() / 1024
        figures = "".join(f"{each:>15.2f} ms" for each in longest)
        print(f"{what:28}{figures}{count:>10}{memory:>9.1f} MiB", flush=True)

    def nobody(self, seconds):
        holds_for(lambda: self.app.running, seconds, "the program runs", interval=0.1)

    def owner(self, seconds, *arguments):
        """One that lives for so long."""
        process = Owner(self.desktop, *arguments).process
        holds_for(lambda: self.app.running and process.running, seconds, "both run", interval=0.1)
        process.kill()

    def until(self, line, seconds, *arguments):
        """One that lives until it says so, after about so many seconds, and has been looked at again."""
        process = Owner(self.desktop, *arguments).process
        wait_until(lambda: line in process.output, seconds + 120.0, f"the owner says {line}", interval=0.1)
        self.thread.wait_until_idle(quiet=PAST_A_BEAT, timeout=60.0)
        process.kill()

    def huge(self, parts):
        """One that lives until it has sent all, or nobody takes it any more."""
        owner = Owner(self.desktop, "incremental", parts)
        owner.wait_for("asked UTF8_STRING")
        owner.process.wait_until_idle(quiet=2.0, timeout=60.0)
        print(f"    500 MB in parts: {'taken' if 'sent' in owner.process.output else 'given up'}", flush=True)
        owner.process.kill()

    def copy(self, target, data):
        subprocess.run(
            ["xclip", "-selection", "clipboard", "-target", target, "-in"],
            input=data,
            env=self.desktop.env,
            check=True,
            stdout=subprocess.DEVNULL,
        )

    def fast_and_huge(self):
        """Hands 500 MB over as fast as a program can."""
        self.copy("UTF8_STRING", b"0123456789" * 50_000_000)
        self.thread.wait_until_idle(quiet=2.0, timeout=60.0)

    def image(self, kind, data):
        before = len([clip for clip in self.history.clips() if clip["kind"] == "image"])
        self.copy(f"image/{kind}", data)

        def recorded():
            return len([clip for clip in self.history.clips() if clip["kind"] == "image"]) > before

        wait_until(recorded, 60.0, "the image is recorded", interval=0.1)


def encoded(picture, kind):
    file = io.BytesIO()
    picture.save(file, kind)
    return file.getvalue()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--flood-seconds", type=int, default=60)
    parser.add_argument("--late-seconds", type=int, default=30)
    parser.add_argument("--without-huge", action="store_true", help="leave out the 500 MB")
    arguments = parser.parse_args()
    picture = screenshot()
    png, bmp = encoded(picture, "png"), encoded(picture.rotate(180), "bmp")
    desktop = Bench()
    try:
        measure = Measure(desktop)
        measure.run("nobody (5 s)", lambda: measure.nobody(5.0))
        measure.run(f"4K as PNG, {len(png) / 1e6:.1f} MB", lambda: measure.image("png", png))
        measure.run(f"4K as BMP, {len(bmp) / 1e6:.1f} MB", lambda: measure.image("bmp", bmp))
        measure.run("never answers", lambda: measure.owner(8.0, "never"))
        late = arguments.late_seconds
        measure.run(f"answers after {late} s", lambda: measure.until("answered", late, "late", late))
        flood = arguments.flood_seconds
        measure.run(
            f"1000 changes a second, {flood} s", lambda: measure.until("calm", flood, "flood", 1000, flood)
        )
        if not arguments.without_huge:
            measure.run("500 MB in parts", lambda: measure.huge(2500))
            measure.run("500 MB at once", measure.fast_and_huge)
        measure.pinger.close()
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
