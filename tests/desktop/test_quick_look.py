"""The preview of the clipboard panel's selected clip, as a person opens, turns over and leaves it."""

import io

import pytest
from PIL import Image
from gi.repository import GLib

from harness.clipboard_panel import window_titled
from harness.copying import CopySource
from harness.history import History
from harness.waiting import wait_until

MANAGERS = [{"wm": name} for name in ("openbox", "mutter")]
every_manager = pytest.mark.parametrize("desktop", MANAGERS, indirect=True)
RED = (200, 30, 30)


def png(width, height, colour=RED):
    """A picture of one colour."""
    file = io.BytesIO()
    Image.new("RGB", (width, height), colour).save(file, "png")
    return file.getvalue()


class Preview:
    """The preview of a row of the panel."""

    def __init__(self, panel, app):
        self.panel = panel
        self.desktop = panel.desktop
        self.x = panel.x
        self.app = app
        self.temporary = self.desktop.root / "tmp"

    @property
    def window(self):
        return window_titled(self.x, "Quillbar Preview")

    def has_keyboard(self):
        window = self.window
        return window is not None and self.x.focus_id() == window.id

    def has_node(self, fits):
        """Whether assistive software finds a node which `fits`; not while nodes come and go."""
        try:
            return any(fits(node) for _, node in self.desktop.accessible(self.app).walk())
        except GLib.Error:
            return False

    def go_to_list(self):
        def reached():
            self.x.press_key("Tab")
            self.app.wait_until_idle(quiet=0.05)
            return self.has_node(lambda node: node.role == "list item" and node.focused)

        wait_until(reached, 20, "Tab reaches the list")

    def open(self):
        self.x.press_key("space")
        wait_until(self.has_keyboard, what="the preview has the keyboard")

    def wait_until_closed(self):
        wait_until(
            lambda: self.window is None and self.panel.has_keyboard(),
            what="the preview is gone and the panel has the keyboard",
        )

    def shows_colour(self, colour):
        def shown():
            place = self.x.geometry(self.window)
            return self.x.pixel(place.x + place.width // 2, place.y + place.height // 2) == colour

        wait_until(shown, what=f"the preview shows {colour}")

    def is_called(self, name):
        wait_until(
            lambda: self.has_node(lambda node: node.name == name), what=f"the preview is called {name}"
        )

    def wait_until_clean(self):
        wait_until(lambda: not list(self.temporary.glob("Quillbar-QL*")), what="no file is left")


@pytest.fixture
def preview_of(desktop, panel):
    """A preview, open on the one clip that was copied."""
    sources = []

    def opened(offers, kind):
        app = desktop.launch()
        sources.append(copy(desktop, offers, kind))
        preview = Preview(panel, app)
        panel.open()
        preview.go_to_list()
        preview.open()
        return preview

    yield opened
    for source in sources:
        source.close()


def copy(desktop, offers, kind):
    """Copy what `offers` names and wait until the history has it."""
    history = History(desktop)
    source = CopySource(desktop.x, {})
    source.copy(offers)

    def recorded():
        source.serve(0.05)
        return any(clip["kind"] == kind for clip in history.clips())

    wait_until(recorded, what=f"the {kind} is recorded")
    return source


@every_manager
def test_space_on_a_row_shows_its_image_and_escape_gives_the_keyboard_back(desktop, panel, preview_of):
    preview = preview_of({"image/png": png(3000, 2000)}, "image")
    preview.shows_colour(RED)
    wait_until(
        lambda: desktop.x.stack_index(preview.window) > desktop.x.stack_index(panel.window),
        what="the preview is above the panel",
    )
    # By now it has the size of its picture.
    place = desktop.x.geometry(preview.window)
    width, height = desktop.x.size
    assert place.width <= 0.8 * width and place.height <= 0.8 * height
    assert abs(place.x + place.width / 2 - width / 2) <= 1
    assert abs(place.y + place.height / 2 - height / 2) <= 1
    preview.is_called("Preview of Image")
    (folder,) = preview.temporary.glob("Quillbar-QL*")
    (file,) = folder.iterdir()
    assert folder.stat().st_mode & 0o777 == 0o700
    assert file.stat().st_mode & 0o777 == 0o600
    desktop.x.press_key("Escape")
    preview.wait_until_closed()
    desktop.x.press_key("Escape")
    panel.wait_until_closed()
    preview.wait_until_clean()


@every_manager
def test_the_arrows_turn_over_several_files(desktop, preview_of):
    pictures = [desktop.home / "first.png", desktop.home / "second.png"]
    colours = [RED, (30, 30, 200)]
    for path, colour in zip(pictures, colours):
        path.write_bytes(png(300, 200, colour))
    text = desktop.home / "notes.txt"
    text.write_text("one\ntwo\n")
    uris = "".join(f"file://{path}\r\n" for path in (*pictures, text))
    preview = preview_of({"text/uri-list": uris.encode()}, "file")
    preview.shows_colour(colours[0])
    desktop.x.press_key("Right")
    preview.shows_colour(colours[1])
    preview.is_called("Preview of second.png")
    desktop.x.press_key("Right")
    preview.is_called("Preview of notes.txt")
    preview.is_called("3 of 3")
    desktop.x.press_key("Left")
    preview.shows_colour(colours[1])
    desktop.x.press_key("space")
    preview.wait_until_closed()
    preview.open()
    preview.shows_colour(colours[0])


@every_manager
def test_a_click_elsewhere_closes_preview_and_panel(desktop, panel, preview_of):
    preview = preview_of({"image/png": png(300, 200)}, "image")
    desktop.x.click(20, desktop.x.size[1] - 20)
    panel.wait_until_closed()
    wait_until(lambda: preview.window is None, what="the preview is gone too")
    preview.wait_until_clean()


@every_manager
def test_a_click_into_the_panel_closes_the_preview_alone(desktop, panel, preview_of):
    preview = preview_of({"image/png": png(100, 100)}, "image")
    preview.shows_colour(RED)
    place = desktop.x.geometry(panel.window)
    desktop.x.click(place.x + place.width // 2, place.y + 6)
    preview.wait_until_closed()
    preview.app.wait_until_idle()
    assert panel.has_keyboard()


def test_space_in_the_search_field_is_a_blank(desktop, panel):
    app = desktop.launch()
    source = copy(desktop, {"image/png": png(100, 100)}, "image")
    panel.open()
    desktop.x.press_key("space")
    app.wait_until_idle()
    assert Preview(panel, app).window is None
    assert panel.has_keyboard()
    source.close()
