"""Profiles: adding, deleting, activating, and automatic connection after the card is reinserted or reset."""

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
MANUAL, MANUAL_KEY = "Lighthouse", "lighthousekey"
SURVEYED, SURVEYED_KEY = "Compass", "north by northwest"
SHOWN = [
    ["Light manual", MANUAL, "Auto", "Open", "WEP", "Infrastructure"],
    ["From the survey", SURVEYED, "Auto", "WPA-PSK", "AES", "Infrastructure"],
]


def profiles(top):
    return wait_until("the list of profiles is on the screen", lambda: reader.find(top, "table", "Profiles"))


def shown(top):
    return [row[1:] for row in reader.rows(profiles(top))]


def stored():
    return plistlib.loads(PROFILES.read_bytes())


def marks(top):
    return check_mark.all_seen(check_mark.areas_of(profiles(top)))


def accessible_marks(top):
    return [row[0] for row in reader.rows(profiles(top))]


def select(top, utility, row):
    utility.press("alt+p", "alt+r", "Home", *["Down"] * row)
    wait_until("the row is selected", lambda: reader.selected_rows(profiles(top)) == [row])


def adds_a_profile_manually(top, simulator, utility):
    steps.meet_the_card(simulator)
    utility.press("alt+p")
    assert shown(top) == [], shown(top)
    with utility.sheet("Profile", "alt+a"):
        utility.press("alt+n", "ctrl+a")
        utility.type(SHOWN[0][0])
        utility.press("alt+s", "ctrl+a")
        utility.type(MANUAL)
        utility.press("alt+u", "alt+e")
        utility.type("W")
        # The key format is between the key's button and its text field.
        utility.press("alt+1", "Tab")
        utility.type("A")
        utility.press("Tab")
        utility.type(MANUAL_KEY)
        utility.press("Return")
    wait_until("the profile is listed", lambda: shown(top) == SHOWN[:1])


def adds_a_profile_from_the_site_survey(top, simulator, utility):
    steps.choose_network(top, utility, SURVEYED)
    with utility.sheet("Profile", "alt+f"):
        utility.press("alt+n", "ctrl+a")
        utility.type(SHOWN[1][0])
        utility.press("alt+u", "alt+p")
        utility.type(SURVEYED_KEY)
        utility.press("Return")
    utility.press("alt+p")
    wait_until("both profiles are listed", lambda: shown(top) == SHOWN)


def stores_the_profiles_in_a_private_file(top, simulator, utility):
    assert stat.S_IMODE(PROFILES.stat().st_mode) == 0o600, oct(PROFILES.stat().st_mode)
    manual, surveyed = stored()
    assert [manual["SSID"], manual["WEPKey1"], manual["Hidden"]] == [MANUAL, MANUAL_KEY, "1"], manual
    address = next(network["bssid"] for network in simulator.status()["networks"] if network["ssid"] == SURVEYED)
    assert [surveyed["SSID"], surveyed["WPAPSK"], surveyed["Hidden"]] == [SURVEYED, SURVEYED_KEY, "0"], surveyed
    assert surveyed["BSSID"] == address.replace("-", ""), surveyed


def deletes_a_profile_without_confirmation(top, simulator, utility):
    with utility.sheet("Profile", "alt+a"):
        utility.press("Return")
    wait_until("a third profile is listed", lambda: shown(top)[2:] and shown(top)[2][0] == "PROF1")
    select(top, utility, 2)
    utility.press("alt+d")
    wait_until("it is deleted", lambda: shown(top) == SHOWN)
    assert [profile["SSID"] for profile in stored()] == [MANUAL, SURVEYED], len(stored())


def shows_no_mark_before_an_activation(top, simulator, utility):
    assert marks(top) == ["nothing", "nothing"]
    assert accessible_marks(top) == ["", ""], accessible_marks(top)


def activates_a_profile(top, simulator, utility):
    select(top, utility, 0)
    utility.press("alt+c")
    wait_until("the card is associated", lambda: simulator.link() == MANUAL)
    wait_until("the first profile is checked", lambda: marks(top) == ["check", "nothing"])
    assert accessible_marks(top) == ["Activated, connected", ""], accessible_marks(top)


def activates_another_profile(top, simulator, utility):
    select(top, utility, 1)
    utility.press("alt+c")
    wait_until("the card is associated", lambda: simulator.link() == SURVEYED)
    wait_until("the second profile is checked", lambda: marks(top) == ["nothing", "check"])


def reconnects_when_the_card_is_reinserted(top, simulator, utility):
    simulator.control("eject")
    utility.press("alt+l")
    wait_until("the status is \"No Device!!\"", lambda: "No Device!!" in reader.labels(top))
    utility.press("alt+p")
    before = len(simulator.structure_calls())
    simulator.control("insert")
    # No user input from here on.
    wait_until("the card is associated again", lambda: simulator.link() == SURVEYED)
    assert ("VX_OID_802_11_ADD_WPA", True) in simulator.calls(before), simulator.calls(before)
    wait_until("the second profile is checked", lambda: marks(top) == ["nothing", "check"])
    before = len(simulator.structure_calls())
    wait_until("the link was queried again", lambda: simulator.calls(before).count(("OID_802_11_BSSID", False)) > 2)
    assert marks(top) == ["nothing", "check"]
    assert shown(top) == SHOWN, shown(top)


def shows_the_new_link(top, simulator, utility):
    utility.press("alt+l")
    status = f"Connected <--> {SURVEYED} <--> {simulator.status()['association']['bssid']}"
    wait_until(f"the page says {status!r}", lambda: status in reader.labels(top))


def reconnects_when_the_driver_requests_it(top, simulator, utility):
    utility.press("alt+p")
    before = len(simulator.structure_calls())
    simulator.control("reset")
    wait_until("the ready flag was queried",
               lambda: ("VX_OID_802_11_READY_FLAG", False) in simulator.calls(before))
    wait_until("the card is associated again",
               lambda: simulator.input_of("VX_OID_802_11_ADD_WPA", before) and simulator.link() == SURVEYED)


def shows_an_empty_box_when_the_network_is_gone(top, simulator, utility):
    areas = check_mark.areas_of(profiles(top))
    simulator.control("remove-network", SURVEYED)
    wait_until("the box is empty", lambda: check_mark.all_seen(areas) == ["nothing", "box"])
    wait_until("the accessible name says so", lambda: accessible_marks(top) == ["", "Activated, not connected"])


# After a lost link the program scans on every tick and answers slowly, so that step comes last.
STEPS = [
    adds_a_profile_manually,
    adds_a_profile_from_the_site_survey,
    stores_the_profiles_in_a_private_file,
    deletes_a_profile_without_confirmation,
    shows_no_mark_before_an_activation,
    activates_a_profile,
    activates_another_profile,
    reconnects_when_the_card_is_reinserted,
    shows_the_new_link,
    reconnects_when_the_driver_requests_it,
    shows_an_empty_box_when_the_network_is_gone,
]

if __name__ == "__main__":
    sys.exit(steps.run(STEPS))
