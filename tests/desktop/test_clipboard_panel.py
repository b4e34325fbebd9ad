"""The clipboard panel over the real program: opened, typed into, pasted from and left, as a person does it."""

import pathlib

import pytest
from Xlib import error

from harness import programs
from harness.clipboard_panel import SHORTCUT, launch_with
from harness.tray import Bar, start_trayer, wait_for_icon
from harness.waiting import wait_until

GTK_ENTRY = pathlib.Path(__file__).parents[1] / "helpers" / "gtk_entry.py"
MANAGERS = [{"wm": name} for name in ("openbox", "openbox+picom", "xfwm4", "mutter", "i3")]
every_manager = pytest.mark.parametrize("desktop", MANAGERS, indirect=True)


class Entry:
    """A text field of GTK, with the keyboard."""

    def __init__(self, desktop):
        self.process = desktop.start("gtk-entry", ["/usr/bin/python3", "-B", GTK_ENTRY])
        wait_until(lambda: "shown" in self.process.output_lines, 30, "the text field is shown")
        self.desktop = desktop
        self.wait_for_keyboard()

    def has_keyboard(self):
        """Whether the window with the focus, or one that it lies in, is the field's."""
        window = self.desktop.x.connection.create_resource_object("window", self.desktop.x.focus_id())
        try:
            while window and window.id != self.desktop.x.root.id:
                if window.get_wm_name() == "entry":
                    return True
                window = window.query_tree().parent
        except error.XError:  # one that has gone, or none at all
            pass
        return False

    def wait_for_keyboard(self):
        wait_until(self.has_keyboard, 30, "the text field has the keyboard")

    @property
    def text(self):
        lines = [line[5:] for line in self.process.output_lines if line.startswith("text ")]
        return lines[-1] if lines else ""

    def wait_for(self, text):
        wait_until(lambda: self.text == text, what=f"the field holds {text!r}")


@every_manager
def test_shortcut_letters_and_return_paste_into_the_program_in_front(desktop, panel):
    launch_with(desktop, "alpha beta", "gamma delta", "epsilon", autoPasteEnabled=True)
    entry = Entry(desktop)
    # No wait in between: what is typed at once must not be lost.
    desktop.x.press_key(SHORTCUT)
    desktop.x.type_text("gam\n")
    entry.wait_for("gamma delta")
    panel.wait_until_closed()
    entry.wait_for_keyboard()


def test_no_key_is_lost_however_often_the_panel_opens(desktop, panel):
    texts = [f"text number {number}" for number in range(10)]
    launch_with(desktop, *texts)
    entry = Entry(desktop)
    for number in range(10):
        desktop.x.press_key(SHORTCUT)
        desktop.x.type_text(f"number {number}\n")
        wait_until(lambda: desktop.clipboard_text() == texts[number], what=f"clip {number} is copied")
        panel.wait_until_closed()
    assert entry.text == ""


def test_a_terminal_gets_its_own_chord(desktop, panel):
    launch_with(desktop, "ls -l", "echo", autoPasteEnabled=True)
    terminal = programs.xterm(desktop)
    desktop.x.press_key(SHORTCUT)
    desktop.x.type_text("ls\n")
    terminal.wait_for("ls -l")


def test_a_gtk_editor_gets_a_row_by_its_number(desktop, panel):
    launch_with(desktop, "first", "second", "third", autoPasteEnabled=True)
    editor = programs.gtk_editor(desktop)
    desktop.x.press_key(SHORTCUT)
    desktop.x.press_key("ctrl+2")
    panel.wait_until_closed()
    editor.wait_for("second")


def test_without_auto_paste_the_clip_is_on_the_clipboard_and_nothing_is_typed(desktop, panel):
    app = launch_with(desktop, "first", "second")
    entry = Entry(desktop)
    desktop.x.press_key(SHORTCUT)
    desktop.x.press_key("Down")
    desktop.x.press_key("Return")
    panel.wait_until_closed()
    wait_until(lambda: desktop.clipboard_text() == "first", what="the clip is on the clipboard")
    app.wait_until_idle()
    assert entry.text == ""


@every_manager
def test_escape_closes_it_and_the_keyboard_is_back_at_once(desktop, panel):
    launch_with(desktop, "first")
    entry = Entry(desktop)
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()
    desktop.x.press_key("Escape")
    entry.wait_for_keyboard()
    desktop.x.type_text("on")
    entry.wait_for("on")
    panel.wait_until_closed()


@every_manager
def test_the_shortcut_closes_it_too(desktop, panel):
    launch_with(desktop, "first")
    entry = Entry(desktop)
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_closed()
    entry.wait_for_keyboard()


@every_manager
def test_a_click_elsewhere_closes_it(desktop, panel):
    launch_with(desktop, "first")
    client = desktop.client()
    client.activate()
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()
    place = desktop.x.geometry(client.window)
    client.forget()

    # Into the window that had the keyboard, which a manager may believe to have it still. Until the panel
    # has been up long enough, a click leaves it there.
    def clicked():
        desktop.x.click(place.x + 5, place.y + place.height - 5)
        return panel.window is None

    wait_until(clicked, what="a click closes the panel")
    client.wait_for("press")
    wait_until(lambda: not panel.has_keyboard(), what="the keyboard is elsewhere")


def test_a_click_on_the_empty_desktop_closes_it(desktop, panel):
    launch_with(desktop, "first")
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()

    def clicked():
        desktop.x.click(20, desktop.x.size[1] - 20)
        return panel.window is None

    wait_until(clicked, what="a click closes the panel")


def test_a_click_at_once_after_the_opening_leaves_it_up(desktop, panel):
    app = launch_with(desktop, "first")
    client = desktop.client()
    client.activate()
    place = desktop.x.geometry(client.window)

    def stays_up():
        desktop.x.press_key(SHORTCUT)
        panel.wait_until_open()
        client.forget()
        desktop.x.click(place.x + 5, place.y + place.height - 5)
        client.wait_for("press")
        app.wait_until_idle()
        return panel.window is not None

    # On a busy machine one click or another may come too late.
    wait_until(stays_up, 40, "a click at once leaves the panel up")


def test_a_click_into_it_leaves_it_open(desktop, panel):
    app = launch_with(desktop, "first")
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()
    app.wait_until_idle()
    place = desktop.x.geometry(panel.window)
    desktop.x.click(place.x + place.width // 2, place.y + 6)
    app.wait_until_idle()
    assert panel.has_keyboard()


def test_a_key_that_another_program_grabs_leaves_it_open(desktop, panel, start_helper):
    other = start_helper("hotkeys")
    assert other.ask("register 8 768", "registered", "refused") == "registered"
    app = launch_with(desktop, "first")
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()
    app.wait_until_idle()
    desktop.x.press_key("super+shift+c")
    other.wait_for("pressed 8")
    app.wait_until_idle()
    assert panel.has_keyboard()


def test_the_icon_in_the_bar_toggles_it(desktop, panel):
    bar = Bar(desktop)
    launch_with(desktop, "first")
    desktop.x.move_pointer(1000, 10)
    bar.item().Activate(1000, 10)
    panel.wait_until_open()

    def hangs_below():
        place = desktop.x.geometry(panel.window)
        return place.y > 10 and abs(place.right - 1000) <= 24

    wait_until(hangs_below, what="it hangs below the click")
    bar.item().Activate(1000, 10)
    panel.wait_until_closed()
    bar.close()


def test_the_icon_in_an_old_tray_opens_it(desktop, panel):
    start_trayer(desktop)
    app = launch_with(desktop, "first")
    middle = wait_for_icon(desktop)
    # Each click toggles, so there is one, once the icon can take it.
    app.wait_until_idle()
    desktop.x.click(*middle)
    panel.wait_until_open()


def test_a_click_on_the_icon_that_takes_the_keyboard_does_not_open_it_again(desktop, panel):
    start_trayer(desktop)
    app = launch_with(desktop, "first")
    middle = wait_for_icon(desktop)
    app.wait_until_idle()
    desktop.x.click(*middle)
    panel.wait_until_open()
    app.wait_until_idle()
    desktop.x.click(*middle)
    panel.wait_until_closed()
    app.wait_until_idle()
    assert panel.window is None


def test_the_corners_show_what_lies_beneath_without_a_compositor(desktop, panel):
    launch_with(desktop, "first")
    colour = (200, 30, 30)
    desktop.backdrop(colour)
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()
    wait_until(lambda: desktop.x.geometry(panel.window).y == 0, what="the panel is at its place")
    place = desktop.x.geometry(panel.window)

    def edge(x):
        return desktop.x.pixel(x, place.bottom - 1)

    wait_until(lambda: edge(place.x + place.width // 2) != colour, what="it is drawn down to its edge")
    for x in (place.x, place.right - 1):
        wait_until(lambda: edge(x) == colour, what="its corner shows what lies beneath")


def test_it_stands_above_the_notch_and_every_window(desktop, panel):
    launch_with(desktop, "first")
    desktop.x.press_key(SHORTCUT)
    panel.wait_until_open()
    other = desktop.client(title="late")
    wait_until(
        lambda: desktop.x.stack_index(panel.window)
        > max(desktop.x.stack_index(desktop.panel.window), desktop.x.stack_index(other.window)),
        what="the clipboard panel is on top",
    )
