"""Runs a desktop test: the program against the simulator, observed through the accessibility bus. Each step is a function
of the program's root object, the simulator and the utility, named after what it checks. The first failure ends the
test."""

import contextlib
import pathlib
import signal
import subprocess
import sys

import screen_reader as reader
from programs import Simulator, Utility, holds_within, wait_until

STEP_LIMIT = 600  # seconds; for a step that hangs outside of wait_until


@contextlib.contextmanager
def _watchdog(step):
    def give_up(_signal, _frame):
        raise TimeoutError(f"hangs: {step}")

    signal.signal(signal.SIGALRM, give_up)
    signal.alarm(STEP_LIMIT)
    try:
        yield
    finally:
        signal.alarm(0)


def run(steps):
    """Runs the steps on the programs in the directory that is the test's argument. Returns the test's exit code."""
    folder = sys.argv[1]
    simulator = Simulator(folder)
    utility = None
    try:
        utility = Utility(folder, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        top = wait_until("the program is on the accessibility bus", reader.application)
        for step in steps:
            claim = "the program " + step.__name__.replace("_", " ")
            with _watchdog(claim):
                step(top, simulator, utility)
            print(claim, flush=True)
        simulator.end()
    except BaseException:
        picture = pathlib.Path(folder).parent / "desktop-failure.png"
        subprocess.run(["import", "-silent", "-window", "root", picture], check=False)
        print("screen at the time of the failure:", picture, flush=True)
        raise
    finally:
        if utility:
            utility.end()
        simulator.kill()
    errors = utility.process.stderr.read()
    assert "ASSERT" not in errors and "Invalid parameter" not in errors, errors
    return 0


def meet_the_card(simulator):
    """Waits until the pages show the card and each of their timers has fired. The site survey's first tick clears the
    selection of the list, so nothing can be selected before."""
    media_status = ("OID_GEN_MEDIA_CONNECT_STATUS", False)
    # Without a link, the device watch and the link status page send one of these after the media status. The site
    # survey's probe sends only the media status. The program has one thread, so a request that follows the probe shows
    # that its tick is over.
    others = (("VX_OID_802_11_EVENT_FLAG", False), ("VX_OID_802_11_STA_CONFIG", False))

    def has_met():
        calls = simulator.calls()
        rates = ("OID_802_11_DESIRED_RATES", True)  # sent by the advanced settings page, one of the last to be called
        if rates not in calls:
            return False
        calls = calls[calls.index(rates):]
        probed = any(call == media_status and after not in others for call, after in zip(calls, calls[1:]))
        return probed and ("OID_GEN_RCV_NO_BUFFER", False) in calls  # the last request of the statistics page

    wait_until("all pages have met the card", has_met)


def choose_network(top, utility, ssid):
    """Selects a network by typing its name. Repeats that, because a busy machine may split the name into several
    searches."""
    utility.press("alt+s")
    table = wait_until("the list is on the screen", lambda: reader.find(top, "table", "Networks in range"))

    def is_chosen():
        return [reader.rows(table)[row][1] for row in reader.selected_rows(table)] == [ssid]

    def typed():
        utility.press("alt+n", "Home", "Right")
        utility.type(ssid)
        return holds_within(5.0, is_chosen)

    wait_until(f"{ssid!r} is selected", typed)
