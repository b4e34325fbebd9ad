"""What other programs copy is recorded, what must not be is not, and all of it is there after a restart."""

from harness import programs
from harness.copying import CopySource
from harness.history import PAST_A_BEAT, picture, rich
from harness.pasteboard import copy_and_end
from harness.waiting import wait_until
from PIL import Image


def copy_all(program, look):
    program.do_until(lambda: program.press("ctrl+a", "ctrl+c"), look, "all of it is copied")


def test_text_of_a_gtk_editor(desktop, history, quillbar):
    editor = programs.gtk_editor(desktop, "first line\nsecond — line")
    copy_all(editor, history.texts)
    clip = history.latest(kind="text", text="first line\nsecond — line", detectedKind={"type": "plain"})
    assert clip["sourceBundleID"] == "org.xfce.mousepad"
    assert clip["richData"] == {}
    assert len(history.clips()) == 1


def test_text_of_a_qt_editor(desktop, history, quillbar):
    editor = programs.qt_editor(desktop, "rgb(255, 0, 128)")
    copy_all(editor, history.texts)
    clip = history.latest(
        kind="text", text="rgb(255, 0, 128)", detectedKind={"type": "color", "value": "#FF0080"}
    )
    assert clip["sourceBundleID"] == "featherpad"


def test_files_of_a_file_manager(desktop, history, quillbar):
    folder = desktop.home / "docs"
    folder.mkdir()
    paths = [folder / "a b.txt", folder / "ü%41.txt"]
    for path in paths:
        path.write_text("x")
    manager = programs.file_manager(desktop, folder)
    copy_all(manager, history.clips)
    clip = history.latest(kind="file", text="", sourceBundleID="pcmanfm")
    assert sorted(clip["filePaths"]) == sorted(map(str, paths))


PAGE = """<meta charset="utf-8"><body style="margin: 0; font-size: 40px">
<img src="i.png" width="300" height="200"><br>
<div><a href="https://example.com/x?a=1&amp;b=2">a link to follow</a></div>
<div>words <b>in bold</b></div>"""


def test_text_image_and_link_of_a_browser(desktop, history, quillbar):
    red = (200, 30, 30)
    Image.new("RGB", (300, 200), red).save(desktop.home / "i.png")
    (desktop.home / "page.html").write_text(PAGE)
    browser = programs.Browser(desktop, desktop.home / "page.html", corner=red)

    browser.choose(150, 100, "y")
    clip = history.latest(kind="image", text="", sourceBundleID="firefox-esr")
    shown = picture(clip).convert("RGB")
    assert shown.size == (300, 200) and shown.getpixel((150, 100)) == red

    link = "https://example.com/x?a=1&b=2"
    browser.choose(60, 230, "l")
    history.latest(kind="text", text=link, detectedKind={"type": "link", "value": link})

    for _ in range(3):
        browser.click(60, 280)
    browser.do_until(
        lambda: browser.press("ctrl+c"), lambda: "words in bold" in history.texts()[0], "text is copied"
    )
    assert "in bold</b>" in rich(history.latest(kind="text"), "public.html")


def test_a_secret_is_never_recorded(desktop, history, quillbar):
    for hint in (b"secret", b"1", b""):
        offers = {"UTF8_STRING": b"hunter2", "x-kde-passwordManagerHint": hint}
        owner = CopySource(desktop.x, offers)
        wait_until(lambda: "TARGETS" in owner.asked(), what="it is asked what it has")
        desktop.copy_text(f"after {hint.decode()}")
        history.latest(text=f"after {hint.decode()}")
        assert "UTF8_STRING" not in owner.asked()
    assert "hunter2" not in history.path.read_text()
    assert "hunter2" not in quillbar.output and "after" not in quillbar.output


def test_an_excluded_program_is_never_recorded(desktop, history):
    desktop.configure(clipboardExcludedBundleIDs=["org.xfce.mousepad"])
    desktop.launch()
    editor = programs.gtk_editor(desktop, "of the excluded")
    editor.do_until(
        lambda: editor.press("ctrl+a", "ctrl+c"),
        lambda: "UTF8_STRING" in desktop.clipboard_targets(),
        "it is copied",
    )
    assert desktop.clipboard_text() == "of the excluded"
    other = programs.qt_editor(desktop, "of another")
    copy_all(other, lambda: "of another" in history.texts())
    assert history.texts() == ["of another"]


def test_an_excluded_program_may_be_left_at_once(desktop, history):
    desktop.configure(clipboardExcludedBundleIDs=["org.xfce.mousepad"])
    app = desktop.launch()
    other = desktop.client(title="other")
    programs.gtk_editor(desktop)
    app.wait_until_idle()
    owner = CopySource(desktop.x, {"UTF8_STRING": b"hunter2"})
    wait_until(lambda: owner.connection.pending_events(), what="it is asked what it has")
    desktop.x.send_to_root(other.window, "_NET_ACTIVE_WINDOW", 2)
    wait_until(lambda: desktop.x.active_id() == other.window.id, what="the user has turned to another")
    wait_until(lambda: "UTF8_STRING" in owner.asked(), what="it has handed over the text")
    app.wait_until_idle(quiet=PAST_A_BEAT)
    desktop.copy_text("after")
    history.latest(text="after")
    assert history.texts() == ["after"]


def test_the_copy_of_a_program_that_ends_at_once_is_recorded(desktop, history, quillbar):
    for count in range(10):
        copy_and_end(desktop, b"copy %d" % count)
        history.latest(text=f"copy {count}")
    assert len(history.clips()) == 10


def test_a_restart_and_a_crash_keep_the_history(desktop, history, quillbar):
    for text in ("one", "two", "three"):
        desktop.copy_text(text)
        history.latest(text=text)
    before = history.clips()
    quillbar.kill()
    app = desktop.launch()
    desktop.copy_text("four")
    history.latest(text="four")
    assert history.texts() == ["four", "three", "two", "one"]
    assert {clip["uuid"] for clip in before} < {clip["uuid"] for clip in history.clips()}
    app.send(15)
    assert app.wait() == 0
    desktop.launch()
    desktop.copy_text("five")
    history.latest(text="five")
    assert len(history.clips()) == 5


def test_ids_are_never_used_again(desktop, history):
    app = desktop.launch()
    desktop.copy_text("one")
    history.latest(text="one")
    app.send(15)
    assert app.wait() == 0
    history.path.write_text(history.path.read_text().replace('"one"', '"edited"'))
    desktop.copy_text("another")
    desktop.launch()
    history.latest(text="another")
    desktop.copy_text("one")
    history.latest(text="one")
    assert history.texts() == ["one", "another", "edited"]
    assert len({clip["id"] for clip in history.clips()}) == 3


def test_nobody_else_can_read_the_history(desktop, history):
    history.path.parent.mkdir(mode=0o755)
    history.path.write_text("[]")
    history.path.chmod(0o644)
    desktop.launch()
    assert history.path.stat().st_mode & 0o777 == 0o600
    assert history.path.parent.stat().st_mode & 0o777 == 0o700
    desktop.copy_text("kept")
    history.latest(text="kept")
    assert history.path.stat().st_mode & 0o777 == 0o600


def test_a_launch_with_capture_off_leaves_the_file(desktop, history):
    history.path.parent.mkdir(mode=0o700)
    text = '{"schemaVersion":2,"clips":[],"boards":[]}'
    history.path.write_text(text)
    desktop.configure(clipboardEnabled=False)
    app = desktop.launch()
    desktop.copy_text("not recorded")
    app.wait_until_idle()
    assert history.path.read_text() == text


def test_a_huge_text_leaves_nothing_in_memory(desktop, history, quillbar):
    desktop.copy_text("before")
    history.latest(text="before")
    quillbar.wait_until_idle(quiet=PAST_A_BEAT)
    at_first = quillbar.own_memory_kib()
    for number in range(3):
        desktop.copy_text("0123456789" * 6_000_000)
        quillbar.wait_until_idle(quiet=0.5)
        desktop.copy_text(f"after {number}")
        history.latest(text=f"after {number}")
        quillbar.wait_until_idle(quiet=PAST_A_BEAT)
    assert quillbar.own_memory_kib() < at_first + 4096
