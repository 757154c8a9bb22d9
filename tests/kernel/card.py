"""A plain client of the driver service: its requests as docs/driver-protocol.md describes them."""

import os
import socket
import struct
import time

from programs import OPEN, SCALAR_CALL, STRUCTURE_CALL

SET = 0x00800000

MEDIA_CONNECT_STATUS = 0x00010114
RECEIVED_FRAMES = 0x00020102
CURRENT_ADDRESS = 0x01010102
BSSID, SSID = 0x0D010101, 0x0D010102
INFRASTRUCTURE_MODE, DISASSOCIATE, AUTHENTICATION_MODE = 0x0D010108, 0x0D010115, 0x0D010118
LIST_SCAN, ENCRYPTION_STATUS, ADD_KEY, REMOVE_KEY = 0x0D01011A, 0x0D01011B, 0x0D01011D, 0x0D01011E
EVENT_FLAG, READY_FLAG = 0x0D010120, 0x0D010121
NETWORK_TYPES, RSSI, FRAGMENTATION_THRESHOLD, RTS_THRESHOLD = 0x0D010203, 0x0D010206, 0x0D010209, 0x0D01020A
DESIRED_RATES, CONFIGURATION, POWER_MODE, LIST, LIST_NEXT = 0x0D010210, 0x0D010211, 0x0D010216, 0x0D010217, 0x0D010218
STATISTICS, PREAMBLE, LINK_COUNTERS, RESET_COUNTERS = 0x0D020212, 0x0D710101, 0x0D710102, 0x0D710103
RADIO, PHY_MODE, STATION_CONFIG, ADD_WPA, TX_POWER = 0x0D710108, 0x0D71010C, 0x0D710111, 0x0D710116, 0x0D710118

AD_HOC, INFRASTRUCTURE = 0, 1
OPEN_SYSTEM, SHARED_KEY, WPA_ENTERPRISE, WPA_PSK, WPA_NONE = 0, 1, 3, 4, 5
WEP, NO_ENCRYPTION, TKIP, AES = 0, 1, 4, 6
TRANSMIT_KEY = 0x80000000


class Refused(Exception):
    """The service refused a request, or the user client."""


class Network:
    """An entry of the list."""

    def __init__(self, entry):
        (_, address, length, ssid, self.privacy, self.rssi, self.type, _, self.beacon_period, _, self.frequency, _,
         self.infrastructure, rates, elements_length) = struct.unpack_from("=I6s2xI32sIiIIIII16si16sI", entry)
        self.address = address.hex(":")
        self.ssid = ssid[:length]
        self.rates = [rate & 0x7F for rate in rates if rate]
        self.elements = entry[128:116 + elements_length]

    def wpa(self):
        """(pairwise suites, first key management suite) of its WPA element, None without one."""
        data = self.elements
        while len(data) >= 2 and len(data) >= 2 + data[1]:
            body = data[2:2 + data[1]]
            if data[0] == 221 and body[:4] == b"\0\x50\xf2\1":
                pairwise = struct.unpack_from("=H", body, 10)[0]
                suites = [body[12 + 4 * index + 3] for index in range(pairwise)]
                return suites, body[12 + 4 * pairwise + 2 + 3]
            data = data[2 + data[1]:]
        return None

    def security(self):
        """In words, as the window shows it."""
        wpa = self.wpa()
        if wpa is None:
            return "WEP" if self.privacy else "open"
        suites, management = wpa
        name = {1: "WPA", 2: "WPA-PSK"}.get(management, f"unknown {management}")
        return f"{name} {'AES' if 4 in suites else 'TKIP'}"


class Card:
    """Sends each request over a connection of its own, as the utility does."""

    def __init__(self, root, name, limit=10.0):
        self.path = root / "Pellvane" / name
        self.limit = limit
        self.slowest = 0.0

    def _exchange(self, client, kind, selector, data=b"", capacity=0):
        client.send(struct.pack("=IIII", kind, selector, len(data), capacity) + data)
        reply = client.recv(65544)
        if len(reply) < 8:
            raise Refused(f"{selector:#010x}: the connection was closed")
        result, size = struct.unpack_from("=II", reply)
        assert size == len(reply) - 8 and size <= capacity, f"{selector:#010x}: malformed reply {reply[:8].hex()}"
        return result, reply[8:]

    def request(self, oid, data=b"", capacity=0):
        """Returns the reply; raises Refused if the service refuses it, OSError if it is missing or silent."""
        start = time.monotonic()
        with socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET) as client:
            client.settimeout(self.limit)
            client.connect(str(self.path))
            opened, _ = self._exchange(client, OPEN, 0)
            if opened != 0:
                raise Refused(f"open: {opened}")
            result, reply = self._exchange(client, STRUCTURE_CALL, oid, data, capacity)
            ended, _ = self._exchange(client, SCALAR_CALL, 1)
        self.slowest = max(self.slowest, time.monotonic() - start)
        assert ended == 0, f"the scalar call returned {ended}"
        if result != 0:
            raise Refused(f"{oid:#010x}: {result}")
        return reply

    def query(self, oid, capacity):
        return self.request(oid, b"\0" * capacity, capacity)

    def query_number(self, oid):
        return struct.unpack("=I", self.query(oid, 4))[0]

    def set(self, oid, data):
        self.request(oid | SET, data)

    def set_number(self, oid, value):
        self.set(oid, struct.pack("=I", value))

    def is_there(self):
        try:
            self.query_number(MEDIA_CONNECT_STATUS)
            return True
        except (OSError, Refused):
            return False

    def is_linked(self):
        return self.query_number(MEDIA_CONNECT_STATUS) == 0

    def peer(self):
        """The address of the peer; None without a link."""
        try:
            return self.query(BSSID, 6).hex(":")
        except Refused:
            return None

    def ssid(self):
        length, name = struct.unpack("=I32s", self.query(SSID, 36))
        return name[:length]

    def rssi(self):
        return struct.unpack("=i", self.query(RSSI, 4))[0]

    def link_counters(self):
        """Rate in 500 kbit/s, raw quality, bytes sent and received."""
        return struct.unpack("=IIII", self.query(LINK_COUNTERS, 16))

    def statistics(self):
        return struct.unpack("=I12q", self.query(STATISTICS, 100))[1:]

    def meet(self):
        """What the utility sends when it meets the card: the rates that it wants, in units of 500 kbit/s."""
        self.set(DESIRED_RATES, bytes([108, 96, 72, 48, 22, 11, 4, 2]))

    def scan(self):
        """Scans as the utility does, which waits two seconds for the list. Returns the list."""
        self.request(LIST_SCAN | SET, b"\0" * 4, 4)
        time.sleep(2)
        return self.list()

    def list(self):
        networks = []
        chunk = self.query(LIST, 4096)
        while chunk:
            count, = struct.unpack_from("=I", chunk)
            position = 4
            for _ in range(count):
                length, = struct.unpack_from("=I", chunk, position)
                networks.append(Network(chunk[position:position + length]))
                position += length
            assert position <= len(chunk), (position, len(chunk))
            chunk = self.query(LIST_NEXT, 4096)
        return networks

    def join(self, network, by_address=False):
        """Sends what the utility sends to join a network, an access point or an ad hoc network."""
        self.set_number(DISASSOCIATE, 0)
        self.set_number(INFRASTRUCTURE_MODE, network.infrastructure)
        self.set_number(PREAMBLE, 2)
        self.set_number(RTS_THRESHOLD, 2347)
        self.set_number(FRAGMENTATION_THRESHOLD, 0)
        self.set_number(AUTHENTICATION_MODE, network.authentication)
        self.set_number(ENCRYPTION_STATUS, network.encryption)
        self.set_number(TX_POWER, 100)
        self._set_keys(network)
        if network.infrastructure == INFRASTRUCTURE:
            self.set_number(POWER_MODE, 0)
        else:
            configuration = bytearray(self.query(CONFIGURATION, 32))
            struct.pack_into("=I", configuration, 12, network.frequency * 1000)
            self.set(CONFIGURATION, bytes(configuration))
        if by_address:
            self.set(BSSID, bytes.fromhex(network.address.replace(":", "")))
        else:
            self.set(SSID, struct.pack("=I32s", len(network.ssid), network.ssid))

    def _set_keys(self, network):
        if network.authentication == WPA_PSK:
            self.set(ADD_WPA, self._key(TRANSMIT_KEY, network.pre_shared_key, bytes(6)))
        elif network.encryption == WEP:
            for index in range(4):
                key = network.wep_keys.get(index)
                if key:
                    transmit = TRANSMIT_KEY if index == network.wep_index else 0
                    self.set(ADD_KEY, self._key(index | transmit, key, b"\xff" * 6))
                else:
                    self.set(REMOVE_KEY, struct.pack("=II6s2x", 16, index, b"\xff" * 6))

    @staticmethod
    def _key(index, key, address):
        return struct.pack("=III6s2xQ", len(key) + 39, index, len(key), address, 0) + key + bytes(11)


def is_admitted(path, user, groups):
    """Whether a process of this user, with these groups, may send requests."""
    child = os.fork()
    if child == 0:
        status = 2
        try:
            os.setgroups(groups)
            os.setgid(user)
            os.setuid(user)
            card = Card(path.parents[1], path.name)
            card.query_number(MEDIA_CONNECT_STATUS)
            status = 0
        except (PermissionError, Refused):
            status = 1
        finally:
            os._exit(status)
    _, status = os.waitpid(child, 0)
    result = os.waitstatus_to_exitcode(status)
    assert result in (0, 1), f"the client of user {user} failed"
    return result == 0
