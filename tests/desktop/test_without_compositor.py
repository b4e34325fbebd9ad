"""Where nothing blends windows, the window itself has the outline of what is drawn."""

import numpy
import pytest

from harness.clock import hurried
from harness.drawing import BLACK, extent, matches, region_mask
from harness.waiting import wait_until
from harness.x11 import Rect

MANAGERS = ("openbox", "i3")
on_each_manager = pytest.mark.parametrize(
    "desktop", [{"wm": wm} for wm in MANAGERS], indirect=True, ids=MANAGERS
)

PLACE = Rect(340, 0, 600, 240)
WHOLE = [Rect(0, 0, 600, 240)]


def covered(desktop, backdrop):
    """The extent of everything that isn't the backdrop."""
    return extent(~matches(desktop.screenshot(), backdrop.colour))


def look(desktop, backdrop):
    """One moment of the panel: checks it, and returns the extent of its bounding region."""
    window = desktop.panel.window
    with desktop.x.frozen():
        shape = region_mask(desktop.x.bounding_region(window), PLACE.width, PLACE.height)
        seen = desktop.x.screenshot(PLACE)
        own = numpy.asarray(desktop.x.window_pixels(window))
    bare = matches(seen, backdrop.colour)
    assert bare[~shape].all(), "something covers the backdrop outside the window's shape"
    empty = (own == 0).all(axis=2) & matches(seen, BLACK)
    assert not (
        empty & shape
    ).any(), f"transparent black shows inside the shape, within {extent(empty & shape)}"
    return extent(shape)


def follow(desktop, backdrop, until):
    """Look again and again until the shape's extent is `until`; return all different extents."""
    extents = []

    def arrived():
        now = look(desktop, backdrop)
        if not extents or extents[-1] != now:
            extents.append(now)
        return now == until

    wait_until(arrived, what=f"the shape reaches {until}", interval=0)
    return extents


CLOSED = (200, 0, 400, 24)
OPEN = (0, 0, 600, 240)


@on_each_manager
def test_closed_it_covers_nothing_but_the_notch(desktop):
    backdrop = desktop.backdrop()
    app = desktop.launch()
    assert look(desktop, backdrop) == CLOSED
    app.wait_until_idle()
    assert covered(desktop, backdrop) == (540, 0, 740, 24)


@on_each_manager
def test_the_shape_follows_the_drawing_all_the_way(desktop):
    backdrop = desktop.backdrop()
    # A slow clock, for enough looks at the animation on a busy machine too.
    app = desktop.launch(hurried(0.2))
    desktop.point_at_notch()
    opening = follow(desktop, backdrop, OPEN)
    assert len(opening) >= 5, f"too few looks at the animation: {opening}"
    assert opening[0] == CLOSED or opening[0][2] < OPEN[2]
    app.wait_until_idle()
    assert look(desktop, backdrop) == OPEN
    desktop.point_away()
    closing = follow(desktop, backdrop, CLOSED)
    assert len(closing) >= 5, f"too few looks at the animation: {closing}"
    app.wait_until_idle()
    assert look(desktop, backdrop) == CLOSED
    # What is drawn fills the shape: neither is ahead of the other at rest.
    assert covered(desktop, backdrop) == (540, 0, 740, 24)


@on_each_manager
def test_an_opening_that_is_turned_round_leaves_no_trace(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    for _ in range(2):
        desktop.open_panel()
        look(desktop, backdrop)
        desktop.point_away()
        desktop.panel.wait_until_closed()
        look(desktop, backdrop)
    follow(desktop, backdrop, CLOSED)
    assert covered(desktop, backdrop) == (540, 0, 740, 24)


@on_each_manager
def test_a_compositor_that_comes_and_goes_switches_over(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    panel = desktop.panel
    assert panel.bounding_region != WHOLE
    for _ in range(2):
        desktop.start_compositor()
        wait_until(lambda: panel.bounding_region == WHOLE, what="the window is whole")
        # Blended: around the notch the backdrop shows, though the window is there.
        wait_until(
            lambda: covered(desktop, backdrop) == (540, 0, 740, 24),
            what="only the notch is covered with a compositor",
        )
        desktop.stop_compositor()
        wait_until(
            lambda: extent(region_mask(panel.bounding_region, 600, 240)) == CLOSED,
            what="the window is cut down to the notch",
        )
        wait_until(
            lambda: covered(desktop, backdrop) == (540, 0, 740, 24),
            what="only the notch is covered without a compositor",
        )
        assert look(desktop, backdrop) == CLOSED


def test_a_compositor_that_goes_while_open_leaves_the_open_outline(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    desktop.start_compositor()
    desktop.open_panel()
    wait_until(lambda: covered(desktop, backdrop) == (340, 0, 940, 240), what="the panel is drawn open")
    desktop.stop_compositor()
    wait_until(lambda: desktop.panel.bounding_region != WHOLE, what="the window has an outline")
    wait_until(
        lambda: covered(desktop, backdrop) == (340, 0, 940, 240),
        what="the panel is drawn open without compositor",
    )
    assert look(desktop, backdrop) == OPEN


@pytest.mark.desktop(wm="openbox+picom")
def test_with_a_compositor_the_window_is_whole_from_the_start(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    assert desktop.panel.bounding_region == WHOLE
    wait_until(lambda: covered(desktop, backdrop) == (540, 0, 740, 24), what="only the notch is covered")
