"""The clipboard beside programs that hang, lie, die or never rest."""

import signal

import pytest

from harness.pasteboard import Board, Owner, held_up, is_still_recording, offering
from harness.waiting import wait_until

pytestmark = pytest.mark.desktop(bus=False)

NEVER = 3_600_000  # ms: a deadline that no test lives to see.
ENOUGH = 2000  # ms: one that passes, but that an honest owner keeps on a busy machine too.
PLAIN = "public.utf8-plain-text"


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
