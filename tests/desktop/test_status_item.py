"""The status item: its side of the protocol before a watcher of ours, and in the bar of a real desktop."""

import pathlib

import dbus
import pytest
from Xlib import X, error
from Xlib.ext import xtest

from harness.helper import Helper
from harness.waiting import wait_until
from harness.x11 import Rect

WATCHER = pathlib.Path(__file__).parents[1] / "helpers" / "notifier_watcher.py"
ITEM, MENU = "org.kde.StatusNotifierItem", "com.canonical.dbusmenu"
PIN, SEPARATOR, SETTINGS, QUIT = 1, 2, 3, 4

PANEL_CONFIG = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
"""


@pytest.fixture
def start_item(desktop):
    """Starts a program with a status item."""
    running = []

    def start():
        running.append(Helper(desktop, "statusitem"))
        return running[-1]

    yield start
    for helper in running:
        helper.close()


class Bar:
    """Our watcher, and what a bar asks of the items that it hears of."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.bus = dbus.bus.BusConnection(desktop.env["DBUS_SESSION_BUS_ADDRESS"])
        self.start()

    def start(self):
        self.process = self.desktop.start("watcher", ["/usr/bin/python3", "-B", WATCHER])
        wait_until(lambda: "watching" in self.process.output_lines, 30, "the watcher watches")

    def service(self):
        def registered():
            names = [line.split()[1] for line in self.process.output_lines if line.startswith("registered")]
            return names[-1] if names else None

        return wait_until(registered, what="an item is registered")

    def item(self):
        return dbus.Interface(self.bus.get_object(self.service(), "/StatusNotifierItem"), ITEM)

    def properties(self):
        proxy = self.bus.get_object(self.service(), "/StatusNotifierItem")
        return dbus.Interface(proxy, dbus.PROPERTIES_IFACE).GetAll(ITEM)

    def menu(self):
        path = self.properties()["Menu"]
        return dbus.Interface(self.bus.get_object(self.service(), path), MENU)

    def close(self):
        self.bus.close()


@pytest.fixture
def bar(desktop):
    bar = Bar(desktop)
    yield bar
    bar.close()


def labels(menu):
    _, (_, _, children) = menu.GetLayout(0, -1, [])
    return [str(each[1].get("label", each[1].get("type"))) for each in children]


# -- the protocol --------------------------------------------------------------------------------


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


# -- a real bar ------------------------------------------------------------------------------------


def icon_in_bar(desktop):
    """The square of pure white at the top edge; none while it is not there."""
    strip = desktop.x.screenshot(Rect(0, 0, desktop.x.size[0], 40))
    white = strip.point(lambda value: 255 if value == 255 else 0).convert("L")
    box = white.point(lambda value: 255 if value == 255 else 0).getbbox()
    return box if box and 8 <= box[2] - box[0] <= 40 and 8 <= box[3] - box[1] <= 40 else None


def wait_for_icon(desktop):
    """The middle of the icon, once it is there."""
    left, top, right, bottom = wait_until(lambda: icon_in_bar(desktop), 40, "the icon is in the bar")
    return (left + right) // 2, (top + bottom) // 2


class XfcePanel:
    """The panel of Xfce with nothing in it but its tray."""

    def __init__(self, desktop):
        self.desktop = desktop
        folder = desktop.config_home / "xfce4" / "xfconf" / "xfce-perchannel-xml"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "xfce4-panel.xml").write_text(PANEL_CONFIG)
        self.start()

    def start(self):
        self.process = self.desktop.start("xfce4-panel", ["xfce4-panel", "--disable-wm-check"])

    def menus(self):
        """Windows that menus are drawn in."""
        kind = self.desktop.x.atom("_NET_WM_WINDOW_TYPE_POPUP_MENU")
        found = []
        for window in self.desktop.x.stack():
            try:
                types = self.desktop.x.property(window, "_NET_WM_WINDOW_TYPE") or []
                if kind in types and window.get_attributes().map_state == X.IsViewable:
                    found.append(window)
            except error.XError:
                continue
        return found


def test_a_real_bar_shows_the_icon_and_tells_left_clicks(desktop, start_item):
    panel = XfcePanel(desktop)
    helper = start_item()
    x, y = wait_for_icon(desktop)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")
    _, told_x, told_y = helper.lines[0].split()
    assert abs(float(told_x) - x) <= 30 and abs(desktop.x.size[1] - float(told_y) - y) <= 30
    assert panel.menus() == []


def test_a_right_click_on_a_real_bar_gives_the_menu(desktop, start_item):
    panel = XfcePanel(desktop)
    helper = start_item()
    x, y = wait_for_icon(desktop)
    desktop.x.click(x, y, button=3)
    wait_until(panel.menus, what="the menu shows")
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
    x, y = wait_for_icon(desktop)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")


# -- the menu of our own -----------------------------------------------------------------------------


def own_menus(desktop):
    return desktop.x.windows_of_class("quillbar_statusitem")


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
    assert own_menus(desktop) == []
    assert own_menu.lines == ["chosen Quit"]


def keyboard_is_held(desktop):
    answer = desktop.x.root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
    if answer == X.GrabSuccess:
        desktop.x.connection.ungrab_keyboard(X.CurrentTime)
        desktop.x.connection.sync()
    return answer == X.AlreadyGrabbed


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
    x, y = wait_for_icon(desktop)
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


def start_trayer(desktop):
    """A tray that knows the older protocol alone, at the top edge."""
    look = ["--edge", "top", "--align", "right", "--widthtype", "request", "--height", "26"]
    return desktop.start("trayer", ["trayer", *look, "--tint", "0x808080"])


def test_an_old_tray_shows_the_icon_and_its_place_is_known(desktop, start_item):
    helper = start_item()
    start_trayer(desktop)
    x, y = wait_for_icon(desktop)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")
    _, told_x, told_y = helper.lines[0].split()
    assert abs(float(told_x) - x) <= 2 and abs(desktop.x.size[1] - float(told_y) - y) <= 2


def test_an_old_tray_gives_our_menu_for_a_right_click(desktop, start_item):
    helper = start_item()
    start_trayer(desktop)
    x, y = wait_for_icon(desktop)
    desktop.x.click(x, y, button=3)
    wait_until(lambda: own_menus(desktop), what="the menu shows")
    wait_until(lambda: keyboard_is_held(desktop), what="the menu has the keyboard")
    desktop.x.press_key("Up")
    desktop.x.press_key("Return")
    helper.wait_for("chosen Quit")
    assert helper.lines == ["chosen Quit"]


def test_an_old_tray_restarted_brings_the_icon_back(desktop, start_item):
    helper = start_item()
    tray = start_trayer(desktop)
    wait_for_icon(desktop)
    tray.kill()
    wait_until(lambda: icon_in_bar(desktop) is None, what="the tray is gone")
    start_trayer(desktop)
    x, y = wait_for_icon(desktop)
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
    start_trayer(desktop)
    x, y = wait_for_icon(desktop)
    desktop.x.click(x, y)
    wait_until(lambda: helper.lines, what="the click is told")
