"""Access points in the air: one hostapd serves all of them. Behind each is a network with a DHCP server and an echo."""

import contextlib
import hashlib
import os
import pathlib
import socket
import subprocess
import tempfile
import time

import card
import radios
from programs import wait_until

CONTROL = pathlib.Path("/run/air/control")
LOG = pathlib.Path("/run/results/hostapd.log")
CROWD = [f"Market stall {index}" for index in range(98)]
ECHO_PORT = 7
ECHO = pathlib.Path(__file__).parent / "machine/echo.py"
ANNOUNCER = pathlib.Path(__file__).parent / "machine/crowd.py"
LEASE = pathlib.Path(__file__).parent / "machine/lease"

# 2.4 GHz, then 5 GHz.
FREQUENCIES = {**{channel: 2407 + 5 * channel for channel in range(1, 14)},
               **{channel: 5000 + 5 * channel for channel in (36, 40, 44, 48, 149, 153, 157, 161)}}


class AccessPoint:
    """A network as hostapd is told to announce it, and as a client joins it."""

    infrastructure = card.INFRASTRUCTURE

    def __init__(self, number, ssid, channel, kind="open", hidden=False):
        self.number = number
        self.ssid = ssid
        self.channel = channel
        self.frequency = FREQUENCIES[channel]
        self.hidden = hidden
        self.kind = kind
        self.interface = f"ap{number}"
        self.radio = radios.Radio(self.interface, 0xA000 + number, radios.ACCESS_POINT, in_air=True)
        self.signal = -38 - 2 * number  # dBm; different for each, in the order of their numbers
        self.authentication, self.encryption = card.OPEN_SYSTEM, card.NO_ENCRYPTION
        self.wep_keys, self.wep_index = {}, 0
        self.passphrase = ""
        self.pre_shared_key = b""
        self.security = "open"  # as the list shows it
        self._settings = []

    def with_wep(self, keys, transmit=0, shared=False):
        self.authentication = card.SHARED_KEY if shared else card.OPEN_SYSTEM
        self.encryption = card.WEP
        self.wep_keys, self.wep_index = keys, transmit
        self.security = "WEP"
        self._settings = [f"auth_algs={2 if shared else 1}", f"wep_default_key={transmit}",
                          *[f"wep_key{index}={key.hex()}" for index, key in keys.items()]]
        return self

    def with_passphrase(self, passphrase, *settings, cipher=card.AES):
        self.authentication, self.encryption = card.WPA_PSK, cipher
        self.passphrase = passphrase
        self.pre_shared_key = hashlib.pbkdf2_hmac("sha1", passphrase.encode(), self.ssid, 4096, 32)
        self.security = f"WPA-PSK {'AES' if cipher == card.AES else 'TKIP'}"
        self._settings = [f"wpa_psk={self.pre_shared_key.hex()}", *settings]
        return self

    def with_settings(self, security, *settings):
        """A network that the card cannot join."""
        self.security = security
        self._settings = settings
        return self

    @property
    def address(self):
        return self.radio.address

    @property
    def gateway(self):
        return f"10.{self.number}.0.1"

    def configuration(self):
        settings = [f"interface={self.interface}", "driver=nl80211", f"ctrl_interface={CONTROL}",
                    f"hw_mode={'g' if self.channel < 15 else 'a'}", f"channel={self.channel}",
                    f"ssid2={self.ssid.hex()}", f"ignore_broadcast_ssid={1 if self.hidden else 0}", *self._settings]
        return "\n".join(settings) + "\n"

    def ask(self, command):
        """One command to hostapd; returns its answer."""
        with tempfile.TemporaryDirectory() as folder, socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as control:
            control.settimeout(20)
            control.bind(f"{folder}/client")
            control.connect(str(CONTROL / self.interface))
            control.send(command.encode())
            return control.recv(65536).decode(errors="replace")

    def has_authorised(self, address):
        """Whether hostapd lets this station's frames pass."""
        return "[AUTHORIZED]" in self.ask(f"STA {address}")

    def address_server(self):
        """The commands that start its DHCP server."""
        folder = pathlib.Path(tempfile.mkdtemp())
        (folder / "leases").touch()
        (folder / "configuration").write_text(
            f"start 10.{self.number}.0.20\nend 10.{self.number}.0.60\ninterface {self.interface}\n"
            f"lease_file {folder}/leases\npidfile {folder}/pid\noption subnet 255.255.255.0\noption lease 3600\n")
        return [f"ip address replace {self.gateway}/24 dev {self.interface}",
                f"udhcpd -f -a 50 {folder}/configuration >/dev/null 2>&1 &"]


class Neighbourhood:
    """All access points; announced together, because each hostapd takes seconds to start."""

    def __init__(self, access_points):
        CONTROL.mkdir(parents=True, exist_ok=True)
        files = []
        for access_point in access_points:
            access_point.radio.insert().set_signal(access_point.signal)
            files.append(CONTROL.parent / f"{access_point.interface}.conf")
            files[-1].write_text(access_point.configuration())
        with LOG.open("wb") as log:
            hostapd = radios.start_in_air("hostapd", *files, stdout=log, stderr=log)
        # In one shell, because commands start slowly in the machine.
        commands = [line for access_point in access_points for line in access_point.address_server()]
        radios.start_in_air("busybox-static", "sh", "-c", "\n".join([*commands, "wait"]))
        radios.start_in_air("python3", "-I", "-S", ECHO, ECHO_PORT)

        def are_on():
            assert hostapd.poll() is None, LOG.read_text()[-2000:]
            return LOG.read_text().count("AP-ENABLED") == len(access_points)

        wait_until("all networks are announced", are_on)


@contextlib.contextmanager
def crowd():
    """Many networks on channel 10. Only radios of their group hear them."""
    radio = radios.Radio("crowd", 0xD000, radios.MONITOR, in_air=True).insert()
    radio.set_group(radios.CROWD)
    frequency = FREQUENCIES[10]
    radios.run_in_air("busybox-static", "ip", "link", "set", radio.name, "up")
    radios.run_in_air("iw", "dev", radio.name, "set", "freq", frequency)
    process = radios.start_in_air("python3", "-I", "-S", ANNOUNCER, radio.name, 10, *CROWD)
    try:
        yield
        assert process.poll() is None, "the crowd has ended"
    finally:
        process.kill()
        process.wait()
        radio.pull()


def get_address(interface):
    """The interface's address from the DHCP server; None if there is no answer. Removes earlier ones."""
    radios.run("busybox-static", "ip", "address", "flush", "dev", interface)
    subprocess.run(["busybox-static", "udhcpc", "-i", interface, "-n", "-q", "-f", "-t", "8", "-T", "1",
                    "-s", str(LEASE)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    words = radios.run("busybox-static", "ip", "-4", "-o", "address", "show", "dev", interface).split()
    return words[words.index("inet") + 1].split("/")[0] if "inet" in words else None


def exchange_datagram(interface, server, size=400, tries=5):
    """Sends a datagram over this interface and waits for the same bytes. Returns the seconds it took, None without an
    answer."""
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
        client.setsockopt(socket.SOL_SOCKET, socket.SO_BINDTODEVICE, interface.encode() + b"\0")
        client.settimeout(2)
        for _ in range(tries):
            sent = os.urandom(size)
            start = time.monotonic()
            try:
                client.sendto(sent, (server, ECHO_PORT))
                while client.recv(65536) != sent:
                    pass
                return time.monotonic() - start
            except OSError:
                time.sleep(0.2)
    return None
