"""The panel's stack and snippets, used with the pointer and pasted into real editors."""

import signal

import pytest

from harness import programs
from harness.clipboard_panel import PanelReader, launch_with
from harness.clock import hurried
from harness.history import History
from harness.waiting import holds_for, wait_until

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


def has_keyboard(desktop, program):
    """Whether keys go to the program: its window or one within has the focus."""
    focus = desktop.x.connection.create_resource_object("window", desktop.x.focus_id())
    focused, own = desktop.x.top_level(focus), desktop.x.top_level(program.window)
    return focused is not None and own is not None and focused.id == own.id


@pytest.mark.parametrize("editor", [programs.gtk_editor, programs.qt_editor])
def test_a_stack_is_in_an_editor_in_its_order(desktop, panel, history, editor):
    app = launch_with(desktop, "alpha;", "beta;", "gamma;", autoPasteEnabled=True)
    editor = editor(desktop)
    reader = open_with_queue(panel, app, "2 beta;", "3 alpha;", "1 gamma;")
    reader.click("Paste every queued clip in order")
    panel.wait_until_closed()
    editor.wait_for("beta;alpha;gamma;")
    wait_until(lambda: history.texts() == ["gamma;", "alpha;", "beta;"], what="the last one pasted is on top")


def test_a_program_that_hangs_for_a_while_gets_the_whole_stack_too(desktop, panel):
    # Its patience with the editor is a second of its own clock, which a busy machine needs for less.
    rate = 0.2
    desktop.configure(autoPasteEnabled=True)
    app = desktop.launch(hurried(rate))
    for text in ("alpha;", "beta;", "gamma;"):
        desktop.copy_text(text)
        History(desktop).latest(text=text)
    editor = programs.gtk_editor(desktop)
    reader = open_with_queue(panel, app, "2 beta;", "3 alpha;", "1 gamma;")
    editor.process.send(signal.SIGSTOP)
    reader.click("Paste every queued clip in order")
    panel.wait_until_closed()
    # Longer than all steps together take where nobody hangs.
    holds_for(lambda: app.running, 0.6 / rate, "the program waits")
    editor.process.send(signal.SIGCONT)
    editor.wait_for("beta;alpha;gamma;")


def test_paste_next_copies_the_front_of_the_queue_and_types_nothing(desktop, panel, history):
    app = launch_with(desktop, "alpha", "beta", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    reader = open_with_queue(panel, app, "2 alpha", "1 beta")
    reader.click("Paste the front item and close")
    panel.wait_until_closed()
    history.latest(text="alpha")
    wait_until(lambda: desktop.clipboard_text() == "alpha", what="the other programs know of it")
    app.wait_until_idle()
    wait_until(lambda: has_keyboard(desktop, editor), what="the editor has the keyboard again")
    desktop.x.type_text("typed")
    editor.wait_for("typed")


def test_a_snippet_is_made_pasted_and_recorded(desktop, panel, history):
    app = launch_with(desktop, "earlier", autoPasteEnabled=True)
    editor = programs.qt_editor(desktop)
    panel.open()
    reader = PanelReader(panel, app)
    reader.click("Snippets", "radio button")
    reader.click("Save a reusable snippet")
    reader.wait_for(lambda: reader.find("Title", "text").focused, "the title has the keyboard")
    app.wait_until_idle()
    desktop.x.type_text("regards\nKind regards,\nQuillbar")
    desktop.x.press_key("ctrl+Return")
    reader.click("regards", "list item")
    panel.wait_until_closed()
    editor.wait_for("Kind regards,\nQuillbar")
    history.latest(text="Kind regards,\nQuillbar")
    assert history.texts()[1:] == ["earlier"]
