"""A program that owns the clipboard and behaves as its first argument says. Writes "owning" once it owns the
clipboard, and "asked TARGET" for each request that reaches it."""

import base64
import json
import os
import select
import sys
import time

from Xlib import X, Xatom, display, error
from Xlib.protocol import event

CHUNK = 200_000  # Requests of the plain protocol end at 256 KiB.


class Owner:
    """Does as it should; the others differ in one thing each. `forms` maps targets to bytes."""

    def __init__(self, forms):
        self.forms = forms
        self.display = display.Display()
        self.display.set_error_handler(lambda *unused: None)
        self.window = self.make_window()
        self.incremental = {}  # (requestor, property) to an iterator of parts

    def make_window(self):
        return self.display.screen().root.create_window(
            0, 0, 1, 1, 0, X.CopyFromParent, event_mask=X.PropertyChangeMask
        )

    def atom(self, name):
        return self.display.intern_atom(name)

    def own(self, window=None):
        (window or self.window).set_selection_owner(self.atom("CLIPBOARD"), X.CurrentTime)
        self.display.sync()

    def say(self, text):
        print(text, flush=True)

    def run(self):
        self.own()
        self.say("owning")
        while True:
            self.handle(self.display.next_event())

    def handle(self, happened):
        if happened.type == X.SelectionRequest:
            self.say(f"asked {self.display.get_atom_name(happened.target)}")
            self.answer(happened)
        elif happened.type == X.PropertyNotify and happened.state == X.PropertyDelete:
            self.send_part(happened.window, happened.atom)
        elif happened.type == X.SelectionClear:
            self.on_lost(happened)

    def on_lost(self, happened):
        self.say("lost")

    def answer(self, request):
        target = self.display.get_atom_name(request.target)
        if target == "TARGETS":
            names = ["TARGETS", "TIMESTAMP", *self.forms]
            request.requestor.change_property(
                request.property, Xatom.ATOM, 32, [self.atom(name) for name in names]
            )
        elif target in self.forms:
            self.answer_form(request, target)
        else:
            return self.notify(request, X.NONE)
        self.notify(request, request.property)

    def answer_form(self, request, target):
        data = self.forms[target]
        request.requestor.change_property(request.property, request.target, 8, data[:CHUNK])
        for start in range(CHUNK, len(data), CHUNK):
            part = data[start : start + CHUNK]
            request.requestor.change_property(
                request.property, request.target, 8, part, mode=X.PropModeAppend
            )

    def notify(self, request, written):
        request.requestor.send_event(
            event.SelectionNotify(
                time=request.time,
                requestor=request.requestor,
                selection=request.selection,
                target=request.target,
                property=written,
            )
        )
        self.display.flush()

    # -- piece by piece ------------------------------------------------------------------------

    def begin_incremental(self, request, announced, parts):
        request.requestor.change_attributes(event_mask=X.PropertyChangeMask)
        self.incremental[request.requestor.id, request.property] = (request.target, iter(parts))
        request.requestor.change_property(request.property, self.atom("INCR"), 32, [announced])

    def send_part(self, window, written):
        target, parts = self.incremental.get((window.id, written), (None, None))
        if parts is None:
            return
        part = next(parts, b"")
        window.change_property(written, target, 8, part)
        self.display.flush()
        if not part:
            del self.incremental[window.id, written]
            self.say("sent")


TEXT = {"UTF8_STRING": b"text"}


class Never(Owner):
    def answer(self, request):
        pass


class Late(Owner):
    """Answers everything after so many seconds."""

    def __init__(self, seconds):
        super().__init__({"UTF8_STRING": b"late"})
        self.seconds = float(seconds)

    def answer(self, request):
        time.sleep(self.seconds)
        super().answer(request)
        self.say("answered")


class Partial(Owner):
    """Has text, and markup that it never hands over."""

    def __init__(self):
        super().__init__({"UTF8_STRING": b"partial", "text/html": b"<b>never</b>"})

    def answer(self, request):
        if request.target != self.atom("text/html"):
            super().answer(request)


class Incremental(Owner):
    """Sends `count` parts of `size` bytes of the target, and says at first that they are `announced` bytes."""

    def __init__(self, count, size=CHUNK, announced=None, target="UTF8_STRING"):
        super().__init__({target: b""})
        self.parts = [b"x" * int(size)] * int(count)
        self.announced = int(announced) if announced is not None else len(self.parts) * int(size)

    def answer_form(self, request, target):
        self.begin_incremental(request, self.announced, self.parts)


class Endless(Owner):
    """Parts of `size` bytes for ever, `pause` seconds between two."""

    def __init__(self, size, pause="0"):
        super().__init__(TEXT)
        self.size, self.pause = int(size), float(pause)

    def parts(self):
        while True:
            time.sleep(self.pause)
            yield b"x" * self.size

    def answer_form(self, request, target):
        self.begin_incremental(request, 1, self.parts())


class Dying(Owner):
    """Ends without a word in the middle of the third part."""

    def __init__(self):
        super().__init__(TEXT)

    def parts(self):
        yield b"half"
        yield b"half"
        os._exit(0)

    def answer_form(self, request, target):
        self.begin_incremental(request, 100, self.parts())


class Brief(Owner):
    """Has the bytes of that file, and ends once it has handed them over."""

    def __init__(self, target, path):
        with open(path, "rb") as file:
            super().__init__({target: file.read()})

    def answer_form(self, request, target):
        super().answer_form(request, target)
        self.notify(request, request.property)
        self.display.sync()
        os._exit(0)


class Changing(Owner):
    """Takes the clipboard for another text in the middle, and goes on with the first one all the same."""

    def __init__(self):
        super().__init__({"UTF8_STRING": b"after"})
        self.other = self.make_window()

    def parts(self):
        yield b"before"
        self.own(self.other)
        while True:
            yield b"before"

    def answer_form(self, request, target):
        if request.owner == self.other:
            super().answer_form(request, target)
        else:
            self.begin_incremental(request, 100, self.parts())


class Flood(Owner):
    """Takes the clipboard `rate` times a second for so many seconds, and then stands still. Its text tells
    the number of the copy."""

    def __init__(self, rate, seconds):
        super().__init__(TEXT)
        self.rate, self.seconds = float(rate), float(seconds)

    def run(self):
        windows = [self.window, self.make_window()]
        start = time.monotonic()
        count = 0
        self.say("owning")
        while (now := time.monotonic()) < start + self.seconds:
            if now < start + count / self.rate:
                self.serve(start + count / self.rate)
            count += 1
            self.forms["UTF8_STRING"] = b"copy %d" % count
            self.own(windows[count % 2])
            self.serve(now)
        self.forms["UTF8_STRING"] = b"calm"
        self.say(f"calm after {count}")
        super().run()

    def serve(self, end):
        """Answer what is there, and what comes before that time."""
        while True:
            while self.display.pending_events():
                self.handle(self.display.next_event())
            rest = end - time.monotonic()
            if rest <= 0:
                return
            select.select([self.display], [], [], rest)

    def on_lost(self, happened):
        pass


class ManyTargets(Owner):
    """Claims to have more forms than there are."""

    def answer(self, request):
        if request.target == self.atom("TARGETS"):
            for _ in range(10):
                request.requestor.change_property(
                    request.property, Xatom.ATOM, 32, list(range(1, 20_001)), mode=X.PropModeAppend
                )
            return self.notify(request, request.property)
        return super().answer(request)


class WrongTargets(Owner):
    """Answers the question for its targets with a text."""

    def answer(self, request):
        if request.target == self.atom("TARGETS"):
            request.requestor.change_property(request.property, Xatom.STRING, 8, b"no, thank you")
            return self.notify(request, request.property)
        return super().answer(request)


class EmptyHanded(Owner):
    """Says that it has written what it has not."""

    def answer_form(self, request, target):
        pass


class Twice(Owner):
    """Says of everything that it refuses it, right after it has handed it over."""

    def notify(self, request, written):
        super().notify(request, written)
        super().notify(request, X.NONE)


def offer(text):
    """An honest one; `text` is JSON: targets and their bytes in base64."""
    return Owner({target: base64.b64decode(data) for target, data in json.loads(text).items()})


KINDS = {
    "offer": offer,
    "never": lambda: Never(TEXT),
    "late": Late,
    "partial": Partial,
    "incremental": Incremental,
    "endless": Endless,
    "dying": Dying,
    "brief": Brief,
    "changing": Changing,
    "flood": Flood,
    "many-targets": lambda: ManyTargets(TEXT),
    "wrong-targets": lambda: WrongTargets(TEXT),
    "empty-handed": lambda: EmptyHanded(TEXT),
    "twice": lambda: Twice({**TEXT, "text/html": b"<b>text</b>"}),
}

if __name__ == "__main__":
    try:
        KINDS[sys.argv[1]](*sys.argv[2:]).run()
    except (error.ConnectionClosedError, BrokenPipeError):
        pass
