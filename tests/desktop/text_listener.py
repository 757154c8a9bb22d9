"""What the accessibility bus reveals about a text field: its change events, and the answers to every query."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


class TextListener:
    """Records the texts of all object events on the bus, as a screen reader receives them."""

    def __init__(self):
        self.events = []
        self._listener = Atspi.EventListener.new(self._record)
        for kind in ("object:text-changed", "object:text-caret-moved", "object:text-selection-changed",
                     "object:property-change", "object:state-changed"):
            assert self._listener.register(kind), kind

    def _record(self, event):
        self.events.append((event.type, event.detail1, event.detail2, event.any_data))

    def receive(self):
        """Handles the events that have arrived."""
        while GLib.MainContext.default().iteration(False):
            pass
        return self.events

    def changes(self):
        """(insert or delete, position, length, text) of each text change."""
        return [(kind.split(":")[2], position, length, text) for kind, position, length, text in self.receive()
                if kind.startswith("object:text-changed")]

    def texts(self):
        return [text for _, _, _, text in self.receive() if isinstance(text, str)]


def string_at(text, offset, granularity):
    """Empty if the program does not implement the query, as those built with Qt 6.4 do not."""
    try:
        return text.get_string_at_offset(offset, granularity).content
    except GLib.GError:
        return ""


def answers(field):
    """Every text that the field returns when asked."""
    text = field.get_text_iface()
    length = text.get_character_count()
    yield text.get_text(0, -1)
    yield text.get_text(0, length)
    # Not at the end of the text, where Qt 6.4 never answers for a line edit that is not masked.
    for offset in range(length):
        # Characters are numbers; 0 and -1 are no characters.
        yield chr(max(0, text.get_character_at_offset(offset))).strip("\0")
        for granularity in range(5):
            yield string_at(text, offset, Atspi.TextGranularity(granularity))
        for boundary in range(7):
            kind = Atspi.TextBoundaryType(boundary)
            for query in (text.get_text_before_offset, text.get_text_at_offset, text.get_text_after_offset):
                yield query(offset, kind).content
    yield from text.get_default_attributes().values()
    yield field.get_description()
    yield from (field.get_attributes() or {}).values()
