"""The clipboard between us and programs of the two great toolkits."""

import json
import os
import pathlib

import pytest

from harness.pasteboard import Board
from harness.session import REPOSITORY
from harness.waiting import wait_until

pytestmark = pytest.mark.desktop(bus=False)

QT_CLIENT = pathlib.Path(
    os.environ.get("QUILLBAR_QT_CLIENT") or REPOSITORY / "build" / "release" / "bin" / "quillbar_qt_client"
)
GTK_CLIENT = REPOSITORY / "tests" / "helpers" / "gtk_client" / "gtk_client.py"
COMMANDS = {"gtk": ["/usr/bin/python3", "-B", GTK_CLIENT], "qt": [QT_CLIENT]}
ENVIRONMENT = {"GDK_BACKEND": "x11", "GSK_RENDERER": "cairo", "QT_QPA_PLATFORM": "xcb"}


@pytest.fixture(params=COMMANDS)
def toolkit(request):
    return request.param


def start(desktop, toolkit, *arguments):
    return desktop.start(toolkit, COMMANDS[toolkit] + list(arguments), ENVIRONMENT)


def copied(desktop, toolkit, kind):
    """What we have once the program has copied that."""
    # A toolkit just started may be slow to hand over, on a busy machine.
    board = Board(desktop, deadline=25_000)
    program = start(desktop, toolkit, "copy", kind)
    wait_until(lambda: "owning" in program.output_lines, 20.0, "the program has copied")
    record = board.wait_for(count=1)
    board.come_to_rest()
    assert len(board.records) == 1
    return record


def pasted(desktop, toolkit, **contents):
    """What the program can paste once we have written that."""
    board = Board(desktop)
    board.own(**contents)
    program = start(desktop, toolkit, "paste")
    assert program.wait(20.0) == 0, program.output
    return json.loads(program.output_lines[-1])


def test_copied_text(desktop, toolkit):
    record = copied(desktop, toolkit, "text")
    assert record["text"] == "plain täxt"
    assert record["files"] == []


def test_copied_rich_text(desktop, toolkit):
    record = copied(desktop, toolkit, "rich")
    assert record["text"] == "rich text"
    assert "<b>rich</b> text" in record["public.html"]


def test_copied_image(desktop, toolkit):
    record = copied(desktop, toolkit, "image")
    assert (record["width"], record["height"]) == (128, 60)
    assert "text" not in record


def test_copied_files(desktop, toolkit):
    assert copied(desktop, toolkit, "files")["files"] == ["/tmp/a b", "/tmp/ä"]


def test_pasted_text(desktop, toolkit):
    assert pasted(desktop, toolkit, text="plain täxt") == {"text": "plain täxt"}


def test_pasted_rich_text(desktop, toolkit):
    found = pasted(desktop, toolkit, text="rich text", html="<b>rich</b> text")
    assert found == {"text": "rich text", "html": "<b>rich</b> text"}


def test_pasted_image(desktop, toolkit):
    assert pasted(desktop, toolkit, png=1200) == {"image": [1200, 1200]}


def test_pasted_files(desktop, toolkit):
    found = pasted(desktop, toolkit, files=["/tmp/a b", "/tmp/ä"])
    assert found["files"] == ["/tmp/a b", "/tmp/ä"]
    assert "image" not in found
