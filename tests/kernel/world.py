"""What the tests of one lane share: a card and its service."""

import pathlib
import time

import radios
from access_points import exchange_datagram, get_address
from programs import wait_until
from service import Service

TREE = pathlib.Path(__file__).parents[2]
RESULTS = pathlib.Path("/run/results")
CONTROLS = pathlib.Path("/sys/module/controls/parameters")
REGISTRY = pathlib.Path("/run/io-registry")


class World:
    def __init__(self, folder, name, number, root):
        self.folder = pathlib.Path(folder)
        self.name = name  # of the card
        self.log = RESULTS / f"pellvaned-{name}.log"
        self.radio = radios.Radio(name, number)
        self.service = None
        self.card = None
        self.window = None
        self._root = root
        self._said = []

    def say(self, text):
        self._said.append(str(text))

    def said(self):
        """What was said since the last call."""
        said, self._said = self._said, []
        return said

    def start_service(self, for_every_card=False):
        """Ends what runs. Starts the service for the card, or for every card, and waits for it."""
        self.tidy()
        if not self.radio.is_inserted():
            self.radio.insert()
        return self.restart_service(for_every_card)

    def restart_service(self, for_every_card=False):
        self.service = Service(self.folder, self._root, self.log,
                               *([] if for_every_card else ["--interface", self.name]))
        self.card = self.service.wait_for(self.name)
        self.card.meet()
        return self.card

    def tidy(self):
        """Ends the window and the service, and turns the card's radio on."""
        if self.window:
            window, self.window = self.window, None
            window.end()
        if self.service:
            service, self.service = self.service, None
            try:
                service.end()
            finally:
                service.kill()
            assert not service.children(), f"pellvaned left {service.children()}"
        if self.radio.is_inserted():
            self.switch_hardware(True)
            self.radio.unblock()
            self.radio.set_group(radios.NEIGHBOURHOOD)

    def abandon(self):
        """Like tidy, after a failure that may make it fail too."""
        try:
            self.tidy()
        except Exception as error:  # pylint: disable=broad-except
            self.say(f"ending the test: {error}")

    def leave(self):
        self.tidy()
        if self.radio.is_inserted():
            self.radio.pull()

    def switch_hardware(self, is_on):
        (CONTROLS / "hardware_switch").write_text(f"{self.name} {1 if is_on else 0}")

    def hears(self, *networks):
        """Scans until these networks are listed. Returns all entries by their addresses."""
        wanted = {network.address for network in networks}
        entries = {}

        def listed():
            entries.update({entry.address: entry for entry in self.card.scan()})
            return wanted <= set(entries)

        wait_until(f"{[network.ssid for network in networks]} are listed", listed, 40)
        return entries

    def join(self, network, by_address=False):
        """Joins as the utility does. Returns what was done in how many seconds."""
        start = time.monotonic()
        self.card.join(network, by_address)
        self.wait_for_link(network)
        seconds = time.monotonic() - start
        assert self.card.ssid() == network.ssid, self.card.ssid()
        return f"{network.kind}: linked and authorised after {seconds:.1f} s"

    def join_listed(self, network):
        """Joins a row of the list."""
        self.hears(network)
        return self.join(network, by_address=True)

    def wait_for_link(self, network, seconds=90.0):
        """Waits until both sides agree on the link. Returns the seconds it took."""
        start = time.monotonic()
        wait_until(f"the card is connected with {network.ssid!r}",
                   lambda: self.card.is_linked() and self.card.peer() == network.address, seconds)
        wait_until(f"{network.ssid!r} has authorised the card",
                   lambda: network.has_authorised(self.radio.address), 20)
        return time.monotonic() - start

    def use(self, network):
        """Gets an address and exchanges datagrams over the link."""
        address = get_address(self.name)
        assert address and address.startswith(f"10.{network.number}."), f"no address from {network.ssid!r}: {address}"
        seconds = exchange_datagram(self.name, network.gateway)
        assert seconds, f"no datagram came back from {network.ssid!r}"
        return f"{address} by DHCP, a datagram and its echo in {1000 * seconds:.0f} ms"
