"""The window as seen by a screen reader: roles, names and texts on the accessibility bus."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

# Milliseconds. A scan blocks the program for two seconds, on a busy machine for longer.
Atspi.set_timeout(60000, 60000)

# Controls and values. Each of them needs an accessible name.
NAMED_ROLES = {
    "push button", "toggle button", "check box", "radio button", "combo box", "text", "password text", "entry",
    "spin button", "slider", "progress bar", "level bar", "table", "tree table", "list", "list box", "tree", "page tab",
    "page tab list", "image", "icon", "chart", "canvas", "graphic",
}


def application():
    """The program's root object; None until it is on the bus."""
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        if child and child.get_name().lower() == "vantrel":
            child.set_cache_mask(Atspi.Cache.NONE)
            return child
    return None


def is_showing(item):
    states = item.get_state_set()
    return states.contains(Atspi.StateType.SHOWING) and states.contains(Atspi.StateType.VISIBLE)


def showing(item):
    """The item and its descendants that are on the screen, without the cells of tables."""
    if not is_showing(item):
        return
    yield item
    if item.get_role_name() in {"table", "tree table"}:
        return
    for index in range(item.get_child_count()):
        child = item.get_child_at_index(index)
        if child:
            yield from showing(child)


def visible(top):
    for index in range(top.get_child_count()):
        yield from showing(top.get_child_at_index(index))


def find(top, role, name):
    for item in visible(top):
        if item.get_role_name() == role and item.get_name() == name:
            return item
    return None


def labelled(top, caption):
    """The item that has this label."""
    for item in visible(top):
        for relation in item.get_relation_set():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                if any(relation.get_target(index).get_name() == caption for index in range(relation.get_n_targets())):
                    return item
    return None


def can_be_used(item):
    return item.get_state_set().contains(Atspi.StateType.ENABLED)


def is_checked(item):
    return item.get_state_set().contains(Atspi.StateType.CHECKED)


def operate(button):
    """Presses a button without a keyboard shortcut."""
    action = button.get_action_iface()
    names = [action.get_action_name(index) for index in range(action.get_n_actions())]
    assert action.do_action(names.index("Press")), names


def describe(item):
    return f"{item.get_role_name()} {item.get_name()!r}"


def tab_titles(top):
    return [item.get_name().replace("&", "") for item in visible(top) if item.get_role_name() == "page tab"]


def selected_tab(top):
    for item in visible(top):
        # Qt marks the selected tab as focused, independent of the keyboard focus.
        if item.get_role_name() == "page tab" and item.get_state_set().contains(Atspi.StateType.FOCUSED):
            return item.get_name().replace("&", "")
    return None


def labels(top):
    return [item.get_name() for item in visible(top) if item.get_role_name() == "label"]


def unnamed(top):
    return [f"{item.get_role_name()} in {describe(item.get_parent())}" for item in visible(top)
            if item.get_role_name() in NAMED_ROLES and not item.get_name().strip()]


def rows(table):
    """The texts of a table's rows, without the headings."""
    grid = table.get_table_iface()
    return [[grid.get_accessible_at(row, column).get_name() for column in range(grid.get_n_columns())]
            for row in range(grid.get_n_rows())]


def selected_rows(table):
    return list(table.get_table_iface().get_selected_rows())


def headings(table):
    grid = table.get_table_iface()
    return [grid.get_column_header(column).get_name() for column in range(grid.get_n_columns())]
