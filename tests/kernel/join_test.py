"""Joining networks."""

import copy
import time

import card
import neighbourhood
import radios
from access_points import exchange_datagram
from programs import holds_within, wait_until


def joins_networks_of_every_kind(world):
    client = world.start_service()
    world.hears(*neighbourhood.JOINABLE)
    for network in neighbourhood.JOINABLE:
        # The utility joins hidden networks and profiles by name, rows of the list by address.
        first = world.join(network, by_address=not network.hidden)
        world.say(f"{first}; {world.use(network)}")
    for network in (neighbourhood.WEP_104, neighbourhood.MIXED):
        world.say(world.join(network) + " by name")
    secrets = [network.pre_shared_key for network in neighbourhood.ALL if network.pre_shared_key]
    secrets += [key for network in neighbourhood.ALL for key in network.wep_keys.values()]
    told = world.log.read_bytes().lower() + b"".join(world.service.children().values()).lower()
    for secret in secrets:
        assert secret.lower() not in told and secret.hex().encode() not in told, "a key is in the log or the arguments"
    for mode in (card.WPA_ENTERPRISE, card.WPA_NONE):
        try:
            client.set_number(card.AUTHENTICATION_MODE, mode)
            raise AssertionError(f"the authentication mode {mode} was accepted")
        except card.Refused:
            pass
    client.set_number(card.DISASSOCIATE, 0)
    wait_until("the link is dropped", lambda: not client.is_linked(), 5)
    wait_until("the access point knows", lambda: not neighbourhood.MIXED.has_authorised(world.radio.address), 5)


def gets_no_link_with_a_wrong_key(world):
    client = world.start_service()
    world.hears(neighbourhood.MODERN, neighbourhood.WEP_40_SHARED)
    wrong = copy.copy(neighbourhood.MODERN)
    wrong.pre_shared_key = bytes(32)
    wrong_shared = copy.copy(neighbourhood.WEP_40_SHARED)
    wrong_shared.wep_keys = {3: b"wrong"}
    for network in (wrong, wrong_shared):
        client.join(network, by_address=True)
        assert not holds_within(10.0, client.is_linked), f"linked with a wrong key: {network.kind}"
        assert client.peer() is None and not network.has_authorised(world.radio.address)
        world.say(f"{network.kind}: no link within 10 s")
    world.say("then, with the right key, " + world.join(neighbourhood.MODERN, by_address=True))


class AdHocPeer:
    """Another station that has created an ad hoc network."""

    infrastructure = card.AD_HOC
    authentication = card.OPEN_SYSTEM
    wep_index = 0

    def __init__(self, number, ssid, frequency, key=b""):
        self.ssid, self.frequency = ssid, frequency
        self.encryption = card.WEP if key else card.NO_ENCRYPTION
        self.wep_keys = {0: key} if key else {}
        self.interface = f"peer{number}"
        self.server = f"10.20{number}.0.1"
        self.radio = radios.Radio(self.interface, 0xB000 + number, radios.AD_HOC, in_air=True).insert()
        self.radio.set_group(radios.PEERS)
        radios.run_in_air("busybox-static", "ip", "link", "set", self.interface, "up")
        self.network_address = f"02:11:22:33:44:{number:02x}"
        more = ["key", "d:0:" + key.hex()] if key else []
        radios.run_in_air("iw", "dev", self.interface, "ibss", "join", ssid.decode(), frequency, "fixed-freq",
                          self.network_address, *more)
        radios.run_in_air("busybox-static", "ip", "address", "add", f"{self.server}/24", "dev", self.interface)


def joins_ad_hoc_networks(world):
    client = world.start_service()
    world.radio.set_group(radios.NEIGHBOURHOOD | radios.PEERS)
    for number, ssid, frequency, key in ((1, b"Raft", 2417, b""), (2, b"Dinghy", 2452, b"knots")):
        peer = AdHocPeer(number, ssid, frequency, key)
        try:
            entries = wait_until("the network is listed", lambda: [
                entry for entry in client.scan() if entry.address == peer.network_address], 20)
            assert entries[0].infrastructure == card.AD_HOC and bool(entries[0].privacy) == bool(key)
            start = time.monotonic()
            client.join(peer)
            wait_until("the card is in the cell",
                       lambda: client.is_linked() and client.peer() == peer.network_address, 30)
            seconds = time.monotonic() - start
            radios.run("busybox-static", "ip", "address", "flush", "dev", world.name)
            radios.run("busybox-static", "ip", "address", "add", peer.server[:-1] + "2/24", "dev", world.name)
            echo = wait_until("a datagram comes back", lambda: exchange_datagram(world.name, peer.server), 20)
            world.say(f"ad hoc, {'WEP' if key else 'open'}: in the cell after {seconds:.1f} s, a datagram and its "
                      f"echo in {1000 * echo:.0f} ms")
        finally:
            peer.radio.pull()


TESTS = [joins_networks_of_every_kind, gets_no_link_with_a_wrong_key, joins_ad_hoc_networks]
