"""A pointing device for a headless compositor.

Without any device the seat has no pointer at all and no window would ever hear of one. This
makes a virtual one over the wire of zwlr_virtual_pointer_v1, so that motion and buttons take the
road of a real device's.
"""

import os
import socket
import struct
import time

_DISPLAY = 1
_REGISTRY, _CALLBACK, _MANAGER, _POINTER = 2, 3, 4, 5  # ids must be handed out in order of use
_INTERFACE = "zwlr_virtual_pointer_manager_v1"


def _text(value):
    data = value.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


class VirtualPointer:
    """Lives as long as its connection."""

    def __init__(self, path, user=None):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(30)
        self._received = b""
        if user is not None:
            os.seteuid(user.pw_uid)
        try:
            self._socket.connect(str(path))
        finally:
            if user is not None:
                os.seteuid(0)
        self._send(_DISPLAY, 1, struct.pack("=I", _REGISTRY))  # get_registry
        self._manager_number = None
        self._round_trip()
        assert self._manager_number is not None, f"the compositor has no {_INTERFACE}"
        self._send(
            _REGISTRY,
            0,
            struct.pack("=I", self._manager_number) + _text(_INTERFACE) + struct.pack("=II", 1, _MANAGER),
        )  # bind, version 1
        self._send(_MANAGER, 0, struct.pack("=II", 0, _POINTER))  # create, on the default seat

    def _send(self, target, opcode, payload):
        size = 8 + len(payload)
        self._socket.sendall(struct.pack("=II", target, size << 16 | opcode) + payload)

    def _round_trip(self):
        """Wait until the compositor has dealt with everything so far."""
        self._send(_DISPLAY, 0, struct.pack("=I", _CALLBACK))  # sync
        done = False
        while not done:
            part = self._socket.recv(65536)
            assert part, "the compositor hung up"
            self._received += part
            while len(self._received) >= 8:
                target, word = struct.unpack_from("=II", self._received)
                size = word >> 16
                if len(self._received) < size:
                    break
                body, self._received = self._received[8:size], self._received[size:]
                if target == _REGISTRY and word & 0xFFFF == 0:  # global
                    number, length = struct.unpack_from("=II", body)
                    if body[8 : 8 + length - 1].decode() == _INTERFACE:
                        self._manager_number = number
                elif target == _DISPLAY and word & 0xFFFF == 0:
                    raise AssertionError(f"the compositor complains: {body!r}")
                elif target == _DISPLAY and word & 0xFFFF == 1:  # delete_id: may be used again
                    done = done or struct.unpack("=I", body)[0] == _CALLBACK

    def move(self, x, y, width, height):
        """To a place in a layout of this size (logical pixels)."""
        self._send(_POINTER, 1, struct.pack("=IIIII", self._now(), x, y, width, height))
        self._send(_POINTER, 4, b"")  # frame
        self._round_trip()

    def button(self, code, pressed):
        """`code` as the kernel numbers buttons."""
        self._send(_POINTER, 2, struct.pack("=III", self._now(), code, pressed))
        self._send(_POINTER, 4, b"")
        self._round_trip()

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def close(self):
        self._socket.close()
