"""The keys of text editing in the clipboard panel's search field."""

from harness.clipboard_panel import launch_with
from harness.waiting import wait_until


def press(desktop, *chords):
    for chord in chords:
        desktop.x.press_key(chord)


def wait_for_field(desktop, text):
    """Awaits that the field, which is told by copying all of it, holds the text."""

    def copied():
        press(desktop, "ctrl+a", "ctrl+c")
        return desktop.clipboard_text() == text

    wait_until(copied, what=f"the field holds {text!r}")


def test_select_all_copy_cut_and_paste(desktop, panel):
    launch_with(desktop, "alpha")
    panel.open()
    desktop.x.type_text("one")
    press(desktop, "ctrl+a", "ctrl+c")
    wait_until(lambda: desktop.clipboard_text() == "one", what="the field's text is copied")
    desktop.x.type_text("two")
    press(desktop, "ctrl+a", "ctrl+x")
    wait_until(lambda: desktop.clipboard_text() == "two", what="the field's text is cut")
    press(desktop, "ctrl+v", "ctrl+v")
    desktop.x.type_text("three")
    wait_for_field(desktop, "twotwothree")


def test_undo_and_redo(desktop, panel):
    launch_with(desktop, "alpha")
    panel.open()
    desktop.x.type_text("one")
    press(desktop, "ctrl+a", "Delete", "ctrl+z", "End")
    desktop.x.type_text("two")
    wait_for_field(desktop, "onetwo")

    press(desktop, "ctrl+a", "Delete")
    desktop.x.type_text("three")
    press(desktop, "ctrl+a", "Delete", "ctrl+z", "ctrl+shift+z", "End")
    desktop.x.type_text("four")
    wait_for_field(desktop, "four")


def test_the_search_follows_what_is_undone(desktop, panel):
    launch_with(desktop, "alpha", "beta")
    panel.open()
    desktop.x.type_text("alp")
    press(desktop, "ctrl+a", "Delete", "ctrl+z", "Return")
    panel.wait_until_closed()
    wait_until(lambda: desktop.clipboard_text() == "alpha", what="the clip that was searched for is copied")


def test_the_programs_own_clip_can_be_pasted_into_it(desktop, panel):
    launch_with(desktop, "alpha", "beta")
    panel.open()
    press(desktop, "Down", "Return")
    panel.wait_until_closed()
    wait_until(lambda: desktop.clipboard_text() == "alpha", what="the clip is on the clipboard")
    panel.open()
    press(desktop, "ctrl+v")
    desktop.x.type_text("!")
    wait_for_field(desktop, "alpha!")
