"""A click belongs to what the person sees at its place."""

import pytest

from harness.waiting import wait_until
from harness.x11 import Rect

MANAGERS = ("openbox", "xfwm4", "mutter", "i3")
on_each_manager = pytest.mark.parametrize(
    "desktop", [{"wm": wm} for wm in MANAGERS], indirect=True, ids=MANAGERS
)

OUTSIDE = (200, 600)


@pytest.fixture
def beneath(desktop):
    client = desktop.client(Rect(100, 100, 500, 400))
    client.full_screen()
    return client


def places(client):
    return [(event.root_x, event.root_y) for _, event in client.events("press")]


def has_grown_to(desktop, x, y):
    """Where nobody composites, what the panel has not reached yet belongs to the window beneath."""
    place = desktop.panel.geometry
    return any(each.contains(x - place.x, y - place.y) for each in desktop.panel.bounding_region)


@on_each_manager
def test_closed_a_click_reaches_the_window_beneath(desktop, beneath):
    desktop.launch()
    assert desktop.panel.input_region == []
    # Where the open panel would be, but outside the zone that opens it.
    for place in ((400, 100), (640, 150), (360, 5), (920, 230)):
        beneath.forget()
        desktop.x.click(*place)
        beneath.wait_for("press")
        assert places(beneath) == [place]
        assert not desktop.panel.takes_clicks()


@on_each_manager
def test_open_a_click_stays_in_the_panel(desktop, beneath):
    app = desktop.launch()
    for place in ((640, 12), (400, 100), (640, 150), (920, 200)):
        desktop.open_panel()
        wait_until(lambda: has_grown_to(desktop, *place), what=f"the panel is at {place}")
        beneath.forget()
        desktop.x.click(*place)
        app.wait_until_idle()
        # A click beyond the panel arrives, and none before it has.
        desktop.x.click(*OUTSIDE)
        beneath.wait_for("press")
        assert places(beneath) == [OUTSIDE]
        # It is open yet, and a busy machine may close it just before the next click.
        desktop.panel.wait_until_closed()


@on_each_manager
def test_closed_again_clicks_reach_the_window_beneath_again(desktop, beneath):
    desktop.launch()
    desktop.open_panel()
    desktop.point_away()
    desktop.panel.wait_until_closed()
    beneath.forget()
    desktop.x.click(640, 150)
    beneath.wait_for("press")
    assert places(beneath) == [(640, 150)]
