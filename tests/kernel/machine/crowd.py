"""crowd.py INTERFACE MHZ NAME …: announces networks on a monitor interface: sends the beacons of all of them every 102 ms,
and also when a station asks. One radio can thereby announce a hundred networks; as access points they would take a
minute to start."""

import select
import socket
import struct
import sys
import time

RADIOTAP = bytes([0, 0, 8, 0, 0, 0, 0, 0])
INTERVAL = 0.1024
ETHERNET_ALL = 3
BEACON, PROBE_REQUEST = 0x80, 0x40
ESS = 1
RATES = bytes([1, 8, 0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24])


def beacon(index, name, channel):
    address = bytes([2, 0x0D, 0, 0, 0, index])
    header = struct.pack("<HH6s6s6sH", BEACON, 0, b"\xff" * 6, address, address, 0)
    fixed = struct.pack("<QHH", 0, 100, ESS)
    return RADIOTAP + header + fixed + bytes([0, len(name)]) + name + RATES + bytes([3, 1, channel])


def main(interface, channel, names):
    frames = [beacon(index, name, channel) for index, name in enumerate(names)]
    with socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(ETHERNET_ALL)) as air:
        air.bind((interface, 0))
        due = time.monotonic()
        while True:
            if select.select([air], [], [], max(0.0, due - time.monotonic()))[0]:
                frame = air.recv(4096)
                start, = struct.unpack_from("<H", frame, 2)
                if frame[start] != PROBE_REQUEST:
                    continue
            else:
                due = max(due + INTERVAL, time.monotonic())
            for each in frames:
                air.send(each)


main(sys.argv[1], int(sys.argv[2]), [name.encode() for name in sys.argv[3:]])
