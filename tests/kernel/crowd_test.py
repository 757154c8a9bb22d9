"""Several cards, many access points, several users."""

import grp
import os
import pathlib
import stat
import subprocess
import time

import card
import neighbourhood
import radios
from access_points import CONTROL
from join_test import join
from programs import wait_until
from world import CARD, CARD_NUMBER

CROWD = 98
OTHER_USER = 12345


def serves_two_cards(world):
    second = radios.Radio("card1", CARD_NUMBER + 1)
    try:
        client = world.start_service()
        other = world.service.wait_for("card1")
        assert world.service.names() == [CARD, "card1"], world.service.names()
        addresses = [each.query(card.CURRENT_ADDRESS, 6).hex(":") for each in (client, other)]
        assert addresses == [world.radio.address, second.address], addresses
        client.scan()
        world.say("first card, " + join(world, neighbourhood.MODERN, by_address=True))
        other.scan()
        other.join(neighbourhood.OPEN, by_address=True)
        wait_until("the second card is connected", lambda: other.peer() == neighbourhood.OPEN.address, 15)
        assert neighbourhood.OPEN.has_authorised(second.address)
        assert client.is_linked() and client.peer() == neighbourhood.MODERN.address
        second.pull()
        wait_until("only the first card is there", lambda: world.service.names() == [CARD], 5)
        assert client.is_linked() and client.peer() == neighbourhood.MODERN.address
        world.say("second card connected with another network; pulled, it leaves the first card's link as it is")
    finally:
        if second.is_inserted():
            second.pull()


def lists_as_many_networks_as_there_are(world):
    """One radio announces all of them: hostapd takes half a second for each radio."""
    crowd = radios.Radio("crowd", 0xD000, radios.ACCESS_POINT, in_air=True)
    names = [f"Market stall {index}".encode() for index in range(CROWD)]
    lines = ["interface=crowd", "driver=nl80211", "hw_mode=g", "channel=10",
             "bssid=02:0d:00:00:00:00", f"ssid2={names[0].hex()}"]
    for index, name in enumerate(names[1:], 1):
        lines += [f"bss=crowd{index}", f"bssid=02:0d:00:00:00:{index:02x}", f"ssid2={name.hex()}"]
    file = CONTROL.parent / "crowd.conf"
    file.write_text("\n".join(lines) + "\n")
    said = pathlib.Path("/run/results/crowd.log")
    with said.open("wb") as log:
        hostapd = radios.start_in_air("hostapd", file, stdout=log, stderr=subprocess.STDOUT)
        try:
            wait_until("hostapd announces them", lambda: b"crowd: AP-ENABLED" in said.read_bytes(), 60)
            client = world.start_service()
            start = time.monotonic()
            scans = 0

            def heard():
                nonlocal scans
                scans += 1
                listed = {entry.ssid for entry in client.scan()}
                return len(listed & set(names)) == CROWD

            wait_until(f"all {CROWD} networks are listed", heard, 30)
            world.say(f"{CROWD} access points, {len(client.list())} entries in the list after {scans} scans, "
                      f"{time.monotonic() - start:.1f} s; the slowest request took {1000 * client.slowest:.0f} ms")
        finally:
            hostapd.terminate()
            hostapd.wait()
            crowd.pull()


def answers_only_those_who_may_use_the_network(world):
    client = world.start_service()
    group = grp.getgrnam("netdev").gr_gid
    folder = client.path.parent.stat()
    assert folder.st_uid == 0 and stat.S_IMODE(folder.st_mode) & 0o022 == 0, oct(folder.st_mode)
    assert card.is_admitted(client.path, 0, [])
    assert not card.is_admitted(client.path, OTHER_USER, []), "a client of another user was served"
    assert card.is_admitted(client.path, OTHER_USER, [group]), "a client of the group was refused"
    world.say(f"socket {oct(stat.S_IMODE(os.stat(client.path).st_mode))} of group netdev: a member is served, another "
              "user is refused")


TESTS = [serves_two_cards, answers_only_those_who_may_use_the_network, lists_as_many_networks_as_there_are]
