"""What the clipboard panel pastes is in the program that was in front: editors, terminals, a browser, a file
manager."""

import io

import pytest
from PIL import Image

from harness import programs
from harness.clipboard_panel import SHORTCUT, launch_with
from harness.copying import copy_until
from harness.waiting import wait_until

EDITORS = [programs.gtk_editor, programs.qt_editor]
RED = (200, 30, 30)
PAGE = """<meta charset="utf-8"><title>ready</title><body style="margin: 0; font-size: 20px">
<style>div { height: 40px } input { display: block; height: 40px; border: 0; padding: 0 }</style>
<div style="background: rgb(200, 30, 30)"></div>
<input id="field" oninput="document.title = 'field: ' + value + '.'">
<div contenteditable id="first"></div><div contenteditable id="second"></div>
<script>
for (const box of document.querySelectorAll("[contenteditable]"))
    box.oninput = () => { document.title = box.id + ": " + box.innerHTML + "." };
document.addEventListener("focusin", event => { document.title = event.target.id + " has the keyboard" });
document.onpaste = async event => {
    for (const file of event.clipboardData.files) {
        const image = await createImageBitmap(file);
        const canvas = new OffscreenCanvas(1, 1).getContext("2d");
        canvas.drawImage(image, 0, 0);
        const pixel = canvas.getImageData(0, 0, 1, 1).data;
        document.title = [file.type, image.width, image.height, ...pixel].join(" ") + ".";
    }
};
</script>"""
# How far down the page its parts are.
PARTS = {"field": 60, "first": 100, "second": 140}


def open_page(desktop):
    path = desktop.home / "page.html"
    path.write_text(PAGE)
    return programs.Browser(desktop, path, corner=RED)


def click_into(browser, part):
    browser.do_until(
        lambda: browser.click(60, PARTS[part]),
        lambda: browser.title.startswith(f"{part} has the keyboard"),
        f"the page's {part} has the keyboard",
    )


def wait_for_title(browser, title):
    wait_until(lambda: browser.title.startswith(title), what=f"the page has got {title!r}")


def paste(panel, letters, key="Return"):
    """Without a wait in between, as fast fingers do it."""
    panel.x.press_key(SHORTCUT)
    panel.x.type_text(letters)
    panel.x.press_key(key)
    panel.wait_until_closed()


@pytest.mark.parametrize("editor", EDITORS)
def test_text_is_in_an_editor(desktop, panel, editor):
    launch_with(desktop, "one line\nand — another", "not this", autoPasteEnabled=True)
    editor = editor(desktop)
    paste(panel, "another")
    editor.wait_for("one line\nand — another")


def test_a_row_by_its_number_is_in_a_qt_editor(desktop, panel):
    launch_with(desktop, "first", "second", "third", autoPasteEnabled=True)
    editor = programs.qt_editor(desktop)
    paste(panel, "", "ctrl+2")
    editor.wait_for("second")


def test_text_is_in_a_terminal(desktop, panel):
    launch_with(desktop, "ls -l", "echo", autoPasteEnabled=True)
    terminal = programs.lxterminal(desktop)
    paste(panel, "ls")
    terminal.wait_for("ls -l")


@pytest.mark.parametrize("plain", [False, True])
def test_rich_text_is_rich_or_plain_as_the_user_wants_it(desktop, panel, history, plain):
    launch_with(desktop, autoPasteEnabled=True, pasteAsPlainByDefault=plain)
    offers = {"UTF8_STRING": b"bold words", "text/html": b"<b>bold</b> words"}
    copy_until(desktop, offers, lambda: history.texts() == ["bold words"])
    browser = open_page(desktop)
    click_into(browser, "first")
    paste(panel, "bold")
    wait_for_title(browser, "first: bold words." if plain else "first: <b>bold</b> words.")
    click_into(browser, "second")
    paste(panel, "bold", "alt+Return")
    wait_for_title(browser, "second: <b>bold</b> words." if plain else "second: bold words.")


def test_text_is_in_a_field_of_a_page_and_an_image_beside_it(desktop, panel, history):
    launch_with(desktop, "alpha beta", autoPasteEnabled=True)
    png = io.BytesIO()
    Image.new("RGB", (300, 200), RED).save(png, "PNG")
    copy_until(desktop, {"image/png": png.getvalue()}, lambda: len(history.clips()) == 2)
    history.latest(kind="image")
    browser = open_page(desktop)
    click_into(browser, "field")
    paste(panel, "alph")
    wait_for_title(browser, "field: alpha beta.")
    click_into(browser, "first")
    paste(panel, "image")
    wait_for_title(browser, "image/png 300 200 200 30 30 255.")


def test_a_file_is_in_another_folder(desktop, panel, history):
    launch_with(desktop, autoPasteEnabled=True)
    here, there = desktop.home / "here", desktop.home / "there"
    here.mkdir()
    there.mkdir()
    (here / "a report.txt").write_text("figures")
    manager = programs.file_manager(desktop, here)
    manager.do_until(lambda: manager.press("ctrl+a", "ctrl+c"), history.clips, "the file is copied")
    # It may have been asked twice, and must not copy once more later on.
    manager.process.wait_until_idle()
    desktop.copy_text("not this")
    history.latest(text="not this")
    programs.file_manager(desktop, there)
    # The first process shows the second folder too, and takes no keys for it before that is read.
    manager.process.wait_until_idle()
    paste(panel, "report")
    wait_until((there / "a report.txt").exists, what="the file is there")
    wait_until(lambda: (there / "a report.txt").read_text() == "figures", what="all of it is there")
    assert (here / "a report.txt").read_text() == "figures"
