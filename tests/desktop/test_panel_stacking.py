"""Above everything but a screen locker, on every workspace, in nobody's way."""

import pytest

from harness.drawing import BLACK
from harness.waiting import holds_for, wait_until
from harness.x11 import Rect

MANAGERS = ("openbox", "xfwm4", "mutter", "i3")
on_each_manager = pytest.mark.parametrize(
    "desktop", [{"wm": wm} for wm in MANAGERS], indirect=True, ids=MANAGERS
)


def notch_is_seen(desktop):
    x, _ = desktop.top_centre
    return desktop.x.pixel(x, 10) == BLACK


def is_above(desktop, client):
    return (
        desktop.x.stack_index(desktop.panel.window) > desktop.x.stack_index(client.window)
        and desktop.x.pixel(20, 100) == client.colour
        and notch_is_seen(desktop)
    )


def wait_until_above(desktop, client, when):
    wait_until(lambda: is_above(desktop, client), what=f"the panel is above a window {when}")


def full_client(desktop, colour=(200, 30, 30), title="client", hidden=False):
    return desktop.client(Rect(100, 100, 500, 400), colour, title, mapped=False).map(hidden)


@on_each_manager
def test_above_a_maximised_window(desktop):
    desktop.launch()
    client = full_client(desktop)
    if desktop.wm != "i3":  # a tiling manager gives it all of the screen by itself
        client.maximise()
    wait_until(
        lambda: desktop.x.stack_index(desktop.panel.window) > desktop.x.stack_index(client.window)
        and notch_is_seen(desktop),
        what="the panel is above the maximised window",
    )


@on_each_manager
def test_above_full_screen_windows_however_they_come_up(desktop):
    desktop.launch()
    first = full_client(desktop, (200, 30, 30), "first")
    first.full_screen()
    wait_until_above(desktop, first, "that went full screen")
    second = full_client(desktop, (30, 150, 30), "second", hidden=True)
    second.activate()
    second.full_screen()
    wait_until_above(desktop, second, "that was mapped later and went full screen")
    if desktop.wm == "i3":  # there only one window is full screen at a time
        second.leave_full_screen()
        first.full_screen()
    first.activate()
    first.raise_()
    wait_until_above(desktop, first, "that was focused and raised")


@on_each_manager
def test_above_a_full_screen_window_that_was_there_first(desktop):
    client = full_client(desktop)
    client.full_screen()
    desktop.launch()
    wait_until_above(desktop, client, "that was there first")


@on_each_manager
def test_on_every_workspace(desktop):
    desktop.launch()
    panel = desktop.panel.window
    for workspace in (1, 0):
        desktop.switch_workspace(workspace)
        client = full_client(desktop, (200, 30, 30 + workspace), f"client{workspace}")
        client.full_screen()
        wait_until_above(desktop, client, f"on workspace {workspace}")
        assert desktop.panel.window.id == panel.id
        desktop.open_panel()
        desktop.point_away()
        desktop.panel.wait_until_closed()


@on_each_manager
def test_in_no_task_bar_and_no_window_cycle(desktop):
    desktop.launch()
    client = full_client(desktop)
    panel = desktop.panel.window
    wait_until(lambda: client.window.id in desktop.x.managed_ids(), what="the client is listed")
    assert panel.get_attributes().override_redirect
    assert panel.id not in desktop.x.managed_ids()
    assert desktop.x.property(panel, "WM_STATE") is None


@on_each_manager
def test_opening_takes_no_focus(desktop):
    client = full_client(desktop)
    client.activate()
    wait_until(lambda: desktop.x.focus_id() == client.window.id, what="the client has the keyboard")
    app = desktop.launch()
    client.forget()
    # In a part of the screen where focus follows neither the motion nor a click.
    desktop.open_panel()
    desktop.x.click(*desktop.top_centre)
    app.wait_until_idle()
    assert desktop.x.focus_id() == client.window.id
    assert desktop.x.active_id() == client.window.id
    assert not client.events("focus out")


@on_each_manager
def test_a_screen_locker_stays_uncovered(desktop):
    app = desktop.launch()
    client = full_client(desktop)
    client.full_screen()
    wait_until_above(desktop, client, "before the screen is locked")
    locker = desktop.locker()
    # Things go on beneath: windows come up and the pointer moves.
    later = full_client(desktop, (30, 150, 30), "later", hidden=True)
    x, _ = desktop.top_centre

    def locked():
        # A window manager may bring the later window up late; lockers raise themselves then.
        locker.raise_()
        return desktop.x.pixel(x, 10) == locker.colour and desktop.x.stack_index(
            locker.window
        ) > desktop.x.stack_index(later.window)

    wait_until(locked, what="the locker covers the notch")
    desktop.point_at_notch()
    desktop.point_away()
    app.wait_until_idle()
    desktop.manager.wait_until_idle()
    wait_until(locked, what="the locker covers the notch again")
    holds_for(
        lambda: desktop.x.pixel(x, 10) == locker.colour
        and desktop.x.stack_index(locker.window) > desktop.x.stack_index(desktop.panel.window),
        0.3,
        "the locker covers the notch",
    )
