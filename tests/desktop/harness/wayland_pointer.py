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
        self._socket.settimeout(10)
        if user is not None:
            os.seteuid(user.pw_uid)
        try:
            self._socket.connect(str(path))
        finally:
            if user is not None:
                os.seteuid(0)
        self._send(_DISPLAY, 1, struct.pack("=I", _REGISTRY))  # get_registry
        self._send(_DISPLAY, 0, struct.pack("=I", _CALLBACK))  # sync
        number = self._find_manager()
        self._send(_REGISTRY, 0, struct.pack("=I", number) + _text(_INTERFACE)
                   + struct.pack("=II", 1, _MANAGER))  # bind, version 1
        self._send(_MANAGER, 0, struct.pack("=II", 0, _POINTER))  # create, on the default seat

    def _send(self, target, opcode, payload):
        size = 8 + len(payload)
        self._socket.sendall(struct.pack("=II", target, size << 16 | opcode) + payload)

    def _find_manager(self):
        found, buffer = None, b""
        while True:
            part = self._socket.recv(65536)
            assert part, "the compositor hung up"
            buffer += part
            while len(buffer) >= 8:
                target, word = struct.unpack_from("=II", buffer)
                size = word >> 16
                if len(buffer) < size:
                    break
                body, buffer = buffer[8:size], buffer[size:]
                if target == _REGISTRY and word & 0xFFFF == 0:  # global
                    number, length = struct.unpack_from("=II", body)
                    if body[8:8 + length - 1].decode() == _INTERFACE:
                        found = number
                elif target == _CALLBACK:  # all globals have been told
                    assert found is not None, f"the compositor has no {_INTERFACE}"
                    return found

    def move(self, x, y, width, height):
        """To a place in a layout of this size (logical pixels)."""
        self._send(_POINTER, 1, struct.pack("=IIIII", self._now(), x, y, width, height))
        self._send(_POINTER, 4, b"")  # frame

    def button(self, code, pressed):
        """`code` as the kernel numbers buttons."""
        self._send(_POINTER, 2, struct.pack("=III", self._now(), code, pressed))
        self._send(_POINTER, 4, b"")

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000) & 0xFFFFFFFF

    def close(self):
        self._socket.close()
