"""What plays, in the panel and beside the closed notch, with a player of ours; make_pictures.py calls it."""

import contextlib

from PIL import Image, ImageDraw
from picture_studio import PEEK_VIEW, VIEW, save, studio, under_each_other

from harness.players import FakePlayer, track
from harness.waiting import wait_until

TALL_VIEW = (680, 340)
SUN = (255, 224, 150)
LONG_TITLE = "Suite for a Slow River and Two Very Patient Ferrymen, Third Movement (Evening)"


def cover(top=(236, 118, 84), bottom=(44, 52, 110)):
    """A sun over the sea."""
    picture = Image.new("RGB", (600, 600))
    for row in range(600):
        share = row / 599
        colour = tuple(round(a + (b - a) * share) for a, b in zip(top, bottom))
        picture.paste(colour, (0, row, 600, row + 1))
    draw = ImageDraw.Draw(picture)
    draw.ellipse((210, 150, 390, 330), fill=SUN)
    draw.rectangle((0, 400, 600, 600), fill=(24, 40, 84))
    for row in range(410, 600, 22):
        half = (row - 400) // 2 + 30
        draw.rectangle((300 - half, row, 300 + half, row + 6), fill=(250, 196, 128))
    return picture


@contextlib.contextmanager
def playing(title="Morning Tide", with_cover=True, status="Playing", scale=1, **settings):
    with studio(scale, **settings) as shown:
        path = shown.desktop.home / "cover.png"
        cover().save(path)
        metadata = track(
            title,
            xesam_artist=["The Patient Ferrymen"],
            xesam_album="Low Water",
            mpris_artUrl=path.as_uri() if with_cover else None,
        )
        player = FakePlayer(shown.desktop, track=metadata, status=status)
        player.tell(move=84)
        try:
            yield shown
        finally:
            player.quit()


def opened(view=VIEW, act=lambda shown: None, **what):
    """The drawer, while bars and title may move."""
    with playing(**what) as shown:
        shown.desktop.point_at_notch()
        shown.desktop.panel.wait_until_open()
        title = what.get("title", "Morning Tide")
        wait_until(lambda: shown.shown(title), what="the title is in sight")
        shown.desktop.x.move_pointer(*middle_of(shown, title))
        rest(shown, view, what.get("with_cover", True))
        act(shown)
        rest(shown, view, what.get("with_cover", True))
        return shown.look(view)


def middle_of(shown, name):
    x, y, width, height = shown.shown(name)[-1].extents
    return round((x + width / 2) * shown.scale), round((y + height / 2) * shown.scale)


def rest(shown, view, with_cover=True):
    """Wait until the cover is there and the band above what plays, with icons and glow, is still: bars and
    scrubber go on moving."""
    bands = []

    def still():
        picture = shown.look(view)
        bands.append(picture.crop((0, 0, picture.width, round(36 * shown.scale))).tobytes())
        has_cover = SUN in {colour for _, colour in picture.getcolors(picture.width * picture.height)}
        return has_cover == with_cover and bands[-3:] == [bands[-1]] * 3

    wait_until(still, 20, "cover and glow are in sight", interval=0.2)


def drag(shown):
    x, y = middle_of(shown, "Position")
    shown.desktop.x.move_pointer(x, y)
    shown.desktop.x.press_button(1)
    shown.desktop.x.glide_pointer(x + round(50 * shown.scale), y)


def peeks():
    """Beside the closed notch, while it plays and paused."""
    pictures = []
    for status in ("Playing", "Paused"):
        with playing(status=status) as shown:
            sides = [shown.look(PEEK_VIEW).crop((0, 0, PEEK_VIEW[0] // 2, PEEK_VIEW[1])).tobytes()]

            def grown(shown=shown, sides=sides):
                sides.append(shown.look(PEEK_VIEW).crop((0, 0, PEEK_VIEW[0] // 2, PEEK_VIEW[1])).tobytes())
                return sides[-1] != sides[0] and sides[-3:] == [sides[-1]] * 3

            wait_until(grown, 20, "the cover stands beside the notch", interval=0.2)
            pictures.append(shown.look(PEEK_VIEW))
    return pictures


def main():
    save(opened(), "media.png")
    places = [opened(view=TALL_VIEW, mediaArtPosition=place) for place in ("right", "corner", "cornerRight")]
    save(under_each_other(places), "media-placements.png")
    sizes = [opened(view=TALL_VIEW, mediaArtSize=size) for size in ("small", "large", "xlarge")]
    save(under_each_other(sizes), "media-sizes.png")
    states = [opened(with_cover=False, status="Paused"), opened(title=LONG_TITLE), opened(act=drag)]
    save(under_each_other(states), "media-states.png")
    save(under_each_other(peeks()), "media-peek.png")
    save(opened(scale=2), "media-at-scale-2.png")


if __name__ == "__main__":
    main()
