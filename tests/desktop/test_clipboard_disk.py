"""A history that can't be saved lives on in memory, and is on the disk with the next copy once that is well."""

import os
import shutil

import pytest
from harness.disk import UNDER_LIMITS, full, read_only
from harness.history import PAST_A_BEAT
from harness.waiting import wait_until

LONG = "long " * 4000


@pytest.fixture
def app(desktop):
    return desktop.launch(under=UNDER_LIMITS)


def copy_saved(desktop, history, text):
    desktop.copy_text(text)
    history.latest(text=text)


def copy_unsaved(desktop, app, history, text):
    """A copy whose save fails: the file stays as it was, and nothing is left beside it."""
    before = history.path.read_bytes()
    desktop.copy_text(text)
    app.wait_until_idle(quiet=PAST_A_BEAT)
    assert history.path.read_bytes() == before
    assert os.listdir(history.path.parent) == [history.path.name]


def assert_outlives_a_restart(desktop, app, history, texts):
    assert history.texts() == texts
    app.send(15)
    assert app.wait() == 0
    desktop.launch()
    copy_saved(desktop, history, "after the restart")
    assert history.texts() == ["after the restart", *texts]


def test_a_full_disk(desktop, app, history):
    copy_saved(desktop, history, "before")
    with full(app):
        tried = history.path.parent.stat().st_mtime_ns
        copy_unsaved(desktop, app, history, LONG)
        assert history.path.parent.stat().st_mtime_ns != tried, "nothing has been tried"
        copy_unsaved(desktop, app, history, "meanwhile")
    copy_saved(desktop, history, "after")
    assert_outlives_a_restart(desktop, app, history, ["after", "meanwhile", LONG, "before"])


def test_a_disk_that_is_full_from_the_start(desktop, app, history):
    history.path.unlink(missing_ok=True)
    with full(app, free=0):
        desktop.copy_text("first")
        app.wait_until_idle(quiet=PAST_A_BEAT)
        assert os.listdir(history.path.parent) == []
    copy_saved(desktop, history, "second")
    assert_outlives_a_restart(desktop, app, history, ["second", "first"])


def test_a_read_only_folder(desktop, app, history):
    copy_saved(desktop, history, "before")
    with read_only(history.path.parent):
        copy_unsaved(desktop, app, history, "meanwhile")
        copy_unsaved(desktop, app, history, "and this")
    copy_saved(desktop, history, "after")
    assert_outlives_a_restart(desktop, app, history, ["after", "and this", "meanwhile", "before"])


def test_the_folder_is_deleted(desktop, app, history):
    copy_saved(desktop, history, "before")
    shutil.rmtree(history.path.parent)
    copy_saved(desktop, history, "after")
    assert history.path.parent.stat().st_mode & 0o777 == 0o700
    assert history.path.stat().st_mode & 0o777 == 0o600
    shutil.rmtree(desktop.data_home.parent)
    copy_saved(desktop, history, "and again")
    assert_outlives_a_restart(desktop, app, history, ["and again", "after", "before"])


@pytest.mark.parametrize(
    "junk", [b"", b'{"schemaVersion":2,"clips":[', b"\0\xff" * 5000], ids=["empty", "cut", "binary"]
)
def test_the_file_becomes_junk(desktop, app, history, junk):
    copy_saved(desktop, history, "before")
    history.path.write_bytes(junk)
    desktop.copy_text("after")
    wait_until(lambda: history.path.read_bytes() != junk, what="the file is saved over")
    assert_outlives_a_restart(desktop, app, history, ["after", "before"])


def test_a_folder_takes_the_place_of_the_file(desktop, app, history):
    copy_saved(desktop, history, "before")
    history.path.unlink()
    in_the_way = history.path / "in the way"
    in_the_way.mkdir(parents=True)
    desktop.copy_text("meanwhile")
    app.wait_until_idle(quiet=PAST_A_BEAT)
    assert in_the_way.is_dir()
    shutil.rmtree(history.path)
    copy_saved(desktop, history, "after")
    assert_outlives_a_restart(desktop, app, history, ["after", "meanwhile", "before"])
