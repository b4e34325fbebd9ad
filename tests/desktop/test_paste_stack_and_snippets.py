"""The panel's stack and snippets, used with the pointer and pasted into real editors."""

import signal

import pytest

from harness import programs
from harness.clipboard_panel import PanelReader, launch_with
from harness.waiting import holds_for

STACK = "Stack mode: queue clips and paste them in order"


def open_with_queue(panel, app, *rows):
    """The rows tapped in that order, each of which gets a place in the queue that is not its own number."""
    panel.open()
    reader = PanelReader(panel, app)
    reader.click(STACK)
    for number, row in enumerate(rows, 1):
        reader.click(row, "list item")
        queued = f"{number} {row.partition(' ')[2]}"
        reader.find(queued, "list item")
    return reader


@pytest.mark.parametrize("editor", [programs.gtk_editor, programs.qt_editor])
def test_a_stack_is_in_an_editor_in_its_order(desktop, panel, history, editor):
    app = launch_with(desktop, "alpha;", "beta;", "gamma;", autoPasteEnabled=True)
    editor = editor(desktop)
    reader = open_with_queue(panel, app, "2 beta;", "3 alpha;", "1 gamma;")
    reader.click("Paste every queued clip in order")
    panel.wait_until_closed()
    history.latest(text="gamma;")
    editor.wait_for("beta;alpha;gamma;")
    assert history.texts() == ["gamma;", "alpha;", "beta;"]


def test_a_program_that_hangs_for_a_while_gets_the_whole_stack_too(desktop, panel):
    app = launch_with(desktop, "alpha;", "beta;", "gamma;", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    reader = open_with_queue(panel, app, "2 beta;", "3 alpha;", "1 gamma;")
    editor.process.send(signal.SIGSTOP)
    reader.click("Paste every queued clip in order")
    panel.wait_until_closed()
    # Longer than all steps together take where nobody hangs.
    holds_for(lambda: app.running, 0.7, "the program waits")
    editor.process.send(signal.SIGCONT)
    editor.wait_for("beta;alpha;gamma;")


def test_paste_next_copies_the_front_of_the_queue_and_types_nothing(desktop, panel, history):
    app = launch_with(desktop, "alpha", "beta", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    reader = open_with_queue(panel, app, "2 alpha", "1 beta")
    reader.click("Paste the front item and close")
    panel.wait_until_closed()
    history.latest(text="alpha")
    assert desktop.clipboard_text() == "alpha"
    app.wait_until_idle()
    desktop.x.type_text("typed")
    editor.wait_for("typed")


def test_a_snippet_is_made_pasted_and_recorded(desktop, panel, history):
    app = launch_with(desktop, "earlier", autoPasteEnabled=True)
    editor = programs.qt_editor(desktop)
    panel.open()
    reader = PanelReader(panel, app)
    reader.click("Snippets", "radio button")
    reader.click("Save a reusable snippet")
    reader.find("Title", "text")
    app.wait_until_idle()
    desktop.x.type_text("regards\nKind regards,\nQuillbar")
    desktop.x.press_key("ctrl+Return")
    reader.click("regards", "list item")
    panel.wait_until_closed()
    editor.wait_for("Kind regards,\nQuillbar")
    history.latest(text="Kind regards,\nQuillbar")
    assert history.texts()[1:] == ["earlier"]
