"""On a Wayland desktop, through XWayland: the closed panel's input region is its zone."""

import time

from harness.drawing import extent, matches
from harness.waiting import holds_for, holds_until, wait_until
from harness.x11 import Rect

MIDDLE = 640
GRACE = 0.4
CURSOR_FREE = 600  # screenshots show the cursor, which is further down then
ZONE = [Rect(190, 0, 220, 24)]


def covered(sway_desktop):
    """The extent of what isn't the compositor's plain background, above the cursor's place."""
    shot = sway_desktop.screenshot()
    return extent(~matches(shot, shot.getpixel((5, 5)))[:CURSOR_FREE])


def test_closed_the_zone_alone_takes_the_pointer(sway_desktop):
    sway_desktop.move_pointer(MIDDLE, 700)
    sway_desktop.launch()
    assert sway_desktop.panel.geometry == Rect(340, 0, 600, 240)
    assert sway_desktop.panel.input_region == ZONE


def test_hovering_opens_and_leaving_closes(sway_desktop):
    sway_desktop.move_pointer(MIDDLE, 700)
    sway_desktop.launch()
    for _ in range(2):
        sway_desktop.move_pointer(MIDDLE, 5)
        sway_desktop.panel.wait_until_open()
        sway_desktop.move_pointer(MIDDLE, 60)
        wait_until(lambda: covered(sway_desktop) == (340, 0, 940, 240), what="the open panel is drawn")
        sway_desktop.move_pointer(MIDDLE, 120)
        holds_for(sway_desktop.panel.takes_clicks, 2 * GRACE, "the panel is open")
        left = time.monotonic()
        sway_desktop.move_pointer(MIDDLE, 700)
        holds_until(sway_desktop.panel.takes_clicks, left + 0.75 * GRACE, "it is open yet")
        sway_desktop.panel.wait_until_closed()
        assert sway_desktop.panel.input_region == ZONE
        wait_until(lambda: covered(sway_desktop) == (540, 0, 740, 24), what="only the notch is drawn")


def test_a_click_beside_the_zone_reaches_the_window_beneath(sway_desktop):
    client = sway_desktop.client(Rect(0, 0, 1280, 800))
    sway_desktop.move_pointer(MIDDLE, 700)
    sway_desktop.launch()
    for place in ((MIDDLE, 100), (400, 5), (900, 200)):
        client.forget()
        sway_desktop.click(*place)
        client.wait_for("press")
        assert not sway_desktop.panel.takes_clicks()


def test_open_a_click_stays_in_the_panel(sway_desktop):
    client = sway_desktop.client(Rect(0, 0, 1280, 800))
    app = sway_desktop.launch()
    sway_desktop.move_pointer(MIDDLE, 5)
    sway_desktop.panel.wait_until_open()
    client.forget()
    sway_desktop.click(400, 100)
    app.wait_until_idle()
    sway_desktop.click(200, 700)
    client.wait_for("press")
    assert [(event.event_x, event.event_y) for _, event in client.events("press")] == [(200, 700)]
