"""Hot keys at a real server: who gets the key, with which lock keys, under which layout."""

import pathlib
import re
import subprocess

import pytest
from Xlib import X
from Xlib.ext import xtest

from harness.helper import Helper
from harness.waiting import wait_until

V, Z, C, F12 = 9, 6, 8, 111
COMMAND, SHIFT, OPTION, CONTROL = 0x100, 0x200, 0x800, 0x1000
COMMAND_SHIFT = COMMAND | SHIFT
# Places on the keyboard, as the server counts them.
KEY_V, KEY_Y, KEY_DOT, KEY_B, KEY_F12 = 55, 29, 60, 56, 96


@pytest.fixture
def start(start_helper):
    """Starts programs that register hot keys."""
    return lambda: start_helper("hotkeys")


def register(helper, code, modifiers):
    return helper.ask(f"register {code} {modifiers}", "registered", "refused") == "registered"


def presses(desktop, helper):
    """The presses that have been told of, once everything sent so far has been digested."""
    # Presses are told of in their order, so one more shows that those before it are through.
    before = helper.lines.count("pressed 111")
    assert register(helper, F12, CONTROL | COMMAND)
    strike(desktop, KEY_F12, "ctrl", "super")
    helper.wait_for("pressed 111", before + 1)
    helper.ask("unregister", "unregistered")
    return [line for line in helper.lines if line.startswith("pressed") and line != "pressed 111"]


def hold(desktop, code, down):
    xtest.fake_input(desktop.x.connection, X.KeyPress if down else X.KeyRelease, code)
    desktop.x.connection.sync()


def strike(desktop, code, *modifiers):
    """Press the key at that place, with modifiers by their names."""
    held = [desktop.x._key_code(name) for name in modifiers]
    for key in [*held, code]:
        hold(desktop, key, True)
    for key in [code, *reversed(held)]:
        hold(desktop, key, False)


def set_layout(desktop, layouts, variants=""):
    subprocess.run(
        ["setxkbmap", "-layout", layouts, "-variant", variants], env=desktop.env, check=True, timeout=10
    )


def test_a_press_is_heard_while_another_program_is_in_front_and_goes_to_nobody_else(desktop, start):
    client = desktop.client()
    client.activate()
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)
    client.forget()
    desktop.x.press_key("super+shift+v")
    helper.wait_for("pressed 9")
    desktop.x.press_key("super+shift+b")
    client.wait_for("key release")
    assert not [event for _, event in client.events("key press") if event.detail == KEY_V]
    assert presses(desktop, helper) == ["pressed 9"]


def test_lock_keys_change_nothing(desktop, start):
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)
    count = 0
    for caps in (False, True):
        for num in (False, True):
            desktop.x.press_key("super+shift+v")
            count += 1
            helper.wait_for("pressed 9", count)
            desktop.x.press_key("Num_Lock")
        desktop.x.press_key("Caps_Lock")
    assert count == 4


def test_other_modifiers_make_another_combination(desktop, start):
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)
    for chord in ("v", "shift+v", "super+v", "ctrl+super+shift+v", "alt+super+shift+v"):
        desktop.x.press_key(chord)
    assert presses(desktop, helper) == []


@pytest.mark.parametrize(
    "modifiers, chord",
    [(OPTION, "alt+v"), (CONTROL, "ctrl+v"), (CONTROL | OPTION | COMMAND, "ctrl+alt+super+v")],
)
def test_each_modifier_has_its_key(desktop, start, modifiers, chord):
    helper = start()
    assert register(helper, V, modifiers)
    desktop.x.press_key(chord)
    helper.wait_for("pressed 9")


def test_a_held_key_is_one_press(desktop, start):
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)
    client = desktop.client()
    client.activate()
    # Another key that is held shows how many repeats the server sends meanwhile.
    for name in ("super", "shift", "v"):
        hold(desktop, desktop.x._key_code(name), True)
    helper.wait_for("pressed 9")
    subprocess.run(["xset", "r", "rate", "200", "50"], env=desktop.env, check=True, timeout=10)
    hold(desktop, KEY_V, False)
    hold(desktop, KEY_V, True)
    helper.wait_for("pressed 9", 2)
    # The server's own repeats of V reach the holder of the grab alone, so they are counted by its wake-ups.
    before = wakeups(helper.pid)
    wait_until(lambda: wakeups(helper.pid) > before + 5, what="the key repeats")
    hold(desktop, KEY_V, False)
    for name in ("shift", "super"):
        hold(desktop, desktop.x._key_code(name), False)
    assert presses(desktop, helper) == ["pressed 9"] * 2


def wakeups(pid):
    """How often a thread of the process has woken up so far."""
    threads = pathlib.Path(f"/proc/{pid}/task").glob("*/status")
    return sum(int(re.search(r"^voluntary.*:\s*(\d+)", each.read_text(), re.M)[1]) for each in threads)


def test_a_combination_that_another_program_holds_is_refused_whole(desktop, start):
    # It holds the combination under Caps Lock alone; all others must be given back.
    holder = desktop.client()
    holder.window.query_tree().root.grab_key(
        KEY_V, X.Mod4Mask | X.ShiftMask | X.LockMask, False, X.GrabModeAsync, X.GrabModeAsync
    )
    holder.connection.sync()
    helper = start()
    assert not register(helper, V, COMMAND_SHIFT)
    desktop.x.press_key("super+shift+v")
    assert presses(desktop, helper) == []
    second = start()
    holder.close()
    wait_until(lambda: register(second, V, COMMAND_SHIFT), what="the combination is free again")
    assert not register(helper, V, COMMAND_SHIFT)


def test_a_combination_that_is_given_back_is_free(desktop, start):
    first, second = start(), start()
    assert register(first, V, COMMAND_SHIFT)
    assert not register(second, V, COMMAND_SHIFT)
    first.ask("unregister", "unregistered")
    assert register(second, V, COMMAND_SHIFT)
    desktop.x.press_key("super+shift+v")
    second.wait_for("pressed 9")
    assert presses(desktop, first) == []


def test_the_same_program_gets_a_combination_once(desktop, start):
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)
    assert not register(helper, V, COMMAND_SHIFT)
    assert register(helper, C, COMMAND_SHIFT)
    desktop.x.press_key("super+shift+c")
    helper.wait_for("pressed 8")
    assert presses(desktop, helper) == ["pressed 8"]


def test_a_code_without_a_key_is_refused(desktop, start):
    helper = start()
    assert not register(helper, 52, COMMAND_SHIFT)


def test_a_hot_key_follows_the_letter_to_another_layout(desktop, start):
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)

    def moved(place):
        def heard():
            before = len(presses(desktop, helper))
            strike(desktop, place, "super", "shift")
            return len(presses(desktop, helper)) > before

        return heard

    set_layout(desktop, "us", "dvorak")
    wait_until(moved(KEY_DOT), what="the key that carries v in this layout is heard")
    heard = len(presses(desktop, helper))
    strike(desktop, KEY_V, "super", "shift")
    assert len(presses(desktop, helper)) == heard, "the old place has been given up"
    set_layout(desktop, "us")
    wait_until(moved(KEY_V), what="the key is heard at its old place again")


def test_without_the_letter_the_key_at_its_place_is_meant(desktop, start):
    set_layout(desktop, "ru")
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)
    strike(desktop, KEY_V, "super", "shift")
    helper.wait_for("pressed 9")


def test_the_other_layout_being_active_changes_nothing_for_a_latin_letter(desktop, start):
    set_layout(desktop, "de,ru", ",")
    helper = start()
    assert register(helper, Z, COMMAND_SHIFT)
    strike(desktop, KEY_Y, "super", "shift")
    helper.wait_for("pressed 6")
    xtest_group = subprocess.run(
        ["xdotool", "key", "ISO_Next_Group"], env=desktop.env, capture_output=True, timeout=10
    )
    assert xtest_group.returncode == 0, xtest_group.stderr
    strike(desktop, KEY_Y, "super", "shift")
    helper.wait_for("pressed 6", 2)


def test_a_program_that_hangs_gives_the_keyboard_back(desktop, start):
    client = desktop.client()
    client.activate()
    helper = start()
    assert register(helper, V, COMMAND_SHIFT)
    helper.ask("busy", "busy")
    client.forget()
    for _ in range(2):
        desktop.x.press_key("super+shift+v")
        desktop.x.press_key("b")
        wait_until(
            lambda: [event for _, event in client.events("key release") if event.detail == KEY_B],
            what="what is typed next arrives in the program in front",
        )
        client.forget()
    assert "pressed 9" not in helper.lines, "it still hangs"
    helper.send("")
    helper.wait_for("pressed 9", 2)
    desktop.x.press_key("super+shift+v")
    helper.wait_for("pressed 9", 3)


def test_a_key_has_the_code_that_is_registered_for_it(desktop, start):
    helper = start()

    def code(place):
        return helper.ask(f"code {place}", *(f"code {each}" for each in range(128)), "no code")

    assert code(KEY_V) == "code 9"
    set_layout(desktop, "us", "dvorak")
    wait_until(lambda: code(KEY_DOT) == "code 9", what="the key that carries v in this layout has its code")
    set_layout(desktop, "ru")
    wait_until(lambda: code(KEY_V) == "code 9", what="without the letter its place has the code")
    assert code(desktop.x._key_code("super")) == "no code"
    assert code(1000) == "no code"


def test_under_xwayland_there_are_none(sway_desktop):
    # There the server would hear the keys over X11 windows alone.
    pasting = Helper(sway_desktop, "keystrokes")
    assert pasting.ask("trusted", "trusted", "not trusted") == "trusted", "the server lets the program in"
    pasting.close()
    helper = Helper(sway_desktop, "hotkeys")
    assert not register(helper, V, COMMAND_SHIFT)
    helper.close()
