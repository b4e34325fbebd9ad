"""The status item in real bars, new and old, and the menu that we show where a bar has none."""

import pytest
from Xlib import X
from Xlib.ext import xtest

from harness.tray import (
    Bar,
    XfcePanel,
    icon_in_bar,
    keyboard_is_held,
    own_menus,
    start_trayer,
    tool_tips,
    wait_for_icon,
)
from harness.waiting import wait_until


def icon_at_rest(desktop, bar):
    """The middle of the icon once the bar, a process, has come to rest: it may move it at first."""
    wait_for_icon(desktop)
    bar.wait_until_idle()
    return wait_for_icon(desktop)


# -- a real bar ------------------------------------------------------------------------------------


def test_a_real_bar_shows_the_icon_and_tells_left_clicks(desktop, start_item):
    panel = XfcePanel(desktop)
    helper = start_item()
    x, y = icon_at_rest(desktop, panel.process)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")
    _, told_x, told_y = helper.lines[0].split()
    assert abs(float(told_x) - x) <= 30 and abs(desktop.x.size[1] - float(told_y) - y) <= 30
    assert panel.menus() == []


def test_a_right_click_on_a_real_bar_gives_the_menu(desktop, start_item):
    panel = XfcePanel(desktop)
    helper = start_item()
    x, y = icon_at_rest(desktop, panel.process)
    desktop.x.click(x, y, button=3)
    wait_until(panel.menus, what="the menu shows")
    wait_until(lambda: keyboard_is_held(desktop), what="the menu has the keyboard")
    desktop.x.press_key("Down")
    desktop.x.press_key("Return")
    helper.wait_for("chosen Pin_Open")
    wait_until(lambda: not panel.menus(), what="the menu has gone")
    desktop.x.click(x, y)
    wait_until(lambda: len(helper.lines) == 2, what="the left click after it is told")
    assert helper.lines[1].startswith("clicked")


def test_a_real_bar_restarted_brings_the_icon_back(desktop, start_item):
    panel = XfcePanel(desktop)
    helper = start_item()
    wait_for_icon(desktop)
    panel.process.kill()
    wait_until(lambda: icon_in_bar(desktop) is None, what="the bar is gone")
    panel.start()
    x, y = icon_at_rest(desktop, panel.process)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")


# -- the menu of our own -----------------------------------------------------------------------------


@pytest.fixture
def own_menu(desktop, start_item, bar):
    """A program whose menu was opened at 300, 200 by a bar that shows none itself."""
    helper = start_item()
    desktop.x.move_pointer(300, 200)
    bar.item().ContextMenu(300, 200)
    wait_until(lambda: own_menus(desktop), what="the menu shows")
    return helper


def test_a_bar_that_leaves_the_menu_to_us_gets_one_at_its_place(desktop, own_menu):
    (window,) = own_menus(desktop)
    assert desktop.x.geometry(window)[:2] == (300, 200)
    # Keys go to it as soon as it has the keyboard.
    wait_until(lambda: keyboard_is_held(desktop), what="the menu has the keyboard")
    desktop.x.press_key("Down")
    desktop.x.press_key("Down")
    desktop.x.press_key("Return")
    own_menu.wait_for("chosen Quit")
    wait_until(lambda: own_menus(desktop) == [], what="the menu has gone")
    assert own_menu.lines == ["chosen Quit"]


def test_an_entry_of_our_menu_is_chosen_by_a_click(desktop, own_menu):
    (window,) = own_menus(desktop)
    rect = desktop.x.geometry(window)
    desktop.x.click(rect.x + 40, rect.y + 15)
    own_menu.wait_for("chosen Pin_Open")
    wait_until(lambda: own_menus(desktop) == [], what="the menu has gone")


@pytest.mark.parametrize("way", ["escape", "elsewhere"])
def test_our_menu_closes_without_a_choice(desktop, own_menu, way):
    wait_until(lambda: keyboard_is_held(desktop), what="the menu has the keyboard")
    if way == "escape":
        desktop.x.press_key("Escape")
    else:
        desktop.x.click(900, 600)
    wait_until(lambda: own_menus(desktop) == [], what="the menu has gone")
    assert own_menu.lines == []


def test_a_click_with_control_is_a_right_click(desktop, start_item):
    panel = XfcePanel(desktop)
    helper = start_item()
    x, y = icon_at_rest(desktop, panel.process)
    code = desktop.x._key_code("ctrl")
    xtest.fake_input(desktop.x.connection, X.KeyPress, code)
    desktop.x.click(x, y)
    wait_until(lambda: own_menus(desktop), what="the menu shows")
    xtest.fake_input(desktop.x.connection, X.KeyRelease, code)
    desktop.x.connection.sync()
    wait_until(lambda: keyboard_is_held(desktop), what="the menu has the keyboard")
    desktop.x.press_key("Escape")
    wait_until(lambda: own_menus(desktop) == [], what="the menu has gone")
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click without it is told")
    assert [line.split()[0] for line in helper.lines] == ["clicked"]


# -- an old tray ---------------------------------------------------------------------------------------


def test_an_old_tray_shows_the_icon_and_its_place_is_known(desktop, start_item):
    helper = start_item()
    tray = start_trayer(desktop)
    x, y = icon_at_rest(desktop, tray)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")
    _, told_x, told_y = helper.lines[0].split()
    assert abs(float(told_x) - x) <= 2 and abs(desktop.x.size[1] - float(told_y) - y) <= 2


def test_an_old_tray_gives_our_menu_for_a_right_click(desktop, start_item):
    helper = start_item()
    tray = start_trayer(desktop)
    x, y = icon_at_rest(desktop, tray)
    desktop.x.click(x, y, button=3)
    wait_until(lambda: own_menus(desktop), what="the menu shows")
    wait_until(lambda: keyboard_is_held(desktop), what="the menu has the keyboard")
    desktop.x.press_key("Up")
    desktop.x.press_key("Return")
    helper.wait_for("chosen Quit")
    assert helper.lines == ["chosen Quit"]


def test_an_old_tray_tells_the_name_of_the_icon_that_the_pointer_rests_on(desktop, start_item):
    start_item()
    tray = start_trayer(desktop)
    desktop.x.move_pointer(300, 300)
    x, y = icon_at_rest(desktop, tray)
    assert tool_tips(desktop) == []
    desktop.x.move_pointer(x, y)
    (tip,) = wait_until(lambda: tool_tips(desktop), what="the tool tip shows")
    assert desktop.x.text_property(tip, "_NET_WM_NAME") == "Quillbar"
    place = desktop.x.geometry(tip)
    assert place.y > y and 0 <= place.x and place.right <= desktop.x.size[0]
    desktop.x.move_pointer(300, 300)
    wait_until(lambda: tool_tips(desktop) == [], what="the tool tip has gone")


def test_a_press_on_an_old_tray_that_is_released_elsewhere_is_no_click(desktop, start_item):
    helper = start_item()
    tray = start_trayer(desktop)
    x, y = icon_at_rest(desktop, tray)
    for button in (1, 3):
        desktop.x.drag((x, y), (600, 400), button)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click after it is told")
    assert len(helper.lines) == 1
    assert own_menus(desktop) == []


def test_an_old_tray_restarted_brings_the_icon_back(desktop, start_item):
    helper = start_item()
    tray = start_trayer(desktop)
    wait_for_icon(desktop)
    tray.kill()
    wait_until(lambda: icon_in_bar(desktop) is None, what="the tray is gone")
    tray = start_trayer(desktop)
    x, y = icon_at_rest(desktop, tray)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")


def test_the_icon_is_never_in_both(desktop, start_item):
    start_item()
    start_trayer(desktop)
    wait_for_icon(desktop)
    bar = Bar(desktop)
    bar.service()
    wait_until(lambda: icon_in_bar(desktop) is None, what="the icon has left the tray")
    bar.process.kill()
    wait_for_icon(desktop)
    bar.close()


@pytest.mark.desktop(bus=False)
def test_without_a_bus_there_is_still_the_old_tray(desktop, start_item):
    helper = start_item()
    tray = start_trayer(desktop)
    x, y = icon_at_rest(desktop, tray)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")
