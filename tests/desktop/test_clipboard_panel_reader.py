"""The clipboard panel as a screen reader's user has it: named, in reach, and pressed without a pointer."""

from harness import programs
from harness.clipboard_panel import PanelReader, launch_with
from harness.history import History
from harness.waiting import wait_until

STACK = "Stack mode: queue clips and paste them in order"


def opened(panel, app):
    panel.open()
    return PanelReader(panel, app)


def test_a_found_row_is_pressed_and_pasted(desktop, panel):
    app = launch_with(desktop, "alpha beta", "gamma", "delta", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    reader = opened(panel, app)
    reader.wait_for_names("list item", ["1 delta", "2 gamma", "3 alpha beta"])
    reader.wait_for(lambda: reader.find("Search", "text").focused, "the search can be typed")
    desktop.x.type_text("alpha")
    reader.wait_for_names("list item", ["1 alpha beta"])
    assert reader.find("Search", "text").text == "alpha"
    reader.find("1 alpha beta", "list item").press()
    panel.wait_until_closed()
    editor.wait_for("alpha beta")


def test_the_selected_row_is_told(desktop, panel):
    app = launch_with(desktop, "alpha", "beta", "gamma")
    reader = opened(panel, app)

    def selected():
        return [row.name for row in reader.all("list item") if row.selected]

    reader.wait_for(lambda: selected() == ["1 gamma"], "the first row is selected")
    desktop.x.press_key("Down")
    reader.wait_for(lambda: selected() == ["2 beta"], "the second row is selected")
    desktop.x.press_key("Return")
    panel.wait_until_closed()
    wait_until(lambda: desktop.clipboard_text() == "beta", what="the selected clip is on the clipboard")


def test_a_selection_that_moves_is_announced(desktop, panel):
    app = launch_with(desktop, "alpha", "beta", "gamma")
    reader = opened(panel, app)
    reader.wait_for_names("list item", ["1 gamma", "2 beta", "3 alpha"])
    heard = reader.root.selections()
    desktop.x.press_key("Down")
    reader.wait_for(lambda: sorted(heard()) == [("1 gamma", False), ("2 beta", True)], "the move is told")
    desktop.x.type_text("alp")
    reader.wait_for(lambda: heard()[-1] == ("1 alpha", True), "what is found is told")


def test_what_stands_in_place_of_rows_is_told(desktop, panel):
    app = launch_with(desktop, "alpha")
    reader = opened(panel, app)
    reader.find("1 items", "label")
    desktop.x.type_text("zz")
    reader.find("No matches for “zz”", "label")
    reader.find("0 items", "label")


def test_boards_are_chosen_made_and_filled(desktop, panel):
    app = launch_with(desktop, "alpha", "beta")
    reader = opened(panel, app)
    reader.wait_for_names("radio button", ["All", "Pinned", "Snippets"])
    assert reader.find("All").checked
    reader.find("Pinned").press()
    reader.wait_for(lambda: reader.find("Pinned").checked, "the pinned clips are shown")
    reader.wait_for_names("list item", [])

    reader.find("New board").press()
    reader.wait_for(lambda: reader.find("Name", "text").focused, "the board's name can be typed")
    desktop.x.type_text("Work\n")
    reader.wait_for_names("radio button", ["All", "Pinned", "Snippets", "Work"])
    reader.wait_for(lambda: reader.find("Work").checked, "the new board is shown")
    assert not reader.find("All").checked
    reader.wait_for_names("list item", [])

    reader.find("All").press()
    reader.wait_for_names("list item", ["1 beta", "2 alpha"])
    desktop.x.press_key("Menu")
    reader.find("Add to board", "menu item").press()
    reader.find("Work", "menu item").press()
    reader.find("Work", "radio button").press()
    reader.wait_for_names("list item", ["1 beta"])


def test_the_queue_is_read_in_its_order_and_pasted(desktop, panel):
    app = launch_with(desktop, "alpha;", "beta;", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    reader = opened(panel, app)
    stack = reader.find(STACK, "check box")
    assert not stack.checked
    stack.press()
    reader.find("2 alpha;", "list item").press()
    reader.find("1 beta;", "list item").press()
    queue = reader.find("Queue", "list")
    reader.wait_for(
        lambda: [item.name for item in queue.children if item.role == "list item"] == ["1 alpha;", "2 beta;"],
        "the queue is read in its order",
    )
    reader.find("Paste every queued clip in order").press()
    panel.wait_until_closed()
    editor.wait_for("alpha;beta;")


def test_a_row_is_edited(desktop, panel):
    app = launch_with(desktop, "alpha")
    reader = opened(panel, app)
    reader.find("Edit").press()
    reader.wait_for(lambda: reader.find("Edit clip", "text").focused, "the text can be typed")
    desktop.x.type_text("bet")
    reader.wait_for(lambda: reader.find("Edit clip", "text").text == "alphabet", "it is read")
    reader.find("Save (⌘↩)").press()
    reader.wait_for_names("list item", ["1 alphabet"])
    History(desktop).latest(text="alphabet")


def test_a_snippet_is_made_and_pasted(desktop, panel):
    app = launch_with(desktop, "alpha", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    reader = opened(panel, app)
    reader.find("Snippets", "radio button").press()
    reader.find("Save a reusable snippet").press()
    reader.wait_for(lambda: reader.find("Title", "text").focused, "the title can be typed")
    desktop.x.type_text("regards\t")
    reader.wait_for(lambda: reader.find("Text", "text").focused, "the text can be typed")
    desktop.x.type_text("Kind regards")
    reader.find("Save (⌘↩)").press()
    reader.find("regards", "list item").press()
    panel.wait_until_closed()
    editor.wait_for("Kind regards")
