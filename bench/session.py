"""What the whole-process measurements share: a desktop of their own, and an eye on the panel's frames."""

import os
import pathlib
import select
import statistics
import sys
import time
from typing import NamedTuple

REPOSITORY = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(REPOSITORY / "tests" / "desktop"))
os.environ.setdefault("QUILLBAR_BINARY", str(REPOSITORY / "build" / "release" / "bin" / "quillbar"))

from harness.desktop import Desktop  # noqa: E402
from harness.x11 import connect  # noqa: E402
from Xlib import X  # noqa: E402
from Xlib.ext import damage  # noqa: E402

COMPOSITED, BARE = "openbox+picom", "openbox"
# What is drawn within this many seconds belongs to one frame: a frame may arrive in several pieces.
ONE_FRAME = 0.004
# Longer than the tail of a spring, where a pixel may take several frames, goes without a change.
AT_REST = 0.25


class Frame(NamedTuple):
    """Something drawn: seconds of time.monotonic() as the event reached us, what the X server's clock said
    when it happened (whole ms), and for how many seconds the watched processes had been kept from a core."""

    here: float
    server: int
    kept: float


class FrameWatch:
    """Hears of everything drawn into a window, by XDamage on a connection of its own.

    `processes` are those whose waiting for a core each frame tells.
    """

    def __init__(self, display, processes=(), user=None):
        self.connection = connect(display, user)
        self.processes = [os.getpid(), *(each.pid for each in processes)]
        self.connection.damage_query_version()
        self._drawn = self.connection.extension_event.DamageNotify

    def is_drawing(self, event):
        return event.type == self._drawn

    def watch(self, window):
        window.damage_create(damage.DamageReportRawRectangles)
        self.connection.sync()

    def forget(self):
        """Leave out what has been told so far: the server reports all of a window that is already shown."""
        self.connection.sync()
        for _ in range(self.connection.pending_events()):
            self.connection.next_event()

    def watch_panel(self, desktop):
        self.watch(self.connection.create_resource_object("window", desktop.panel.window.id))
        self.forget()

    def events(self, timeout):
        """What has arrived after at most `timeout` seconds, as (time, event); empty when nothing has."""
        if not self.connection.display.event_queue:
            if not select.select([self.connection.fileno()], [], [], timeout)[0]:
                return []
        now = time.monotonic()
        return [(now, self.connection.next_event()) for _ in range(self.connection.pending_events())]

    def first_frame(self, timeout=10.0):
        """Waits for the next thing drawn."""
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            for when, event in self.events(0.5):
                if self.is_drawing(event):
                    return self._frame(when, event)
        raise AssertionError(f"nothing was drawn for {timeout:g} s")

    def frames_until_rest(self, first=None):
        """The frames from `first` or now on until nothing more is drawn."""
        frames = [first] if first else []
        last = first.here if first else time.monotonic()
        while time.monotonic() - last < AT_REST:
            for when, event in self.events(0.05):
                if self.is_drawing(event):
                    if not frames or when - last > ONE_FRAME:
                        frames.append(self._frame(when, event))
                    last = when
        return frames

    def _frame(self, when, event):
        return Frame(when, event.timestamp, sum(_kept_from_core(each) for each in self.processes))

    def close(self):
        self.connection.close()


class Bench(Desktop):
    """The tests' desktop, and Quillbar as a user's session starts it: without the tests' extras."""

    def start_plain(self, env=None):
        return self.start("quillbar", [self.binary()], env)

    def launch_closed(self, env=None):
        """Start Quillbar with the pointer far from the notch and wait until it is at rest."""
        self.leave()
        app = self.start_plain(env)
        self.panel.wait_until_shown()
        app.wait_until_idle(quiet=1.0, timeout=60.0)
        return app

    def enter(self):
        """Move the pointer into the notch; the time just before."""
        now = time.monotonic()
        self.x.move_pointer(self.x.size[0] // 2, 4)
        return now

    def leave(self):
        """Move the pointer far away from the panel; the time just before."""
        width, height = self.x.size
        now = time.monotonic()
        self.x.move_pointer(width // 2, height - 20)
        return now


def cpu_seconds(pid):
    """User and system time of all threads that live, by the scheduler's own account."""
    total = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        total += int(pathlib.Path(f"/proc/{pid}/task/{thread}/schedstat").read_text().split()[0])
    return total / 1e9


def _kept_from_core(pid):
    """How long the main thread was ready and had to wait for others, in seconds."""
    return int(pathlib.Path(f"/proc/{pid}/schedstat").read_text().split()[1]) / 1e9


def percentile(values, share):
    """Nearest rank."""
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(share * len(ordered)))]


def tell(what, values, unit, digits=1):
    """One line: median, extremes, p99, number of samples."""
    print(
        f"{what}: median {statistics.median(values):.{digits}f} {unit}"
        f" ({min(values):.{digits}f}-{max(values):.{digits}f}),"
        f" p99 {percentile(values, 0.99):.{digits}f}, {len(values)} samples",
        flush=True,
    )


def measured_start(desktop, env=None):
    """Start Quillbar once: the program, and the seconds from before fork and exec to a black notch."""
    desktop.leave()
    watch = FrameWatch(desktop.env["DISPLAY"])
    try:
        watch.connection.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        watch.connection.sync()
        begin = time.monotonic()
        app = desktop.start_plain(env)
        while time.monotonic() - begin < 20.0:
            for when, event in watch.events(1.0):
                if event.type == X.CreateNotify and event.override and event.width > 1:
                    watch.watch(event.window)
                elif watch.is_drawing(event) and _notch_is_drawn(event):
                    return app, when - begin
        raise AssertionError(f"no panel: {app.output}")
    finally:
        watch.close()


def _notch_is_drawn(event):
    """Whether the window that `event` tells of is opaque black at the middle of its upper edge."""
    middle = event.drawable_geometry.width // 2
    pixel = event.drawable.get_image(middle, 2, 1, 1, X.ZPixmap, 0xFFFFFFFF).data
    return pixel == b"\0\0\0\xff"
