"""Real X programs beside Quillbar: a window that records what reaches it, a dock, a screen
locker, and a drag source. Each has its own connection; its events are read when asked for."""

from Xlib import X, Xatom, Xutil

from .waiting import wait_until
from .x11 import Rect, connect

_EVENTS = {
    X.EnterNotify: "enter",
    X.LeaveNotify: "leave",
    X.MotionNotify: "motion",
    X.ButtonPress: "press",
    X.ButtonRelease: "release",
    X.FocusIn: "focus in",
    X.FocusOut: "focus out",
    X.KeyPress: "key press",
    X.KeyRelease: "key release",
    X.Expose: "expose",
    X.MapNotify: "map",
    X.UnmapNotify: "unmap",
    X.ConfigureNotify: "configure",
}
_MASK = (
    X.EnterWindowMask
    | X.LeaveWindowMask
    | X.PointerMotionMask
    | X.ButtonPressMask
    | X.ButtonReleaseMask
    | X.FocusChangeMask
    | X.KeyPressMask
    | X.KeyReleaseMask
    | X.StructureNotifyMask
    | X.ExposureMask
)


class Client:
    """A plain window in one colour that records the events which reach it."""

    def __init__(
        self,
        x,
        rect=Rect(100, 100, 400, 300),
        colour=(200, 30, 30),
        title="client",
        override_redirect=False,
        mapped=True,
    ):
        self.x = x
        self.title = title
        self.colour = colour
        self.connection = connect(x.name, x.user)
        self.recorded = []
        red, green, blue = colour
        root = self.connection.screen().root
        self.window = root.create_window(
            rect.x,
            rect.y,
            rect.width,
            rect.height,
            0,
            X.CopyFromParent,
            background_pixel=red << 16 | green << 8 | blue,
            event_mask=_MASK,
            override_redirect=override_redirect,
        )
        self.window.set_wm_name(title)
        self.window.set_wm_class(title, title.capitalize())
        self.window.set_wm_normal_hints(flags=Xutil.PPosition | Xutil.PSize | Xutil.USPosition | Xutil.USSize)
        self.window.set_wm_hints(
            flags=Xutil.InputHint | Xutil.StateHint, input=1, initial_state=Xutil.NormalState
        )
        if mapped:
            self.map()

    def map(self, hidden=False):
        """`hidden`: a window behind a full-screen one, which a tiling manager doesn't even map."""
        self.window.map()
        self.connection.sync()
        if hidden:
            wait_until(lambda: self.window.id in self.x.managed_ids(), what=f"{self.title} is managed")
        else:
            wait_until(
                lambda: self.window.get_attributes().map_state == X.IsViewable,
                what=f"{self.title} is on the screen",
            )
        return self

    def unmap(self):
        self.window.unmap()
        self.connection.sync()

    def close(self):
        try:
            self.connection.close()
        except Exception:  # the server may be gone already
            pass

    # -- what it heard -----------------------------------------------------------------------

    def events(self, kind=None):
        """The recorded events so far, oldest first, as (kind, event) or only those of `kind`."""
        for _ in range(self.connection.pending_events()):
            event = self.connection.next_event()
            self.handle(event)
            name = _EVENTS.get(event.type)
            if name:
                self.recorded.append((name, event))
        return [each for each in self.recorded if kind in (None, each[0])]

    def handle(self, event):
        """For programs that do more than record."""

    def forget(self):
        """Forget all events up to now."""
        self.connection.sync()
        self.events()
        self.recorded.clear()

    def wait_for(self, kind, timeout=20.0):
        return wait_until(lambda: self.events(kind), timeout, f"{self.title} gets a {kind} event")

    # -- what it asks of the window manager ------------------------------------------------------

    @property
    def rect(self):
        return self.x.geometry(self.window)

    def raise_(self):
        self.window.configure(stack_mode=X.Above)
        self.connection.sync()

    def activate(self):
        """Ask for the focus as a task bar does."""
        self.x.send_to_root(self.window, "_NET_ACTIVE_WINDOW", 2, X.CurrentTime, 0)
        wait_until(self.has_focus, what=f"{self.title} has the focus")

    def has_focus(self):
        return self.x.active_id() == self.window.id

    def _state(self, add, *names):
        atoms = [self.x.atom(name) for name in names]
        self.x.send_to_root(self.window, "_NET_WM_STATE", 1 if add else 0, *atoms)

    def states(self):
        return list(self.x.property(self.window, "_NET_WM_STATE") or [])

    def maximise(self):
        self._state(True, "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_MAXIMIZED_HORZ")
        wait_until(
            lambda: self.rect.width >= self.x.size[0] - 20 and self.rect.y < 100,
            what=f"{self.title} is maximised",
        )

    def full_screen(self):
        self._state(True, "_NET_WM_STATE_FULLSCREEN")
        wait_until(lambda: self.rect == Rect(0, 0, *self.x.size), what=f"{self.title} fills the screen")

    def leave_full_screen(self):
        self._state(False, "_NET_WM_STATE_FULLSCREEN")
        wait_until(
            lambda: self.rect != Rect(0, 0, *self.x.size), what=f"{self.title} no longer fills the screen"
        )

    def send_to_workspace(self, index):
        self.x.send_to_root(self.window, "_NET_WM_DESKTOP", index, 2)
        wait_until(
            lambda: list(self.x.property(self.window, "_NET_WM_DESKTOP") or []) == [index],
            what=f"{self.title} is on workspace {index}",
        )


class Backdrop(Client):
    """A wallpaper of one colour: a desktop window, which stays beneath all others."""

    def __init__(self, x, colour):
        super().__init__(x, Rect(0, 0, *x.size), colour, "backdrop", mapped=False)
        self.window.change_property(
            x.atom("_NET_WM_WINDOW_TYPE"), Xatom.ATOM, 32, [x.atom("_NET_WM_WINDOW_TYPE_DESKTOP")]
        )
        self.map()
        wait_until(
            lambda: x.pixel(0, 0) == colour and x.pixel(x.size[0] - 1, x.size[1] - 1) == colour,
            what="the backdrop fills the screen",
        )


class Dock(Client):
    """A bar at the top of the screen that reserves its height, as desktop panels do."""

    def __init__(self, x, height):
        width = x.size[0]
        super().__init__(x, Rect(0, 0, width, height), (40, 90, 160), "dock", mapped=False)
        self.window.change_property(
            x.atom("_NET_WM_WINDOW_TYPE"), Xatom.ATOM, 32, [x.atom("_NET_WM_WINDOW_TYPE_DOCK")]
        )
        self.window.change_property(
            x.atom("_NET_WM_STRUT_PARTIAL"),
            Xatom.CARDINAL,
            32,
            [0, 0, height, 0, 0, 0, 0, 0, 0, width - 1, 0, 0],
        )
        self.window.change_property(x.atom("_NET_WM_STRUT"), Xatom.CARDINAL, 32, [0, 0, height, 0])
        self.map()
        wait_until(
            lambda: (x.property(x.root, "_NET_WORKAREA") or [0, 0])[1] == height,
            what="the work area leaves room for the dock",
        )


class Locker(Client):
    """A screen locker: unmanaged, over everything, holding the keyboard and the pointer."""

    def __init__(self, x):
        super().__init__(x, Rect(0, 0, *x.size), (20, 120, 60), "locker", override_redirect=True)
        self.raise_()
        wait_until(
            lambda: self.window.grab_keyboard(True, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
            == X.GrabSuccess,
            what="the locker holds the keyboard",
        )
        wait_until(
            lambda: self.window.grab_pointer(
                True, X.ButtonPressMask, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE, X.CurrentTime
            )
            == X.GrabSuccess,
            what="the locker holds the pointer",
        )
