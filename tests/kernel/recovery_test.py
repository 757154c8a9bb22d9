"""What brings a lost link back, as a plain client sees it. The window's part is in window_test.py."""

import pathlib
import time

import card
import neighbourhood
import radios
from programs import holds_within, wait_until
from world import CONTROLS, RESULTS


def wait_for_request_to_apply(client, seconds=20):
    """Waits until the service raises its event flag, then until the card is ready."""
    start = time.monotonic()
    wait_until("the event flag is raised", lambda: client.query_number(card.EVENT_FLAG) & 0xFF == 1, seconds)
    raised = time.monotonic() - start
    wait_until("the card is ready", lambda: client.query_number(card.READY_FLAG) == 1, seconds)
    return f"event flag after {raised:.1f} s, ready after {time.monotonic() - start:.1f} s"


def recovers_when_its_child_dies(world):
    client = world.start_service()
    world.say(world.join_listed(neighbourhood.MODERN))
    client.query_number(card.EVENT_FLAG)
    killed = world.service.kill_children()
    assert len(killed) == 1, killed
    said = wait_for_request_to_apply(client)
    world.say(f"child killed: {said}; " + world.join(neighbourhood.MODERN, by_address=True))
    world.say(world.use(neighbourhood.MODERN))


def comes_back_with_the_card(world):
    client = world.start_service()
    world.join_listed(neighbourhood.MODERN)
    world.radio.pull()
    start = time.monotonic()
    wait_until("the card's service is gone",
               lambda: world.name not in world.service.names() and not client.is_there(), 20)
    gone = time.monotonic() - start
    wait_until("its child is gone", lambda: not world.service.children(), 5)
    world.radio.insert()
    start = time.monotonic()
    world.service.wait_for(world.name)
    back = time.monotonic() - start
    world.say(f"pulled: gone after {gone:.1f} s; inserted: back after {back:.1f} s; "
              + world.join_listed(neighbourhood.MODERN))


def follows_an_access_point_that_comes_and_goes(world):
    client = world.start_service()
    world.join_listed(neighbourhood.MODERN)
    world.radio.set_group(radios.NOBODY)
    start = time.monotonic()
    wait_until("the link is lost", lambda: not client.is_linked(), 30)
    lost = time.monotonic() - start
    world.radio.set_group(radios.NEIGHBOURHOOD)
    start = time.monotonic()
    world.wait_for_link(neighbourhood.MODERN)
    world.say(f"out of range: link lost after {lost:.1f} s; in range again: linked after "
              f"{time.monotonic() - start:.1f} s without a request")


def survives_other_programs(world):
    client = world.start_service()
    world.join_listed(neighbourhood.MODERN)
    radios.run("busybox-static", "ip", "link", "set", world.name, "down")
    start = time.monotonic()
    wait_until("the link is lost", lambda: not client.is_linked(), 5)
    world.wait_for_link(neighbourhood.MODERN)
    world.say(f"taken down by another program: linked again after {time.monotonic() - start:.1f} s")


def keeps_serving_under_a_new_name(world):
    world.start_service(for_every_card=True)
    world.join_listed(neighbourhood.MODERN)
    radios.run("busybox-static", "ip", "link", "set", world.name, "down")
    radios.run("busybox-static", "ip", "link", "set", world.name, "name", "renamed")
    start = time.monotonic()
    try:
        world.card = world.service.wait_for("renamed")
        assert world.service.names() == ["renamed"], world.service.names()
        seconds = time.monotonic() - start
        world.card.meet()
        world.say(f"renamed: served under the new name after {seconds:.1f} s; " + world.join_listed(neighbourhood.MODERN))
    finally:
        world.service.end()
        radios.run("busybox-static", "ip", "link", "set", "renamed", "down")
        radios.run("busybox-static", "ip", "link", "set", "renamed", "name", world.name)


def suspend(card):
    """Suspends the machine for some seconds; of the radios, only the card."""
    (CONTROLS / "suspend_only").write_text(card)
    (RESULTS / "suspend").touch()
    start = time.monotonic()
    pathlib.Path("/sys/power/state").write_text("freeze")
    return time.monotonic() - start


def recovers_from_a_suspend(world):
    client = world.start_service()
    world.join_listed(neighbourhood.MODERN)
    client.query_number(card.EVENT_FLAG)
    slept = suspend(world.name)
    start = time.monotonic()
    linked = holds_within(10.0, client.is_linked)
    flag = client.query_number(card.EVENT_FLAG)
    world.say(f"suspended for {slept:.1f} s: link {'back' if linked else 'not back'} after "
              f"{time.monotonic() - start:.1f} s, event flag {flag}")
    assert linked or flag & 0xFF == 1, "neither a link nor a request to apply the profile"
    if not linked:
        world.join_listed(neighbourhood.MODERN)
    world.say(world.use(neighbourhood.MODERN))


TESTS = [recovers_when_its_child_dies, comes_back_with_the_card, follows_an_access_point_that_comes_and_goes,
         survives_other_programs]
LAST = [keeps_serving_under_a_new_name, recovers_from_a_suspend]
