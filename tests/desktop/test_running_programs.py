"""Which program a process runs, whether a program runs, and bringing it to the front."""

import pytest

from harness.helper import Helper
from harness.players import FakePlayer, track
from harness.waiting import wait_until


@pytest.fixture
def workspace(desktop):
    """The workspace on a desktop where these programs are installed."""
    folder = desktop.root / "installed" / "applications"
    folder.mkdir(parents=True)
    programs = {"our-terminal": "xterm", "org.example.Fake": "fake", "org.example.Other": "other"}
    for name, program in programs.items():
        text = f"[Desktop Entry]\nType=Application\nName={name}\nExec={program} %U\n"
        (folder / f"{name}.desktop").write_text(text)
    helper = Helper(desktop, "workspace", {"XDG_DATA_DIRS": str(folder.parent)})
    yield helper
    helper.close()


def start_terminal(desktop, name):
    process = desktop.start("xterm", ["xterm", "-class", name, "-e", "cat"])
    window = wait_until(lambda: window_of(desktop, name), what=f"{name} has a window")
    wait_until(lambda: desktop.x.active_id() == window, what=f"{name} is active")
    return process, window


def window_of(desktop, name):
    for number in desktop.x.managed_ids():
        window = desktop.x.connection.create_resource_object("window", number)
        if name in (window.get_wm_class() or ()):
            return number
    return None


def answers(workspace, question, wanted):
    """Asked again, since what a player says of itself comes a moment later."""

    def told():
        before = len(workspace.lines)
        workspace.send(question)
        return wait_until(lambda: workspace.lines[before:], what="an answer")[0]

    wait_until(lambda: told() == wanted, what=f"{question} is answered by {wanted}")


def is_program(workspace, process, wanted):
    answers(workspace, f"process {process}", f"program {wanted}")


def test_a_process_is_known_by_its_program(desktop, workspace):
    process, _ = start_terminal(desktop, "Odd")
    is_program(workspace, process.pid, "our-terminal")
    is_program(workspace, desktop.manager.pid, "openbox")
    is_program(workspace, 0, "-")
    process.kill()
    is_program(workspace, process.pid, "-")


def test_a_player_is_known_by_what_it_says_of_itself(desktop, workspace):
    player = FakePlayer(desktop, track=track(), root={"DesktopEntry": "org.example.Fake"})
    is_program(workspace, player.pid, "org.example.Fake")
    assert workspace.ask("running org.example.Fake", "running", "not running") == "running"
    assert workspace.ask("running org.example.Other", "running", "not running") == "not running"
    player.kill()


def test_a_player_that_no_menu_lists_goes_by_what_it_calls_itself(desktop, workspace):
    named = FakePlayer(desktop, track=track(), root={"Identity": "The Jukebox"})
    is_program(workspace, named.pid, "fake_player.py")
    answers(workspace, "name fake_player.py", "name The Jukebox")
    answers(workspace, "name org.example.Fake", "name org.example.Fake")
    named.kill()
    answers(workspace, "name fake_player.py", "name -")


@pytest.mark.parametrize("desktop", [{"wm": "openbox"}, {"wm": "xfwm4"}, {"wm": "mutter"}], indirect=True)
def test_a_program_with_a_window_comes_to_the_front(desktop, workspace):
    assert workspace.ask("running our-terminal", "running", "not running") == "not running"
    _, first = start_terminal(desktop, "XTerm")
    desktop.start("mousepad", ["mousepad", "--disable-server"])
    wait_until(lambda: desktop.x.active_id() not in (None, 0, first), 20, "another is in front")
    answers(workspace, "running our-terminal", "running")
    assert workspace.ask("activate our-terminal", "activated", "not activated") == "activated"
    wait_until(lambda: desktop.x.active_id() == first, what="the terminal is in front")


def test_a_player_without_a_window_is_asked_to_show_itself(desktop, workspace):
    player = FakePlayer(desktop, track=track(), root={"DesktopEntry": "org.example.Fake"})
    silent = FakePlayer(desktop, "other", root={"DesktopEntry": "org.example.Other", "CanRaise": False})
    is_program(workspace, player.pid, "org.example.Fake")
    is_program(workspace, silent.pid, "org.example.Other")
    assert workspace.ask("activate org.example.Fake", "activated", "not activated") == "activated"
    player.wait_for_call("Raise")
    assert workspace.ask("activate org.example.Other", "activated", "not activated") == "not activated"
    assert workspace.ask("running org.example.Other", "running", "not running") == "not running"
    player.kill()
    silent.kill()
