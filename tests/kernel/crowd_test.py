"""Several cards, many access points, several users."""

import grp
import os
import stat
import time

import card
import neighbourhood
import radios
from access_points import CROWD, crowd
from programs import wait_until

OTHER_USER = 12345


def serves_two_cards(world):
    second = radios.Radio("card-second", 0xCFFF).insert()
    try:
        client = world.start_service(for_every_card=True)
        other = world.service.wait_for(second.name)
        assert world.service.names() == [world.name, second.name], world.service.names()
        addresses = [each.query(card.CURRENT_ADDRESS, 6).hex(":") for each in (client, other)]
        assert addresses == [world.radio.address, second.address], addresses
        world.say("first card, " + world.join_listed(neighbourhood.MODERN))
        other.join(neighbourhood.OPEN)
        wait_until("the second card is connected", lambda: other.peer() == neighbourhood.OPEN.address, 30)
        assert neighbourhood.OPEN.has_authorised(second.address)
        assert client.is_linked() and client.peer() == neighbourhood.MODERN.address
        second.pull()
        wait_until("only the first card is there", lambda: world.service.names() == [world.name], 5)
        assert client.is_linked() and client.peer() == neighbourhood.MODERN.address
        world.say("second card connected with another network; pulled, it leaves the first card's link as it is")
    finally:
        if second.is_inserted():
            second.pull()


def lists_as_many_networks_as_there_are(world):
    client = world.start_service()
    world.radio.set_group(radios.NEIGHBOURHOOD | radios.CROWD)
    with crowd():
        start = time.monotonic()
        scans = 0

        def heard():
            nonlocal scans
            scans += 1
            listed = {entry.ssid.decode(errors="replace") for entry in client.scan()}
            return listed.issuperset(CROWD)

        wait_until(f"all {len(CROWD)} networks are listed", heard, 60)
        world.say(f"{len(CROWD)} networks on one channel, {len(client.list())} entries in the list after {scans} scans, "
                  f"{time.monotonic() - start:.1f} s; the slowest request took {1000 * client.slowest:.0f} ms")


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


TESTS = [lists_as_many_networks_as_there_are, answers_only_those_who_may_use_the_network]
LAST = [serves_two_cards]
