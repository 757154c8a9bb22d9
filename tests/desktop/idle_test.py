"""What an idle program costs. The kernel counts processor time, not time that passes, so a busy machine does not fail
this; no accessibility bus listens, which would be a cost of its own."""

import sys
import time

from programs import Simulator, Utility, join_open_network, wait_until

FOLDER = sys.argv[1]
SECONDS = 12.0
# No card: less than one clock tick of 10 ms over ten seconds is what no measurement with /proc/PID/stat would show.
MOST_WITHOUT_CARD = 0.001
MOST_WITH_CARD = 0.005


def share(utility):
    """The part of one core that the program uses over the next seconds."""
    begin, start = time.monotonic(), utility.processor_seconds()
    time.sleep(SECONDS)
    return (utility.processor_seconds() - start) / (time.monotonic() - begin)


def report(what, value, limit):
    print(f"{what}: {100 * value:.3f} % of a core, limit {100 * limit:.1f} %", flush=True)
    return value <= limit


def main():
    simulator = Simulator(FOLDER, ejected=True)
    utility = Utility(FOLDER)
    try:
        time.sleep(5)  # the window settles: fonts, first frames
        within = report("no card", share(utility), MOST_WITHOUT_CARD)
        simulator.control("insert")
        wait_until("the list is read", lambda: ("VX_OID_802_11_BSSID_LIST_NEXT", False) in simulator.calls())
        network = next(network for network in simulator.status()["networks"]
                       if network["in_range"] and network["security"] == "open" and not network["hidden"]
                       and not network["ad_hoc"])
        join_open_network(simulator, bytes.fromhex(network["ssid_hex"]))
        time.sleep(8)  # the card is brought into use, the link is shown
        before = len(simulator.calls())
        within = report("card, connected", share(utility), MOST_WITH_CARD) and within
        assert len(simulator.calls()) > before + 20, "the program did not watch the card meanwhile"
    finally:
        utility.end()
        simulator.kill()
    return 0 if within else 1


if __name__ == "__main__":
    sys.exit(main())
