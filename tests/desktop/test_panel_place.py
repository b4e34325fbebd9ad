"""Where the panel is, how large it is, and that its edges are sharp."""

import pytest

from harness.drawing import BLACK, extent, matches
from harness.waiting import wait_until
from harness.x11 import Rect

MANAGERS = ("openbox", "xfwm4", "mutter")
on_each_manager = pytest.mark.parametrize(
    "desktop", [{"wm": wm} for wm in MANAGERS], indirect=True, ids=MANAGERS
)


def wait_for_drawing(desktop, backdrop, *wanted):
    """Wait until what covers the backdrop reaches from (left, top) to (right, bottom)."""

    def drawn():
        return extent(~matches(desktop.screenshot(), backdrop.colour))

    wait_until(lambda: drawn() == wanted, what=f"{wanted} is drawn")


@on_each_manager
def test_the_window_hangs_at_the_top_centre_and_draws_only_the_notch(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    assert desktop.panel.geometry == Rect(340, 0, 600, 240)
    wait_for_drawing(desktop, backdrop, 540, 0, 740, 24)
    assert matches(desktop.screenshot(), BLACK)[0:23, 570:710].all()


@on_each_manager
def test_opening_fills_the_window_and_moves_nothing(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    before = desktop.panel.geometry
    desktop.open_panel()
    wait_for_drawing(desktop, backdrop, 340, 0, 940, 240)
    assert desktop.panel.geometry == before


@on_each_manager
def test_the_notch_is_as_high_as_the_bar_at_the_top(desktop):
    desktop.dock(32)
    desktop.launch()
    assert desktop.panel.geometry == Rect(340, 0, 600, 248)


def test_a_bar_that_comes_later_moves_the_drawer(desktop):
    desktop.launch()
    assert desktop.panel.geometry.height == 240
    desktop.dock(40)
    wait_until(
        lambda: desktop.panel.geometry == Rect(340, 0, 600, 256), what="the panel has made room for the bar"
    )


SCALES = [
    {"scale": 1},
    {"scale": 1.25},
    {"scale": 1.5},
    {"scale": 2},
    {"dpi": 120},
    {"dpi": 144},
    {"dpi": 192},
]
WIDTHS = (1600, 1367)


@pytest.mark.parametrize(
    "desktop",
    [{**scale, "size": (width, 900)} for scale in SCALES for width in WIDTHS],
    indirect=True,
    ids=[f"{name}-{value}-{width}" for each in SCALES for name, value in each.items() for width in WIDTHS],
)
def test_edges_are_sharp_at_every_scale(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    place = desktop.panel.geometry
    assert (place.width, place.height) == (600 * desktop.scale, 240 * desktop.scale)
    assert place.y == 0
    off_centre = abs(2 * place.x + place.width - desktop.x.size[0])
    assert off_centre <= 2, "more than a pixel off the centre"

    desktop.open_panel()
    wait_for_drawing(desktop, backdrop, place.x, 0, place.right, place.bottom)
    shot = desktop.screenshot()
    black, bare = matches(shot, BLACK), matches(shot, backdrop.colour)
    # Between the rounded corners, with a pixel to spare.
    top, bottom = round(7 * desktop.scale) + 1, place.bottom - round(22 * desktop.scale) - 1
    assert black[top:bottom, place.x].all() and black[top:bottom, place.right - 1].all()
    assert bare[top:bottom, place.x - 1].all() and bare[top:bottom, place.right].all()
    left, right = place.x + round(22 * desktop.scale) + 1, place.right - round(22 * desktop.scale) - 1
    assert black[0, left:right].all()
    assert black[place.bottom - 1, left:right].all()
    assert bare[place.bottom, left:right].all()
    # The corners themselves are cut off.
    for x in (place.x, place.right - 1):
        assert bare[0, x] and bare[place.bottom - 1, x]
