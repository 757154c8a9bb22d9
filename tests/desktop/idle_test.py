"""The processor time of an idle program. It does not depend on how busy the machine is. Runs without an accessibility bus,
which would add to it."""

import sys
import time

from programs import Simulator, Utility, join_open_network, wait_until

FOLDER = sys.argv[1]
SECONDS = 12.0
SETTLE_SECONDS = 4.0
# Shares of one core. Without a card: less than a clock tick of 10 ms in 10 s, the resolution of /proc/PID/stat.
MAX_WITHOUT_CARD = 0.001
MAX_WITH_CARD = 0.005


def share(utility, seconds=SECONDS):
    """The share of one core that the program uses in this time."""
    begin, start = time.monotonic(), utility.processor_seconds()
    time.sleep(seconds)
    return (utility.processor_seconds() - start) / (time.monotonic() - begin)


def check(what, utility, limit):
    """Measures the program once it has settled."""
    wait_until("the program is idle", lambda: share(utility, SETTLE_SECONDS) <= limit)
    value = share(utility)
    print(f"{what}: {100 * value:.3f} % of a core, limit {100 * limit:.1f} %", flush=True)
    return value <= limit


def main():
    simulator = Simulator(FOLDER, ejected=True)
    utility = Utility(FOLDER)
    try:
        within = check("no card", utility, MAX_WITHOUT_CARD)
        simulator.control("insert")
        wait_until("the list is read", lambda: ("VX_OID_802_11_BSSID_LIST_NEXT", False) in simulator.calls())
        network = next(network for network in simulator.status()["networks"]
                       if network["in_range"] and network["security"] == "open" and not network["hidden"]
                       and not network["ad_hoc"])
        join_open_network(simulator, bytes.fromhex(network["ssid_hex"]))
        wait_until("the link is shown", lambda: simulator.calls().count(("OID_802_11_RSSI", False)) >= 2)
        before = len(simulator.calls())
        within = check("card, connected", utility, MAX_WITH_CARD) and within
        assert len(simulator.calls()) > before + 20, "the program did not query the card meanwhile"
    finally:
        utility.end()
        simulator.kill()
    return 0 if within else 1


if __name__ == "__main__":
    sys.exit(main())
