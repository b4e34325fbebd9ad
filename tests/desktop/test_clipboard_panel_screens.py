"""The clipboard panel on the screens of two users: several monitors, edges, and twice the scale."""

import pytest

from harness import programs
from harness.clipboard_panel import launch_with
from harness.waiting import wait_until
from harness.x11 import Rect

WIDTH, HEIGHT = 380, 500
EDGE, GAP = 8, 6
# Around the click where the bar tells no place of the icon.
HALF_ICON = 11


def open_from(desktop, panel, bar, x, y):
    """Click at that place on the icon, which tells no place of its own."""
    desktop.x.move_pointer(x, y)
    bar.item().Activate(x, y)
    panel.wait_until_open()


def comes_to(desktop, panel, place):
    """It glides there."""
    wait_until(lambda: desktop.x.geometry(panel.window) == place, what=f"the panel is at {place}")


@pytest.mark.desktop(size=(2000, 800), monitors=2)
@pytest.mark.parametrize("x, left", [(990, 612), (1010, 1008), (1500, 1131), (1995, 1612), (5, 8)])
def test_it_opens_on_the_monitor_of_the_icon_and_stays_on_it(desktop, panel, bar, x, left):
    launch_with(desktop, "first")
    open_from(desktop, panel, bar, x, 10)
    comes_to(desktop, panel, Rect(left, 10 + HALF_ICON + GAP, WIDTH, HEIGHT))


@pytest.mark.desktop(size=(2000, 800), monitors=2)
def test_by_the_shortcut_it_hangs_in_the_middle_of_the_primary_monitor(desktop, panel):
    launch_with(desktop, "first")
    desktop.x.move_pointer(1500, 400)
    panel.open()
    comes_to(desktop, panel, Rect(500 - WIDTH // 2, 0, WIDTH, HEIGHT))


@pytest.mark.desktop(size=(2000, 800), monitors=2)
def test_from_a_bar_at_the_bottom_it_opens_above_the_icon(desktop, panel, bar):
    launch_with(desktop, "first")
    open_from(desktop, panel, bar, 1500, 785)
    comes_to(desktop, panel, Rect(1131, 785 - HALF_ICON - GAP - HEIGHT, WIDTH, HEIGHT))


@pytest.mark.desktop(size=(1600, 1000))
def test_where_the_icon_was_on_another_display_is_forgotten(desktop, panel, bar):
    app = launch_with(desktop, "first")
    open_from(desktop, panel, bar, 900, 10)
    comes_to(desktop, panel, Rect(911 - WIDTH, 10 + HALF_ICON + GAP, WIDTH, HEIGHT))
    desktop.x.press_key("Escape")
    panel.wait_until_closed()
    desktop.x.set_resolution(1280, 800)
    app.wait_until_idle()
    panel.open()
    comes_to(desktop, panel, Rect(640 - WIDTH // 2, 0, WIDTH, HEIGHT))


@pytest.mark.desktop(size=(2560, 1600), scale=2)
def test_at_twice_the_scale_it_is_twice_as_large_and_types_searches_and_pastes(desktop, panel):
    app = launch_with(desktop, "alpha beta", "gamma", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    panel.open()
    comes_to(desktop, panel, Rect(1280 - WIDTH, 0, 2 * WIDTH, 2 * HEIGHT))
    desktop.x.type_text("alpha")
    app.wait_until_idle()
    desktop.x.press_key("Return")
    panel.wait_until_closed()
    editor.wait_for("alpha beta")


@pytest.mark.desktop(size=(2560, 1600), scale=2)
def test_at_twice_the_scale_it_hangs_below_the_icon(desktop, panel, bar):
    launch_with(desktop, "first")
    open_from(desktop, panel, bar, 2550, 20)
    right = 2560 - 2 * EDGE
    comes_to(desktop, panel, Rect(right - 2 * WIDTH, 20 + 2 * (HALF_ICON + GAP), 2 * WIDTH, 2 * HEIGHT))
