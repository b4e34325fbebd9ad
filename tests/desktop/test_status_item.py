"""The status item's side of the bus protocols, before a watcher of ours."""

import dbus

from harness.tray import Bar
from harness.waiting import wait_until

PIN, SEPARATOR, SETTINGS, QUIT = 1, 2, 3, 4


def test_the_item_tells_what_it_is(start_item, bar):
    start_item()
    properties = bar.properties()
    assert properties["Id"] == "com.vennor.quillbar"
    assert properties["Title"] == "Quillbar"
    assert properties["Status"] == "Active"
    assert properties["Category"] == "ApplicationStatus"
    assert not properties["ItemIsMenu"]
    assert properties["ToolTip"][2] == "Quillbar"
    sizes = [(int(width), int(height), len(data)) for width, height, data in properties["IconPixmap"]]
    assert sizes == [(side, side, side * side * 4) for side in (22, 44, 64)]
    # The middle of the square is opaque white, by alpha, red, green, blue.
    middle = (11 * 22 + 11) * 4
    assert bytes(properties["IconPixmap"][0][2][middle : middle + 4]) == b"\xff\xff\xff\xff"


def test_a_bar_that_comes_later_and_one_that_is_restarted_hear_of_it(desktop, start_item):
    start_item()
    bar = Bar(desktop)
    first = bar.service()
    bar.process.kill()
    bar.start()
    assert bar.service() == first
    assert bar.properties()["Title"] == "Quillbar"
    bar.close()


def test_a_click_is_told_with_its_place(desktop, start_item, bar):
    helper = start_item()
    bar.item().Activate(1200, 10)
    height = desktop.x.size[1]
    helper.wait_for(f"clicked 1200 {height - 10}")


def test_a_bar_that_knows_no_place_means_the_pointers(desktop, start_item, bar):
    helper = start_item()
    desktop.x.move_pointer(300, 200)
    bar.item().Activate(0, 0)
    wait_until(lambda: helper.lines, what="the click is told")
    assert helper.lines == [f"clicked 300 {desktop.x.size[1] - 200}"]


def test_other_buttons_and_the_wheel_are_no_click(start_item, bar):
    helper = start_item()
    bar.item().SecondaryActivate(10, 10)
    bar.item().Scroll(1, "vertical")
    bar.item().Activate(20, 20)
    wait_until(lambda: helper.lines, what="the click is told")
    assert [line.split()[1] for line in helper.lines] == ["20"]


def test_the_menu_has_its_entries(start_item, bar):
    start_item()
    _, (number, properties, children) = bar.menu().GetLayout(0, -1, [])
    assert (number, properties["children-display"]) == (0, "submenu")
    entries = {int(each[0]): each[1] for each in children}
    assert list(entries) == [PIN, SEPARATOR, SETTINGS, QUIT]
    assert entries[PIN]["label"] == "Pin__Open", "an underscore is one, not a mark"
    assert (entries[PIN]["toggle-type"], entries[PIN]["toggle-state"]) == ("checkmark", 0)
    assert entries[SEPARATOR] == {"type": "separator"}
    assert entries[SETTINGS]["label"] == "Settings…" and not entries[SETTINGS]["enabled"]
    assert entries[QUIT]["enabled"] and entries[QUIT]["shortcut"] == [["Control", "q"]]


def test_a_bar_may_ask_for_less(start_item, bar):
    start_item()
    menu = bar.menu()
    assert menu.GetLayout(0, 0, [])[1][2] == []
    number, properties, below = menu.GetLayout(QUIT, -1, ["label"])[1]
    assert (number, dict(properties), list(below)) == (QUIT, {"label": "Quit"}, [])
    group = menu.GetGroupProperties([PIN, 99], ["label"])
    assert [(int(number), dict(each)) for number, each in group] == [(PIN, {"label": "Pin__Open"})]
    assert menu.GetProperty(QUIT, "label") == "Quit"
    assert not menu.AboutToShow(0)
    assert menu.AboutToShowGroup([0, 99]) == ([], [99])


def test_a_chosen_entry_acts_and_a_disabled_one_does_not(start_item, bar):
    helper = start_item()
    menu = bar.menu()
    menu.Event(SETTINGS, "clicked", "", 0)
    menu.Event(QUIT, "hovered", "", 0)
    menu.Event(99, "clicked", "", 0)
    menu.Event(QUIT, "clicked", "", 0)
    helper.wait_for("chosen Quit")
    assert helper.lines == ["chosen Quit"]


def test_events_may_come_together(start_item, bar):
    helper = start_item()
    unknown = bar.menu().EventGroup(
        [
            (PIN, "hovered", dbus.String("", variant_level=1), dbus.UInt32(0)),
            (77, "clicked", dbus.String("", variant_level=1), dbus.UInt32(0)),
            (QUIT, "clicked", dbus.String("", variant_level=1), dbus.UInt32(0)),
        ]
    )
    helper.wait_for("chosen Quit")
    assert [int(each) for each in unknown] == [77]


def test_a_changed_check_mark_is_in_the_menu(start_item, bar):
    helper = start_item()
    menu = bar.menu()
    before = menu.GetLayout(0, -1, [])[0]
    menu.Event(PIN, "clicked", "", 0)
    helper.wait_for("chosen Pin_Open")
    after, (_, _, children) = menu.GetLayout(0, -1, [])
    assert after > before
    assert children[0][1]["toggle-state"] == 1
