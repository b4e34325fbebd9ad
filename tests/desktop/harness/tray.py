"""Bars that show status items: our own side of one, real ones, and what can be seen in them."""

import pathlib

import dbus
from Xlib import X, error

from .waiting import wait_until
from .x11 import Rect

WATCHER = pathlib.Path(__file__).parents[2] / "helpers" / "notifier_watcher.py"
ITEM, MENU = "org.kde.StatusNotifierItem", "com.canonical.dbusmenu"

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


def _own_windows(desktop, *, are_tool_tips):
    kind = desktop.x.atom("_NET_WM_WINDOW_TYPE_TOOLTIP")

    def fits(window):
        # One that has just gone has none, and is neither.
        types = desktop.x.property(window, "_NET_WM_WINDOW_TYPE")
        return types is not None and (kind in types) == are_tool_tips

    return [each for each in desktop.x.windows_of_class("quillbar_statusitem") if fits(each)]


def own_menus(desktop):
    return _own_windows(desktop, are_tool_tips=False)


def tool_tips(desktop):
    return _own_windows(desktop, are_tool_tips=True)


def keyboard_is_held(desktop):
    # Nobody may find the keyboard held by this question.
    with desktop.x.frozen():
        answer = desktop.x.root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
        if answer == X.GrabSuccess:
            desktop.x.connection.ungrab_keyboard(X.CurrentTime)
    return answer == X.AlreadyGrabbed


def start_trayer(desktop):
    """A tray that knows the older protocol alone, at the top edge."""
    look = ["--edge", "top", "--align", "right", "--widthtype", "request", "--height", "26"]
    return desktop.start("trayer", ["trayer", *look, "--tint", "0x808080"])
