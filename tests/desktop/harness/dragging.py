"""A program from which something is dragged: the source's side of XDND, version 5."""

from Xlib import X, Xatom, protocol

from .clients import Client
from .waiting import wait_until
from .x11 import Rect


class DragSource(Client):
    """`offers` maps MIME types to bytes, best first. The pointer is grabbed during the drag, as
    toolkits do, so nobody else gets its motion as ordinary events."""

    def __init__(self, x, offers=None, rect=Rect(60, 420, 120, 80)):
        super().__init__(x, rect, (30, 30, 200), "source")
        self.offers = offers or {"text/uri-list": b"file:///etc/hostname\r\n", "text/plain": b"/etc/hostname"}
        self.target = None
        self.accepted = False
        self.finished = None  # None until the target says; then whether it took the drop
        self._told = None  # the place that the target knows
        self._awaiting_status = False

    # -- the hand ----------------------------------------------------------------------------

    def begin(self):
        """Press on the source's window and take the pointer along."""
        rect = self.rect
        self.forget()
        self.x.move_pointer(rect.x + rect.width // 2, rect.y + rect.height // 2)
        self.x.press_button()
        self.wait_for("press")
        mask = X.PointerMotionMask | X.ButtonReleaseMask
        assert (
            self.window.grab_pointer(
                False, mask, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE, X.CurrentTime
            )
            == X.GrabSuccess
        )
        self.window.set_selection_owner(self.x.atom("XdndSelection"), X.CurrentTime)
        self.window.change_property(
            self.x.atom("XdndTypeList"), Xatom.ATOM, 32, [self.x.atom(name) for name in self.offers]
        )
        self.connection.sync()

    def move(self, x, y, steps=10):
        """Carry the drag to a place, telling each target on the way."""
        start = self.x.pointer()
        for step in range(1, steps + 1):
            self.x.move_pointer(
                start[0] + (x - start[0]) * step // steps, start[1] + (y - start[1]) * step // steps
            )
            self.tell_target()

    def tell_target(self):
        """Report the present place to the drop target there, if there is one."""
        self.events()
        place = self.x.pointer()
        target = self._aware_window_at(*place)
        if target != self.target:
            if self.target is not None:
                self._send("XdndLeave")
            self.target, self.accepted, self._awaiting_status = target, False, False
            if target is not None:
                types = [self.x.atom(name) for name in self.offers]
                self._send("XdndEnter", 5 << 24 | (len(types) > 3), *(types + [0, 0, 0])[:3])
        if self.target is not None and not self._awaiting_status:
            self._awaiting_status = True
            self._told = place
            self._send(
                "XdndPosition", 0, place[0] << 16 | place[1], X.CurrentTime, self.x.atom("XdndActionCopy")
            )

    def drop(self):
        """Let go. On an accepting target, wait until it has taken the data; True if it did."""
        if self.target is not None:
            wait_until(self._settled, what="the drop target has answered the last position")
        self.x.release_button()
        self.connection.ungrab_pointer(X.CurrentTime)
        if self.target is None or not self.accepted:
            self.abandon()
            return False
        self._send("XdndDrop", 0, X.CurrentTime)
        wait_until(self._has_finished, what="the drop target has finished")
        return self.finished

    def abandon(self):
        """End the drag without dropping."""
        if self.target is not None:
            self._send("XdndLeave")
            self.target = None
        self.connection.ungrab_pointer(X.CurrentTime)
        self.connection.sync()
        self.x.release_button()

    # -- the protocol --------------------------------------------------------------------------

    def _settled(self):
        """Whether the target has answered for the present place; it is told when it has been slow before."""
        self.events()
        if not self._awaiting_status and self._told != self.x.pointer():
            self.tell_target()
        return self.target is None or not self._awaiting_status

    def _has_finished(self):
        self.events()
        return self.finished is not None

    def _aware_window_at(self, x, y):
        window, found = self.connection.screen().root, None
        root = window
        while True:
            child = window.translate_coords(root, x, y).child
            if not child:
                return found
            window = child
            version = window.get_full_property(self.x.atom("XdndAware"), Xatom.ATOM)
            if version is not None:
                found = window.id

    def _send(self, message, *data):
        target = self.connection.create_resource_object("window", self.target)
        event = protocol.event.ClientMessage(
            window=target,
            client_type=self.x.atom(message),
            data=(32, ([self.window.id, *data] + [0] * 5)[:5]),
        )
        target.send_event(event)
        self.connection.sync()

    def handle(self, event):
        if event.type == X.ClientMessage:
            data = event.data[1]
            if event.client_type == self.x.atom("XdndStatus") and data[0] == self.target:
                self.accepted = bool(data[1] & 1)
                self._awaiting_status = False
            elif event.client_type == self.x.atom("XdndFinished"):
                self.finished = bool(data[1] & 1)
        elif event.type == X.SelectionRequest:
            self._hand_over(event)

    def _hand_over(self, request):
        name = self.connection.get_atom_name(request.target)
        where = request.property or request.target
        if name in self.offers:
            request.requestor.change_property(where, request.target, 8, self.offers[name])
        elif name == "TARGETS":
            request.requestor.change_property(
                where, Xatom.ATOM, 32, [self.x.atom(each) for each in self.offers]
            )
        else:
            where = X.NONE
        answer = protocol.event.SelectionNotify(
            time=request.time,
            requestor=request.requestor,
            selection=request.selection,
            target=request.target,
            property=where,
        )
        request.requestor.send_event(answer)
        self.connection.sync()
