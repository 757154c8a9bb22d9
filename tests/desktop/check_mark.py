"""The mark of the active profile as it appears on the screen."""

import collections
import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

EDGE = 2  # pixels: grid lines and the frame of a focused cell
FRAME = 4  # pixels: the frame of the box with its blurred edge


def _pixels(area):
    """The area of the screen as rows of RGB pixels."""
    picture = subprocess.run(
        ["import", "-silent", "-window", "root", "-crop", "{0.width}x{0.height}+{0.x}+{0.y}".format(area), "+repage",
         "-depth", "8", "rgb:-"], check=True, stdout=subprocess.PIPE).stdout
    assert len(picture) == 3 * area.width * area.height, (len(picture), area.width, area.height)
    lines = [picture[start:start + 3 * area.width] for start in range(0, len(picture), 3 * area.width)]
    return [[line[start:start + 3] for start in range(0, len(line), 3)] for line in lines]


def areas_of(table):
    """The screen areas of the marks. Callers keep them: a scanning program answers slowly."""
    grid = table.get_table_iface()
    return [grid.get_accessible_at(row, 0).get_component_iface().get_extents(Atspi.CoordType.SCREEN)
            for row in range(grid.get_n_rows())]


def seen(area):
    """The mark in this area: "nothing", "box" (active, not connected) or "check"."""
    lines = [line[EDGE:-EDGE] for line in _pixels(area)][EDGE:-EDGE]
    background = collections.Counter(colour for line in lines for colour in line).most_common(1)[0][0]

    def drawn(rows, columns):
        return [(x, y) for y in rows for x in columns
                if max(abs(part - other) for part, other in zip(lines[y][x], background)) > 60]

    ink = drawn(range(len(lines)), range(len(lines[0])))
    if not ink:
        return "nothing"
    left, right = min(x for x, _ in ink), max(x for x, _ in ink)
    upper, lower = min(y for _, y in ink), max(y for _, y in ink)
    assert right - left > 2 * FRAME and lower - upper > 2 * FRAME, (left, right, upper, lower)
    inside = drawn(range(upper + FRAME, lower - FRAME + 1), range(left + FRAME, right - FRAME + 1))
    return "check" if inside else "box"


def all_seen(areas):
    return [seen(area) for area in areas]
