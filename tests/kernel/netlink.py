"""Generic netlink, as far as the tests need it, and network namespaces."""

import contextlib
import ctypes
import os
import socket
import struct

GENERIC = 16
REQUEST, ACKNOWLEDGE = 1, 4
ERROR = 2
CONTROLLER, GET_FAMILY, FAMILY_ID, FAMILY_NAME = 16, 3, 1, 2
NETWORK_NAMESPACE = 0x40000000

_c = ctypes.CDLL(None, use_errno=True)


def enter(namespace):
    """Moves this thread to a namespace, given as an open file or by name."""
    file = namespace if isinstance(namespace, int) else os.open(f"/run/netns/{namespace}", os.O_RDONLY | os.O_CLOEXEC)
    if _c.setns(file, NETWORK_NAMESPACE) != 0:
        raise OSError(ctypes.get_errno(), "setns")
    if file != namespace:
        os.close(file)


@contextlib.contextmanager
def inside(namespace):
    """Sockets created in the with block belong to the namespace."""
    own = os.open("/proc/self/ns/net", os.O_RDONLY | os.O_CLOEXEC)
    enter(namespace)
    try:
        yield
    finally:
        enter(own)
        os.close(own)


def attribute(kind, data=b""):
    return struct.pack("=HH", len(data) + 4, kind) + data + b"\0" * (-len(data) % 4)


def text(kind, value):
    return attribute(kind, value.encode() + b"\0")


def number(kind, value):
    return attribute(kind, struct.pack("=I", value))


def attributes(data):
    found = {}
    while len(data) >= 4:
        length, kind = struct.unpack_from("=HH", data)
        found[kind & 0x3FFF] = data[4:length]
        data = data[length + 3 & ~3:]
    return found


class Family:
    """A generic netlink family. Requests are answered in order, one at a time."""

    def __init__(self, name):
        self._socket = socket.socket(socket.AF_NETLINK, socket.SOCK_RAW, GENERIC)
        self._socket.bind((0, 0))
        self._sequence = 0
        _, answer = self._exchange(CONTROLLER, GET_FAMILY, text(FAMILY_NAME, name))
        self._id = struct.unpack("=H", attributes(answer[20:])[FAMILY_ID])[0]

    def request(self, command, payload):
        """Returns the result in the acknowledgement, for some commands a positive number, and the answer's attributes."""
        result, answer = self._exchange(self._id, command, payload)
        if result < 0:
            raise OSError(-result, f"{os.strerror(-result)} (command {command})")
        return result, attributes(answer[20:])

    def _exchange(self, kind, command, payload):
        self._sequence += 1
        message = struct.pack("=BBH", command, 1, 0) + payload
        self._socket.send(struct.pack("=IHHII", 16 + len(message), kind, REQUEST | ACKNOWLEDGE, self._sequence, 0)
                          + message)
        answer = b""
        while True:
            data = self._socket.recv(65536)
            while data:
                length, received, _, sequence = struct.unpack_from("=IHHI", data)
                if sequence == self._sequence and received == ERROR:
                    return struct.unpack_from("=i", data, 16)[0], answer
                answer = data[:length]
                data = data[length + 3 & ~3:]


