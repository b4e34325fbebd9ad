"""Programs at the two ends of a copy: ours on the clipboard, others that copy, and one that pastes by hand."""

import base64
import contextlib
import json
import os
import pathlib
import signal

from Xlib import X

from .session import REPOSITORY
from .waiting import wait_until
from .x11 import connect

PROGRAM = pathlib.Path(
    os.environ.get("QUILLBAR_PASTEBOARD") or REPOSITORY / "build" / "release" / "bin" / "quillbar_pasteboard"
)
OWNER = REPOSITORY / "tests" / "helpers" / "hostile_owner" / "hostile_owner.py"


class Board:
    """tests/helpers/pasteboard on a desktop. `options` as its arguments name them."""

    def __init__(self, desktop, env=None, **options):
        self.desktop = desktop
        read_end, self.input = os.pipe()
        arguments = [f"{name}={value}" for name, value in options.items()]
        # A shell hands the pipe on as its standard input.
        command = ["/bin/sh", "-c", f'exec "$0" "$@" </dev/fd/{read_end}', PROGRAM, *arguments]
        self.process = desktop.start("pasteboard", command, env, pass_fds=(read_end,))
        os.close(read_end)

    def say(self, line):
        os.write(self.input, line.encode() + b"\n")

    def write(self, **contents):
        self.say("write " + json.dumps(contents))

    def own(self, **contents):
        """Write, and wait until the other programs know. Returns the record of it."""
        count = len(self.records) + 1
        self.write(**contents)
        record = self.wait_for(count=count)
        requestor = Requestor(self.desktop)
        if "text" in contents:
            text = contents["text"].encode(), "UTF8_STRING"
            wait_until(lambda: requestor.paste("UTF8_STRING") == text, what="our text is pasted")
        else:
            target = "text/uri-list" if "files" in contents else "image/png"
            wait_until(lambda: target in requestor.targets(), what=f"{target} is to be had")
        requestor.close()
        return record

    @property
    def lines(self):
        """What it has said; a line that is not complete yet is left out."""
        complete = self.process.output.rpartition("\n")[0]
        return [json.loads(line) for line in complete.splitlines()]

    @property
    def records(self):
        """What each growth of the change count brought, oldest first."""
        return [line for line in self.lines if "count" in line]

    def wait_for(self, what="another copy is there", **facts):
        """The first record in which all these facts hold. A fact of None is absent."""

        def find():
            for record in self.records:
                if all(record.get(name) == value for name, value in facts.items()):
                    return record
            return None

        return wait_until(find, 30.0, f"{what} ({facts})")

    def put_in_front(self, name):
        """Have that program in front, as far as our clipboard is told."""
        before = len(self.lines)
        self.say(f"front {name}")
        wait_until(lambda: {"front": name} in self.lines[before:], 30.0, f"{name} is in front")

    def gap(self):
        """The longest "gap" between two turns of the main thread since the last call, and the longest "work"
        in one, in milliseconds."""
        before = sum("gap" in line for line in self.lines)
        self.say("gap")
        return wait_until(lambda: [line for line in self.lines if "gap" in line][before:], 30.0)[0]

    def come_to_rest(self):
        self.process.wait_until_idle()

    def end(self):
        """Close its input and wait for its end."""
        os.close(self.input)
        return self.process.wait(20.0)


class Owner:
    """tests/helpers/hostile_owner, owning the clipboard."""

    def __init__(self, desktop, *arguments):
        command = ["/usr/bin/python3", "-B", OWNER, *arguments]
        self.process = desktop.start("owner", command)
        self.wait_for("owning")

    def wait_for(self, line):
        wait_until(lambda: line in self.process.output_lines, 30.0, f'the owner says "{line}"')

    @property
    def asked(self):
        """The targets that it was asked for."""
        return [line.split(" ", 1)[1] for line in self.process.output_lines if line.startswith("asked ")]


def offering(desktop, forms):
    """An honest owner of these forms: bytes by their targets."""
    encoded = {target: base64.b64encode(data).decode() for target, data in forms.items()}
    return Owner(desktop, "offer", json.dumps(encoded))


def copy_and_end(desktop, data, target="UTF8_STRING"):
    """A program copies, hands it over once, and has ended."""
    path = desktop.home / "copied"
    path.write_bytes(data)
    Owner(desktop, "brief", target, path).process.wait()


class Requestor:
    """Pastes by hand. Each has a window and a connection of its own."""

    def __init__(self, desktop):
        self.x = desktop.x
        self.connection = connect(self.x.name, self.x.user)
        self.window = self.connection.screen().root.create_window(
            0, 0, 1, 1, 0, X.CopyFromParent, event_mask=X.PropertyChangeMask
        )
        self.parts = 0

    def atom(self, name):
        return self.connection.intern_atom(name)

    def name(self, atom):
        return self.connection.get_atom_name(atom)

    def ask(self, target, written="ANSWER", time=X.CurrentTime):
        self.window.convert_selection(self.atom("CLIPBOARD"), self.atom(target), self.atom(written), time)
        self.connection.sync()

    def wait_for(self, accept, what):
        def find():
            while self.connection.pending_events():
                happened = self.connection.next_event()
                if accept(happened):
                    return happened
            return None

        return wait_until(find, 20.0, what)

    def wait_for_answer(self):
        """The name of the property that was written; None when the request was refused."""
        answer = self.wait_for(lambda each: each.type == X.SelectionNotify, "the request is answered")
        return self.name(answer.property) if answer.property else None

    def take(self, written="ANSWER"):
        """The property's value and the name of its type; deletes it, as who has taken it must."""
        value = self.window.get_full_property(self.atom(written), X.AnyPropertyType)
        self.window.delete_property(self.atom(written))
        self.connection.sync()
        return value and (value.value, self.name(value.property_type))

    def take_next_part(self, written="ANSWER"):
        self.wait_for(
            lambda each: each.type == X.PropertyNotify
            and each.atom == self.atom(written)
            and each.state == X.PropertyNewValue,
            "the next part is there",
        )
        self.parts += 1
        return self.take(written)

    def take_all(self, written="ANSWER"):
        """The whole value, in parts if it comes in parts, and its type."""
        value, kind = self.take(written)
        if kind != "INCR":
            return bytes(value) if isinstance(value, (bytes, str)) else value, kind
        whole = b""
        while True:
            part, kind = self.take_next_part(written)
            if not part:
                return whole, kind
            whole += bytes(part)

    def paste(self, target):
        """The clipboard as that target with its type, or None when it is refused."""
        self.ask(target)
        return self.take_all() if self.wait_for_answer() else None

    def targets(self):
        value, kind = self.paste("TARGETS") or ([], "ATOM")
        assert kind == "ATOM"
        return [self.name(atom) for atom in value]

    def close(self):
        self.connection.close()


@contextlib.contextmanager
def held_up(owner):
    """The owner does nothing meanwhile, its answer that is to come late neither."""
    owner.process.send(signal.SIGSTOP)
    yield
    owner.process.send(signal.SIGCONT)


def is_still_recording(desktop, board):
    """The next honest copy is recorded."""
    desktop.copy_text("an honest copy")
    board.wait_for(text="an honest copy")
    assert board.records[-1]["text"] == "an honest copy"
