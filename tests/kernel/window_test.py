"""The unmodified window, operated with its keyboard, on a real wireless interface."""

import os
import pathlib
import plistlib
import re
import subprocess
import time

import card
import neighbourhood
import radios
import screen_reader as reader
from access_points import exchange_datagram
from programs import Utility, holds_within, wait_until
from recovery_test import suspend

TICK = 2.0  # seconds; the window asks the card this often
LIST = "Networks in range"
ADDRESS_COLUMN = 2
PROFILES = pathlib.Path(os.environ["HOME"]) / "Library/Preferences/Profile.plist"


def shown(address):
    return address.upper().replace(":", "-")


class Window:
    def __init__(self, world):
        self._table = self._status = None
        self.utility = Utility(world.folder, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.top = wait_until("the window is on the accessibility bus", reader.application)

    def end(self):
        self.utility.end()

    def describe_failure(self):
        picture = f"/run/results/failure-{time.time():.0f}.png"
        subprocess.run(["import", "-silent", "-window", "root", picture], check=False)
        try:
            return [f"the window says {self.labels()}"]
        except Exception as error:  # pylint: disable=broad-except # it may have ended
            return [f"the window cannot be read: {error}"]

    def press(self, *keys):
        self.utility.press(*keys)

    def labels(self):
        return [label for label in reader.labels(self.top) if label.strip()]

    def item(self, role, *beginnings):
        """Waits for an item whose name or description begins with one of these texts. To be kept: finding it takes
        seconds in the virtual machine, reading it milliseconds."""
        return wait_until(f"the window shows a {role} {beginnings}", lambda: next(
            (item for item in reader.visible(self.top)
             if item.get_role_name() == role
             and (item.get_name().startswith(beginnings) or item.get_description().startswith(beginnings))), None), 60)

    def status(self):
        """The first line of the link status page."""
        self.press("alt+l")
        if not self._status:
            self._status = self.item("label", "Connected", "Disconnected", "No Device", "Radio Status")
        return self._status

    def table(self):
        """The list, found once."""
        if not self._table:
            self.press("alt+s")
            self._table = wait_until("the list is on the screen", lambda: reader.find(self.top, "table", LIST))
        return self._table

    def addresses(self):
        """The BSSID of each row."""
        grid = self.table().get_table_iface()
        return [grid.get_accessible_at(row, ADDRESS_COLUMN).get_name() for row in range(grid.get_n_rows())]

    def show_networks(self, *expected):
        """Scans until these networks are listed."""
        wanted = {shown(network.address) for network in expected}
        self.press("alt+s")

        def listed():
            if wanted <= set(self.addresses()):
                return True
            self.press("F5")
            time.sleep(4)  # the search takes two seconds, reading the list half a second
            return False

        wait_until("the networks are listed", listed, 120)

    def select(self, network):
        """Selects a row by its position, because hidden networks have no name to type."""
        grid = self.table().get_table_iface()

        def selected():
            addresses = self.addresses()
            if shown(network.address) not in addresses:
                return False
            row = addresses.index(shown(network.address))
            self.press("alt+n", "Home", *["Down"] * row)
            return holds_within(1.0, lambda: list(grid.get_selected_rows()) == [row])

        wait_until(f"{network.ssid!r} is selected", selected, 30)

    def join(self, network, key=None):
        """Joins as a user does: select the row, Return, then the name and the key where they are asked for. WEP keys are
        given as digits."""
        self.show_networks(network)
        self.select(network)
        if network.hidden:
            with self.utility.sheet("Hidden Network", "Return"):
                self.press("End")
                self.utility.type(network.ssid.decode())
                self.press("Return")
        elif key is None:
            self.press("Return")
        if key is not None:
            with self.utility.sheet("Security Settings", *([] if network.hidden else ["Return"])):
                self.press("End")  # waits until the sheet has the focus
                self.utility.type(key)
                self.press("Return")


def open_window(world):
    """The window that the previous test left open, or a new one."""
    if not world.window:
        world.start_service()
        world.window = Window(world)
    return world.window


def lists_the_networks_in_the_window(world):
    window = open_window(world)
    window.show_networks(*neighbourhood.ALL)
    rows = {row[ADDRESS_COLUMN]: row for row in reader.rows(window.table())}
    signals = {}
    for network in neighbourhood.ALL:
        row = rows[shown(network.address)]
        world.say(row[1:])
        security = {"open": ["Unknown", "Not Used"], "WEP": ["Unknown", "WEP"],
                    "WPA-PSK TKIP": ["WPA-PSK", "TKIP"], "WPA-PSK AES": ["WPA-PSK", "AES-CCMP"],
                    "WPA AES": ["WPA", "AES-CCMP"]}[network.security]
        assert row[5:] == [*security, "Infrastructure"], (network.kind, row)
        if network.hidden:
            assert row[1] == "", row
        elif network is not neighbourhood.ODD_NAME:
            assert row[1] == network.ssid.decode(), row
        if network not in neighbourhood.CHANGING:
            assert row[4] == str(network.channel), (network.channel, row)
            signals[network.signal] = int(row[3])
    shown_signals = [signals[signal] for signal in sorted(signals)]
    assert shown_signals == sorted(shown_signals) and shown_signals[0] < shown_signals[-1], signals


def joins_networks_from_the_sheets(world):
    window = open_window(world)
    for network, key in ((neighbourhood.OPEN, None), (neighbourhood.MODERN, neighbourhood.MODERN.passphrase),
                         (neighbourhood.WEP_40, neighbourhood.WEP_40.wep_keys[0].hex()),
                         (neighbourhood.HIDDEN_MODERN, neighbourhood.HIDDEN_MODERN.passphrase)):
        window.join(network, key)
        seconds = world.wait_for_link(network)
        status = window.status()
        expected = f"Connected <--> {network.ssid.decode()} <--> {shown(network.address)}"
        wait_until(f"the page says {expected!r}", lambda: status.get_name() == expected, 20)
        world.say(f"{network.kind}: linked {seconds:.1f} s after the last key; {world.use(network)}")
    window.join(neighbourhood.MODERN, "not the passphrase")
    time.sleep(5 * TICK)  # the window waits as long, and looking for the line takes much of the machine
    line = window.item("alert", "No connection")
    assert line.get_name().startswith("No connection to \u201cCompass\u201d after"), line.get_name()
    assert not world.card.is_linked() and not neighbourhood.MODERN.has_authorised(world.radio.address)
    world.say(f"wrong key: {line.get_name()}")


def follows_the_link_in_the_window(world):
    network = neighbourhood.FAR_AND_NEAR
    network.radio.set_signal(-45)
    window = open_window(world)
    window.join(network, network.passphrase)
    world.wait_for_link(network)
    status = window.status()
    wait_until("the page shows the link", lambda: status.get_name().startswith("Connected"), 20)
    strength = window.item("label", "GOOD ", "NORMAL ", "WEAK ")

    def percent():
        return int(re.search(r"(\d+)%", strength.get_name())[1])

    near = percent()
    network.radio.set_signal(-85)
    start = time.monotonic()
    # The page shows an average, which reaches the new value in steps.
    wait_until("the window shows a weaker signal", lambda: percent() <= near - 10, 2 * TICK + 0.5)
    seconds, first = time.monotonic() - start, percent()
    wait_until("the window shows a weak signal", lambda: strength.get_name().startswith("WEAK"), 10 * TICK)
    world.say(f"-45 dBm: {near} %; -85 dBm: {first} % after {seconds:.1f} s, {strength.get_name()} after "
              f"{time.monotonic() - start:.1f} s")
    network.radio.set_signal(-45)
    world.say(world.use(network))
    sent, received = window.item("label", "Throughput sent"), window.item("label", "Throughput received")
    highest = [0, 0]
    end = time.monotonic() + 5 * TICK
    while time.monotonic() < end:
        assert exchange_datagram(world.name, network.gateway, 1400)
        for index, label in enumerate((sent, received)):
            highest[index] = max(highest[index], float(label.get_name() or 0))
    world.say(f"with traffic, the page shows up to {highest[0]} kbit/s sent and {highest[1]} received")
    assert min(highest) > 50, highest
    world.switch_hardware(False)
    start = time.monotonic()
    wait_until("the page shows the switch", lambda: status.get_name() == "Radio Status <--> OFF", 20)
    world.say(f"hardware switch: {status.get_name()} after {time.monotonic() - start:.1f} s")
    world.switch_hardware(True)
    wait_until("the page shows that it is on", lambda: not status.get_name().startswith("Radio"), 30)


def profile_of(network):
    """As the utility stores it. Missing values count as 0 or empty."""
    security = {card.OPEN_SYSTEM: 0, card.SHARED_KEY: 1, card.WPA_PSK: 2}[network.authentication]
    encryption = {card.NO_ENCRYPTION: 0, card.WEP: 1, card.TKIP: 0, card.AES: 1}[network.encryption]
    profile = {"Profile Name": network.kind[:32], "Authentication Type": security, "Encryption Type": encryption,
               "Network Type": 1, "SSID": network.ssid.decode(), "Hidden": int(network.hidden),
               "WEPKeyUse": network.wep_index, "WPAPSK": network.passphrase}
    # As digits, which are format 0.
    profile.update({f"WEPKey{index + 1}": key.hex() for index, key in network.wep_keys.items()})
    return {key: str(value) for key, value in profile.items()}


def joins_profiles_of_every_kind(world):
    # The utility joins profiles in the wireless mode that was applied last, at first 802.11b/g.
    networks = [network for network in neighbourhood.JOINABLE
                if network.channel < 15 and network is not neighbourhood.ODD_NAME]
    PROFILES.parent.mkdir(parents=True, exist_ok=True)
    PROFILES.write_bytes(plistlib.dumps([profile_of(network) for network in networks]))
    window = open_window(world)
    for row, network in enumerate(networks):
        window.press("alt+p", "alt+r", "Home", *["Down"] * row, "alt+c")
        seconds = world.wait_for_link(network)
        assert world.card.ssid() == network.ssid, world.card.ssid()
        world.say(f"{network.kind}: linked and authorised {seconds:.1f} s after the profile was activated")


def connects_the_active_profile_by_itself(world):
    network = neighbourhood.MODERN
    window = open_window(world)
    window.show_networks(network)
    window.select(network)
    with window.utility.sheet("Profile", "alt+f"):
        window.press("alt+n", "ctrl+a")
        window.utility.type("Mine")
        window.press("alt+u", "alt+p")
        window.utility.type(network.passphrase)
        window.press("Return")
    window.press("alt+p", "alt+r", "End", "alt+c")
    world.say(f"activated: linked after {world.wait_for_link(network):.1f} s; {world.use(network)}")
    world.tidy()
    world.start_service()
    start = time.monotonic()
    world.window = Window(world)
    world.wait_for_link(network)
    world.say(f"window started: linked after {time.monotonic() - start:.1f} s")

    world.service.end()
    world.restart_service()
    start = time.monotonic()
    world.wait_for_link(network)
    world.say(f"service started again: linked after {time.monotonic() - start:.1f} s")

    world.radio.pull()
    time.sleep(3 * TICK)  # until the window has noticed
    world.radio.insert()
    start = time.monotonic()
    world.service.wait_for(world.name)
    world.wait_for_link(network)
    world.say(f"card pulled and inserted: linked after {time.monotonic() - start:.1f} s; {world.use(network)}")

    world.service.kill_children()
    start = time.monotonic()
    wait_until("the link is lost", lambda: not world.card.is_linked(), 10)
    world.wait_for_link(network)
    world.say(f"child killed: linked after {time.monotonic() - start:.1f} s; {world.use(network)}")

    suspend(world.name)
    start = time.monotonic()
    world.wait_for_link(network)
    world.say(f"suspended: linked {time.monotonic() - start:.1f} s after waking up; {world.use(network)}")

    world.radio.set_group(radios.NOBODY)
    wait_until("the link is lost", lambda: not world.card.is_linked(), 60)
    time.sleep(60)
    world.radio.set_group(radios.NEIGHBOURHOOD)
    start = time.monotonic()
    world.wait_for_link(network)
    world.say(f"access point gone for a minute: linked after {time.monotonic() - start:.1f} s; {world.use(network)}")
