"""Profiles from their making to the card that is pulled and inserted, after which the active one is connected again
by itself."""

import os
import pathlib
import plistlib
import stat
import sys

import check_mark
import screen_reader as reader
import steps
from programs import wait_until

HOME = pathlib.Path(os.environ["HOME"])
PROFILES = HOME / "Library/Preferences/Profile.plist"
BY_HAND, BY_HAND_KEY = "Lighthouse", "lighthousekey"
SURVEYED, SURVEYED_KEY = "Compass", "north by northwest"
SHOWN = [
    ["Light by hand", BY_HAND, "Auto", "Open", "WEP", "Infrastructure"],
    ["From the survey", SURVEYED, "Auto", "WPA-PSK", "AES", "Infrastructure"],
]


def profiles(top):
    return wait_until("the list of profiles is on the screen", lambda: reader.find(top, "table", "Profiles"))


def shown(top):
    return [row[1:] for row in reader.rows(profiles(top))]


def stored():
    return plistlib.loads(PROFILES.read_bytes())


def marks(top):
    return check_mark.of_all(check_mark.places(profiles(top)))


def said_of_marks(top):
    return [row[0] for row in reader.rows(profiles(top))]


def select(top, utility, row):
    utility.press("alt+p", "alt+r", "Home", *["Down"] * row)
    wait_until("the row is selected", lambda: reader.selected_rows(profiles(top)) == [row])


def makes_a_profile_by_hand(top, simulator, utility):
    steps.meet_the_card(simulator)
    utility.press("alt+p")
    assert shown(top) == [], shown(top)
    with utility.sheet("Profile", "alt+a"):
        utility.press("alt+n", "ctrl+a")
        utility.type(SHOWN[0][0])
        utility.press("alt+s", "ctrl+a")
        utility.type(BY_HAND)
        utility.press("alt+u", "alt+e")
        utility.type("W")
        # The format stands between the key's button and its text.
        utility.press("alt+1", "Tab")
        utility.type("A")
        utility.press("Tab")
        utility.type(BY_HAND_KEY)
        utility.press("Return")
    wait_until("the profile is listed", lambda: shown(top) == SHOWN[:1])


def makes_a_profile_of_a_network_in_range(top, simulator, utility):
    steps.choose_network(top, utility, SURVEYED)
    with utility.sheet("Profile", "alt+f"):
        utility.press("alt+n", "ctrl+a")
        utility.type(SHOWN[1][0])
        utility.press("alt+u", "alt+p")
        utility.type(SURVEYED_KEY)
        utility.press("Return")
    utility.press("alt+p")
    wait_until("both profiles are listed", lambda: shown(top) == SHOWN)


def stores_them_for_their_owner_alone(top, simulator, utility):
    assert stat.S_IMODE(PROFILES.stat().st_mode) == 0o600, oct(PROFILES.stat().st_mode)
    by_hand, surveyed = stored()
    assert [by_hand["SSID"], by_hand["WEPKey1"], by_hand["Hidden"]] == [BY_HAND, BY_HAND_KEY, "1"], by_hand
    address = next(network["bssid"] for network in simulator.status()["networks"] if network["ssid"] == SURVEYED)
    assert [surveyed["SSID"], surveyed["WPAPSK"], surveyed["Hidden"]] == [SURVEYED, SURVEYED_KEY, "0"], surveyed
    assert surveyed["BSSID"] == address.replace("-", ""), surveyed


def deletes_a_profile_without_asking(top, simulator, utility):
    with utility.sheet("Profile", "alt+a"):
        utility.press("Return")
    wait_until("a third profile is listed", lambda: shown(top)[2:] and shown(top)[2][0] == "PROF1")
    select(top, utility, 2)
    utility.press("Delete")
    wait_until("it is gone", lambda: shown(top) == SHOWN)
    assert [profile["SSID"] for profile in stored()] == [BY_HAND, SURVEYED], len(stored())


def marks_none_before_one_is_activated(top, simulator, utility):
    assert marks(top) == ["nothing", "nothing"]
    assert said_of_marks(top) == ["", ""], said_of_marks(top)


def activates_a_profile(top, simulator, utility):
    select(top, utility, 0)
    utility.press("alt+c")
    wait_until("the card is associated", lambda: simulator.link() == BY_HAND)
    wait_until("the first profile is checked", lambda: marks(top) == ["check", "nothing"])
    assert said_of_marks(top) == ["Activated, connected", ""], said_of_marks(top)


def changes_over_to_another_profile(top, simulator, utility):
    select(top, utility, 1)
    utility.press("alt+c")
    wait_until("the card is associated", lambda: simulator.link() == SURVEYED)
    wait_until("the second profile is checked", lambda: marks(top) == ["nothing", "check"])


def connects_by_itself_when_the_card_is_inserted_again(top, simulator, utility):
    simulator.control("eject")
    utility.press("alt+l")
    wait_until("the status is \"No Device!!\"", lambda: "No Device!!" in reader.labels(top))
    utility.press("alt+p")
    before = len(simulator.structure_calls())
    simulator.control("insert")
    # From here on nothing is pressed.
    wait_until("the card is associated again", lambda: simulator.link() == SURVEYED)
    assert ("VX_OID_802_11_ADD_WPA", True) in simulator.calls(before), simulator.calls(before)
    wait_until("the second profile is checked", lambda: marks(top) == ["nothing", "check"])
    before = len(simulator.structure_calls())
    wait_until("the link was looked at again", lambda: simulator.calls(before).count(("OID_802_11_BSSID", False)) > 2)
    assert marks(top) == ["nothing", "check"]
    assert shown(top) == SHOWN, shown(top)


def tells_of_that_link(top, simulator, utility):
    utility.press("alt+l")
    status = f"Connected <--> {SURVEYED} <--> {simulator.status()['association']['bssid']}"
    wait_until(f"the page says {status!r}", lambda: status in reader.labels(top))


def connects_by_itself_when_the_driver_asks(top, simulator, utility):
    utility.press("alt+p")
    before = len(simulator.structure_calls())
    simulator.control("reset")
    wait_until("the driver was asked whether it is ready",
               lambda: ("VX_OID_802_11_READY_FLAG", False) in simulator.calls(before))
    wait_until("the card is associated again",
               lambda: simulator.input_of("VX_OID_802_11_ADD_WPA", before) and simulator.link() == SURVEYED)


def keeps_the_box_without_its_check_when_the_network_is_gone(top, simulator, utility):
    places = check_mark.places(profiles(top))
    simulator.control("remove-network", SURVEYED)
    wait_until("the box is empty", lambda: check_mark.of_all(places) == ["nothing", "box"])
    wait_until("the bus says so", lambda: said_of_marks(top) == ["", "Activated, not connected"])


# Once a link was up and is lost, the program scans on every tick and answers slowly: that step comes last.
STEPS = [
    makes_a_profile_by_hand,
    makes_a_profile_of_a_network_in_range,
    stores_them_for_their_owner_alone,
    deletes_a_profile_without_asking,
    marks_none_before_one_is_activated,
    activates_a_profile,
    changes_over_to_another_profile,
    connects_by_itself_when_the_card_is_inserted_again,
    tells_of_that_link,
    connects_by_itself_when_the_driver_asks,
    keeps_the_box_without_its_check_when_the_network_is_gone,
]

if __name__ == "__main__":
    sys.exit(steps.run(STEPS))
