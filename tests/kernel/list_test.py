"""The list of networks."""

import time

import card
import neighbourhood
from programs import holds_within, wait_until


def shows_the_networks_that_are_really_there(world):
    client = world.start_service()
    strength = {}
    for index, network in enumerate(neighbourhood.ALL):
        strength[network.address] = -40 - 3 * index
        network.radio.set_signal(strength[network.address])
    expected = {network.address: network for network in neighbourhood.ALL}
    scans = 0

    def complete():
        nonlocal scans
        scans += 1
        return {entry.address: entry for entry in client.scan()}

    found = wait_until("all networks are listed", lambda: (lambda listed: listed if set(listed) == set(expected) else None)(
        complete()), 30)
    world.say(f"{len(found)} networks after {scans} scans of 2 s; the slowest request took {1000 * client.slowest:.0f} ms")
    for address, network in expected.items():
        entry = found[address]
        world.say(f"{address} {entry.ssid!r:38} {entry.frequency // 1000} MHz {entry.rssi} dBm {entry.security()}")
        assert entry.ssid == (b"" if network.hidden else network.ssid), (entry.ssid, network.ssid)
        assert entry.frequency == network.frequency * 1000, (entry.frequency, network.frequency)
        assert entry.infrastructure == card.INFRASTRUCTURE, entry.infrastructure
        assert entry.security() == network.security, (network.ssid, entry.security(), network.security)
        assert bool(entry.privacy) == (network.security != "open"), (network.ssid, entry.privacy)
        assert entry.beacon_period == 100, entry.beacon_period
        assert {12, 24, 48} <= set(entry.rates), (network.ssid, entry.rates)
        assert abs(entry.rssi - strength[address]) <= 1, (network.ssid, entry.rssi, strength[address])


def forgets_a_network_that_is_gone(world):
    client = world.start_service()
    gone = neighbourhood.ODD_NAME
    wait_until("the network is listed", lambda: gone.address in [entry.address for entry in client.scan()], 15)
    gone.radio.set_group(2)
    try:
        wait_until("the network is no longer listed",
                   lambda: gone.address not in [entry.address for entry in client.scan()], 60)
    finally:
        gone.radio.set_group(1)


def lists_all_networks_while_connected(world):
    client = world.start_service()
    client.scan()
    everything = {network.address for network in neighbourhood.ALL}
    for network in (neighbourhood.WEP_40, neighbourhood.MODERN):
        client.join(network, by_address=True)
        world.wait_for_link(network)
        time.sleep(15)  # until the results from before the link are too old to be listed
        missing = everything

        def complete():
            nonlocal missing
            missing = everything - {entry.address for entry in client.scan()}
            return not missing

        assert holds_within(20, complete), f"not listed while connected with {network.kind}: {sorted(missing)}"
        world.say(f"connected with {network.kind}: all {len(everything)} networks are still listed")


TESTS = [shows_the_networks_that_are_really_there, forgets_a_network_that_is_gone, lists_all_networks_while_connected]
