"""A program of our own that copies whatever a test says."""

import select
import time

from Xlib import X, Xatom
from Xlib.protocol import event as events

from .clients import Client
from .waiting import wait_until


class CopySource(Client):
    """Owns the clipboard and hands out `offers`, MIME type or target name to bytes. It answers only while
    somebody looks at it."""

    def __init__(self, x, offers):
        super().__init__(x, mapped=False, title="copy source")
        self._asked = []
        self.clipboard = x.atom("CLIPBOARD")
        self.targets = x.atom("TARGETS")
        self.copy(offers)

    def copy(self, offers):
        """Copy something else."""
        self.offers = {self.x.atom(name): (name, data) for name, data in offers.items()}
        self.window.set_selection_owner(self.clipboard, X.CurrentTime)
        self.connection.sync()

    def serve(self, seconds):
        """Answer requests for that long."""
        end = time.monotonic() + seconds
        while (rest := end - time.monotonic()) > 0:
            self.events()
            select.select([self.connection.fileno()], [], [], rest)

    def asked(self):
        """The names of what it has been asked for so far."""
        self.events()
        return self._asked

    def handle(self, event):
        if event.type != X.SelectionRequest:
            return
        place = event.property or event.target
        if event.target == self.targets:
            self._asked.append("TARGETS")
            event.requestor.change_property(place, Xatom.ATOM, 32, [self.targets, *self.offers])
        elif event.target in self.offers:
            name, data = self.offers[event.target]
            self._asked.append(name)
            event.requestor.change_property(place, event.target, 8, data)
        else:
            place = X.NONE
        answer = events.SelectionNotify(
            time=event.time,
            requestor=event.requestor,
            selection=event.selection,
            target=event.target,
            property=place,
        )
        event.requestor.send_event(answer)
        self.connection.flush()


def copy_until(desktop, offers, look, kind=CopySource):
    """Copies, and answers until `look` is true; then the clipboard is empty."""
    source = kind(desktop.x, offers)
    try:
        wait_until(lambda: source.asked() and look(), 20.0, "the copy has arrived")
    finally:
        source.close()
