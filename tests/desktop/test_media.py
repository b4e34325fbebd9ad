"""What plays as a user meets it: beside the closed notch, in the drawer, and told to the player."""

import time

from gi.repository import GLib

from harness.players import FakePlayer, track
from harness.waiting import holds_for, holds_until, wait_until

# For so long, in seconds, the panel stays open after the pointer has left.
GRACE = 0.4


def in_sight(desktop, app, name):
    """The node of that name, or None while it is hidden: then it has no extent."""
    try:
        for _, node in desktop.accessible(app).walk():
            if node.name == name and node.extents[2] > 0:
                return node
    except GLib.Error:  # one has gone while we looked
        pass
    return None


def told(desktop, app, name):
    return wait_until(lambda: in_sight(desktop, app, name), what=f"{name} is in sight")


def beside(desktop):
    """The band left and right of the closed notch."""
    middle = desktop.top_centre[0]
    shot = desktop.screenshot()
    return [shot.crop((at, 0, at + 40, 24)).tobytes() for at in (middle - 140, middle + 100)]


def open_media(desktop, app):
    desktop.open_panel()
    app.wait_until_idle(quiet=0.1)


def test_without_a_player_the_panel_tells_that_nothing_plays(desktop):
    app = desktop.launch()
    bare = beside(desktop)
    open_media(desktop, app)
    told(desktop, app, "Nothing playing")
    desktop.point_away()
    desktop.panel.wait_until_closed()
    wait_until(lambda: beside(desktop) == bare, what="nothing stands beside the notch")


def test_a_player_is_seen_beside_the_notch_and_obeys_the_drawer(desktop):
    desktop.backdrop()
    app = desktop.launch()
    bare = beside(desktop)
    player = FakePlayer(desktop, track=track("Morning Tide"))
    wait_until(
        lambda: all(now != before for now, before in zip(beside(desktop), bare)),
        what="cover and bars stand beside the notch",
    )
    desktop.open_panel()
    told(desktop, app, "Morning Tide")
    told(desktop, app, "Band")
    told(desktop, app, "Pause").press()
    player.wait_for_call("PlayPause")
    told(desktop, app, "Next").press()
    player.wait_for_call("Next")
    player.set(Metadata=track("Evening Tide", mpris_trackid=["o", "/org/example/track/2"]))
    told(desktop, app, "Evening Tide")
    player.quit()
    told(desktop, app, "Nothing playing")


def scrubber_line(desktop, app):
    """Both ends of the scrubber's line, once it stands still."""

    def standing_still():
        first = told(desktop, app, "Position").extents
        app.wait_until_idle(quiet=0.1)
        return first == told(desktop, app, "Position").extents and first

    x, y, width, _ = wait_until(standing_still, what="the scrubber has its place")
    return (x + 1, y + 11), (x + width - 1, y + 11)


def wait_until_sought(player, seconds):
    def sought():
        """Seconds that the player was told to move to."""
        return [call[2] / 1e6 for call in player.calls if call[0] == "SetPosition"]

    wait_until(lambda: sought() and abs(sought()[-1] - seconds) < 2, what=f"the player is sent to {seconds}")


def test_a_drag_on_the_scrubber_moves_the_player(desktop):
    app = desktop.launch()
    player = FakePlayer(desktop, track=track("Morning Tide"), status="Paused")
    desktop.open_panel()
    start, end = scrubber_line(desktop, app)
    desktop.x.drag(start, ((start[0] + end[0]) // 2, start[1]))
    wait_until_sought(player, 120)
    player.quit()


def test_a_drag_that_strays_from_the_panel_keeps_it_open_and_goes_on(desktop):
    app = desktop.launch()
    player = FakePlayer(desktop, track=track("Morning Tide"), status="Paused")
    desktop.open_panel()
    start, end = scrubber_line(desktop, app)
    desktop.x.move_pointer(*start)
    desktop.x.press_button()
    desktop.x.glide_pointer(end[0], 600)
    holds_for(desktop.panel.takes_clicks, 2 * GRACE, "the panel is open")
    desktop.x.glide_pointer((start[0] + end[0]) // 2, 700)
    released = time.monotonic()
    desktop.x.release_button()
    wait_until_sought(player, 120)
    holds_until(desktop.panel.takes_clicks, released + 0.25, "the panel is open yet")
    desktop.panel.wait_until_closed()
    player.quit()
