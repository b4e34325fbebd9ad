"""The clipboard in the drawer as a user meets it: what was copied is listed, and a click copies it again."""

from gi.repository import GLib

from harness.copying import CopySource
from harness.history import History
from harness.waiting import wait_until

BLACK = (0, 0, 0)


def in_sight(desktop, app, name, role=None):
    """The node of that name, or None while it is hidden: then it has no extent."""
    try:
        for _, node in desktop.accessible(app).walk():
            if node.name == name and role in (None, node.role) and node.extents[2] > 0:
                return node
    except GLib.Error:  # one has gone while we looked
        pass
    return None


def click(desktop, app, name, role=None):
    def standing_still():
        node = in_sight(desktop, app, name, role)
        if not node:
            return None
        app.wait_until_idle(quiet=0.05)
        again = in_sight(desktop, app, name, role)
        return again and again.extents == node.extents and again.extents

    x, y, width, height = wait_until(standing_still, what=f"{name} has its place")
    desktop.x.click(x + width // 2, y + height // 2)


def open_clipboard(desktop, app):
    desktop.open_panel()
    # What the drawer has not reached yet can't be pressed.
    place = desktop.panel.geometry
    wait_until(lambda: desktop.x.pixel(place.x + 300, place.bottom - 3) == BLACK, what="the drawer has grown")
    click(desktop, app, "Clipboard", "radio button")


def copy_text(source, history, text):
    source.copy({"UTF8_STRING": text.encode()})

    def recorded():
        source.serve(0.05)
        return history.texts()[:1] == [text]

    wait_until(recorded, what=f"{text} is recorded")


def test_what_was_copied_is_listed_and_a_click_copies_it_again(desktop):
    app = desktop.launch()
    history = History(desktop)
    source = CopySource(desktop.x, {})
    copy_text(source, history, "first")
    copy_text(source, history, "second")
    open_clipboard(desktop, app)
    wait_until(lambda: in_sight(desktop, app, "second", "list item"), what="the latest is listed")
    click(desktop, app, "first", "list item")
    wait_until(lambda: history.texts() == ["first", "second"], what="the clip is the latest again")
    click(desktop, app, "Clear history")
    wait_until(lambda: history.texts() == [], what="the history is empty")
    wait_until(lambda: in_sight(desktop, app, "No clipboard history"), what="the list says so")
