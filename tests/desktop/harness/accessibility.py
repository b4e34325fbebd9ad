"""The accessibility tree, read over the session's own accessibility bus.

The bus is spoken to directly: the usual client library serves one bus a process, a test run
has many sessions.
"""

from gi.repository import Gio, GLib

from .waiting import wait_until

_FLAGS = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ACTION = "org.a11y.atspi.Action"
# Numbers of the protocol's states.
_CHECKED, _FOCUSED, _SELECTED, _SHOWING = 4, 12, 23, 25
_EVENTS = "org.a11y.atspi.Event.Object"
_PATIENCE = 20_000  # milliseconds, for one answer
_REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")


def connect_bus(address):
    return Gio.DBusConnection.new_for_address_sync(address, _FLAGS, None, None)


class Accessible:
    """One node: a program, a window, a control. Every look asks the program anew."""

    def __init__(self, bus, name, path):
        self._bus, self._name, self._path = bus, name, path

    def _call(self, interface, method, arguments=None):
        return self._bus.call_sync(
            self._name,
            self._path,
            interface,
            method,
            arguments,
            None,
            Gio.DBusCallFlags.NONE,
            _PATIENCE,
            None,
        ).unpack()

    def _get(self, interface, name):
        return self._call("org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (interface, name)))[
            0
        ]

    @property
    def name(self):
        return self._get(_ACCESSIBLE, "Name")

    @property
    def description(self):
        return self._get(_ACCESSIBLE, "Description")

    @property
    def role(self):
        return self._call(_ACCESSIBLE, "GetRoleName")[0]

    @property
    def children(self):
        return [Accessible(self._bus, name, path) for name, path in self._call(_ACCESSIBLE, "GetChildren")[0]]

    def _has_state(self, number):
        return bool(self._call(_ACCESSIBLE, "GetState")[0][number // 32] >> number % 32 & 1)

    @property
    def checked(self):
        return self._has_state(_CHECKED)

    @property
    def focused(self):
        """Whether it has the keyboard."""
        return self._has_state(_FOCUSED)

    @property
    def selected(self):
        return self._has_state(_SELECTED)

    @property
    def showing(self):
        """Whether it is on the screen, as far as the program knows."""
        return self._has_state(_SHOWING)

    @property
    def text(self):
        return self._call("org.a11y.atspi.Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    @property
    def value(self):
        return self._get("org.a11y.atspi.Value", "CurrentValue")

    @property
    def extents(self):
        """(x, y, width, height) on the screen."""
        return self._call("org.a11y.atspi.Component", "GetExtents", GLib.Variant("(u)", (0,)))[0]

    def selections(self):
        """A function that gives what the program has told since of selections: (name, whether it is selected)."""
        heard = []

        def tell(_bus, sender, path, _interface, _member, event):
            kind, is_selected = event.unpack()[:2]
            if kind == "selected":
                heard.append((Accessible(self._bus, sender, path).name, bool(is_selected)))

        self._bus.signal_subscribe(
            self._name, _EVENTS, "StateChanged", None, None, Gio.DBusSignalFlags.NONE, tell
        )
        self._bus.call_sync(
            _REGISTRY[0],
            "/org/a11y/atspi/registry",
            _REGISTRY[0],
            "RegisterEvent",
            GLib.Variant("(s)", ("object:state-changed:selected",)),
            None,
            Gio.DBusCallFlags.NONE,
            _PATIENCE,
            None,
        )

        def so_far():
            while GLib.MainContext.default().iteration(False):
                pass
            return heard

        return so_far

    def press(self):
        """Do what a press of the node does, as assistive software does."""
        names = [each[0] for each in self._call(_ACTION, "GetActions")[0]]
        assert self._call(_ACTION, "DoAction", GLib.Variant("(i)", (names.index("Press"),)))[0]

    def walk(self, depth=0):
        """This node and all below it, as (depth, node)."""
        yield depth, self
        for child in self.children:
            yield from child.walk(depth + 1)

    def find(self, name=None, role=None):
        """The first node below with this name and role, or None. A node may vanish meanwhile."""
        try:
            for _, node in self.walk():
                if (name is None or node.name == name) and (role is None or node.role == role):
                    return node
        except GLib.Error:
            pass
        return None

    def __str__(self):
        return "\n".join(f"{'  ' * depth}{node.role}: {node.name!r}" for depth, node in self.walk())


def program_tree(session_bus_address, pid, timeout=30.0):
    """The root node of the program with process id `pid`."""
    session = connect_bus(session_bus_address)
    address = session.call_sync(
        "org.a11y.Bus",
        "/org/a11y/bus",
        "org.a11y.Bus",
        "GetAddress",
        None,
        None,
        Gio.DBusCallFlags.NONE,
        _PATIENCE,
        None,
    ).unpack()[0]
    bus = connect_bus(address)

    def find():
        try:
            for program in Accessible(bus, *_REGISTRY).children:
                answer = bus.call_sync(
                    "org.freedesktop.DBus",
                    "/org/freedesktop/DBus",
                    "org.freedesktop.DBus",
                    "GetConnectionUnixProcessID",
                    GLib.Variant("(s)", (program._name,)),
                    None,
                    Gio.DBusCallFlags.NONE,
                    _PATIENCE,
                    None,
                )
                if answer.unpack()[0] == pid:
                    return program
        except GLib.Error:
            pass
        return None

    return wait_until(find, timeout, f"the process {pid} is in the accessibility tree")
