"""A test in the real window: the program against the simulator, seen through the accessibility bus. Each step is a
claim, a function of the program's top object, the simulator and the utility; the first one that does not hold ends the
test."""

import pathlib
import subprocess
import sys

import screen_reader as reader
from programs import Simulator, Utility, holds_within, wait_until


def run(claims):
    """With the folder of the programs as the test's argument; the exit code of the test."""
    folder = sys.argv[1]
    simulator = Simulator(folder)
    utility = Utility(folder, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    try:
        top = wait_until("the program is on the accessibility bus", reader.application)
        for step in claims:
            step(top, simulator, utility)
            print("the program", step.__name__.replace("_", " "), flush=True)
        simulator.end()
    except BaseException:
        picture = pathlib.Path(folder).parent / "desktop-failure.png"
        subprocess.run(["import", "-silent", "-window", "root", picture], check=False)
        print("what was on the screen:", picture, flush=True)
        raise
    finally:
        utility.end()
        simulator.kill()
    errors = utility.process.stderr.read()
    assert "ASSERT" not in errors and "Invalid parameter" not in errors, errors
    return 0


def meet_the_card(simulator):
    """Until the pages were called, of which the advanced settings send the rates, and every timer ran once since: the
    site survey's shows its list anew, with nothing selected. The statistics' timer is the last one."""
    def has_met():
        calls = simulator.calls()
        rates = ("OID_802_11_DESIRED_RATES", True)
        return rates in calls and calls[calls.index(rates):].count(("OID_802_11_STATISTICS", False)) >= 2

    wait_until("the card is brought into use", has_met)


def choose_network(top, utility, ssid):
    """Selects it in the list by typing its name. A busy machine may take the letters for several searches: then anew."""
    utility.press("alt+s")
    table = wait_until("the list is on the screen", lambda: reader.find(top, "table", "Networks in range"))

    def is_chosen():
        return [reader.rows(table)[row][1] for row in reader.selected_rows(table)] == [ssid]

    def typed():
        utility.press("alt+n", "Home", "Right")
        utility.type(ssid)
        return holds_within(2.0, is_chosen)

    wait_until(f"{ssid!r} is selected", typed)
