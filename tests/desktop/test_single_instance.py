"""One instance a session: a second start wakes the first and ends."""

import signal
import time

import pytest

from harness.waiting import holds_for, wait_until


def start_second(desktop):
    """Run the program once more to its end; its time goes into the test's output."""
    before = [window.id for window in desktop.panel.windows()]
    start = time.monotonic()
    second = desktop.start_quillbar()
    while second.running:
        assert time.monotonic() - start < 20, "the second start does not end"
        assert [window.id for window in desktop.panel.windows()] == before, "a second window"
    print(f"second start ended after {(time.monotonic() - start) * 1000:.0f} ms")
    return second


def monitor_activations(desktop):
    monitor = desktop.start(
        "dbus-monitor", ["dbus-monitor", "--session", "interface='org.freedesktop.Application'"]
    )
    wait_until(lambda: "NameLost" in monitor.output, what="the bus is watched")
    return monitor


def has_name(desktop):
    """Whether the program owns its name on the session bus."""
    query = desktop.start(
        "has-name",
        ["dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus"]
        + ["/", "org.freedesktop.DBus.NameHasOwner", "string:com.vennor.quillbar"],
    )
    assert query.wait() == 0, query.output
    return "true" in query.output


def test_a_second_start_activates_the_first_and_ends(desktop, quillbar):
    monitor = monitor_activations(desktop)
    second = start_second(desktop)
    assert second.status == 0, second.output
    assert second.output_lines == []
    wait_until(lambda: "member=Activate" in monitor.output, what="Activate has been called")
    call = next(line for line in monitor.output_lines if "member=Activate" in line)
    assert "destination=com.vennor.quillbar" in call
    assert "path=/com/vennor/quillbar" in call
    quillbar.wait_until_idle()
    assert quillbar.running
    assert len(desktop.panel.windows()) == 1


def test_many_starts_at_once_leave_one(desktop):
    starts = [desktop.start_quillbar() for _ in range(4)]
    wait_until(lambda: sum(each.running for each in starts) == 1, 20, "one of them is left")
    assert sorted(str(each.status) for each in starts) == ["0", "0", "0", "None"]
    wait_until(desktop.panel.windows, what="the panel is on the screen")
    holds_for(lambda: len(desktop.panel.windows()) == 1, 0.3, "there is one panel")


def kill(app):
    app.send(signal.SIGKILL)
    assert app.wait() == -signal.SIGKILL


def test_a_killed_first_does_not_block_the_next(desktop, quillbar):
    kill(quillbar)
    wait_until(lambda: not desktop.panel.windows(), what="its window is gone")
    desktop.launch()
    assert start_second(desktop).status == 0


@pytest.mark.desktop(bus=False)
def test_without_a_bus_a_second_start_ends_too(desktop, quillbar):
    second = start_second(desktop)
    assert second.status == 0, second.output
    assert quillbar.running
    kill(quillbar)
    wait_until(lambda: not desktop.panel.windows(), what="its window is gone")
    desktop.launch()
    assert start_second(desktop).status == 0


def test_the_bus_dies_and_the_program_goes_on(desktop, quillbar):
    before = quillbar.output_lines
    desktop.bus.kill()
    wait_until(lambda: len(quillbar.output_lines) > len(before), what="the program has noticed")
    desktop.open_panel()
    desktop.point_away()
    desktop.panel.wait_until_closed()
    quillbar.wait_until_idle()
    assert quillbar.running
    assert len(quillbar.output_lines) == len(before) + 1, quillbar.output
    assert start_second(desktop).status == 0


def test_a_bus_that_returns_gets_the_name_back(desktop, quillbar):
    desktop.bus.kill()
    wait_until(lambda: quillbar.output_lines, what="the program has noticed")
    desktop.start_bus()
    # The program looks for a lost bus only now and then.
    wait_until(lambda: has_name(desktop), 30.0, "the name has its owner again", interval=0.2)
    monitor = monitor_activations(desktop)
    assert start_second(desktop).status == 0
    wait_until(lambda: "member=Activate" in monitor.output, what="Activate has been called")
    assert quillbar.running
    assert len(quillbar.output_lines) == 1, quillbar.output
