"""How the program ends: on a signal with status 0, without a display with one line; what it ignores."""

import signal

import pytest

from harness.players import FakePlayer
from harness.waiting import wait_until
from harness.x11 import Rect


@pytest.mark.parametrize("signum", [signal.SIGTERM, signal.SIGINT, signal.SIGHUP])
@pytest.mark.parametrize("opened", [False, True], ids=["closed", "open"])
def test_a_signal_ends_it_in_order(desktop, quillbar, signum, opened):
    if opened:
        desktop.open_panel()
    quillbar.send(signum)
    assert quillbar.wait() == 0
    assert quillbar.output_lines == []
    wait_until(lambda: not desktop.panel.windows(), what="its window is gone")


def test_a_player_that_hangs_doesnt_hold_up_the_end(desktop):
    player = FakePlayer(desktop, "spotify", options={"hangs": True})
    app = desktop.launch()
    wait_until(lambda: player.reads.get("GetAll", 0) > 2, what="a script waits, besides two other questions")
    app.send(signal.SIGTERM)
    assert app.wait() == 0
    # A script that has waited in vain for as long as it may would have said so.
    assert app.output_lines == []
    player.kill()


@pytest.mark.parametrize("opened", [False, True], ids=["closed", "open"])
def test_a_lost_display_ends_it_with_one_line(desktop, quillbar, opened):
    if opened:
        desktop.open_panel()
    spent = quillbar.cpu_seconds()
    desktop.xvfb.kill()
    last = spent

    def ended():
        nonlocal last
        try:
            last = quillbar.cpu_seconds()
        except (FileNotFoundError, ProcessLookupError, IndexError):
            pass
        return not quillbar.running

    wait_until(ended, what="the program has ended")
    assert quillbar.status > 0, f"ended with {quillbar.status}: {quillbar.output}"
    assert len(quillbar.output_lines) == 1, quillbar.output
    assert last - spent < 0.5, "it was busy after the display had gone"


def test_without_any_display_it_says_so_and_ends(desktop):
    app = desktop.start_quillbar({"DISPLAY": None})
    app.wait()
    assert app.status > 0
    assert len(app.output_lines) == 1, app.output


def test_a_display_that_refuses_ends_it(desktop):
    app = desktop.start_quillbar({"DISPLAY": ":59999"})
    app.wait()
    assert app.status > 0
    assert len(app.output_lines) == 1, app.output


@pytest.mark.parametrize(
    "arguments",
    [("-platform", "offscreen"), ("-display", ":59999"), ("--help",), ("-qwindowgeometry", "50x50")],
    ids=lambda arguments: arguments[0].strip("-"),
)
def test_arguments_change_nothing(desktop, arguments):
    app = desktop.launch(arguments=arguments)
    desktop.open_panel()
    assert desktop.panel.geometry == Rect(340, 0, 600, 240)
    assert app.output_lines == []
