"""The link's figures, and the radio."""

import pathlib
import re
import socket
import struct
import time

import card
import neighbourhood
import radios
from access_points import ECHO_PORT
from programs import holds_within, wait_until

TICK = 2.0  # seconds; the utility asks this often


def shows_how_strong_the_signal_is(world):
    client = world.start_service()
    world.say(world.join_listed(neighbourhood.NEAR_AND_FAR))
    for dbm in (-45, -82, -60):
        neighbourhood.NEAR_AND_FAR.radio.set_signal(dbm)
        start = time.monotonic()
        wait_until(f"the card measures {dbm} dBm", lambda: abs(client.rssi() - dbm) <= 3, 2 * TICK)
        world.say(f"{dbm} dBm in the air: {client.rssi()} dBm after {time.monotonic() - start:.1f} s")


def counts_what_crosses_the_air(world):
    client = world.start_service()
    world.say(world.join_listed(neighbourhood.MODERN))
    world.say(world.use(neighbourhood.MODERN))
    client.request(card.RESET_COUNTERS | card.SET)
    before, frames = client.link_counters(), client.query_number(card.RECEIVED_FRAMES)
    kernel = world.radio.statistics()
    size, count = 1400, 300
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sender:
        sender.setsockopt(socket.SOL_SOCKET, socket.SO_BINDTODEVICE, world.name.encode())
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
    world.join_listed(neighbourhood.OPEN)
    wait_until("the card answers", lambda: client.link_counters()[2] >= 0)
    for old, new in zip(after[2:], client.link_counters()[2:]):
        assert new >= old, f"a counter ran back from {old} to {new}"
    for old, new in zip(statistics, client.statistics()):
        assert new >= old, f"a counter ran back from {old} to {new}"
    client.request(card.RESET_COUNTERS | card.SET)
    assert client.statistics()[0] < 50 and client.query_number(card.RECEIVED_FRAMES) < 50, client.statistics()


def turns_the_radio_off_and_on(world):
    client = world.start_service()
    world.say(world.join_listed(neighbourhood.MODERN))
    client.set(card.RADIO, b"\0\0\0\0")
    wait_until("the link is down", lambda: not client.is_linked(), 5)
    soft = [(switch / "soft").read_text().strip() for switch in world.radio.switches()]
    assert soft == ["1"], soft
    client.set(card.RADIO, b"\1\0\0\0")
    start = time.monotonic()
    world.say(f"radio off: soft block {soft}; on again: " + world.join_listed(neighbourhood.MODERN)
              + f", {time.monotonic() - start:.1f} s after it was turned on")

    def switch_is_on():
        return struct.unpack_from("=I", client.query(card.STATION_CONFIG, 32), 20)[0] != 0

    assert switch_is_on()
    world.switch_hardware(False)
    start = time.monotonic()
    wait_until("the card says that its switch is off", lambda: not switch_is_on(), 2 * TICK)
    wait_until("the link is down", lambda: not client.is_linked(), 2 * TICK)
    seconds = time.monotonic() - start
    world.switch_hardware(True)
    wait_until("the card says that its switch is on", switch_is_on, 2 * TICK)
    world.say(f"hardware switch off: shown after {seconds:.1f} s; on again: "
              + world.join_listed(neighbourhood.MODERN))


def sets_the_radio_of_the_kernel(world):
    client = world.start_service()
    world.say(world.join_listed(neighbourhood.MODERN))

    def settings():
        phy = pathlib.Path(f"/sys/class/net/{world.name}/phy80211/name").read_text().strip()
        said = radios.run("iw", "dev", world.name, "info") + radios.run("iw", "dev", world.name, "get", "power_save") \
            + radios.run("iw", "phy", phy, "info")
        return re.findall(r"txpower .*|Power save: .*|(?:RTS|Fragmentation) threshold: .*", said)

    for percent, power, threshold, saving in ((25, "24.00 dBm", 500, True), (100, "30.00 dBm", 0, False)):
        client.set_number(card.TX_POWER, percent)
        client.set_number(card.RTS_THRESHOLD, threshold)
        client.set_number(card.FRAGMENTATION_THRESHOLD, threshold)
        client.set_number(card.POWER_MODE, 1 if saving else 0)
        words = [f"txpower {power}", f"Power save: {'on' if saving else 'off'}"]
        words += [f"RTS threshold: {threshold}", f"Fragmentation threshold: {threshold}"] if threshold else []
        assert holds_within(10, lambda: sorted(settings()) == sorted(words)), (settings(), words)
        world.say(f"{percent} %: " + ", ".join(words))
    for rate in (2, 22, 108):
        client.set(card.DESIRED_RATES, bytes([rate] + [0] * 7))
        world.use(neighbourhood.MODERN)
        wait_until(f"the card sends at {rate / 2} Mbit/s", lambda: client.link_counters()[0] == rate, 2 * TICK)
    world.say("a single rate of 1, 11 or 54 Mbit/s is used")


def follows_a_change_of_the_channel(world):
    client = world.start_service()
    network = neighbourhood.NEAR_AND_FAR
    world.join_listed(network)
    assert network.ask("CHAN_SWITCH 5 2432") == "OK\n"
    start = time.monotonic()

    def channel():
        return struct.unpack_from("=I", client.query(card.CONFIGURATION, 32), 12)[0] // 1000

    wait_until("the card is on the other channel", lambda: client.is_linked() and channel() == 2432, 20)
    wait_until("the list says so", lambda: [
        entry for entry in client.scan() if entry.address == network.address and entry.frequency == 2432000], 20)
    world.say(f"the access point went to channel 5: so did the card, listed after {time.monotonic() - start:.1f} s; "
              + world.use(network))
    assert client.peer() == network.address


def changes_to_another_access_point_of_the_network(world):
    world.start_service()
    first, second = neighbourhood.ROAMING
    world.hears(first, second)
    world.card.join(first)
    linked = wait_until("the card is connected", lambda: next(
        (each for each in (first, second) if world.card.is_linked() and world.card.peer() == each.address), None), 90)
    other = second if linked is first else first
    assert linked.ask("DISABLE") == "OK\n"
    start = time.monotonic()
    try:
        world.wait_for_link(other)
        world.say(f"{linked.address} was switched off: linked with {other.address} after "
                  f"{time.monotonic() - start:.1f} s without a request; {world.use(other)}")
    finally:
        assert linked.ask("ENABLE") == "OK\n"


TESTS = [shows_how_strong_the_signal_is, counts_what_crosses_the_air, turns_the_radio_off_and_on,
         sets_the_radio_of_the_kernel, follows_a_change_of_the_channel,
         changes_to_another_access_point_of_the_network]
