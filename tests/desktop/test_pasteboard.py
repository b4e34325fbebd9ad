"""The clipboard as other programs fill it: what is taken from them, whatever they do."""

import contextlib
import io
import signal
import subprocess

import pytest
from PIL import Image
from Xlib import X, Xatom

from harness.pasteboard import Board, Owner, copy_and_end, offering
from harness.waiting import wait_until

pytestmark = pytest.mark.desktop(bus=False)

NEVER = 3_600_000  # ms: a deadline that no test lives to see.
ENOUGH = 2000  # ms: one that passes, but that an honest owner keeps on a busy machine too.
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


@contextlib.contextmanager
def held_up(owner):
    """The owner does nothing meanwhile, its answer that is to come late neither."""
    owner.process.send(signal.SIGSTOP)
    yield
    owner.process.send(signal.SIGCONT)


def is_still_recording(desktop, board):
    """The next honest copy is recorded."""
    desktop.copy_text("an honest copy")
    board.wait_for(text="an honest copy")
    assert board.records[-1]["text"] == "an honest copy"


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


# -- hostile ones ----------------------------------------------------------------------------------


@pytest.mark.parametrize(
    "owner",
    [
        ["never"],
        ["late", "6"],
        ["endless", "200000"],
        ["endless", "1", "0.01"],
        ["incremental", "0"],
        ["empty-handed"],
        ["wrong-targets"],
        ["many-targets"],
    ],
    ids="-".join,
)
def test_after_a_hostile_owner_the_count_rises_and_the_next_copy_is_recorded(desktop, owner):
    board = Board(desktop, deadline=ENOUGH)
    Owner(desktop, *owner)
    record = board.wait_for(count=1)
    assert "text" not in record
    assert record["files"] == []
    is_still_recording(desktop, board)


def test_what_came_in_time_is_kept(desktop):
    board = Board(desktop, deadline=ENOUGH)
    Owner(desktop, "partial")
    record = board.wait_for(count=1)
    assert record["text"] == "partial"
    assert record["types"] == [PLAIN, "public.html"]
    assert "public.html" not in record


def test_the_main_thread_answers_while_an_owner_hangs(desktop):
    board = Board(desktop, deadline=NEVER)
    owner = Owner(desktop, "never")
    wait_until(lambda: owner.asked, what="the owner has been asked")
    board.gap()
    board.gap()
    assert board.records == []
    board.write(text="ours")
    board.wait_for(count=1)
    assert board.end() == 0


def test_a_new_copy_ends_the_wait_for_a_hung_owner(desktop):
    board = Board(desktop, deadline=NEVER)
    owner = Owner(desktop, "never")
    wait_until(lambda: owner.asked, what="the owner has been asked")
    desktop.copy_text("newer")
    assert board.wait_for(count=1)["text"] == "newer"


def test_an_answer_that_comes_too_late_is_no_answer_to_another_question(desktop):
    board = Board(desktop, deadline=NEVER)
    owner = Owner(desktop, "late", "1")
    wait_until(lambda: owner.asked, what="the owner has been asked")
    with held_up(owner):
        offering(desktop, {"UTF8_STRING": b"newer"})
        board.wait_for(count=1, text="newer")
    owner.wait_for("answered")
    board.come_to_rest()
    assert [record["text"] for record in board.records] == ["newer"]


def test_an_owner_that_dies_in_the_middle_leaves_an_empty_clipboard(desktop):
    board = Board(desktop, deadline=NEVER)
    Owner(desktop, "dying")
    assert board.wait_for(count=1) == {"count": 1, "types": [], "files": []}
    is_still_recording(desktop, board)


def test_a_change_in_the_middle_gives_the_newer_contents_alone(desktop):
    board = Board(desktop, deadline=NEVER)
    Owner(desktop, "changing")
    assert board.wait_for(count=1)["text"] == "after"


def test_an_answer_that_is_taken_back_counts(desktop):
    board = Board(desktop, deadline=NEVER)
    Owner(desktop, "twice")
    record = board.wait_for(count=1)
    assert record["text"] == "text"
    assert record["public.html"] == "<b>text</b>"


def test_a_flood_of_copies_is_not_answered_one_by_one(desktop):
    board = Board(desktop)
    owner = Owner(desktop, "flood", "1000", "3")
    wait_until(lambda: "calm after" in owner.process.output, 30.0, "the flood is over")
    board.wait_for(text="calm")
    copies = int(owner.process.output.split("calm after ")[1].split()[0])
    assert owner.asked.count("TARGETS") < copies / 5
    assert board.records[-1]["text"] == "calm"


def test_who_never_stands_still_is_recorded_all_the_same(desktop):
    board = Board(desktop)
    # A bit faster than what counts as standing still, so that a busy machine is in time for one of them.
    Owner(desktop, "flood", "40", "5")
    record = wait_until(lambda: board.records and board.records[0], 30.0, "a copy is recorded")
    assert record["text"].startswith("copy ")
    board.wait_for(text="calm")


def test_a_lost_server_ends_it_quietly(desktop):
    board = Board(desktop)
    desktop.copy_text("the last one")
    board.wait_for(count=1)
    desktop.xvfb.send(signal.SIGKILL)
    desktop.xvfb.wait()
    board.come_to_rest()
    board.write(text="ours alone")
    board.wait_for(count=2, text="ours alone")
    assert board.end() == 0
    assert all(line.startswith("{") for line in board.process.output_lines)


def test_without_a_display_the_clipboard_is_ours_alone(desktop):
    board = Board(desktop, env={"DISPLAY": None})
    board.write(text="ours alone")
    board.wait_for(count=1, text="ours alone")
    assert board.end() == 0
