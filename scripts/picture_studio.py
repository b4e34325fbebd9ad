"""What all pictures are made with: a desktop with a wallpaper and the program on it."""

import contextlib
import json
import pathlib
import sys

from PIL import Image

REPOSITORY = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(REPOSITORY / "tests" / "desktop"))

from harness.clients import Backdrop  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.waiting import wait_until  # noqa: E402

FOLDER = REPOSITORY / "docs" / "pictures"
SCREEN = (1000, 500)
# The part of a screen that is shown, in points: the panel with some of the desktop around it.
VIEW = (680, 270)
PEEK_VIEW = (680, 64)
GAP = 12
# A calm evening sky, above and below. It changes downwards only, so that a picture stays small in true colour.
SKY = ((66, 90, 128), (214, 168, 142))
ACCENT = "#FF9F5A"


class Wallpaper(Backdrop):
    """A backdrop with a gradient over the part that is shown, repeated further down."""

    def __init__(self, x, view):
        super().__init__(x, SKY[0])
        width, height = x.size
        tall = min(height, view[1])
        picture = gradient(width, tall)
        pixmap = self.window.create_pixmap(width, tall, 24)
        pen = pixmap.create_gc()
        # A request has room for so many rows only.
        rows = 200_000 // (width * 4)
        for top in range(0, tall, rows):
            part = picture.crop((0, top, width, min(tall, top + rows)))
            pixmap.put_pil_image(pen, 0, top, part)
        self.window.change_attributes(background_pixmap=pixmap)
        self.window.clear_area()
        self.connection.sync()


def gradient(width, height):
    sky = Image.new("RGB", (1, height))
    for row in range(height):
        share = row / (height - 1)
        sky.putpixel((0, row), tuple(round(a + (b - a) * share) for a, b in zip(*SKY)))
    return sky.resize((width, height))


class Studio:
    """A desktop with a wallpaper and the program on it, ready to be photographed."""

    def __init__(self, desktop, scale):
        self.desktop = desktop
        self.scale = scale
        self.app = desktop.launch()

    def nodes(self):
        """What the program shows of itself, as assistive software sees it."""
        return [node for _, node in self.desktop.accessible(self.app).walk() if node.showing]

    def shown(self, name):
        return [node for node in self.nodes() if node.name == name]

    def open(self, module="Timer"):
        self.desktop.point_at_notch()
        self.desktop.panel.wait_until_open()
        # The icon stands before what its module shows, which may have the same name.
        icon = wait_until(lambda: self.shown(module), what=f"the icon of {module} is in sight")[0]
        icon.press()
        wait_until(lambda: icon.checked, what="the icon is the chosen one")

    def press(self, name):
        wait_until(lambda: self.shown(name), what=f"{name} is in sight")[-1].press()

    def count_to(self, time):
        wait_until(lambda: self.shown(time), 30.0, f"it counts to {time}")

    def close(self):
        self.desktop.point_away()
        self.desktop.panel.wait_until_closed()

    def away(self):
        self.desktop.point_away()

    def settle(self, quiet=0.5):
        """Wait until it has been still for longer than any pause of an animation."""
        self.app.wait_until_idle(quiet=quiet)

    def photograph(self, view=VIEW, quiet=0.5):
        """The top of the screen at rest."""
        self.settle(quiet)
        return self.look(view)

    def look(self, view):
        width, height = (round(each * self.scale) for each in view)
        left = (self.desktop.x.size[0] - width) // 2
        return self.desktop.screenshot().crop((left, 0, left + width, height))


@contextlib.contextmanager
def studio(scale=1, screen=SCREEN, view=VIEW, files=(), **settings):
    """`files`: what the program finds in its folder, by name."""
    desktop = Desktop(wm="openbox+picom", size=[round(each * scale) for each in screen], scale=scale)
    try:
        desktop.configure(**settings)
        folder = desktop.data_home / "Quillbar"
        folder.mkdir(parents=True, exist_ok=True)
        for name in files:
            (folder / name).write_text(json.dumps(files[name]))
        desktop.clients.append(Wallpaper(desktop.x, [round(each * scale) for each in view]))
        yield Studio(desktop, scale)
    finally:
        desktop.close()


def side_by_side(pictures):
    height = max(each.height for each in pictures)
    width = sum(each.width for each in pictures) + GAP * (len(pictures) - 1)
    sheet = Image.new("RGB", (width, height), "white")
    left = 0
    for picture in pictures:
        sheet.paste(picture, (left, 0))
        left += picture.width + GAP
    return sheet


def under_each_other(pictures):
    width = max(each.width for each in pictures)
    sheet = Image.new(
        "RGB", (width, sum(each.height for each in pictures) + GAP * (len(pictures) - 1)), "white"
    )
    top = 0
    for picture in pictures:
        sheet.paste(picture, (0, top))
        top += picture.height + GAP
    return sheet


def save(picture, name):
    FOLDER.mkdir(parents=True, exist_ok=True)
    path = FOLDER / name
    picture.save(path, optimize=True)
    print(f"{path.relative_to(REPOSITORY)}: {path.stat().st_size // 1024} KiB")
