"""Makes the pictures in docs/pictures; scripts/make-pictures calls it."""

import clipboard_pictures
import media_pictures
from picture_studio import ACCENT, PEEK_VIEW, save, studio, under_each_other


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
    clipboard_pictures.main()
    media_pictures.main()
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
