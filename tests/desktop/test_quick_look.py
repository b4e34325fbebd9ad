"""The preview of the clipboard panel's selected clip, as a person opens, turns over and leaves it."""

import io

import pytest
from PIL import Image
from Xlib import error

from harness.copying import CopySource
from harness.history import History
from harness.waiting import wait_until

SHORTCUT = "super+shift+v"
MANAGERS = [{"wm": name} for name in ("openbox", "mutter")]
every_manager = pytest.mark.parametrize("desktop", MANAGERS, indirect=True)
RED = (200, 30, 30)


def png(width, height, colour=RED):
    """A picture of one colour."""
    file = io.BytesIO()
    Image.new("RGB", (width, height), colour).save(file, "png")
    return file.getvalue()


class Windows:
    """The panel and its preview."""

    def __init__(self, desktop, app):
        self.desktop = desktop
        self.app = app
        self.x = desktop.x
        self.temporary = desktop.root / "tmp"

    def named(self, title):
        try:
            for window in self.x.windows_of_class("quillbar"):
                if self.x.text_property(window, "_NET_WM_NAME") == title:
                    return window
        except error.XError:  # one goes while it is looked at
            pass
        return None

    @property
    def panel(self):
        return self.named("Quillbar Clipboard")

    @property
    def preview(self):
        return self.named("Quillbar Preview")

    def has_keyboard(self, window):
        return window is not None and self.x.focus_id() == window.id

    def open_panel(self):
        self.x.press_key(SHORTCUT)
        wait_until(lambda: self.has_keyboard(self.panel), what="the panel has the keyboard")

    def is_in_list(self):
        tree = self.desktop.accessible(self.app)
        return any(node.role == "list item" and node.focused for _, node in tree.walk())

    def go_to_list(self):
        def reached():
            self.x.press_key("Tab")
            self.app.wait_until_idle(quiet=0.05)
            return self.is_in_list()

        wait_until(reached, 20, "Tab reaches the list")

    def preview_opens(self):
        self.x.press_key("space")
        wait_until(lambda: self.has_keyboard(self.preview), what="the preview has the keyboard")
        return self.preview

    def preview_is_gone(self):
        wait_until(
            lambda: self.preview is None and self.has_keyboard(self.panel),
            what="the preview is gone and the panel has the keyboard",
        )

    def shows_colour(self, colour):
        def shown():
            place = self.x.geometry(self.preview)
            return self.x.pixel(place.x + place.width // 2, place.y + place.height // 2) == colour

        wait_until(shown, what=f"the preview shows {colour}")

    def name_of_preview(self, name):
        def named():
            return any(node.name == name for _, node in self.desktop.accessible(self.app).walk())

        wait_until(named, what=f"the preview is called {name}")

    def is_clean(self):
        return not list(self.temporary.glob("Quillbar-QL*"))


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
def test_space_on_a_row_shows_its_image_and_escape_gives_the_keyboard_back(desktop):
    app = desktop.launch()
    source = copy(desktop, {"image/png": png(3000, 2000)}, "image")
    windows = Windows(desktop, app)
    windows.open_panel()
    windows.go_to_list()
    preview = windows.preview_opens()
    windows.shows_colour(RED)
    place = desktop.x.geometry(preview)
    width, height = desktop.x.size
    assert place.width <= 0.8 * width and place.height <= 0.8 * height
    assert abs(place.x + place.width / 2 - width / 2) <= 1
    assert abs(place.y + place.height / 2 - height / 2) <= 1
    assert desktop.x.stack_index(preview) > desktop.x.stack_index(windows.panel)
    windows.name_of_preview("Preview of Image")
    (folder,) = windows.temporary.glob("Quillbar-QL*")
    (file,) = folder.iterdir()
    assert folder.stat().st_mode & 0o777 == 0o700
    assert file.stat().st_mode & 0o777 == 0o600
    desktop.x.press_key("Escape")
    windows.preview_is_gone()
    desktop.x.press_key("Escape")
    wait_until(lambda: windows.panel is None, what="the panel is closed")
    assert windows.is_clean()
    source.close()


@every_manager
def test_the_arrows_turn_over_several_files(desktop):
    pictures = [desktop.home / "first.png", desktop.home / "second.png"]
    colours = [RED, (30, 30, 200)]
    for path, colour in zip(pictures, colours):
        path.write_bytes(png(300, 200, colour))
    text = desktop.home / "notes.txt"
    text.write_text("one\ntwo\n")
    app = desktop.launch()
    uris = "".join(f"file://{path}\r\n" for path in (*pictures, text))
    source = copy(desktop, {"text/uri-list": uris.encode()}, "file")
    windows = Windows(desktop, app)
    windows.open_panel()
    windows.go_to_list()
    windows.preview_opens()
    windows.shows_colour(colours[0])
    desktop.x.press_key("Right")
    windows.shows_colour(colours[1])
    windows.name_of_preview("Preview of second.png")
    desktop.x.press_key("Right")
    windows.name_of_preview("Preview of notes.txt")
    windows.name_of_preview("3 of 3")
    desktop.x.press_key("Left")
    windows.shows_colour(colours[1])
    desktop.x.press_key("space")
    windows.preview_is_gone()
    windows.preview_opens()
    windows.shows_colour(colours[0])
    source.close()


@every_manager
def test_a_click_elsewhere_closes_preview_and_panel(desktop):
    app = desktop.launch()
    source = copy(desktop, {"image/png": png(300, 200)}, "image")
    windows = Windows(desktop, app)
    windows.open_panel()
    windows.go_to_list()
    windows.preview_opens()
    desktop.x.click(20, desktop.x.size[1] - 20)
    wait_until(lambda: windows.preview is None and windows.panel is None, what="both are closed")
    assert windows.is_clean()
    source.close()


@every_manager
def test_a_click_into_the_panel_closes_the_preview_alone(desktop):
    app = desktop.launch()
    source = copy(desktop, {"image/png": png(100, 100)}, "image")
    windows = Windows(desktop, app)
    windows.open_panel()
    windows.go_to_list()
    windows.preview_opens()
    windows.shows_colour(RED)
    place = desktop.x.geometry(windows.panel)
    desktop.x.click(place.x + place.width // 2, place.y + 6)
    windows.preview_is_gone()
    app.wait_until_idle()
    assert windows.has_keyboard(windows.panel)
    source.close()


def test_space_in_the_search_field_is_a_blank(desktop):
    app = desktop.launch()
    source = copy(desktop, {"image/png": png(100, 100)}, "image")
    windows = Windows(desktop, app)
    windows.open_panel()
    desktop.x.press_key("space")
    app.wait_until_idle()
    assert windows.preview is None
    assert windows.has_keyboard(windows.panel)
    source.close()
