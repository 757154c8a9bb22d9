"""Simulated radios of the kernel. All of them share one medium, across network namespaces."""

import os
import pathlib
import subprocess

import netlink

# Of the simulated radios.
NEW_RADIO, DELETE_RADIO = 4, 5
RADIO_ID, RADIO_NAME, NO_INTERFACE, PERMANENT_ADDRESS = 10, 17, 18, 22
# Of the wireless interfaces.
SET_WIPHY, NEW_INTERFACE, SET_NAMESPACE = 2, 7, 49
WIPHY, INTERFACE_NAME, INTERFACE_TYPE, NAMESPACE_FILE = 1, 4, 5, 219
POWER_SETTING, POWER_LEVEL, FIXED_POWER = 97, 98, 2
AD_HOC, STATION, ACCESS_POINT, MONITOR = 1, 2, 3, 6

# Radios hear only those with which they share a group. These are masks.
NEIGHBOURHOOD, PEERS, CROWD, NOBODY = 1, 2, 4, 8
# The namespace of everything that the card meets over the air.
AIR = "air"

_simulated = _simulated_in_air = _wireless = _wireless_in_air = None


def run(*command, check=True):
    """Runs a command and returns its output; a failure is shown with what it said."""
    result = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                            check=False)
    output = result.stdout.decode(errors="replace")
    assert result.returncode == 0 or not check, f"{command} ended with {result.returncode}: {output}"
    return output


def start_in_air(*command, **options):
    """Starts a process in the namespace of the air. It comes before the tests: a station that must wait half a second
    for the answer of an access point gives up."""
    def prepare_process():
        netlink.enter(AIR)
        os.setpriority(os.PRIO_PROCESS, 0, -5)

    return subprocess.Popen([str(word) for word in command], preexec_fn=prepare_process, **options)


def run_in_air(*command):
    process = start_in_air(*command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    output = process.communicate()[0].decode(errors="replace")
    assert process.returncode == 0, f"{command} ended with {process.returncode}: {output}"
    return output


def prepare():
    """Loads the simulated radios, without any, and creates the namespace."""
    run("modprobe", "mac80211_hwsim", "radios=0")
    run("iw", "reg", "set", "US")
    run("ip", "netns", "add", AIR)
    run_in_air("busybox-static", "ip", "link", "set", "lo", "up")
    connect()


def connect():
    """Opens this process's own sockets to the kernel."""
    global _simulated, _simulated_in_air, _wireless, _wireless_in_air
    _simulated = netlink.Family("MAC80211_HWSIM")
    _wireless = netlink.Family("nl80211")
    with netlink.inside(AIR):
        _simulated_in_air = netlink.Family("MAC80211_HWSIM")
        _wireless_in_air = netlink.Family("nl80211")


def address_text(number):
    return f"02:00:00:00:{number >> 8:02x}:{number & 255:02x}"


class Radio:
    """A radio with one interface of the same name, to be inserted."""

    def __init__(self, name, number, kind=STATION, in_air=False):
        self.name = name
        self.address = address_text(number)
        self._kind = kind
        self._in_air = in_air
        self._id = None

    def insert(self):
        name = f"radio-{self.name}"
        address = bytes.fromhex(self.address.replace(":", ""))
        self._id, _ = _simulated.request(NEW_RADIO, netlink.text(RADIO_NAME, name) + netlink.attribute(NO_INTERFACE)
                                         + netlink.attribute(PERMANENT_ADDRESS, address))
        wiphy = netlink.number(WIPHY, int(pathlib.Path(f"/sys/class/ieee80211/{name}/index").read_text()))
        family = _wireless
        if self._in_air:
            # Not created there: radios created in different namespaces do not hear each other.
            with open(f"/run/netns/{AIR}", "rb") as file:
                _wireless.request(SET_NAMESPACE, wiphy + netlink.number(NAMESPACE_FILE, file.fileno()))
            family = _wireless_in_air
        family.request(NEW_INTERFACE, wiphy + netlink.text(INTERFACE_NAME, self.name)
                       + netlink.number(INTERFACE_TYPE, self._kind))
        if self._in_air:
            # The medium adds the transmit power to a strength that is set.
            power = netlink.number(POWER_SETTING, FIXED_POWER) + netlink.number(POWER_LEVEL, 0)
            family.request(SET_WIPHY, wiphy + power)
        return self

    def pull(self):
        family = _simulated_in_air if self._in_air else _simulated
        family.request(DELETE_RADIO, netlink.number(RADIO_ID, self._id))
        self._id = None

    def is_inserted(self):
        return self._id is not None

    def set_signal(self, dbm):
        """The strength in dBm, -100 to -1, with which all others receive it."""
        self._medium("rx_rssi").write_text(str(dbm & 0xFFFFFFFFFFFFFFFF))

    def unblock(self):
        """Turns the radio on if a program has turned it off."""
        for switch in self.switches():
            (switch / "soft").write_text("0")

    def switches(self):
        return list(pathlib.Path(f"/sys/class/net/{self.name}/phy80211").glob("rfkill*"))

    def set_group(self, group):
        """Starts as NEIGHBOURHOOD."""
        self._medium("group").write_text(str(group))

    def _medium(self, file):
        return pathlib.Path(f"/sys/kernel/debug/ieee80211/radio-{self.name}/hwsim") / file

    def statistics(self):
        """The interface's counters in the kernel."""
        folder = pathlib.Path(f"/sys/class/net/{self.name}/statistics")
        return {name: int((folder / name).read_text())
                for name in ("rx_packets", "tx_packets", "rx_bytes", "tx_bytes", "rx_missed_errors", "rx_fifo_errors")}
