"""The i3 IPC protocol, which sway speaks too: one request, one JSON answer."""

import json
import socket
import struct

_MAGIC = b"i3-ipc"
_RUN_COMMAND = 0
_GET_WORKSPACES = 1
_GET_OUTPUTS = 3
_GET_TREE = 4


class Ipc:
    def __init__(self, path):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(15)
        self._socket.connect(str(path))

    def _ask(self, kind, payload=""):
        body = payload.encode()
        self._socket.sendall(_MAGIC + struct.pack("=II", len(body), kind) + body)
        header = self._receive(len(_MAGIC) + 8)
        length, _ = struct.unpack("=II", header[len(_MAGIC) :])
        return json.loads(self._receive(length))

    def _receive(self, length):
        data = b""
        while len(data) < length:
            part = self._socket.recv(length - len(data))
            assert part, "the window manager hung up"
            data += part
        return data

    def command(self, text):
        for answer in self._ask(_RUN_COMMAND, text):
            assert answer["success"], f"{text}: {answer.get('error')}"

    def workspaces(self):
        return self._ask(_GET_WORKSPACES)

    def outputs(self):
        return self._ask(_GET_OUTPUTS)

    def tree(self):
        return self._ask(_GET_TREE)

    def close(self):
        self._socket.close()
