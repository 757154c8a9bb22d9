"""The list of networks."""

import time

import card
import neighbourhood
import radios
from programs import holds_within, wait_until


def shows_the_networks_that_are_really_there(world):
    client = world.start_service()
    expected = {network.address: network for network in neighbourhood.ALL}
    start = time.monotonic()
    world.hears(*neighbourhood.ALL)
    found = {entry.address: entry for entry in client.list()}
    assert set(found) == set(expected), set(found) ^ set(expected)
    world.say(f"{len(found)} networks after {time.monotonic() - start:.1f} s; the slowest request took "
              f"{1000 * client.slowest:.0f} ms")
    for address, network in expected.items():
        entry = found[address]
        world.say(f"{address} {entry.ssid!r:38} {entry.frequency // 1000} MHz {entry.rssi} dBm {entry.security()}")
        assert entry.ssid == (b"" if network.hidden else network.ssid), (entry.ssid, network.ssid)
        assert entry.infrastructure == card.INFRASTRUCTURE, entry.infrastructure
        assert entry.security() == network.security, (network.ssid, entry.security(), network.security)
        assert bool(entry.privacy) == (network.security != "open"), (network.ssid, entry.privacy)
        assert entry.beacon_period == 100, entry.beacon_period
        assert {12, 24, 48} <= set(entry.rates), (network.ssid, entry.rates)
        if network not in neighbourhood.CHANGING:
            assert entry.frequency == network.frequency * 1000, (entry.frequency, network.frequency)
            assert abs(entry.rssi - network.signal) <= 1, (network.ssid, entry.rssi, network.signal)


def forgets_a_network_that_is_gone(world):
    client = world.start_service()
    network = neighbourhood.ODD_NAME
    world.hears(network, neighbourhood.WPA)
    client.set_number(card.PHY_MODE, 0)
    assert all(entry.frequency < 3000000 for entry in client.list()), "802.11b/g lists a network of the 5 GHz band"
    world.radio.set_group(radios.NOBODY)
    start = time.monotonic()
    wait_until("no network is listed any more", lambda: not client.scan(), 60)
    world.say(f"802.11b/g, out of range of all networks: the list is empty after {time.monotonic() - start:.1f} s")
    world.radio.set_group(radios.NEIGHBOURHOOD)
    world.hears(network)
    world.say("in range again: they are back")


def lists_all_networks_while_connected(world):
    client = world.start_service()
    everything = {network.address for network in neighbourhood.ALL}
    for network in (neighbourhood.WEP_40, neighbourhood.MODERN):
        world.join_listed(network)
        time.sleep(15)  # until the results from before the link are too old to be listed
        missing = everything

        def complete():
            nonlocal missing
            missing = everything - {entry.address for entry in client.scan()}
            return not missing

        assert holds_within(30, complete), f"not listed while connected with {network.kind}: {sorted(missing)}"
        world.say(f"connected with {network.kind}: all {len(everything)} networks are still listed")


TESTS = [shows_the_networks_that_are_really_there, forgets_a_network_that_is_gone, lists_all_networks_while_connected]
