"""The bench itself: what the other tests lean on works under each window manager."""

import pytest
from Xlib import Xatom

from harness.desktop import MANAGERS
from harness.waiting import wait_until
from harness.x11 import Rect

each_manager = pytest.mark.parametrize(
    "desktop", [{"wm": wm} for wm in MANAGERS], indirect=True, ids=MANAGERS
)


@each_manager
def test_a_client_is_managed_seen_and_clicked(desktop):
    client = desktop.client(Rect(0, 0, 600, 300))
    desktop.x.click(200, 200)
    client.wait_for("press")
    wait_until(lambda: desktop.x.pixel(200, 200) == client.colour, what="its colour is seen")
    wait_until(lambda: client.window.id in desktop.x.managed_ids(), what="it is managed")
    client.full_screen()
    desktop.switch_workspace(1)
    wait_until(lambda: desktop.x.pixel(200, 200) != client.colour, what="it is out of sight")
    desktop.switch_workspace(0)
    wait_until(lambda: desktop.x.pixel(200, 200) == client.colour, what="it is back")


@each_manager
def test_typed_text_and_the_clipboard_arrive(desktop):
    client = desktop.client()
    client.activate()
    wait_until(lambda: desktop.x.focus_id() == client.window.id, what="it has the keyboard")
    client.forget()
    desktop.x.type_text("aB")
    wait_until(lambda: len(client.events("key press")) == 3, what="a, Shift and B arrive")
    desktop.copy_text("grüße")
    assert desktop.clipboard_text() == "grüße"


def test_the_display_changes_its_resolution(desktop):
    desktop.x.set_resolution(1024, 700)
    assert desktop.screenshot().size == (1024, 700)
    desktop.x.set_resolution(1280, 800)
    assert desktop.screenshot().size == (1280, 800)


@pytest.mark.desktop(monitors=2)
def test_the_display_is_two_monitors(desktop):
    monitors = desktop.x.root.xrandr_get_monitors().monitors
    assert [(each.x, each.width_in_pixels) for each in monitors] == [(0, 640), (640, 640)]


def test_a_drag_reaches_an_xdnd_target(desktop):
    source = desktop.drag_source()
    target = desktop.client(Rect(600, 300, 200, 200))
    target.window.change_property(desktop.x.atom("XdndAware"), Xatom.ATOM, 32, [5])
    target.connection.sync()
    source.begin()
    source.move(700, 400)
    assert source.target == target.window.id
    source.abandon()


def test_sway_moves_a_pointer_over_xwayland(sway_desktop):
    client = sway_desktop.client(Rect(0, 0, 600, 300), override_redirect=True)
    # A window that the compositor doesn't show yet gets no click.
    wait_until(
        lambda: sway_desktop.screenshot().getpixel((400, 200)) == client.colour, what="its colour is seen"
    )
    sway_desktop.click(200, 100)
    client.wait_for("enter")
    client.wait_for("press")


@pytest.mark.desktop(pluggable=True)
def test_sway_monitors_come_and_go(sway_desktop):
    assert list(sway_desktop.outputs()) == ["WL-1"]
    second = sway_desktop.plug((1000, 700))
    wait_until(lambda: sway_desktop.x.size == (2280, 800), what="XWayland spans both")
    sway_desktop.unplug("WL-1")
    assert list(sway_desktop.outputs()) == [second]
    wait_until(lambda: sway_desktop.x.size[1] == 700, what="XWayland spans the second")
