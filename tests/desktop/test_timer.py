"""The timer as a user meets it: found, set, started, left running beside the closed notch."""

import json

import pytest
from harness.drawing import extent, matches
from harness.waiting import wait_until

MANAGERS = ("openbox+picom", "openbox")
BLACK = (0, 0, 0)


def configure(desktop, **settings):
    folder = desktop.config_home / "Quillbar"
    folder.mkdir(mode=0o700)
    (folder / "defaults.json").write_text(json.dumps(settings))


def in_sight(desktop, app, name, role=None):
    """The node of that name, or None while it is hidden: then it has no extent."""
    for _, node in desktop.accessible(app).walk():
        if node.name == name and role in (None, node.role) and node.extents[2] > 0:
            return node
    return None


def control(desktop, app, name, role=None):
    return wait_until(lambda: in_sight(desktop, app, name, role), what=f"{name} is in sight")


def click(desktop, app, name, role=None):
    def standing_still():
        first = control(desktop, app, name, role).extents
        app.wait_until_idle(quiet=0.05)
        return first == control(desktop, app, name, role).extents and first

    x, y, width, height = wait_until(standing_still, what=f"{name} has its place")
    desktop.x.click(x + width // 2, y + height // 2)


def peek_pixels(desktop):
    """What stands to the right of the closed notch, where the running time is told."""
    left = desktop.top_centre[0] + 100
    return desktop.screenshot().crop((left, 0, left + 70, 24)).tobytes()


def open_timer(desktop, app):
    desktop.open_panel()
    # What the drawer has not reached yet can't be pressed.
    place = desktop.panel.geometry
    wait_until(
        lambda: desktop.x.pixel(place.x + 300, place.bottom - 30) == BLACK, what="the drawer has grown"
    )
    click(desktop, app, "Timer", "radio button")


@pytest.mark.parametrize("desktop", [{"wm": wm} for wm in MANAGERS], indirect=True, ids=MANAGERS)
def test_a_started_timer_counts_beside_the_closed_notch(desktop):
    backdrop = desktop.backdrop()
    app = desktop.launch()
    bare = peek_pixels(desktop)
    open_timer(desktop, app)
    click(desktop, app, "5m")
    control(desktop, app, "5:00")
    click(desktop, app, "Start")
    control(desktop, app, "Pause")
    desktop.x.move_pointer(100, 700)
    desktop.panel.wait_until_closed()
    wait_until(lambda: peek_pixels(desktop) != bare, what="the time stands beside the notch")
    app.wait_until_idle(quiet=0.1)
    before = peek_pixels(desktop)
    wait_until(lambda: peek_pixels(desktop) != before, what="it counts")

    open_timer(desktop, app)
    click(desktop, app, "Pause")
    control(desktop, app, "Start")
    desktop.x.move_pointer(100, 700)
    desktop.panel.wait_until_closed()
    wait_until(lambda: peek_pixels(desktop) == bare, what="a paused timer takes its peek away")
    assert matches(desktop.screenshot(), backdrop.colour)[100:].all()


def test_the_modes_are_reached_by_a_real_pointer(desktop):
    app = desktop.launch()
    open_timer(desktop, app)
    click(desktop, app, "Pomodoro")
    control(desktop, app, "Focus")
    control(desktop, app, "25:00")
    click(desktop, app, "Skip")
    control(desktop, app, "Break")
    click(desktop, app, "Stopwatch")
    wait_until(lambda: in_sight(desktop, app, "Skip") is None, what="no Skip any more")
    click(desktop, app, "Start")
    wait_until(lambda: in_sight(desktop, app, "0:01"), what="a second is told")


def test_assistive_software_names_and_presses_every_control(desktop):
    app = desktop.launch()
    open_timer(desktop, app)
    control(desktop, app, "Start")
    for name in ("1m", "5m", "10m", "25m", "Reset", "Start", "Add a minute"):
        assert control(desktop, app, name).role == "push button"
    for name in ("Pomodoro", "Stopwatch"):
        assert control(desktop, app, name).role == "radio button"
    control(desktop, app, "Pomodoro").press()
    control(desktop, app, "Focus")
    for node in desktop.accessible(app).children[0].children:
        if node.name == "Timer" and node.role == "radio button":
            last = node
    last.press()
    control(desktop, app, "Add a minute")
    control(desktop, app, "Start").press()
    control(desktop, app, "Pause").press()
    control(desktop, app, "Start")


def test_preferences_are_read_at_the_start(desktop):
    configure(
        desktop, accentColorHex="#FF0000", notchFrameEnabled=True, timerPresets=[7], enabledModuleIDs=["a"]
    )
    desktop.backdrop()
    app = desktop.launch()
    open_timer(desktop, app)
    control(desktop, app, "7m")
    place = desktop.panel.geometry

    def red():
        left = desktop.x.pixel(place.x, 120)
        return left[0] > 200 and left[1] < 40 and left[2] < 40

    wait_until(red, what="the frame is drawn in the accent")
    shot = desktop.screenshot()
    assert extent(matches(shot, BLACK)) is not None
