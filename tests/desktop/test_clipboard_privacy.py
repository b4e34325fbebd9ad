"""Nothing of what is copied shows anywhere but in the history's file, also when everything is logged."""

import base64
import contextlib
import io
import os
import pathlib

import pytest
from harness.copying import CopySource, copy_until
from harness.disk import UNDER_LIMITS, read_only
from harness.history import PAST_A_BEAT
from harness.waiting import wait_until
from PIL import Image, PngImagePlugin

TEXT, MARKUP, TITLE, FILE, WITHHELD, HALF, UNSAVED = SECRETS = [
    f"{word}7Qz9xw" for word in ("text", "markup", "title", "file", "withheld", "half", "unsaved")
]
EVERYTHING_LOGGED = {"QT_LOGGING_RULES": "*=true", "QT_FORCE_STDERR_LOGGING": "1", "QT_DEBUG_PLUGINS": "1"}


def picture():
    about = PngImagePlugin.PngInfo()
    about.add_text("Title", TITLE)
    file = io.BytesIO()
    Image.effect_noise((60, 40), 50).save(file, "png", pnginfo=about)
    return file.getvalue()


class HalfHanded(CopySource):
    """Writes its markup, but never says so."""

    def handle(self, event):
        if getattr(event, "target", None) == self.x.atom("text/html"):
            event.requestor.change_property(event.property, event.target, 8, HALF.encode())
            self.connection.flush()
        else:
            super().handle(event)


def shown(text):
    return [secret for secret in SECRETS if secret in text]


def everything_below(folder):
    return [os.path.join(path, name) for path, *names in os.walk(folder) for name in sum(names, [])]


@pytest.fixture
def app(desktop):
    return desktop.launch(env=EVERYTHING_LOGGED)


def assert_hidden(desktop, app, history, recorded):
    """`recorded` are the secrets that the history itself holds."""
    assert "qt." in app.output, "not everything is logged"
    assert shown(app.output) == []
    for what in ("cmdline", "environ", "comm"):
        assert shown(pathlib.Path(f"/proc/{app.pid}/{what}").read_text()) == []
    entries = everything_below(desktop.root)
    assert shown("\n".join(entries)) == []
    for path in map(pathlib.Path, entries):
        if path.is_file() and path != history.path:
            with contextlib.suppress(FileNotFoundError):  # a cache's, which has been renamed meanwhile
                assert shown(path.read_bytes().decode(errors="replace")) == [], path
    assert sorted(shown(history.path.read_text())) == sorted(recorded)


def test_copies_of_each_kind_are_not_logged(desktop, app, history):
    copy_until(
        desktop,
        {"UTF8_STRING": TEXT.encode(), "text/html": f"<b>{MARKUP}</b>".encode()},
        lambda: TEXT in history.texts(),
    )
    png = picture()
    copy_until(desktop, {"image/png": png}, lambda: history.clips()[0]["kind"] == "image")
    assert base64.b64decode(history.clips()[0]["imageData"]) == png
    uris = f"file:///nowhere/{FILE}\r\n".encode()
    copy_until(desktop, {"text/uri-list": uris}, lambda: history.clips()[0]["kind"] == "file")
    app.send(15)
    # It ends, and says nothing of them then either; its arguments are gone with it.
    assert app.wait() == 0
    assert "qt." in app.output and shown(app.output) == []
    again = desktop.launch(env=EVERYTHING_LOGGED)
    # Markup and title lie in base64.
    assert_hidden(desktop, again, history, [TEXT, FILE])


def test_a_copy_that_fails_is_not_logged(desktop, app, history):
    offers = {"UTF8_STRING": TEXT.encode(), "text/html": b""}
    copy_until(desktop, offers, lambda: TEXT in history.texts(), HalfHanded)
    assert history.clips()[0]["richData"] == {}
    assert_hidden(desktop, app, history, [TEXT])


def test_a_withheld_secret_is_not_logged(desktop, app, history):
    source = CopySource(desktop.x, {"UTF8_STRING": WITHHELD.encode(), "x-kde-passwordManagerHint": b"secret"})
    wait_until(source.asked, what="it is asked")
    copy_until(desktop, {"UTF8_STRING": TEXT.encode()}, lambda: TEXT in history.texts())
    assert_hidden(desktop, app, history, [TEXT])
    source.close()


def test_a_save_that_fails_is_not_logged(desktop, history):
    app = desktop.launch(env=EVERYTHING_LOGGED, under=UNDER_LIMITS)
    with read_only(history.path.parent):
        desktop.copy_text(UNSAVED)
        app.wait_until_idle(quiet=PAST_A_BEAT)
        assert shown(app.output) == [] and shown("\n".join(everything_below(desktop.root))) == []
    copy_until(desktop, {"UTF8_STRING": TEXT.encode()}, lambda: TEXT in history.texts())
    assert history.texts() == [TEXT, UNSAVED]
    assert_hidden(desktop, app, history, [TEXT, UNSAVED])
