"""The clipboard panel in its states, over a history as a day leaves it; make_pictures.py calls it."""

import base64
import contextlib
import io
import threading
import uuid
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

from PIL import Image, ImageDraw
from picture_studio import ACCENT, save, side_by_side, studio, under_each_other

from harness.waiting import wait_until

TITLE = "Quillbar Clipboard"
# The panel and some of the desktop around it, in points.
VIEW = (440, 540)
SCREEN = (1000, 660)
# Seconds of rest; a text cursor moves oftener than the rest of what is shown.
BETWEEN_BLINKS = 0.3
CODE = "for (const auto& clip : clips)\n    if (clip.pinned)\n        shelf.append(clip);"
RECIPE = "Feed the starter in the evening and again in the morning; it is ready when it floats."
PAGE = """<html><head><meta charset="utf-8"><title>Sourdough for the patient</title>
<link rel="icon" href="/icon.png"></head></html>"""
SNIPPETS = (
    ("Signature", "Kind regards\nAda"),
    ("Meeting link", "https://meet.example.org/ada"),
    ("Not this week", "Thank you for asking! I can't make it this week, but would love to next time."),
)


def png(picture):
    file = io.BytesIO()
    picture.save(file, "png")
    return file.getvalue()


def hills():
    """A picture worth copying."""
    picture = Image.linear_gradient("L").resize((960, 640))
    picture = Image.merge("RGB", [picture.point(lambda v, a=a: min(255, a + v // 2)) for a in (120, 90, 110)])
    draw = ImageDraw.Draw(picture)
    draw.ellipse((640, 90, 790, 240), fill=(255, 214, 140))
    draw.polygon(
        [(0, 640), (0, 430), (260, 250), (560, 520), (720, 400), (960, 560), (960, 640)], (58, 66, 92)
    )
    return picture


def loaf():
    picture = Image.new("RGBA", (32, 32), (0, 0, 0, 0))
    ImageDraw.Draw(picture).ellipse((2, 2, 29, 29), fill=(214, 148, 72, 255))
    return picture


class Pages(BaseHTTPRequestHandler):
    def do_GET(self):
        body, kind = (png(loaf()), "image/png") if self.path == "/icon.png" else (PAGE.encode(), "text/html")
        self.send_response(200)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


@contextlib.contextmanager
def pages():
    server = ThreadingHTTPServer(("127.0.0.1", 0), Pages)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    try:
        yield f"http://localhost:{server.server_port}"
    finally:
        server.shutdown()
        server.server_close()


def clip(age, text="", **fields):
    number = str(uuid.uuid4()).upper()
    return {
        "id": number,
        "kind": "text",
        "text": text,
        "filePaths": [],
        "date": f"2026-11-20T12:{59 - age:02}:00Z",
        "pinned": False,
        "uuid": number,
        "richData": {},
        "detectedKind": {"type": "plain"},
        **fields,
    }


def history(site):
    link = f"{site}/sourdough"
    image = base64.b64encode(png(hills())).decode()
    clips = [
        clip(0, RECIPE, pinned=True, sourceBundleID="org.xfce.mousepad"),
        clip(1, link, detectedKind={"type": "link", "value": link}, sourceBundleID="firefox-esr"),
        clip(2, kind="image", imageData=image, sourceBundleID="firefox-esr"),
        clip(3, "#E8985E", detectedKind={"type": "color", "value": "#E8985E"}),
        clip(4, CODE, detectedKind={"type": "code"}, sourceBundleID="featherpad"),
        clip(5, kind="file", filePaths=["/home/ada/Documents/Invoice 2026-11.pdf"], sourceBundleID="pcmanfm"),
        clip(6, kind="file", filePaths=["/home/ada/a.jpg", "/home/ada/b.jpg"], sourceBundleID="pcmanfm"),
        clip(7, "Tomorrow at nine, in the small room", sourceBundleID="org.xfce.mousepad"),
        *(clip(8 + i, f"An older note, number {i + 1}") for i in range(8)),
    ]
    boards = [
        {
            "id": str(uuid.uuid4()).upper(),
            "name": name,
            "clipUUIDs": [clips[at]["uuid"] for at in members],
            "createdAt": "2026-11-01T09:00:00Z",
        }
        for name, members in (("Baking", (0, 1)), ("Invoices", ()))
    ]
    return {"schemaVersion": 2, "clips": clips, "boards": boards}


def snippets():
    return [
        {"id": str(uuid.uuid4()).upper(), "title": title, "text": text, "date": "2026-11-01T09:00:00Z"}
        for title, text in SNIPPETS
    ]


class Panel:
    """The open clipboard panel, by mouse and keyboard."""

    def __init__(self, shown):
        self.shown = shown
        self.x = shown.desktop.x
        self.x.press_key("super+shift+v")
        wait_until(self._has_keyboard, what="the clipboard panel has the keyboard")

    def _has_keyboard(self):
        windows = self.x.windows_of_class("quillbar")
        return any(
            self.x.text_property(each, "_NET_WM_NAME") == TITLE and self.x.focus_id() == each.id
            for each in windows
        )

    def middle(self, name, index=-1):
        node = wait_until(lambda: self.shown.shown(name), what=f"{name} is in sight")[index]
        x, y, width, height = node.extents
        return x + width // 2, y + height // 2

    def point(self, name, index=-1):
        self.x.move_pointer(*self.middle(name, index))

    def click(self, name, index=-1, button=1):
        self.shown.settle(BETWEEN_BLINKS)
        self.x.click(*self.middle(name, index), button=button)

    def row(self, beginning):
        """The name of the row whose name begins so."""

        def found():
            names = [node.name for node in self.shown.nodes() if node.name.startswith(beginning)]
            return names and names[-1]

        return wait_until(found, what=f"a row {beginning} is in sight")

    def tab_to_list(self):
        def reached():
            self.press("Tab").shown.settle(0.05)
            return any(node.role == "list item" and node.focused for node in self.shown.nodes())

        wait_until(reached, 20.0, "Tab reaches the list")

    def photograph(self):
        return self.shown.photograph(VIEW, BETWEEN_BLINKS)

    def type(self, text):
        self.x.type_text(text)
        return self

    def press(self, chord):
        self.x.press_key(chord)
        return self


@contextlib.contextmanager
def opened(scale=1, empty=False, **settings):
    with pages() as site:
        files = {} if empty else {"clipboard.json": history(site), "snippets.json": snippets()}
        with studio(scale, SCREEN, SCREEN, files, **settings) as shown:
            shown.away()
            yield Panel(shown)


def states():
    """The panel again and again, each time in another state."""

    def searched(panel):
        panel.type("note")

    def unmatched(panel):
        panel.type("rye")

    def hovered(panel):
        panel.point(panel.row("4 "))

    def menu(panel):
        panel.click(panel.row("1 "), button=3)
        panel.click("Add to board")

    def editor(panel):
        panel.type("room").click(panel.row("1 "), button=3)
        panel.click("Edit")

    def board(panel):
        panel.click("Baking")

    def empty_board(panel):
        panel.click("Invoices")

    def renaming(panel):
        panel.click("Baking", button=3)
        panel.click("Rename")

    def deleting(panel):
        panel.click("Baking", button=3)
        panel.click("Delete")

    def new_board(panel):
        panel.click("New board")

    def pinned(panel):
        panel.click("Pinned")

    def no_snippet(panel):
        panel.click("Snippets")

    def new_snippet(panel):
        panel.click("Snippets")
        panel.click("New snippet")

    def clearing(panel):
        panel.click("Clear history")

    def stacking(panel):
        panel.click("Stack")

    def queue(panel):
        panel.click("Stack")
        for number in (8, 4, 1):
            panel.press(f"ctrl+{number}")

    rows = (
        ("clipboard-list", (None, searched, hovered)),
        ("clipboard-search-and-menu", (unmatched, menu, clearing)),
        ("clipboard-boards", (board, empty_board, new_board)),
        ("clipboard-board-changes", (renaming, deleting, pinned)),
        ("clipboard-editors", (editor, no_snippet, new_snippet)),
        ("clipboard-stack", (stacking, queue)),
    )
    for name, acts in rows:
        pictures = []
        for act in acts:
            with opened() as panel:
                if act:
                    act(panel)
                pictures.append(panel.photograph())
        save(side_by_side(pictures), f"{name}.png")


def module():
    """The history in the drawer, with and without clips."""
    pictures = []
    with pages() as site:
        for files in ({"clipboard.json": history(site)}, {}):
            with studio(files=files) as shown:
                shown.open("Clipboard")
                pictures.append(shown.photograph())
    save(under_each_other(pictures), "clipboard-module.png")


def quick_look():
    """A picture, as Space shows it."""
    with opened() as panel:
        panel.press("Down").press("Down").tab_to_list()
        panel.press("space")
        wait_until(lambda: panel.shown.shown("Close preview"), what="the preview is shown")
        save(panel.shown.photograph((900, 640), BETWEEN_BLINKS), "quick-look.png")


def about():
    with opened() as panel:
        panel.shown.press("About Quillbar")
        panel.shown.settle()
        save(panel.shown.look((420, 440)), "about.png")


def main():
    with opened() as panel:
        save(panel.photograph(), "clipboard-panel.png")
    states()
    module()
    quick_look()
    about()
    looks = []
    with opened(empty=True) as panel:
        looks.append(panel.photograph())
    with opened(accentColorHex=ACCENT) as panel:
        looks.append(panel.photograph())
    save(side_by_side(looks), "clipboard-empty-and-accent.png")
    with opened(2) as panel:
        save(panel.photograph(), "clipboard-panel-at-scale-2.png")
