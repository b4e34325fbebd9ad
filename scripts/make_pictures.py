"""Makes the pictures in docs/pictures; scripts/make-pictures calls it."""

import contextlib
import pathlib
import sys

from PIL import Image

REPOSITORY = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(REPOSITORY / "tests" / "desktop"))

from harness.clients import Backdrop  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.waiting import wait_until  # noqa: E402

FOLDER = REPOSITORY / "docs" / "pictures"
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

    def _shown(self, name):
        nodes = (node for _, node in self.desktop.accessible(self.app).walk())
        return [node for node in nodes if node.name == name and node.showing]

    def open(self):
        self.desktop.point_at_notch()
        self.desktop.panel.wait_until_open()
        # The icon in the bar, and the mode of the same name below it.
        both = wait_until(
            lambda: len(self._shown("Timer")) == 2 and self._shown("Timer"), what="all is in sight"
        )
        both[0].press()
        wait_until(lambda: both[0].checked, what="the icon is the chosen one")

    def press(self, name):
        wait_until(lambda: self._shown(name), what=f"{name} is in sight")[-1].press()

    def count_to(self, time):
        wait_until(lambda: self._shown(time), 30.0, f"it counts to {time}")

    def close(self):
        self.desktop.point_away()
        self.desktop.panel.wait_until_closed()

    def photograph(self, view=VIEW):
        """The top of the screen, once it has been still for longer than any pause of an animation."""
        self.app.wait_until_idle(quiet=0.5)
        return self.look(view)

    def look(self, view):
        width, height = (round(each * self.scale) for each in view)
        left = (self.desktop.x.size[0] - width) // 2
        return self.desktop.screenshot().crop((left, 0, left + width, height))


@contextlib.contextmanager
def studio(scale=1, **settings):
    desktop = Desktop(wm="openbox+picom", size=(round(1000 * scale), round(500 * scale)), scale=scale)
    try:
        desktop.configure(**settings)
        desktop.clients.append(Wallpaper(desktop.x, [round(each * scale) for each in VIEW]))
        yield Studio(desktop, scale)
    finally:
        desktop.close()


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


def three_modes(scale=1, **settings):
    """The open timer in its three modes, each in use."""
    with studio(scale, **settings) as shown:
        shown.open()
        shown.press("5m")
        shown.press("Start")
        shown.count_to("4:57")
        shown.press("Pause")
        pictures = [shown.photograph()]
        shown.press("Pomodoro")
        shown.press("Skip")
        pictures.append(shown.photograph())
        shown.press("Stopwatch")
        shown.press("Start")
        shown.count_to("0:08")
        shown.press("Pause")
        pictures.append(shown.photograph())
        return pictures


def peek(scale=1):
    with studio(scale) as shown:
        closed = shown.photograph(PEEK_VIEW)
        shown.open()
        shown.press("25m")
        shown.press("Start")
        shown.close()
        shown.count_to("24:55")
        return [closed, shown.look(PEEK_VIEW)]


def open_panel(scale=1, **settings):
    with studio(scale, **settings) as shown:
        shown.open()
        return shown.photograph()


def main():
    modes = three_modes()
    save(modes[0], "panel-open.png")
    save(under_each_other(modes), "timer-modes.png")
    save(under_each_other(peek()), "closed-and-peek.png")
    looks = [{"notchGlass": True}, {"notchFrameEnabled": True, "accentColorHex": ACCENT}]
    looks.append({"notchGlass": True, "notchFrameEnabled": True, "accentColorHex": ACCENT})
    save(under_each_other([open_panel(**look) for look in looks]), "glass-and-frame.png")
    for name, picture in (
        ("timer-at-scale-2.png", open_panel(2)),
        ("glass-and-frame-at-scale-2.png", open_panel(2, **looks[-1])),
        ("closed-and-peek-at-scale-2.png", under_each_other(peek(2))),
    ):
        save(picture, name)


if __name__ == "__main__":
    main()
