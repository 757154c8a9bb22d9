"""What all kernel tests share: the air, one card and the service."""

import pathlib
import time

import neighbourhood
import radios
from access_points import Neighbourhood, exchange_datagram, get_address
from programs import wait_until
from service import Service

TREE = pathlib.Path(__file__).parents[2]
CONTROLS = pathlib.Path("/sys/module/controls/parameters")
CARD, CARD_NUMBER = "card0", 0xC000


class World:
    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        radios.prepare()
        radios.run("insmod", TREE / "build/kernel/tree/controls.ko")
        radios.run("modprobe", "button")  # the power button ends a suspend
        self.air = Neighbourhood(neighbourhood.ALL)
        self.air.echo()
        self.radio = radios.Radio(CARD, CARD_NUMBER)
        self.service = None
        self.card = None

    @staticmethod
    def say(text):
        print("   ", text, flush=True)

    def start_service(self, *arguments):
        """Starts the service for every card, or with these arguments, and waits for the card."""
        self.service = Service(self.folder, *arguments)
        self.card = self.service.wait_for(CARD)
        self.card.meet()
        return self.card

    def tidy(self):
        """Before each test: the card is in, all networks are in range, no service runs."""
        if self.service:
            service, self.service = self.service, None
            try:
                service.end()
            finally:
                service.kill()
            assert not service.children(), f"pellvaned left {service.children()}"
        if not self.radio.is_inserted():
            self.radio.insert()
        (CONTROLS / "hardware_switch").write_text(f"{CARD} 1")
        radios.unblock()

    def wait_for_link(self, network, seconds=15.0):
        """Waits until both sides agree on the link. Returns the seconds it took."""
        start = time.monotonic()
        wait_until(f"the card is connected with {network.ssid!r}",
                   lambda: self.card.is_linked() and self.card.peer() == network.address, seconds)
        wait_until(f"{network.ssid!r} has authorised the card",
                   lambda: network.has_authorised(self.radio.address), 5.0)
        return time.monotonic() - start

    def use(self, network):
        """Gets an address and exchanges datagrams over the link."""
        network.serve_addresses()
        address = get_address(CARD)
        assert address and address.startswith(f"10.{network.number}."), f"no address from {network.ssid!r}: {address}"
        seconds = exchange_datagram(CARD, network.gateway)
        assert seconds, f"no datagram came back from {network.ssid!r}"
        return f"{address} by DHCP, a datagram and its echo in {1000 * seconds:.0f} ms"
