"""One connection to an X display: look at it, and act on it as a person's hands would."""

import os
from typing import NamedTuple

from PIL import Image
from Xlib import X, XK, Xatom, display, error, protocol
from Xlib.ext import randr, shape, xtest
from Xlib.protocol import rq
from Xlib.protocol.display import Display as BareDisplay
from Xlib.protocol.event import event_class

from .waiting import wait_until


class _SetMonitor(rq.Request):
    """RandR's request 43; the binding's own can't encode its list of outputs."""

    _request = rq.Struct(
        rq.Card8("opcode"),
        rq.Opcode(43),
        rq.RequestLength(),
        rq.Window("window"),
        rq.Card32("name"),
        rq.Bool("primary"),
        rq.Bool("automatic"),
        rq.LengthOf("outputs", 2),
        rq.Int16("x"),
        rq.Int16("y"),
        rq.Card16("width"),
        rq.Card16("height"),
        rq.Card32("width_mm"),
        rq.Card32("height_mm"),
        rq.List("outputs", rq.Card32Obj),
    )


class Rect(NamedTuple):
    x: int
    y: int
    width: int
    height: int

    @property
    def right(self):
        return self.x + self.width

    @property
    def bottom(self):
        return self.y + self.height

    def contains(self, x, y):
        return self.x <= x < self.right and self.y <= y < self.bottom


def connect(name, user=None):
    """`user`: as whom, for a server that lets in only its own user."""
    if user is not None:
        os.seteuid(user.pw_uid)
    # The binding keeps event numbers for all connections together, but they differ from server
    # to server: each connection gets a table of its own.
    BareDisplay.event_classes = event_class.copy()
    try:
        connection = display.Display(name)
    finally:
        if user is not None:
            os.seteuid(0)
    connection.display.event_classes = BareDisplay.event_classes
    # Windows of other clients come and go while we ask about them; the callers handle absence.
    connection.set_error_handler(lambda *unused: None)
    return connection


class XDisplay:
    def __init__(self, name, user=None):
        self.name = name
        self.user = user
        self.connection = connect(name, user)
        self.root = self.connection.screen().root

    def close(self):
        try:
            self.connection.close()
        except Exception:  # the server may be gone, which is some tests' purpose
            pass

    def atom(self, name):
        return self.connection.intern_atom(name)

    # -- hands -----------------------------------------------------------------------------

    def move_pointer(self, x, y):
        xtest.fake_input(self.connection, X.MotionNotify, x=int(x), y=int(y))
        self.connection.sync()

    def glide_pointer(self, x, y, steps=12):
        """Move as a hand does: with places in between."""
        start = self.pointer()
        for step in range(1, steps + 1):
            self.move_pointer(
                start[0] + (x - start[0]) * step // steps, start[1] + (y - start[1]) * step // steps
            )

    def pointer(self):
        answer = self.root.query_pointer()
        return answer.root_x, answer.root_y

    def press_button(self, button=1):
        xtest.fake_input(self.connection, X.ButtonPress, button)
        self.connection.sync()

    def release_button(self, button=1):
        xtest.fake_input(self.connection, X.ButtonRelease, button)
        self.connection.sync()

    def click(self, x=None, y=None, button=1):
        if x is not None:
            self.move_pointer(x, y)
        self.press_button(button)
        self.release_button(button)

    def drag(self, start, end, button=1):
        self.move_pointer(*start)
        self.press_button(button)
        self.glide_pointer(*end)
        # A manager may hold the pointer until it has looked at the press, and the server forgets meanwhile
        # where a release was.
        wait_until(lambda: self.pointer() == tuple(end), what="the pointer is there")
        self.release_button(button)

    def press_key(self, chord):
        """A chord such as "Return", "ctrl+v" or "super+shift+v"."""
        codes = [self._key_code(part) for part in chord.split("+")]
        for code in codes:
            xtest.fake_input(self.connection, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.connection, X.KeyRelease, code)
        self.connection.sync()

    _MODIFIERS = {"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L", "super": "Super_L"}
    _SIGNS = {" ": "space", "\n": "Return", "\t": "Tab"}

    def _key_code(self, name):
        symbol = XK.string_to_keysym(self._MODIFIERS.get(name, name))
        code = self.connection.keysym_to_keycode(symbol)
        assert code, f"no key for {name!r} on this keyboard"
        return code

    def type_text(self, text):
        """Type characters of the US layout."""
        for character in text:
            # Up to U+00FF a keysym is the character's own number.
            symbol = (
                XK.string_to_keysym(self._SIGNS[character]) if character in self._SIGNS else ord(character)
            )
            places = sorted(self.connection.keysym_to_keycodes(symbol), key=lambda each: each[1])
            assert places and places[0][1] < 2, f"no key for {character!r} on this keyboard"
            code, level = places[0]
            shift = self._key_code("shift")
            if level:
                xtest.fake_input(self.connection, X.KeyPress, shift)
            xtest.fake_input(self.connection, X.KeyPress, code)
            xtest.fake_input(self.connection, X.KeyRelease, code)
            if level:
                xtest.fake_input(self.connection, X.KeyRelease, shift)
        self.connection.sync()

    # -- eyes ------------------------------------------------------------------------------

    @property
    def size(self):
        geometry = self.root.get_geometry()
        return geometry.width, geometry.height

    def screenshot(self, rect=None):
        """What is on the screen, as an RGB image; of `rect` (root coordinates) or of everything."""
        return self._image(self.root, rect or Rect(0, 0, *self.size)).convert("RGB")

    def pixel(self, x, y):
        return self.screenshot(Rect(x, y, 1, 1)).getpixel((0, 0))

    def window_pixels(self, window, rect=None):
        """A 32 bit deep window's own pixels with their alpha, as an RGBA image (colours
        premultiplied). Only meaningful while no compositing manager redirects the window."""
        if rect is None:
            geometry = window.get_geometry()
            rect = Rect(0, 0, geometry.width, geometry.height)
        return self._image(window, rect)

    @staticmethod
    def _image(drawable, rect):
        answer = drawable.get_image(rect.x, rect.y, rect.width, rect.height, X.ZPixmap, 0xFFFFFFFF)
        return Image.frombuffer("RGBA", (rect.width, rect.height), answer.data, "raw", "BGRA", 0, 1)

    class _Frozen:
        def __init__(self, connection):
            self._connection = connection

        def __enter__(self):
            self._connection.grab_server()
            self._connection.sync()

        def __exit__(self, *unused):
            self._connection.ungrab_server()
            self._connection.sync()

    def frozen(self):
        """Within this context no other client gets a word in: several looks see one moment."""
        return self._Frozen(self.connection)

    # -- windows ---------------------------------------------------------------------------

    def stack(self):
        """The root's children, lowest first."""
        return self.root.query_tree().children

    def stack_index(self, window):
        """How high the top-level window that holds `window` is stacked; -1 when it is gone."""
        ids = [each.id for each in self.stack()]
        top = self.top_level(window)
        return ids.index(top.id) if top is not None and top.id in ids else -1

    def top_level(self, window):
        """The child of the root that is or holds `window` (a window manager's frame, say)."""
        window = self.connection.create_resource_object("window", window.id)
        try:
            while True:
                tree = window.query_tree()
                if tree.parent == 0:
                    return None
                if tree.parent.id == self.root.id:
                    return window
                window = tree.parent
        except error.XError:
            return None

    def windows_of_class(self, name):
        """Mapped children of the root whose WM_CLASS holds `name`, lowest first."""
        found = []
        for window in self.stack():
            try:
                wm_class = window.get_wm_class()
                if wm_class and name in wm_class and window.get_attributes().map_state == X.IsViewable:
                    found.append(window)
            except error.XError:
                continue
        return found

    def geometry(self, window):
        """Place and size of a window in root coordinates, without border."""
        size = window.get_geometry()
        place = self.root.translate_coords(window, 0, 0)
        return Rect(place.x, place.y, size.width, size.height)

    def _region(self, window, kind):
        answer = window.shape_get_rectangles(kind)
        return [Rect(each.x, each.y, each.width, each.height) for each in answer.rectangles]

    def bounding_region(self, window):
        """The XShape bounding region in window coordinates."""
        return self._region(window, shape.SK.Bounding)

    def input_region(self, window):
        """The XShape input region in window coordinates."""
        return self._region(window, shape.SK.Input)

    def property(self, window, name, kind=X.AnyPropertyType):
        """None also for a window that has just gone."""
        try:
            answer = window.get_full_property(self.atom(name), kind)
        except error.BadWindow:
            return None
        return None if answer is None else answer.value

    def text_property(self, window, name):
        value = self.property(window, name)
        return value.decode() if isinstance(value, bytes) else value

    # -- the desktop -----------------------------------------------------------------------

    def send_to_root(self, window, message, *data):
        event = protocol.event.ClientMessage(
            window=window, client_type=self.atom(message), data=(32, (list(data) + [0] * 5)[:5])
        )
        self.root.send_event(event, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.connection.sync()

    def managed_ids(self):
        """What task bars and window switchers list."""
        return list(self.property(self.root, "_NET_CLIENT_LIST") or [])

    def active_id(self):
        value = self.property(self.root, "_NET_ACTIVE_WINDOW")
        return value[0] if value else 0

    def focus_id(self):
        focus = self.connection.get_input_focus().focus
        return focus if isinstance(focus, int) else focus.id

    def workspace(self):
        value = self.property(self.root, "_NET_CURRENT_DESKTOP")
        return value[0] if value else None

    def has_compositor(self):
        return self._owner("_NET_WM_CM_S0") != X.NONE

    def clipboard_owner(self):
        """The id of the window that offers what was copied; X.NONE without one."""
        return self._owner("CLIPBOARD")

    def _owner(self, selection):
        owner = self.connection.get_selection_owner(self.atom(selection))
        return owner if isinstance(owner, int) else owner.id

    def set_resource_dpi(self, dpi):
        """Xft.dpi, as the desktop's settings leave it for programs that start later."""
        self.root.change_property(Xatom.RESOURCE_MANAGER, Xatom.STRING, 8, f"Xft.dpi:\t{dpi}\n".encode())
        self.connection.sync()

    # -- monitors --------------------------------------------------------------------------

    def set_resolution(self, width, height):
        """Switch the display's one output to a mode of this size (within the initial size)."""
        resources = self.root.xrandr_get_screen_resources()
        output, crtc = resources.outputs[0], resources.crtcs[0]
        mode = next(
            (each.id for each in resources.modes if (each.width, each.height) == (width, height)), None
        )
        if mode is None:
            name = f"{width}x{height}"
            timings = (
                0,
                width,
                height,
                60 * (width + 100) * (height + 50),
                width + 10,
                width + 20,
                width + 100,
                0,
                height + 5,
                height + 10,
                height + 50,
                len(name),
                0,
            )
            mode = self.root.xrandr_create_mode(timings, name).mode
            self.connection.xrandr_add_output_mode(output, mode)
            self.connection.sync()
        now_width, now_height = self.size
        # The screen must hold the output at every step, so it grows first and shrinks last.
        self._set_screen_size(max(width, now_width), max(height, now_height))
        self.connection.xrandr_set_crtc_config(
            crtc, resources.config_timestamp, 0, 0, mode, randr.Rotate_0, [output]
        )
        self._set_screen_size(width, height)
        wait_until(lambda: self.size == (width, height), what=f"the screen is {width} x {height}")

    def _set_screen_size(self, width, height):
        self.root.xrandr_set_screen_size(width, height, width * 254 // 960, height * 254 // 960)
        self.connection.sync()

    def split_into_monitors(self, count):
        """Divide the screen into `count` monitors side by side, the first one primary."""
        width, height = self.size
        output = self.root.xrandr_get_screen_resources().outputs[0]
        part = width // count
        for index in range(count):
            _SetMonitor(
                display=self.connection.display,
                opcode=self.connection.display.get_extension_major(randr.extname),
                window=self.root,
                name=self.atom(f"monitor{index}"),
                primary=index == 0,
                automatic=False,
                x=index * part,
                y=0,
                width=part,
                height=height,
                width_mm=part * 254 // 960,
                height_mm=height * 254 // 960,
                outputs=[output] if index == 0 else [],
            )
        self.connection.sync()
        wait_until(
            lambda: len(self.root.xrandr_get_monitors().monitors) == count, what=f"there are {count} monitors"
        )
