"""A bar's side of the StatusNotifierItem protocol: takes registrations and writes each as a line."""

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.kde.StatusNotifierWatcher"


class Watcher(dbus.service.Object):
    @dbus.service.method(NAME, in_signature="s", out_signature="", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender):
        print(f"registered {service}", flush=True)

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": dbus.Int32(0)}[name]


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
watcher = Watcher(bus, "/StatusNotifierWatcher")
owned = dbus.service.BusName(NAME, bus, do_not_queue=True)
print("watching", flush=True)
GLib.MainLoop().run()
