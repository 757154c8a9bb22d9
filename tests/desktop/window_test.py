"""The main window: card removal and insertion, the networks in range, joining one, the link."""

import sys

import screen_reader as reader
import steps
from programs import LIMIT, holds_within, wait_until

TABS = ["Site Survey", "Profiles", "Link Status", "Statistics", "Advanced Settings", "About"]
KEYS = ["alt+s", "alt+p", "alt+l", "alt+t", "alt+v", "alt+u"]
LIST = "Networks in range"
NETWORK = "Quay Guest"  # open; no other name starts with its first letter
HEADINGS = ["SSID", "BSSID", "Signal", "Channel", "Authentication", "Encryption", "Network Type"]

# The program's first requests, up to the first continuation of the list.
FIRST_CALLS = [
    ("VX_OID_802_11_LINK_COUNTERS", False),
    ("OID_GEN_MEDIA_CONNECT_STATUS", False),
    ("VX_OID_802_11_EVENT_FLAG", False),
    ("VX_OID_802_11_STA_CONFIG", False),
    ("OID_802_11_NETWORK_TYPES_SUPPORTED", False),
    ("OID_802_11_BSSID_LIST_SCAN", True),
    ("OID_802_11_BSSID_LIST", False),
    ("VX_OID_802_11_BSSID_LIST_NEXT", False),
]


def table(top):
    return wait_until("the list of networks is on the screen", lambda: reader.find(top, "table", LIST))


def listed(top):
    return reader.rows(table(top))


def opens_on_the_third_tab(top, simulator, utility):
    assert reader.tab_titles(top) == TABS, reader.tab_titles(top)
    assert reader.selected_tab(top) == TABS[2], reader.selected_tab(top)


def initialises_the_card_with_the_expected_requests(top, simulator, utility):
    wait_until("the list is read", lambda: len(simulator.calls()) >= len(FIRST_CALLS))
    assert simulator.calls()[:len(FIRST_CALLS)] == FIRST_CALLS, simulator.calls()


def opens_a_connection_for_every_request(top, simulator, utility):
    requests = simulator.requests()[:60]
    for before, after in zip(requests, requests[1:]):
        expected = {"open": {"structure", "open"}, "structure": {"scalar"}, "scalar": {"open"}}[before["kind"]]
        assert after["kind"] in expected, (before, after)
        if after["kind"] == "scalar":
            assert after["selector"] == 1, after


def lists_the_networks_in_range(top, simulator, utility):
    utility.press(KEYS[0])
    wait_until("networks are listed", lambda: listed(top))
    assert reader.headings(table(top))[1:] == HEADINGS, reader.headings(table(top))
    rows = {row[2]: row for row in listed(top)}
    heard = [network for network in simulator.status()["networks"] if network["in_range"]]
    assert len(heard) > 5 and set(rows) == {network["bssid"] for network in heard}, (sorted(rows), heard)
    for network in heard:
        row = rows[network["bssid"]]
        assert row[4] == str(network["channel"]), (row, network)
        assert row[7] == ("Ad Hoc" if network["ad_hoc"] else "Infrastructure"), (row, network)
        assert 0 <= int(row[3]) <= 100, row
        if network["hidden"]:
            assert row[1] == "", row
        elif len(network["ssid_hex"]) < 64 and "\ufffd" not in network["ssid"]:
            assert row[1] == network["ssid"], (row, network)


def shows_that_there_is_no_link(top, simulator, utility):
    utility.press(KEYS[2])
    wait_until("the status is \"Disconnected\"", lambda: "Disconnected" in reader.labels(top))
    utility.press(KEYS[0])


def joins_a_network_chosen_with_the_keyboard(top, simulator, utility):
    network = next(network for network in simulator.status()["networks"] if network["ssid"] == NETWORK)

    def joins():
        steps.choose_network(top, utility, NETWORK)
        utility.press("Return")
        return holds_within(20.0, lambda: simulator.status()["association"].get("bssid") == network["bssid"])

    # Repeated, because a refresh of the list between selection and Return clears the selection.
    wait_until("the card is associated", joins)


def shows_the_link_and_its_figures(top, simulator, utility):
    utility.press(KEYS[2])
    network = simulator.status()["association"]
    status = f"Connected <--> {NETWORK} <--> {network['bssid']}"
    wait_until(f"the page says {status!r}", lambda: status in reader.labels(top))
    texts = reader.labels(top)
    assert any(text.startswith(f"{network['channel']} <--> ") and text.endswith(" KHz") for text in texts), texts
    assert any(text.endswith(" Mbps") for text in texts), texts
    grades = [text for text in texts if text.startswith(("GOOD ", "NORMAL ", "WEAK ")) and text.endswith("%")]
    assert len(grades) == 2, texts
    plot = reader.find(top, "chart", "Link over the last five minutes")
    wait_until("the plot describes its latest values", lambda: "kilobits per second" in plot.get_description())


def shows_the_connection_on_the_site_survey(top, simulator, utility):
    utility.press(KEYS[0])
    wait_until("the page shows the connection",
               lambda: any(text.startswith("Connected <--> ") for text in reader.labels(top)))


def names_every_control_on_every_page(top, simulator, utility):
    for title, key in zip(TABS, KEYS):
        utility.press(key)
        wait_until(f"{title} is in front", lambda: reader.selected_tab(top) == title)
        assert not reader.unnamed(top), (title, reader.unnamed(top))


def shows_that_the_card_is_gone(top, simulator, utility):
    simulator.control("eject")
    utility.press(KEYS[2])
    wait_until("the status is \"No Device!!\"", lambda: "No Device!!" in reader.labels(top))
    utility.press(KEYS[0])
    wait_until("the list is empty", lambda: not listed(top))
    wait_until("the list explains why it is empty",
               lambda: table(top).get_description().startswith("No wireless card found."))
    assert "** Disconnected **" in reader.labels(top), reader.labels(top)


def clears_the_figures_when_a_connected_card_is_removed(top, simulator, utility):
    utility.press(KEYS[2])
    simulator.control("eject")
    wait_until("the status is \"No Device!!\"", lambda: "No Device!!" in reader.labels(top))
    figures = [text for text in reader.labels(top) if text.endswith((" KHz", " Mbps", "%"))]
    assert not figures, figures


def lists_the_networks_again_when_the_card_is_reinserted(top, simulator, utility):
    simulator.control("insert")
    wait_until("networks are listed again", lambda: len(listed(top)) > 5)


def shows_that_the_hardware_radio_is_off(top, simulator, utility):
    simulator.control("hw-radio", "off")
    utility.press(KEYS[2])
    wait_until("the status is that of the radio", lambda: "Radio Status <--> OFF" in reader.labels(top))
    simulator.control("hw-radio", "on")
    wait_until("the status is \"Disconnected\" again", lambda: "Disconnected" in reader.labels(top))
    before = len(simulator.structure_calls())
    utility.press(KEYS[0], "F5")
    # The scan starts with a later tick and clears the selection of the list.
    wait_until("the rescan is over", lambda: ("VX_OID_802_11_BSSID_LIST_NEXT", False) in simulator.calls(before))
    wait_until("networks are listed with the radio on", lambda: len(listed(top)) > 5)


def quits_with_ctrl_q(top, simulator, utility):
    utility.press("ctrl+q")
    assert utility.process.wait(LIMIT) == 0, utility.process.returncode


# After a lost link the program scans on every tick and answers slowly, so those steps come last.
STEPS = [
    opens_on_the_third_tab,
    initialises_the_card_with_the_expected_requests,
    opens_a_connection_for_every_request,
    lists_the_networks_in_range,
    shows_that_there_is_no_link,
    shows_that_the_card_is_gone,
    lists_the_networks_again_when_the_card_is_reinserted,
    shows_that_the_hardware_radio_is_off,
    joins_a_network_chosen_with_the_keyboard,
    shows_the_link_and_its_figures,
    shows_the_connection_on_the_site_survey,
    names_every_control_on_every_page,
    clears_the_figures_when_a_connected_card_is_removed,
    quits_with_ctrl_q,
]


if __name__ == "__main__":
    sys.exit(steps.run(STEPS))
