"""A first use that goes wrong: joining a network, saving it, losing the card, and finding out that a radio is off. Checks
the texts that a person reads on the way, in the order in which they are needed."""

import os
import pathlib
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

import screen_reader as reader
import steps
from programs import holds_within, wait_until

NETWORK, PASSPHRASE = "Compass", "north by northwest"
LIST = "Networks in range"
HOME = pathlib.Path(os.environ["HOME"])
ALERTS = {"alert", "notification"}


def texts(top):
    """All that the visible page and sheet say: names and descriptions."""
    return [text for item in reader.visible(top) for text in (item.get_name(), item.get_description()) if text]


def says(top, *words):
    return any(all(word in text for word in words) for text in texts(top))


def reads(top, *words):
    wait_until(f"the window says {' … '.join(words)!r}", lambda: says(top, *words))


def networks(top):
    return wait_until("the list of networks is on the screen", lambda: reader.find(top, "table", LIST))


def press_button(top, title):
    reader.operate(wait_until(f"there is a button {title!r}", lambda: reader.find(top, "push button", title)))


def asks_for_the_key_of_a_protected_network(top, simulator, utility):
    steps.meet_the_card(simulator)
    steps.choose_network(top, utility, NETWORK)
    with utility.sheet("Security Settings", "Return"):
        field = wait_until("there is a field for the key",
                           lambda: next((item for item in reader.visible(top) if item.get_role_name() == "password text"
                                         and reader.can_be_used(item)), None))
        assert "pre-shared key" in field.get_name().lower(), field.get_name()
        utility.type("north")
        reads(top, "8")  # the shortest passphrase
        utility.type(PASSPHRASE[len("north"):])
        utility.press("Return")


def says_that_it_is_connected(top, simulator, utility):
    wait_until("the card is associated", lambda: simulator.link() == NETWORK)
    reads(top, f"Connected <--> {NETWORK}")


def saves_the_network_as_a_profile(top, simulator, utility):
    steps.choose_network(top, utility, NETWORK)
    with utility.sheet("Profile", "alt+f"):
        utility.press("alt+n", "ctrl+a")
        utility.type("My network")
        utility.press("alt+u", "alt+p")
        utility.type(PASSPHRASE)
        utility.press("Return")
    utility.press("alt+p")
    table = wait_until("the profiles are on the screen", lambda: reader.find(top, "table", "Profiles"))
    wait_until("the profile is listed", lambda: [row[1:3] for row in reader.rows(table)] == [["My network", NETWORK]])


def says_on_every_page_that_the_card_is_missing(top, simulator, utility):
    simulator.control("eject")
    utility.press("alt+l")
    reads(top, "No Device!!")
    utility.press("alt+s")
    wait_until("the list is empty", lambda: not reader.rows(networks(top)))
    reads(top, "No wireless card found.", "Insert the card")
    utility.press("alt+v")
    reads(top, "No wireless card found.")


def says_that_the_radio_may_have_been_left_off(top, simulator, utility):
    steps.meet_the_card(simulator)
    utility.press("alt+v")
    reads(top, "switch was on", "may have left it off")


def says_that_the_cards_own_switch_is_off(top, simulator, utility):
    simulator.control("eject")
    reads(top, "No wireless card found.")
    simulator.control("hw-radio", "off")
    simulator.control("insert")
    reads(top, "switch was off", "turn it on at the card")
    utility.press("alt+l")
    reads(top, "Radio Status <--> OFF")
    utility.press("alt+s")
    reads(top, "radio switch is off")


def works_again_once_the_switch_is_on(top, simulator, utility):
    simulator.control("hw-radio", "on")

    def listed():
        utility.press("F5")
        return holds_within(10.0, lambda: len(reader.rows(networks(top))) > 5)

    wait_until("networks are listed", listed)


def says_that_the_radio_was_switched_off_here(top, simulator, utility):
    utility.press("alt+v")
    press_button(top, "Radio Off")
    reads(top, "Switched off in this window.")
    utility.press("alt+l")
    reads(top, "Radio Status <--> OFF")
    utility.press("alt+s")
    reads(top, "switched off")


def says_why_a_profile_does_not_connect(top, simulator, utility):
    utility.press("alt+p", "alt+r", "Home", "alt+c")
    reads(top, f"Connecting to \u201c{NETWORK}\u201d")
    reads(top, f"No connection to \u201c{NETWORK}\u201d", "radio of the wireless card is switched off")


def works_again_once_the_radio_is_on(top, simulator, utility):
    utility.press("alt+v")
    press_button(top, "Radio On")
    reads(top, "Switched on in this window.")
    utility.press("alt+s")
    wait_until("networks are listed", lambda: len(reader.rows(networks(top))) > 5)


def apply_a_change(top, utility):
    utility.press("alt+b")
    wait_until("there is something to apply",
               lambda: reader.can_be_used(reader.find(top, "push button", "Apply")))
    utility.press("alt+a")


def says_that_the_settings_were_not_saved(top, simulator, utility):
    announced = []
    listener = Atspi.EventListener.new(
        lambda event: announced.append(event.source.get_name() if event.source.get_role_name() in ALERTS else ""))
    listener.register("object:state-changed:showing")
    library = HOME / "Library"
    aside = library.rename(HOME / "aside")
    library.touch()  # a file in place of the directory
    utility.press("alt+v")
    apply_a_change(top, utility)
    reads(top, "Not saved", "AdvancedProfileSetting.plist")

    def heard():
        while GLib.MainContext.default().iteration(False):
            pass
        return any("AdvancedProfileSetting.plist" in text for text in announced)

    wait_until("it is announced", heard)
    library.unlink()
    aside.rename(library)
    apply_a_change(top, utility)
    wait_until("the message is gone", lambda: not says(top, "Not saved"))


FIRST_DAY = [
    asks_for_the_key_of_a_protected_network,
    says_that_it_is_connected,
    saves_the_network_as_a_profile,
    says_on_every_page_that_the_card_is_missing,
]

# In a new process: one that has lost its link scans on every tick and answers slowly.
SECOND_DAY = [
    says_that_the_radio_may_have_been_left_off,
    says_that_the_cards_own_switch_is_off,
    works_again_once_the_switch_is_on,
    says_that_the_radio_was_switched_off_here,
    says_why_a_profile_does_not_connect,
    works_again_once_the_radio_is_on,
    says_that_the_settings_were_not_saved,
]

if __name__ == "__main__":
    sys.exit(steps.run(FIRST_DAY) or steps.run(SECOND_DAY))
