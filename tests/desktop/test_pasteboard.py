"""The clipboard as other programs fill it: what is taken from them, whatever they do."""

import io
import subprocess

import pytest
from PIL import Image
from Xlib import X, Xatom

from harness.pasteboard import Board, Owner, copy_and_end, held_up, is_still_recording, offering
from harness.waiting import wait_until

pytestmark = pytest.mark.desktop(bus=False)

NEVER = 3_600_000  # ms: a deadline that no test lives to see.
PLAIN = "public.utf8-plain-text"
CONCEALED = "org.nspasteboard.ConcealedType"


def copy(desktop, data, target="UTF8_STRING", selection="clipboard"):
    subprocess.run(
        ["xclip", "-selection", selection, "-target", target, "-in"],
        input=data,
        env=desktop.env,
        check=True,
        timeout=10,
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
    )


def test_what_was_copied_before_the_start_is_there(desktop):
    desktop.copy_text("from before")
    assert Board(desktop).wait_for(count=1)["text"] == "from before"


def test_a_clipboard_without_an_owner_is_no_change(desktop):
    board = Board(desktop)
    board.come_to_rest()
    assert board.records == []


def test_each_copy_raises_the_count_by_one(desktop):
    board = Board(desktop)
    for count, text in enumerate(["one", "zwei ä€😀", "three"], 1):
        desktop.copy_text(text)
        assert board.wait_for(count=count)["text"] == text


def test_text_is_asked_for_with_its_rich_forms_and_without_the_image(desktop):
    board = Board(desktop)
    owner = offering(
        desktop,
        {
            "text/html": b"<b>rich</b>",
            "image/png": b"png",
            "application/rtf": b"{\\rtf rich}",
            "text/plain;charset=utf-8": b"rich",
            "STRING": b"rich",
            "application/x-other": b"",
        },
    )
    record = board.wait_for(text="rich")
    assert record["public.html"] == "<b>rich</b>"
    assert record["public.rtf"] == "{\\rtf rich}"
    assert record["types"] == ["public.html", "public.png", "public.rtf", PLAIN, "application/x-other"]
    assert owner.asked == ["TARGETS", "text/plain;charset=utf-8", "application/rtf", "text/html"]


def test_files_are_asked_for_alone(desktop):
    board = Board(desktop)
    owner = offering(
        desktop,
        {
            "UTF8_STRING": b"/tmp/a b",
            "x-special/gnome-copied-files": b"copy\nfile:///tmp/a%20b",
            "text/uri-list": b"file:///tmp/a%20b\r\nfile:///tmp/c\r\n",
            "image/png": b"png",
        },
    )
    record = board.wait_for(count=1)
    assert record["files"] == ["/tmp/a b", "/tmp/c"]
    assert "text" not in record
    assert owner.asked == ["TARGETS", "text/uri-list"]


@pytest.mark.parametrize("target", ["image/png", "image/bmp", "image/jpeg", "image/tiff"])
def test_an_image_of_any_format_becomes_a_png(desktop, target):
    board = Board(desktop)
    file = io.BytesIO()
    Image.effect_noise((300, 200), 50).save(file, target.split("/")[1])
    copy(desktop, file.getvalue(), target)
    record = board.wait_for(count=1)
    assert (record["width"], record["height"]) == (300, 200)
    assert record["types"] == ["public.png"]


def test_what_is_no_image_is_missing(desktop):
    board = Board(desktop)
    copy(desktop, b"this is no picture", "image/bmp")
    record = board.wait_for(count=1)
    assert record["types"] == ["public.png"]
    assert "png" not in record


@pytest.mark.parametrize("value", [b"secret", b"1", b"public", b""])
def test_of_a_password_nothing_is_asked(desktop, value):
    board = Board(desktop)
    owner = offering(desktop, {"UTF8_STRING": b"hunter2", "x-kde-passwordManagerHint": value})
    record = board.wait_for(count=1)
    assert record["types"] == [CONCEALED, PLAIN, "x-kde-passwordManagerHint"]
    assert owner.asked == ["TARGETS"]
    assert "hunter2" not in board.process.output


def test_a_clipboard_whose_owner_has_gone_is_empty(desktop):
    board = Board(desktop)
    owner = offering(desktop, {"UTF8_STRING": b"for a while"})
    board.wait_for(text="for a while")
    owner.process.kill()
    record = board.wait_for(count=2)
    assert record == {"count": 2, "types": [], "files": []}


def test_what_is_copied_by_a_program_that_ends_at_once_stays_a_while(desktop):
    """Longer than the time between two looks at it, whatever the program that copied it does."""
    board = Board(desktop, empty=NEVER)
    for count in range(1, 11):
        copy_and_end(desktop, b"copy %d" % count)
        assert board.wait_for(count=count)["text"] == f"copy {count}"


def test_an_image_is_not_lost_with_its_program(desktop):
    board = Board(desktop)
    file = io.BytesIO()
    Image.effect_noise((2000, 1500), 50).save(file, "bmp")
    copy_and_end(desktop, file.getvalue(), "image/bmp")
    assert board.wait_for(count=1)["png"] > 0
    assert board.wait_for(count=2) == {"count": 2, "types": [], "files": []}


def test_the_program_in_front_is_that_of_the_time_of_the_copy(desktop):
    board = Board(desktop, deadline=NEVER)
    board.put_in_front("vault")
    owner = Owner(desktop, "late", "1")
    wait_until(lambda: owner.asked, what="the owner has been asked")
    with held_up(owner):
        board.put_in_front("editor")
    assert board.wait_for(count=1, text="late")["copiedIn"] == "vault"
    desktop.copy_text("in the other")
    assert board.wait_for(count=2)["copiedIn"] == "editor"


def test_the_primary_selection_is_left_alone(desktop):
    board = Board(desktop)
    copy(desktop, b"marked", selection="primary")
    wait_until(
        lambda: desktop.x.connection.get_selection_owner(Xatom.PRIMARY) != X.NONE, what="it is offered"
    )
    board.come_to_rest()
    assert board.records == []
    board.own(text="ours")
    primary = subprocess.run(
        ["xclip", "-selection", "primary", "-out"],
        env=desktop.env,
        check=True,
        capture_output=True,
        timeout=10,
    )
    assert primary.stdout == b"marked"


# -- large ones ------------------------------------------------------------------------------------


def test_a_large_text_in_one_property(desktop):
    board = Board(desktop)
    data = b"0123456789" * 1_000_000
    copy(desktop, data)
    assert board.wait_for(count=1)["length"] == len(data)


def test_a_large_text_in_parts(desktop):
    board = Board(desktop)
    Owner(desktop, "incremental", "80")
    assert board.wait_for(count=1)["length"] == 16_000_000


def test_a_part_may_be_smaller_than_announced_or_larger(desktop):
    board = Board(desktop)
    owner = Owner(desktop, "incremental", "3", "10", "4000000")
    assert board.wait_for(count=1)["length"] == 30
    owner.process.kill()
    board.wait_for(count=2)
    Owner(desktop, "incremental", "3", "100000", "1")
    assert board.wait_for(count=3)["length"] == 300_000


@pytest.mark.parametrize(
    "owner",
    [
        ["incremental", "50", "100000"],
        ["incremental", "50", "100000", "1"],
        ["incremental", "1", "10", "4294967295"],
        ["endless", "100000"],
    ],
    ids="-".join,
)
def test_what_is_past_the_cap_is_missing(desktop, owner):
    board = Board(desktop, deadline=NEVER, bytes=1_000_000)
    Owner(desktop, *owner)
    record = board.wait_for(count=1)
    assert record["types"] == [PLAIN]
    assert "text" not in record
    is_still_recording(desktop, board)


def test_one_property_past_the_cap_is_not_even_read(desktop):
    board = Board(desktop, deadline=NEVER, bytes=1_000_000)
    copy(desktop, b"x" * 3_000_000)
    record = board.wait_for(count=1)
    assert "text" not in record
    is_still_recording(desktop, board)


@pytest.mark.parametrize("parts", ["84", "2000"], ids=["in one go", "told in advance"])
def test_a_text_past_its_own_cap_is_missing(desktop, parts):
    board = Board(desktop, deadline=NEVER)
    Owner(desktop, "incremental", parts, "200000", "1" if parts == "84" else "400000000")
    record = board.wait_for(count=1)
    assert record["types"] == [PLAIN]
    assert "text" not in record
    is_still_recording(desktop, board)


def test_a_rich_form_past_the_cap_is_missing_alone(desktop):
    board = Board(desktop, deadline=NEVER, text=1000)
    offering(desktop, {"UTF8_STRING": b"text", "text/rtf": b"x" * 1001, "text/html": b"<b>text</b>"})
    record = board.wait_for(count=1, text="text")
    assert "public.rtf" not in record
    assert record["public.html"] == "<b>text</b>"


def test_an_image_may_be_larger_than_a_text(desktop):
    board = Board(desktop, deadline=NEVER, text=1000)
    file = io.BytesIO()
    Image.effect_noise((300, 200), 50).save(file, "png")
    copy(desktop, file.getvalue(), "image/png")
    assert board.wait_for(count=1)["png"] > 1000


def test_the_memory_of_a_huge_text_returns(desktop):
    board = Board(desktop, deadline=NEVER, text=NEVER << 10)
    desktop.copy_text("small")
    board.wait_for(text="small")
    board.come_to_rest()
    before = board.process.pss_kib()
    owner = Owner(desktop, "incremental", "500")
    board.wait_for(count=2)
    assert board.process.pss_kib() > before + 100_000
    desktop.copy_text("small again")
    board.wait_for(text="small again")
    owner.process.kill()
    wait_until(lambda: board.process.pss_kib() < before + 10_000, what="the memory has been given back")
