"""A masked key field as a screen reader meets it: the bus carries its length, but no character of the key."""

import os
import pathlib
import subprocess
import sys

import screen_reader as reader
from programs import wait_until
from text_listener import TextListener, answers

# No character of these appears in the other texts of the window.
STORED_KEY = "9ZQ7zj4X"
TYPED_KEY = "XJ8"


class Demo:
    """The key field of the demo program, operated with the keyboard and its buttons."""

    def __init__(self, folder):
        self.process = subprocess.Popen(
            [pathlib.Path(folder) / "secret_field_demo", STORED_KEY],
            env={**os.environ, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
        self.top = wait_until("the program is on the accessibility bus", reader.application)
        self.field = wait_until("the field is masked", lambda: self.find("password text", "Key"))
        self.listener = TextListener()
        wait_until("the field has the focus", self.has_focus)

    def has_focus(self):
        return self.field.get_state_set().contains(reader.Atspi.StateType.FOCUSED)

    def find(self, role, name):
        return reader.find(self.top, role, name)

    def length(self):
        return self.field.get_text_iface().get_character_count()

    def key(self, *keys):
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "50", text], check=True)

    def changes_after(self, act, count):
        """The text changes that the bus carries for what `act` does."""
        before = len(self.listener.changes())
        act()
        wait_until(f"{count} changes are announced", lambda: len(self.listener.changes()) >= before + count)
        return self.listener.changes()[before:]


def stars(text):
    return "*" * len(text)


def opening_a_profile_announces_the_length(demo):
    opened = demo.changes_after(lambda: reader.operate(demo.find("push button", "Open profile")), 1)
    assert opened == [("insert", 0, len(STORED_KEY), stars(STORED_KEY))], opened
    assert demo.length() == len(STORED_KEY), demo.length()


def typing_announces_one_asterisk_a_character(demo):
    typed = demo.changes_after(lambda: demo.type(TYPED_KEY), len(TYPED_KEY))
    assert typed == [("insert", len(STORED_KEY) + index, 1, "*") for index in range(len(TYPED_KEY))], typed


def deleting_announces_one_asterisk(demo):
    deleted = demo.changes_after(lambda: demo.key("BackSpace"), 1)
    assert deleted == [("delete", len(STORED_KEY + TYPED_KEY) - 1, 1, "*")], deleted


def moving_the_caret_is_announced(demo):
    demo.key("Home")
    wait_until("the caret is at the start", lambda: any(
        kind.startswith("object:text-caret-moved") and position == 0
        for kind, position, _, _ in demo.listener.receive()))


def replacing_announces_both_lengths(demo):
    old = demo.length()
    replaced = demo.changes_after(lambda: reader.operate(demo.find("push button", "Open profile")), 2)
    assert replaced == [("delete", 0, old, "*" * old), ("insert", 0, len(STORED_KEY), stars(STORED_KEY))], replaced


def queries_return_asterisks_at_most(demo):
    assert demo.field.get_role_name() == "password text" and demo.field.get_name() == "Key"
    assert demo.length() == len(STORED_KEY), demo.length()
    for answer in answers(demo.field):
        assert not set(answer) & set(STORED_KEY + TYPED_KEY), answer


def no_event_carried_a_character_of_a_key(demo):
    for text in demo.listener.texts():
        assert not set(text) & set(STORED_KEY + TYPED_KEY), text


# The listener would notice a key: this is what it hears and reads once the field is unmasked.
def an_unmasked_field_is_read_aloud(demo):
    reader.operate(demo.find("push button", "Show key"))
    wait_until("the key can be read", lambda: STORED_KEY in set(answers(demo.field)))
    typed = demo.changes_after(lambda: demo.type(TYPED_KEY), len(TYPED_KEY))
    assert [text for _, _, _, text in typed] == list(TYPED_KEY), typed


def clearing_announces_asterisks_even_if_unmasked(demo):
    length = demo.length()
    cleared = demo.changes_after(lambda: reader.operate(demo.find("push button", "Clear key")), 1)
    assert cleared == [("delete", 0, length, "*" * length)], cleared
    assert demo.length() == 0, demo.length()


STEPS = [
    opening_a_profile_announces_the_length,
    typing_announces_one_asterisk_a_character,
    deleting_announces_one_asterisk,
    moving_the_caret_is_announced,
    replacing_announces_both_lengths,
    queries_return_asterisks_at_most,
    no_event_carried_a_character_of_a_key,
    an_unmasked_field_is_read_aloud,
    clearing_announces_asterisks_even_if_unmasked,
]


def run_event_tests(folder):
    """The tests of the events in the process itself, which need the bus as well: each suite in its own process."""
    for suite in "SecretLineEditEvents", "SecretLineEditWithoutOtherHandlers":
        result = subprocess.run(
            [pathlib.Path(folder) / "secret_line_edit_events_tests", f"--gtest_filter={suite}.*", "--gtest_brief=1"],
            env={**os.environ, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb"},
            stdout=subprocess.PIPE, text=True)
        assert result.returncode == 0 and " 0 tests" not in result.stdout, f"{suite}:\n{result.stdout}"


def main(folder):
    run_event_tests(folder)
    demo = Demo(folder)
    try:
        for step in STEPS:
            step(demo)
            print(step.__name__.replace("_", " "), flush=True)
    finally:
        demo.process.terminate()
        demo.process.wait(10)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
