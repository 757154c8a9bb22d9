"""Simulated radios of the kernel. All of them share one medium, across network namespaces."""

import pathlib
import struct
import subprocess

import netlink

NEW_RADIO, DELETE_RADIO = 4, 5
RADIO_ID, RADIO_NAME, NO_INTERFACE, PERMANENT_ADDRESS = 10, 17, 18, 22
# Everything that the card meets over the air.
AIR = "air"

_family = None


def run(*command, check=True):
    """Runs a command and returns its output; a failure is shown with what it said."""
    result = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                            check=False)
    output = result.stdout.decode(errors="replace")
    assert result.returncode == 0 or not check, f"{command} ended with {result.returncode}: {output}"
    return output


def in_air(*command):
    return ["ip", "netns", "exec", AIR, *[str(word) for word in command]]


def prepare():
    """Loads the simulated radios, without any, and creates the namespace."""
    global _family
    run("modprobe", "mac80211_hwsim", "radios=0")
    run("iw", "reg", "set", "US")
    run("ip", "netns", "add", AIR)
    run(*in_air("ip", "link", "set", "lo", "up"))
    _family = netlink.Family("MAC80211_HWSIM")


class Radio:
    """A radio with one interface of the same name."""

    def __init__(self, name, number, kind="managed", namespace=None):
        self.name = name
        self.number = number
        self.address = f"02:00:00:00:{number >> 8:02x}:{number & 255:02x}"
        self.kind = kind
        self.namespace = namespace
        self._id = None
        self.insert()

    def insert(self):
        name = f"radio-{self.name}"
        self._id = _family.request(NEW_RADIO, netlink.attribute(RADIO_NAME, name.encode() + b"\0")
                                   + netlink.attribute(NO_INTERFACE)
                                   + netlink.attribute(PERMANENT_ADDRESS, bytes.fromhex(self.address.replace(":", ""))))
        if self.namespace:
            run("iw", "phy", name, "set", "netns", "name", self.namespace)
        self._inside("iw", "phy", name, "interface", "add", self.name, "type", self.kind)

    def pull(self):
        _family.request(DELETE_RADIO, netlink.attribute(RADIO_ID, struct.pack("=I", self._id)))
        self._id = None

    def is_inserted(self):
        return self._id is not None

    def _inside(self, *command):
        return run(*(in_air(*command) if self.namespace else command))

    def set_signal(self, dbm):
        """The strength in dBm with which all others receive it."""
        self._medium("rx_rssi").write_text(str(dbm & 0xFFFFFFFFFFFFFFFF))

    def set_group(self, group):
        """Radios only hear those of their group, a mask that starts as 1."""
        self._medium("group").write_text(str(group))

    def _medium(self, file):
        return pathlib.Path(f"/sys/kernel/debug/ieee80211/radio-{self.name}/hwsim") / file

    def statistics(self):
        """The interface's counters in the kernel."""
        folder = pathlib.Path(f"/sys/class/net/{self.name}/statistics")
        return {name: int((folder / name).read_text())
                for name in ("rx_packets", "tx_packets", "rx_bytes", "tx_bytes", "rx_missed_errors", "rx_fifo_errors")}
