"""The clipboard as we fill it: what other programs can paste, and what becomes of it at our end."""

import signal
import subprocess

import pytest

from harness.pasteboard import Board, Owner, Requestor, offering
from harness.waiting import wait_until

pytestmark = pytest.mark.desktop(bus=False)

NEVER = 3_600_000  # ms
HTML = "<p>rich <b>text</b> ä</p>"
NOISE = 1200  # pixels a side: a file of some 4.3 MB, more than one answer holds


@pytest.fixture
def board(desktop):
    return Board(desktop)


@pytest.fixture
def requestor(desktop, board):
    program = Requestor(desktop)
    yield program
    program.close()


def paste(desktop, target):
    """What xclip gets; it gives up by itself when the clipboard has no such form."""
    command = ["xclip", "-selection", "clipboard", "-target", target, "-out"]
    return subprocess.run(command, env=desktop.env, capture_output=True, timeout=10).stdout


def test_text_is_pasted_with_its_rich_forms(desktop, board, requestor):
    board.own(text="rich text ä", html=HTML, rtf="{\\rtf1 rich}")
    assert paste(desktop, "UTF8_STRING").decode() == "rich text ä"
    assert paste(desktop, "text/html").decode() == HTML
    assert paste(desktop, "text/rtf") == paste(desktop, "application/rtf") == b"{\\rtf1 rich}"
    for target in ("text/plain;charset=utf-8", "text/plain"):
        assert requestor.paste(target) == ("rich text ä".encode(), target)
    assert requestor.paste("TEXT") == ("rich text ä".encode(), "UTF8_STRING")
    assert requestor.paste("STRING") == ("rich text ä".encode("latin-1"), "STRING")
    assert requestor.paste("image/png") is None


def test_what_is_told_of_is_what_there_is(board, requestor):
    board.own(text="a")
    assert requestor.targets() == ["TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS"] + [
        "UTF8_STRING",
        "text/plain;charset=utf-8",
        "text/plain",
        "STRING",
        "TEXT",
    ]
    for target in requestor.targets():
        requestor.ask(target)
        assert (requestor.wait_for_answer() is not None) == (target != "MULTIPLE"), target
        requestor.take()


def test_files_come_with_what_file_managers_look_for(desktop, board):
    board.own(files=["/tmp/a b", "/tmp/ä"])
    assert paste(desktop, "text/uri-list") == b"file:///tmp/a%20b\r\nfile:///tmp/%C3%A4\r\n"
    assert paste(desktop, "x-special/gnome-copied-files") == b"copy\nfile:///tmp/a%20b\nfile:///tmp/%C3%A4"
    assert paste(desktop, "application/x-kde-cutselection") == b"0"
    assert paste(desktop, "UTF8_STRING").decode() == "/tmp/a b\n/tmp/ä"


def test_our_own_copy_raises_the_count_once_and_is_not_read_back(desktop, board):
    board.own(text="ours")
    assert desktop.clipboard_text() == "ours"
    board.come_to_rest()
    assert len(board.records) == 1


def test_of_several_writes_the_last_one_is_pasted(desktop, board):
    for number in range(20):
        board.write(text=f"text {number}")
    board.wait_for(count=20)
    wait_until(lambda: paste(desktop, "UTF8_STRING") == b"text 19", what="the last text is pasted")
    board.come_to_rest()
    assert len(board.records) == 20


def test_what_another_program_copies_then_is_recorded(desktop, board):
    board.own(text="ours")
    desktop.copy_text("theirs")
    assert board.wait_for(count=2)["text"] == "theirs"
    board.own(text="ours again")
    assert desktop.clipboard_text() == "ours again"


def test_what_we_write_is_not_overtaken_by_an_older_copy(desktop):
    board = Board(desktop, deadline=NEVER)
    owner = Owner(desktop, "late", "1")
    wait_until(lambda: owner.asked, what="the owner has been asked")
    owner.process.send(signal.SIGSTOP)  # It must not be in time on a busy machine either.
    board.own(text="ours")
    owner.process.send(signal.SIGCONT)
    owner.wait_for("answered")
    board.come_to_rest()
    assert [record["text"] for record in board.records] == ["ours"]
    assert desktop.clipboard_text() == "ours"


def test_a_large_image_reaches_several_programs_at_once(desktop, board):
    size = board.own(png=NOISE)["png"]
    programs = [Requestor(desktop) for _ in range(4)]
    for program in programs:
        program.ask("image/png")
    results = [program.wait_for_answer() and program.take() for program in programs]
    assert [kind for _, kind in results] == ["INCR"] * 4
    assert [value[0] for value, _ in results] == [size] * 4
    wholes = [b""] * 4
    unfinished = set(range(4))
    while unfinished:  # In turns, so that all are under way at the same time.
        for index in sorted(unfinished):
            part, _ = programs[index].take_next_part()
            wholes[index] += bytes(part or b"")
            if not part:
                unfinished.discard(index)
    assert [len(whole) for whole in wholes] == [size] * 4
    assert len(set(wholes)) == 1
    assert wholes[0].startswith(b"\x89PNG")
    assert programs[0].parts > 2


def test_who_vanishes_in_the_middle_harms_nobody(desktop, board, requestor):
    size = board.own(png=NOISE)["png"]
    for _ in range(100):  # More than may be under way at once.
        leaver = Requestor(desktop)
        leaver.ask("image/png")
        assert leaver.wait_for_answer()
        leaver.take()
        leaver.close()
    assert len(requestor.paste("image/png")[0]) == size


def test_who_rests_too_long_is_forgotten(desktop):
    # Enough for the last one, which takes part after part.
    board = Board(desktop, patience=2000)
    board.own(png=NOISE)
    sleepers = [Requestor(desktop) for _ in range(64)]
    for sleeper in sleepers:
        sleeper.ask("image/png")
        assert sleeper.wait_for_answer()
    late = Requestor(desktop)
    # All places are taken, until the first have been forgotten.
    wait_until(lambda: late.paste("image/png"), what="there is room for another program")


def test_a_transfer_goes_on_when_the_clipboard_is_lost(desktop, board, requestor):
    size = board.own(png=NOISE)["png"]
    requestor.ask("image/png")
    requestor.wait_for_answer()
    requestor.take()
    desktop.copy_text("theirs")
    board.wait_for(count=2)
    whole = b""
    while part := requestor.take_next_part()[0]:
        whole += bytes(part)
    assert len(whole) == size


def test_several_forms_are_had_in_one_request(board, requestor):
    board.own(text="a", html="<i>a</i>")
    pairs = ["UTF8_STRING", "FIRST", "image/png", "SECOND", "text/html", "THIRD", "MULTIPLE", "FOURTH"]
    requestor.window.change_property(
        requestor.atom("ANSWER"), requestor.atom("ATOM_PAIR"), 32, [requestor.atom(name) for name in pairs]
    )
    requestor.ask("MULTIPLE")
    assert requestor.wait_for_answer() == "ANSWER"
    value, _ = requestor.take()
    served = [
        name if name in ("FIRST", "SECOND", "THIRD", "FOURTH") else bool(atom)
        for atom, name in zip(value, pairs)
    ]
    assert served == [True, "FIRST", False, "SECOND", True, "THIRD", False, "FOURTH"]
    assert requestor.take("FIRST") == (b"a", "UTF8_STRING")
    assert requestor.take("SECOND") is None
    assert requestor.take("THIRD") == (b"<i>a</i>", "text/html")


def test_the_clipboard_is_owned_since_a_real_time(board, requestor):
    board.own(text="a")
    (time,), kind = requestor.paste("TIMESTAMP")
    assert kind == "INTEGER" and time > 0
    requestor.ask("UTF8_STRING", time=time)
    assert requestor.wait_for_answer()
    # Who pastes what was there before must not get this.
    requestor.ask("UTF8_STRING", time=time - 1)
    assert requestor.wait_for_answer() is None


# -- the end ---------------------------------------------------------------------------------------


def own_manager_selection(desktop):
    """A clipboard manager that never does its work."""
    manager = Requestor(desktop)
    manager.window.set_selection_owner(manager.atom("CLIPBOARD_MANAGER"), 0)
    manager.connection.sync()
    return manager


@pytest.mark.desktop(bus=True)
def test_a_clipboard_manager_takes_over_at_the_end(desktop, requestor):
    board = Board(desktop, handover=3000)
    manager = desktop.start("clipman", ["xfce4-clipman"])
    selection = requestor.atom("CLIPBOARD_MANAGER")
    wait_until(lambda: requestor.connection.get_selection_owner(selection), 20.0, "the manager is up")
    manager.wait_until_idle()
    board.own(text="to be kept", html=HTML)
    assert board.end() == 0
    # It offers what it has taken over once it finds the clipboard without an owner.
    wait_until(lambda: paste(desktop, "UTF8_STRING") == b"to be kept", what="the text is offered")
    assert paste(desktop, "text/html").decode() == HTML


def test_a_hung_clipboard_manager_does_not_hold_up_the_end(desktop):
    board = Board(desktop, handover=200)
    board.own(text="ours")
    manager = own_manager_selection(desktop)
    assert board.end() == 0
    manager.wait_for(lambda each: each.target == manager.atom("SAVE_TARGETS"), "the manager has been asked")


def test_without_ownership_no_manager_is_asked(desktop):
    board = Board(desktop, handover=NEVER)
    manager = own_manager_selection(desktop)
    board.own(text="ours")
    offering(desktop, {"UTF8_STRING": b"theirs"})
    board.wait_for(text="theirs")
    assert board.end() == 0
    assert manager.connection.pending_events() == 0


def test_a_hung_server_does_not_hold_up_the_end(desktop):
    board = Board(desktop, handover=200)
    board.own(text="ours")
    own_manager_selection(desktop)
    desktop.xvfb.send(signal.SIGSTOP)
    try:
        assert board.end() == 0
    finally:
        desktop.xvfb.send(signal.SIGCONT)
