"""Pasting into other programs: the keys arrive where they should, whole, and nothing else does."""

import contextlib
import pathlib
import shlex
import subprocess

import pytest
from Xlib import X, error
from Xlib.ext import xtest

from harness.waiting import wait_until
from harness.x11 import Rect

GTK_ENTRY = pathlib.Path(__file__).parents[1] / "helpers" / "gtk_entry.py"
TEXT = "Zürich, 3 × 4"
CONTROL, SHIFT = 37, 50
KEY_V, KEY_DOT = 55, 60
# What terminals of today have by themselves.
XTERM_CHORD = "XTerm.VT100.translations: #override Ctrl Shift <Key>V: insert-selection(CLIPBOARD)"


@pytest.fixture
def paster(start_helper):
    return start_helper("keystrokes")


def front(paster):
    before = len(paster.lines)
    paster.send("front")

    def told():
        return [line for line in paster.lines[before:] if line.startswith("front ")]

    return int(wait_until(told, what="the front window is told")[0].split()[1])


def paste(paster, window):
    return paster.ask(f"paste {window}", "pasted", "not pasted") == "pasted"


class Entry:
    """A text field of GTK, with the keyboard."""

    def __init__(self, desktop):
        self.process = desktop.start("gtk-entry", ["/usr/bin/python3", "-B", GTK_ENTRY])
        wait_until(lambda: "shown" in self.process.output_lines, 30, "the text field is shown")
        self.window = focused_window(desktop, "entry")

    @property
    def text(self):
        lines = [line[5:] for line in self.process.output_lines if line.startswith("text ")]
        return lines[-1] if lines else ""

    def wait_for(self, text):
        wait_until(lambda: self.text == text, what=f"the field holds {text!r}")


class Terminal:
    """An xterm whose paste chord is that of most terminals, and what has been typed into it."""

    def __init__(self, desktop):
        self.typed = desktop.root / "typed"
        command = f"stty raw -echo; exec cat > {shlex.quote(str(self.typed))}"
        desktop.start(
            "xterm", ["xterm", "-u8", "-T", "terminal", "-xrm", XTERM_CHORD, "-e", "sh", "-c", command]
        )
        wait_until(self.typed.exists, 30, "the terminal reads")
        self.window = focused_window(desktop, "terminal")

    @property
    def text(self):
        return self.typed.read_text(errors="replace")  # of what is half written, too


def focused_window(desktop, title):
    def named():
        number = desktop.x.active_id()
        try:
            window = desktop.x.connection.create_resource_object("window", number)
            return number if window.get_wm_name() == title else None
        except error.XError:  # no window, or one that has gone
            return None

    return wait_until(named, 30, f"the window {title!r} is in front")


@contextlib.contextmanager
def held(desktop, key):
    code = desktop.x._key_code(key)
    xtest.fake_input(desktop.x.connection, X.KeyPress, code)
    desktop.x.connection.sync()
    try:
        yield
    finally:
        xtest.fake_input(desktop.x.connection, X.KeyRelease, code)
        desktop.x.connection.sync()


def nothing_is_down(desktop):
    return not any(desktop.x.connection.query_keymap())


def strokes(client):
    """What the client has been sent of keys so far, in order: ("key press", place)."""
    client.connection.sync()
    return [(kind, event.detail) for kind, event in client.events() if kind.startswith("key ")]


def set_layout(desktop, layouts):
    subprocess.run(["setxkbmap", "-layout", layouts], env=desktop.env, check=True, timeout=10)


def test_the_display_lets_us(paster):
    assert paster.ask("trusted", "trusted", "not trusted") == "trusted"


@pytest.mark.parametrize(
    "desktop", [{"wm": name} for name in ("openbox", "xfwm4", "mutter", "i3")], indirect=True
)
def test_text_arrives_in_the_field_that_was_in_front(desktop, paster):
    entry = Entry(desktop)
    prior = front(paster)
    assert prior == entry.window
    desktop.copy_text(TEXT)
    desktop.client().activate()
    assert front(paster) != prior
    assert paste(paster, prior)
    entry.wait_for(TEXT)
    assert nothing_is_down(desktop)


def test_a_terminal_gets_its_own_chord(desktop, paster):
    terminal = Terminal(desktop)
    prior = front(paster)
    desktop.copy_text(TEXT)
    desktop.client().activate()
    assert paste(paster, prior)
    wait_until(lambda: terminal.text, what="something arrives in the terminal")
    desktop.x.type_text(".")
    wait_until(lambda: terminal.text.endswith("."), what="what was typed later has arrived")
    assert terminal.text == TEXT + "."


def test_the_keys_come_in_pairs_and_in_order(desktop, paster):
    client = desktop.client()
    client.activate()
    client.forget()
    assert paste(paster, client.window.id)
    wait_until(lambda: len(strokes(client)) == 4, what="four strokes arrive")
    assert strokes(client) == [
        ("key press", CONTROL),
        ("key press", KEY_V),
        ("key release", KEY_V),
        ("key release", CONTROL),
    ]
    assert client.events("key press")[1][1].state & 0xFF == X.ControlMask


@pytest.mark.parametrize("key", ["shift", "super", "alt", "ctrl", "v"])
def test_it_waits_until_the_user_lets_go(desktop, paster, key):
    client = desktop.client()
    client.activate()
    with held(desktop, key):
        client.wait_for("key press")
        client.forget()
        paster.send(f"paste {client.window.id}")
        # Until it has answered something else, it has been looking at the keys.
        front(paster)
        assert "pasted" not in paster.lines
    paster.wait_for("pasted")
    wait_until(nothing_is_down_of(desktop), what="all keys are up")
    places = [place for kind, place in strokes(client) if kind == "key press"]
    assert places == [CONTROL, KEY_V] or (key == "v" and places[-2:] == [CONTROL, KEY_V])


def nothing_is_down_of(desktop):
    return lambda: nothing_is_down(desktop)


def test_text_arrives_whole_although_a_modifier_was_held(desktop, paster):
    entry = Entry(desktop)
    desktop.copy_text(TEXT)
    with held(desktop, "super"), held(desktop, "shift"):
        paster.send(f"paste {entry.window}")
        front(paster)
    entry.wait_for(TEXT)
    paster.wait_for("pasted")  # the text may be there first
    assert paster.lines.count("pasted") == 1


def test_a_modifier_that_stays_down_ends_the_attempt(desktop, paster):
    client = desktop.client()
    client.activate()
    with held(desktop, "super"):
        client.wait_for("key press")
        client.forget()
        assert not paste(paster, client.window.id)
        assert strokes(client) == []


def test_a_window_that_is_gone_gets_nothing_and_neither_does_another(desktop, paster):
    other = desktop.client(title="other")
    doomed = desktop.client(title="doomed")
    number = doomed.window.id
    doomed.close()
    other.activate()
    other.forget()
    assert not paste(paster, number)
    assert strokes(other) == []


def test_a_window_that_goes_while_we_wait_gets_nothing(desktop, paster):
    other = desktop.client(title="other")
    doomed = desktop.client(title="doomed")
    doomed.activate()
    with held(desktop, "shift"):
        paster.send(f"paste {doomed.window.id}")
        front(paster)
        doomed.close()
        paster.wait_for("not pasted")
    # It may have come to the front while the key was down, and hear that go up.
    assert not [place for kind, place in strokes(other) if place in (CONTROL, KEY_V)]


def test_a_window_that_never_takes_the_keyboard_gets_nothing(desktop, paster):
    unmanaged = desktop.client(title="unmanaged", override_redirect=True)
    client = desktop.client(Rect(600, 100, 300, 300))
    client.activate()
    client.forget()
    assert not paste(paster, unmanaged.window.id)
    assert strokes(client) == []


def test_the_keyboard_comes_back_from_a_window_that_took_it_past_the_manager(desktop, paster):
    client = desktop.client()
    client.activate()
    panel = desktop.client(Rect(600, 100, 300, 300), title="panel", override_redirect=True)
    panel.window.set_input_focus(X.RevertToPointerRoot, X.CurrentTime)
    panel.connection.sync()
    wait_until(lambda: desktop.x.focus_id() == panel.window.id, what="the panel has the keyboard")
    wait_until(lambda: not client.has_focus(), what="the manager has heard of it")
    client.forget()
    assert front(paster) == 0, "the panel is no program's window"
    assert paste(paster, client.window.id)
    wait_until(lambda: len(strokes(client)) == 4, what="four strokes arrive")


def test_a_window_put_away_comes_back(desktop, paster):
    entry = Entry(desktop)
    desktop.copy_text(TEXT)
    subprocess.run(["xdotool", "windowminimize", str(entry.window)], env=desktop.env, check=True, timeout=10)
    wait_until(lambda: desktop.x.active_id() != entry.window, what="the window is put away")
    assert paste(paster, entry.window)
    entry.wait_for(TEXT)


def test_without_a_window_the_one_with_the_keyboard_is_meant(desktop, paster):
    entry = Entry(desktop)
    desktop.copy_text(TEXT)
    assert paste(paster, 0)
    entry.wait_for(TEXT)


@pytest.mark.parametrize(
    "layout, place", [("ru", KEY_V), ("gr", KEY_V), ("us(dvorak)", KEY_DOT), ("de", KEY_V)]
)
def test_the_letter_is_found_under_every_layout(desktop, paster, layout, place):
    client = desktop.client()
    client.activate()
    set_layout(desktop, layout)
    client.forget()
    assert paste(paster, client.window.id)
    wait_until(lambda: len(strokes(client)) == 4, what="four strokes arrive")
    assert [each[1] for each in strokes(client)] == [CONTROL, place, place, CONTROL]


def test_text_arrives_while_a_cyrillic_layout_is_active(desktop, paster):
    set_layout(desktop, "us,ru")
    entry = Entry(desktop)
    subprocess.run(["xdotool", "key", "ISO_Next_Group"], env=desktop.env, check=True, timeout=10)
    subprocess.run(["xdotool", "key", "v"], env=desktop.env, check=True, timeout=10)
    wait_until(lambda: entry.text, what="the field hears of the layout")
    typed = entry.text
    desktop.copy_text(TEXT)
    assert paste(paster, entry.window)
    entry.wait_for(typed + TEXT)


def test_lock_keys_change_nothing(desktop, paster):
    entry = Entry(desktop)
    desktop.copy_text(TEXT)
    desktop.x.press_key("Caps_Lock")
    desktop.x.press_key("Num_Lock")
    assert paste(paster, entry.window)
    entry.wait_for(TEXT)


def test_several_pastes_may_be_on_their_way(desktop, paster):
    entry = Entry(desktop)
    desktop.copy_text("ab")
    for _ in range(3):
        paster.send(f"paste {entry.window}")
    paster.wait_for("pasted", 3)
    entry.wait_for("ababab")
