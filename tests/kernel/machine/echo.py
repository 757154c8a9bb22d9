"""Sends each datagram back to where it came from."""

import socket
import sys

with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as server:
    server.bind(("", int(sys.argv[1])))
    while True:
        data, client = server.recvfrom(65536)
        server.sendto(data, client)
