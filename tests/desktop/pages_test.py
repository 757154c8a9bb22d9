"""Statistics, advanced settings and about page: their requests and what they show."""

import os
import pathlib
import plistlib
import sys
import time

import screen_reader as reader
import steps
from programs import join_open_network, wait_until

HOME = pathlib.Path(os.environ["HOME"])
SETTINGS = HOME / "Library/Preferences/AdvancedProfileSetting.plist"
UTILITY_INFORMATION = pathlib.Path("/Applications/Vantrel.app/Contents/Info.plist")
DRIVER_INFORMATION = pathlib.Path("/System/Library/Extensions/Pellvane.kext/Contents/Info.plist")
RECEIVED = "Frames received successfully:"
NETWORK = b"Harbour Cafe"

# The first requests of every Apply: name, whether it is a set, and the bytes of a set.
WIRELESS_MODE_QUERY = ("VX_OID_802_11_PHY_MODE", False, "")
CONFIGURATION_QUERY = ("VX_OID_802_11_STA_CONFIG", False, "")


def applied_since(simulator, start):
    """The requests of Apply, from the query of the wireless mode, which nothing else sends, to the rates; None if not sent."""
    calls = [(call["name"], call["set"], call["input"] if call["set"] else "")
             for call in simulator.structure_calls(start)]
    names = [name for name, _, _ in calls]
    if "VX_OID_802_11_PHY_MODE" not in names or "OID_802_11_DESIRED_RATES" not in names:
        return None
    return calls[names.index("VX_OID_802_11_PHY_MODE"):names.index("OID_802_11_DESIRED_RATES") + 1]


def rates(*codes):
    return ("OID_802_11_DESIRED_RATES", True, bytes(codes).hex().upper().ljust(16, "0"))


def stored():
    (settings,) = plistlib.loads(SETTINGS.read_bytes())
    return settings


def button(top, title):
    return wait_until(f"there is a button {title!r}", lambda: reader.find(top, "push button", title))


def networks(top):
    return wait_until("the list of networks is on the screen", lambda: reader.find(top, "table", "Networks in range"))


def figure(top, caption):
    return int(reader.labelled(top, caption).get_name())


def queries_the_statistics(top, simulator, utility):
    steps.meet_the_card(simulator)
    calls = simulator.calls()
    first = calls.index(("OID_802_11_STATISTICS", False))
    assert calls[first:first + 3] == [
        ("OID_802_11_STATISTICS", False), ("OID_GEN_RCV_OK", False), ("OID_GEN_RCV_NO_BUFFER", False)], calls[first:]


def counts_the_frames_of_a_link(top, simulator, utility):
    utility.press("alt+t")
    wait_until("the page is in front", lambda: reader.labelled(top, RECEIVED))
    assert figure(top, RECEIVED) == 0, figure(top, RECEIVED)
    join_open_network(simulator, NETWORK)
    wait_until("frames are counted", lambda: figure(top, RECEIVED) > 0)
    successes, first_try, retried = (figure(top, f"Frames transmitted successfully{end}:")
                                     for end in ("", " without retry", " after retry"))
    # The page may have been updated between reading these figures.
    assert successes == first_try + retried or figure(top, "Frames transmitted successfully:") > successes


def resets_the_counters(top, simulator, utility):
    # More than the card counts until the next refresh.
    wait_until("there is something to reset", lambda: figure(top, RECEIVED) > 2500)
    shown = figure(top, RECEIVED)
    before = len(simulator.structure_calls())
    utility.press("alt+r")
    reset = ("VX_OID_802_11_RESET_COUNTERS", True)
    wait_until("the card received it", lambda: reset in simulator.calls(before))
    assert simulator.input_of(reset[0], before) == "", simulator.input_of(reset[0], before)
    wait_until("the card's own counters are shown again", lambda: 0 < figure(top, RECEIVED) < shown)


def applies_the_advanced_settings(top, simulator, utility):
    utility.press("alt+v")
    assert not SETTINGS.exists() or stored()["Tx Rate"] == "0", stored()
    assert not reader.can_be_used(button(top, "Apply")) and not reader.can_be_used(button(top, "Reset"))
    utility.press("alt+r")
    utility.type("11")
    utility.press("alt+b")
    wait_until("there is something to apply", lambda: reader.can_be_used(button(top, "Apply")))
    before = len(simulator.structure_calls())
    utility.press("alt+a")
    sent = wait_until("the settings are sent", lambda: applied_since(simulator, before))
    # The configuration's words: transmit burst, turbo rate, protection, short slot, OFDM, and three kept as queried.
    burst = "0100000000000000" + "0000000000000000" + "00000000"
    configuration = next(call for call in sent if call[:2] == ("VX_OID_802_11_STA_CONFIG", True))
    assert configuration[2].startswith(burst) and len(configuration[2]) == 64, configuration
    assert sent == [WIRELESS_MODE_QUERY, CONFIGURATION_QUERY, configuration, rates(22)], sent
    wait_until("the settings are stored", lambda: stored() == {
        "Tx Rate": "4", "BG Protection": "0", "Tx Burst": "1", "Ad Hoc Use OFDM": "0", "Wireless Mode": "0"})
    assert not reader.can_be_used(button(top, "Apply")) and not reader.can_be_used(button(top, "Reset"))


def resets_to_the_applied_settings(top, simulator, utility):
    before = len(simulator.structure_calls())
    utility.press("alt+b", "alt+o")
    burst, ofdm = (reader.find(top, "check box", name) for name in ("Transmit burst", "OFDM rates in ad hoc networks"))
    wait_until("both boxes are changed", lambda: not reader.is_checked(burst) and reader.is_checked(ofdm))
    utility.press("alt+e")
    wait_until("both boxes are as before", lambda: reader.is_checked(burst) and not reader.is_checked(ofdm))
    assert not reader.can_be_used(button(top, "Apply")) and not reader.can_be_used(button(top, "Reset"))
    assert applied_since(simulator, before) is None and stored()["Ad Hoc Use OFDM"] == "0"


def sends_a_new_wireless_mode_to_the_next_inserted_card(top, simulator, utility):
    utility.press("alt+m", "Down")
    wait_until("802.11b only is chosen", lambda: reader.labelled(top, "Wireless mode:").get_name() == "802.11b only")
    wait_until("there is something to apply", lambda: reader.can_be_used(button(top, "Apply")))
    before = len(simulator.structure_calls())
    utility.press("alt+a")
    sent = wait_until("the settings are sent", lambda: applied_since(simulator, before))
    assert sent == [WIRELESS_MODE_QUERY, CONFIGURATION_QUERY, rates(22)], sent
    wait_until("the mode is stored", lambda: stored()["Wireless Mode"] == "1")
    simulator.control("eject")
    utility.press("alt+l")
    wait_until("the missing card is shown", lambda: "No Device!!" in reader.labels(top))
    before = len(simulator.structure_calls())
    simulator.control("insert")
    sent = wait_until("the settings are sent to the card", lambda: applied_since(simulator, before))
    assert sent[:2] == [WIRELESS_MODE_QUERY, ("VX_OID_802_11_PHY_MODE", True, "01000000")], sent
    assert sent[-1] == rates(22), sent
    assert simulator.status()["settings"]["phy_mode"] == 1, simulator.status()["settings"]


def switches_the_radio_off_and_on(top, simulator, utility):
    utility.press("alt+v")
    before = len(simulator.structure_calls())
    reader.operate(button(top, "Radio Off"))
    wait_until("the card received it", lambda: simulator.input_of("VX_OID_802_11_RADIO", before) == "00000000")
    assert ("OID_802_11_BSSID_LIST_SCAN", True) in simulator.calls(before), simulator.calls(before)
    button(top, "Radio On")
    assert any("Switched off in this window." in text for text in reader.labels(top)), reader.labels(top)
    assert simulator.status()["software_radio"] is False
    utility.press("alt+s")
    wait_until("the list is empty", lambda: not reader.rows(networks(top)))
    utility.press("alt+v")
    before = len(simulator.structure_calls())
    reader.operate(button(top, "Radio On"))
    wait_until("the card received it", lambda: simulator.input_of("VX_OID_802_11_RADIO", before) == "01000000")
    button(top, "Radio Off")
    assert any("Switched on in this window." in text for text in reader.labels(top)), reader.labels(top)
    utility.press("alt+s")
    wait_until("networks are listed again", lambda: len(reader.rows(networks(top))) > 5)


def shows_versions_and_the_mac_address(top, simulator, utility):
    utility.press("alt+u")
    wait_until("the page is in front", lambda: reader.find(top, "push button", "Quorvane Web Site"))
    queries = [call for call in simulator.calls()
             if call in (("VX_OID_802_11_EEPROM_VERSION", False), ("OID_802_3_CURRENT_ADDRESS", False))]
    if not UTILITY_INFORMATION.exists():
        print("  (not installed: the page stays empty)")
        # An empty label takes the name of its caption.
        assert queries == [] and reader.labelled(top, "MAC address:").get_name() in ("", "MAC address:"), reader.labels(top)
        return
    assert queries == [("VX_OID_802_11_EEPROM_VERSION", False), ("OID_802_3_CURRENT_ADDRESS", False)] * 2, queries
    assert reader.labelled(top, "EEPROM version:").get_name() == "1.4", reader.labels(top)
    assert reader.labelled(top, "MAC address:").get_name() == "02-51-56-00-71-00", reader.labels(top)
    for title, path in (("Utility", UTILITY_INFORMATION), ("Driver", DRIVER_INFORMATION)):
        group = reader.find(top, "panel", title)
        changed = time.strftime("%Y-%m-%d", time.localtime(path.stat().st_mtime))
        shown = [reader.labelled(group, caption).get_name() for caption in ("Version:", "Date:")]
        assert shown == [plistlib.loads(path.read_bytes())["CFBundleShortVersionString"], changed], (title, shown)


# After a lost link the program scans on every tick and answers slowly, so those steps come last.
STEPS = [
    queries_the_statistics,
    switches_the_radio_off_and_on,
    counts_the_frames_of_a_link,
    resets_the_counters,
    applies_the_advanced_settings,
    resets_to_the_applied_settings,
    sends_a_new_wireless_mode_to_the_next_inserted_card,
    shows_versions_and_the_mac_address,
]

if __name__ == "__main__":
    sys.exit(steps.run(STEPS))
