"""Keys typed and stored in the real sheets as a screen reader meets them: the bus carries lengths and asterisks, but no
character of a key."""

import os
import pathlib
import plistlib
import sys

import screen_reader as reader
import steps
from programs import wait_until
from text_listener import TextListener, answers

# No character of these appears in the other texts of the program.
STORED_KEY = "{}[]|~^$"
NEW_KEY = "$^~|][}{#"
KEYS = set(STORED_KEY + NEW_KEY)
NETWORK = "Compass"
PROFILES = pathlib.Path(os.environ["HOME"]) / "Library/Preferences/Profile.plist"

listener = TextListener()


def store_a_profile():
    PROFILES.parent.mkdir(parents=True)
    PROFILES.write_bytes(plistlib.dumps([{
        "Profile Name": "Stored", "SSID": NETWORK, "Network Type": "1", "Authentication Type": "2",
        "Encryption Type": "1", "WPAPSK": STORED_KEY, "WEPKey1": STORED_KEY, "WEPKey1 Type": "1"}]))


def key_fields(top):
    return [item for item in reader.visible(top) if item.get_role_name() == "password text"]


def focused_key_field(top):
    return wait_until("a key field has the focus", lambda: next(
        (field for field in key_fields(top) if field.get_state_set().contains(reader.Atspi.StateType.FOCUSED)), None))


def length(field):
    return field.get_text_iface().get_character_count()


def type_key(utility, field, key):
    utility.type(key)
    wait_until("the key is typed", lambda: length(field) == len(key))


def no_field_answers_with_a_key(top):
    fields = key_fields(top)
    assert fields
    for field in fields:
        for answer in answers(field):
            assert not set(answer) & KEYS, (field.get_name(), answer)


def announced(key):
    return "*" * len(key) in listener.texts()


def opens_a_stored_profile_without_reading_its_key(top, simulator, utility):
    steps.meet_the_card(simulator)
    utility.press("alt+p")
    table = wait_until("the profiles are on the screen", lambda: reader.find(top, "table", "Profiles"))
    wait_until("the profile is listed", lambda: len(reader.rows(table)) == 1)
    utility.press("alt+r", "Home")
    wait_until("it is selected", lambda: reader.selected_rows(table) == [0])
    with utility.sheet("Profile", "alt+e"):
        utility.press("alt+u", "alt+p")
        field = focused_key_field(top)
        assert length(field) == len(STORED_KEY), length(field)
        wait_until("the length of the stored key is announced", lambda: announced(STORED_KEY))
        no_field_answers_with_a_key(top)
        utility.press("ctrl+a")
        type_key(utility, field, NEW_KEY)
        no_field_answers_with_a_key(top)
        utility.press("Return")
    assert plistlib.loads(PROFILES.read_bytes())[0]["WPAPSK"] == NEW_KEY


def takes_a_key_in_the_security_sheet_without_reading_it(top, simulator, utility):
    steps.choose_network(top, utility, NETWORK)
    with utility.sheet("Security Settings", "Return"):
        field = focused_key_field(top)
        type_key(utility, field, STORED_KEY)
        utility.press("ctrl+a")
        type_key(utility, field, NEW_KEY)
        no_field_answers_with_a_key(top)
        before = len(simulator.structure_calls())
        utility.press("Return")
    wait_until("the key is sent to the card", lambda: simulator.input_of("VX_OID_802_11_ADD_WPA", before))


def announces_no_character_of_a_key(top, simulator, utility):
    typed = [text for kind, _, _, text in listener.changes() if kind == "insert" and text == "*"]
    assert len(typed) >= 2 * len(NEW_KEY) + len(STORED_KEY), len(typed)
    for text in listener.texts():
        assert not set(text) & KEYS, text


STEPS = [
    opens_a_stored_profile_without_reading_its_key,
    takes_a_key_in_the_security_sheet_without_reading_it,
    announces_no_character_of_a_key,
]

if __name__ == "__main__":
    store_a_profile()
    sys.exit(steps.run(STEPS))
