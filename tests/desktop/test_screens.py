"""Monitors come, go and change; the one panel follows."""

import pytest

from harness.drawing import extent, matches
from harness.waiting import wait_until
from harness.x11 import Rect

# Not mutter: it takes another program's change of the resolution back.
MANAGERS = ("openbox", "xfwm4", "i3")


def wait_for_place(desktop, place):
    wait_until(
        lambda: [desktop.x.geometry(each) for each in desktop.panel.windows()] == [place],
        what=f"the one panel is at {place}",
    )


@pytest.mark.parametrize(
    "desktop",
    [{"wm": wm, "size": (1600, 1000)} for wm in MANAGERS],
    indirect=True,
    ids=MANAGERS,
)
def test_the_resolution_changes_while_open(desktop):
    app = desktop.launch()
    desktop.open_panel()
    for width, height in ((1024, 768), (1280, 900), (1600, 1000)):
        desktop.x.set_resolution(width, height)
        wait_for_place(desktop, Rect(width // 2 - 300, 0, 600, 240))
        app.wait_until_idle()
        assert desktop.panel.takes_clicks(), "the panel is open yet"
        desktop.open_panel()
        desktop.point_away()
        desktop.panel.wait_until_closed()
        desktop.open_panel()


def test_nothing_stays_behind_at_the_old_place(desktop):
    backdrop = desktop.backdrop()
    desktop.launch()
    desktop.open_panel()
    desktop.x.set_resolution(1000, 700)
    wait_for_place(desktop, Rect(200, 0, 600, 240))
    desktop.open_panel()
    # Everything that is not the panel's new place is the backdrop.
    wait_until(
        lambda: extent(~matches(desktop.screenshot(), backdrop.colour)) == (200, 0, 800, 240),
        what="only the new place is drawn",
    )


@pytest.mark.desktop(size=(2000, 800), monitors=2)
def test_on_two_monitors_the_panel_is_on_the_primary_one(desktop):
    desktop.launch()
    assert desktop.panel.geometry == Rect(200, 0, 600, 240)
    desktop.x.move_pointer(1500, 5)
    desktop.x.move_pointer(500, 5)
    desktop.panel.wait_until_open()


def sway_opens_and_closes(sway_desktop, middle):
    sway_desktop.move_pointer(middle, 5)
    sway_desktop.panel.wait_until_open()
    sway_desktop.move_pointer(middle, 390)
    sway_desktop.panel.wait_until_closed()


def wait_until_told(sway_desktop, app):
    """Until the program has heard of the monitors that there are now, and done what it does about them."""

    def is_known():
        rects = [each["rect"] for each in sway_desktop.outputs().values()]
        right = max(rect["x"] + rect["width"] for rect in rects)
        return sway_desktop.x.size == (right, max(rect["y"] + rect["height"] for rect in rects))

    wait_until(is_known, what="XWayland knows the monitors")
    app.wait_until_idle()


def top_centre_of(output):
    rect = output["rect"]
    return Rect(rect["x"] + rect["width"] // 2 - 300, rect["y"], 600, 240)


@pytest.mark.desktop(pluggable=True)
def test_a_monitor_is_unplugged_and_plugged_again(sway_desktop):
    second = sway_desktop.plug((1000, 700))
    app = sway_desktop.launch()
    wait_for_place(sway_desktop, Rect(340, 0, 600, 240))
    sway_desktop.unplug("WL-1")
    place = top_centre_of(sway_desktop.outputs()[second])
    wait_for_place(sway_desktop, place)
    sway_opens_and_closes(sway_desktop, place.x + 300)

    sway_desktop.plug((1280, 800))
    wait_until_told(sway_desktop, app)
    wait_until(
        lambda: len(sway_desktop.panel.windows()) == 1
        and sway_desktop.panel.geometry in [top_centre_of(each) for each in sway_desktop.outputs().values()],
        what="the one panel is on a monitor",
    )
    place = sway_desktop.panel.geometry
    sway_opens_and_closes(sway_desktop, place.x + 300)
    # One notch at rest and no second copy anywhere. Its corners meet at the sides, where it blends.
    height = min(each["rect"]["height"] for each in sway_desktop.outputs().values())

    def drawn():
        screen = sway_desktop.screenshot()
        return extent(~matches(screen, screen.getpixel((0, height - 1)))[:height])

    wait_until(
        lambda: drawn() == (place.x + 200, 0, place.x + 400, 24),
        what="only one notch is drawn",
    )


@pytest.mark.desktop(pluggable=True)
def test_a_monitor_without_the_panel_comes_and_goes(sway_desktop):
    app = sway_desktop.launch()
    for _ in range(2):
        second = sway_desktop.plug((1000, 700))
        wait_until_told(sway_desktop, app)
        wait_for_place(sway_desktop, Rect(340, 0, 600, 240))
        sway_opens_and_closes(sway_desktop, 640)
        sway_desktop.unplug(second)
        wait_until_told(sway_desktop, app)
        wait_for_place(sway_desktop, Rect(340, 0, 600, 240))
        sway_opens_and_closes(sway_desktop, 640)


@pytest.mark.desktop(pluggable=True)
def test_the_only_monitor_goes_and_another_comes(sway_desktop):
    app = sway_desktop.launch()
    sway_desktop.unplug("WL-1")
    app.wait_until_idle()
    assert app.running, app.output
    sway_desktop.plug((1000, 700))
    wait_for_place(sway_desktop, Rect(200, 0, 600, 240))
    sway_opens_and_closes(sway_desktop, 500)


@pytest.mark.desktop(size=(2560, 1600))
def test_an_output_changes_scale_and_mode(sway_desktop):
    sway_desktop.launch()
    wait_for_place(sway_desktop, Rect(980, 0, 600, 240))
    sway_desktop.output("HEADLESS-1", "scale 2")
    wait_for_place(sway_desktop, Rect(340, 0, 600, 240))
    sway_opens_and_closes(sway_desktop, 640)
    sway_desktop.output("HEADLESS-1", "scale 1")
    sway_desktop.output("HEADLESS-1", "mode 1024x768")
    wait_for_place(sway_desktop, Rect(212, 0, 600, 240))
    sway_opens_and_closes(sway_desktop, 512)
