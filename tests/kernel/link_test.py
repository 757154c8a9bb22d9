"""The link's figures, and the radio."""

import pathlib
import socket
import struct
import time

import card
import neighbourhood
import radios
from access_points import ECHO_PORT
from join_test import join
from programs import wait_until
from world import CARD, CONTROLS

TICK = 2.0  # seconds; the utility asks this often


def shows_how_strong_the_signal_is(world):
    client = world.start_service()
    client.scan()
    world.say(join(world, neighbourhood.MODERN, by_address=True))
    for dbm in (-45, -82, -60):
        neighbourhood.MODERN.radio.set_signal(dbm)
        start = time.monotonic()
        wait_until(f"the card measures {dbm} dBm", lambda: abs(client.rssi() - dbm) <= 3, 2 * TICK)
        world.say(f"{dbm} dBm in the air: {client.rssi()} dBm after {time.monotonic() - start:.1f} s")


def counts_what_crosses_the_air(world):
    client = world.start_service()
    client.scan()
    world.say(join(world, neighbourhood.MODERN, by_address=True))
    world.say(world.use(neighbourhood.MODERN))
    client.request(card.RESET_COUNTERS | card.SET)
    before, frames = client.link_counters(), client.query_number(card.RECEIVED_FRAMES)
    kernel = world.radio.statistics()
    size, count = 1400, 300
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sender:
        sender.setsockopt(socket.SOL_SOCKET, socket.SO_BINDTODEVICE, CARD.encode())
        sender.settimeout(5)
        for _ in range(count):
            sender.sendto(bytes(size), (neighbourhood.MODERN.gateway, ECHO_PORT))
            sender.recv(65536)

    def counted():
        now = client.link_counters()
        return (now[2] - before[2]) >= count * size and (now[3] - before[3]) >= count * size

    wait_until("the counters show the traffic", counted, 2 * TICK)
    after = client.link_counters()
    kernel_now = world.radio.statistics()
    received = client.query_number(card.RECEIVED_FRAMES) - frames
    statistics = client.statistics()
    world.say(f"{count} datagrams of {size} bytes each way: {after[2] - before[2]} bytes sent, {after[3] - before[3]} "
              f"received at {after[0] / 2:.1f} Mbit/s; {received} frames received, "
              f"{kernel_now['rx_packets'] - kernel['rx_packets']} in the kernel; {statistics[0]} fragments sent, "
              f"{statistics[9]} received")
    # Headers and encryption make frames longer than the datagrams; little else is sent meanwhile.
    for bytes_counted in (after[2] - before[2], after[3] - before[3]):
        assert count * size <= bytes_counted < 1.3 * count * size, bytes_counted
    assert abs(received - (kernel_now["rx_packets"] - kernel["rx_packets"])) <= 5, received
    assert statistics[0] >= count and statistics[9] >= count, statistics
    assert after[0] > 0, "the rate is 0"
    # A new association starts the kernel's counters again, but not the card's.
    join(world, neighbourhood.OPEN, by_address=True)
    wait_until("the card answers", lambda: client.link_counters()[2] >= 0)
    for old, new in zip(after[2:], client.link_counters()[2:]):
        assert new >= old, f"a counter ran back from {old} to {new}"
    for old, new in zip(statistics, client.statistics()):
        assert new >= old, f"a counter ran back from {old} to {new}"
    client.request(card.RESET_COUNTERS | card.SET)
    assert client.statistics()[0] < 50 and client.query_number(card.RECEIVED_FRAMES) < 50, client.statistics()


def rfkill_files(name):
    for folder in pathlib.Path(f"/sys/class/net/{CARD}/phy80211").glob("rfkill*"):
        yield folder / name


def turns_the_radio_off_and_on(world):
    client = world.start_service()
    client.scan()
    world.say(join(world, neighbourhood.MODERN, by_address=True))
    client.set(card.RADIO, b"\0\0\0\0")
    wait_until("the link is down", lambda: not client.is_linked(), 5)
    soft = [file.read_text().strip() for file in rfkill_files("soft")]
    assert soft == ["1"], soft
    client.set(card.RADIO, b"\1\0\0\0")
    start = time.monotonic()
    client.scan()
    world.say(f"radio off: soft block {soft}; on again: " + join(world, neighbourhood.MODERN, by_address=True)
              + f", {time.monotonic() - start:.1f} s after it was turned on")

    def switch_is_on():
        return struct.unpack_from("=I", client.query(card.STATION_CONFIG, 32), 20)[0] != 0

    assert switch_is_on()
    (CONTROLS / "hardware_switch").write_text(f"{CARD} 0")
    start = time.monotonic()
    wait_until("the card says that its switch is off", lambda: not switch_is_on(), 2 * TICK)
    wait_until("the link is down", lambda: not client.is_linked(), 2 * TICK)
    seconds = time.monotonic() - start
    (CONTROLS / "hardware_switch").write_text(f"{CARD} 1")
    wait_until("the card says that its switch is on", switch_is_on, 2 * TICK)
    client.scan()
    world.say(f"hardware switch off: shown after {seconds:.1f} s; on again: "
              + join(world, neighbourhood.MODERN, by_address=True))


TESTS = [shows_how_strong_the_signal_is, counts_what_crosses_the_air, turns_the_radio_off_and_on]
