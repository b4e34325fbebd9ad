"""The timer as a user meets it: found, set, started, left running beside the closed notch."""

import re

import pytest
from gi.repository import GLib
from harness.clock import WallClock
from harness.drawing import extent, matches
from harness.sound import SoundServer, heard
from harness.waiting import wait_until

MANAGERS = ("openbox+picom", "openbox")
BLACK = (0, 0, 0)


def undisturbed(look):
    """What `look` returns once no node goes while it is looked at."""

    def looked():
        try:
            return (look(),)
        except GLib.Error:
            return None

    return wait_until(looked, what="the nodes stay for a look")[0]


def in_sight(desktop, app, name, role=None):
    """The node of that name, or None while it is hidden: then it has no extent."""

    def look():
        for _, node in desktop.accessible(app).walk():
            if node.name == name and role in (None, node.role) and node.extents[2] > 0:
                return node
        return None

    return undisturbed(look)


def names_in_sight(desktop, app):
    return undisturbed(
        lambda: [node.name for _, node in desktop.accessible(app).walk() if node.extents[2] > 0]
    )


def control(desktop, app, name, role=None):
    return wait_until(lambda: in_sight(desktop, app, name, role), what=f"{name} is in sight")


def click(desktop, app, name, role=None):
    def place():
        return undisturbed(lambda: control(desktop, app, name, role).extents)

    def standing_still():
        first = place()
        app.wait_until_idle(quiet=0.05)
        return first == place() and first

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
    wait_until(lambda: matches(desktop.screenshot(), backdrop.colour)[100:].all(), what="the drawer has gone")


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

    def seconds():
        # Not the first one alone: it may be over before all nodes have been looked at.
        times = [name for name in names_in_sight(desktop, app) if re.fullmatch(r"0:\d\d", name)]
        return [time for time in times if time != "0:00"]

    wait_until(seconds, what="a second is told")


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

    def timers():
        nodes = desktop.accessible(app).children[0].children
        return [node for node in nodes if node.name == "Timer" and node.role == "radio button"]

    wait_until(lambda: undisturbed(timers), what="there is the mode Timer")[-1].press()
    control(desktop, app, "Add a minute")
    control(desktop, app, "Start").press()
    control(desktop, app, "Pause").press()
    control(desktop, app, "Start")


def test_preferences_are_read_at_the_start(desktop):
    desktop.configure(
        accentColorHex="#FF0000", notchFrameEnabled=True, timerPresets=[7], enabledModuleIDs=["a"]
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


@pytest.mark.parametrize("desktop", [{"wm": wm} for wm in MANAGERS], indirect=True, ids=MANAGERS)
def test_glass_lets_the_desktop_through_where_somebody_composites(desktop):
    desktop.configure(notchGlass=True)
    backdrop = desktop.backdrop()
    app = desktop.launch()
    desktop.open_panel()
    place = desktop.panel.geometry

    def spot():
        """A place of the pane without content."""
        return desktop.x.pixel(place.x + 40, place.y + 120)

    wait_until(lambda: spot() not in (BLACK, backdrop.colour), what="the pane has grown, not in black")
    app.wait_until_idle()

    def is_red():
        red, _, blue = spot()
        return red > blue + 10

    # A compositor is late with what the program has drawn.
    composited = desktop.wm == "openbox+picom"
    wait_until(lambda: is_red() == composited, what="the backdrop's red is seen where somebody composites")


def test_the_icon_bar_selects_the_timer(desktop):
    app = desktop.launch()
    desktop.open_panel()
    icon = control(desktop, app, "Timer", "radio button")
    click(desktop, app, "Timer", "radio button")
    wait_until(lambda: icon.checked, what="the icon is told as the chosen one")


def test_the_closed_panel_shows_assistive_software_only_the_running_time(desktop):
    app = desktop.launch()

    def shown():
        window = desktop.accessible(app).children[0]
        return undisturbed(lambda: [node.name for _, node in window.walk() if node.showing])[1:]

    wait_until(lambda: shown() == [], what="nothing is told")
    open_timer(desktop, app)
    click(desktop, app, "Stopwatch")
    click(desktop, app, "Start")
    wait_until(lambda: "Pause" in shown(), what="the controls are told")
    desktop.point_away()
    desktop.panel.wait_until_closed()
    times = wait_until(lambda: len(shown()) == 1 and shown(), what="the time alone is told")
    wait_until(lambda: len(shown()) == 1 and shown() != times, what="it counts")


@pytest.fixture
def sound(desktop):
    server = SoundServer(desktop.root, desktop.env)
    server.start_server()
    yield server
    server.close()


def run_a_minute(desktop, **settings):
    """A countdown of a minute, running beside the closed notch; the program and its wall clock."""
    desktop.configure(**settings)
    clock = WallClock(desktop.root)
    app = desktop.launch(clock.environment)
    open_timer(desktop, app)
    click(desktop, app, "1m")
    click(desktop, app, "Start")
    control(desktop, app, "Pause")
    desktop.point_away()
    desktop.panel.wait_until_closed()
    return app, clock


# A clock that is far ahead all at once is what a machine that slept finds.
@pytest.mark.parametrize("ahead", [57, 3600], ids=["counted down", "slept past the end"])
def test_at_zero_the_alert_is_heard_and_the_peek_goes(desktop, sound, ahead):
    listener = sound.listen()
    bare = peek_pixels(desktop)
    app, clock = run_a_minute(desktop)
    wait_until(lambda: peek_pixels(desktop) != bare, what="the time stands beside the notch")
    assert not heard(listener)
    clock.set_ahead(ahead)
    wait_until(lambda: heard(listener), what="the alert is heard")
    wait_until(lambda: peek_pixels(desktop) == bare, what="the peek is gone")
    open_timer(desktop, app)
    control(desktop, app, "0:00")
    click(desktop, app, "Start")
    control(desktop, app, "Pause")
    wait_until(lambda: in_sight(desktop, app, "0:00") is None, what="the minute runs again")


def test_at_zero_there_is_silence_where_the_sound_is_off(desktop, sound):
    listener = sound.listen()
    app, clock = run_a_minute(desktop, timerSoundEnabled=False)
    clock.set_ahead(60)
    open_timer(desktop, app)
    control(desktop, app, "0:00")
    app.wait_until_idle()
    assert sound.connections() == 1, "the listener's alone"
    assert not heard(listener)
