"""Fields with a meaning of their own: points, colours, names, panel texts."""

import re

from boardtool import limits
from boardtool.cursor import Cursor
from boardtool.model import Point


def read_point(cursor: Cursor, picture_size: Point) -> Point | None:
    """A point [x, y] inside the picture."""
    items = cursor.items()
    if items is None:
        return None
    if len(items) != 2:
        cursor.report(f"a point is [x, y], found {len(items)} numbers")
        return None
    x = items[0].integer(-limits.WORD, limits.WORD)
    y = items[1].integer(-limits.WORD, limits.WORD)
    if x is None or y is None:
        return None
    width, height = picture_size
    if not (0 <= x < width and 0 <= y < height):
        cursor.report(f"({x}, {y}) is outside the picture of {width} x {height} pixels")
        return None
    return x, y


def read_points(
    cursor: Cursor, picture_size: Point, low: int, high: int, what: str
) -> tuple[Point, ...]:
    """A list of low to high points."""
    items = cursor.items()
    if items is None:
        return ()
    if len(items) > high:
        cursor.report(f"{len(items)} {what}, at most {high} are allowed")
    elif len(items) < low:
        cursor.report(f"{len(items)} {what}, at least {low} are needed")
    points = [read_point(item, picture_size) for item in items]
    return tuple(point for point in points if point is not None)


def read_outline(cursor: Cursor, picture_size: Point) -> tuple[Point, ...]:
    points = read_points(cursor, picture_size, limits.VERTICES_MIN, limits.VERTICES_MAX, "vertices")
    if len(points) >= limits.VERTICES_MIN:
        columns = {x for x, _ in points}
        rows = {y for _, y in points}
        if len(columns) == 1 or len(rows) == 1:
            cursor.report("all vertices lie on one line, so the outline has no area")
    return points


def read_color(cursor: Cursor) -> str | None:
    """ "r,g,b" with numbers from 0 to 255; blanks are dropped."""
    text = cursor.text(limits.COLOR_TEXT)
    if text is None:
        return None
    match = re.fullmatch(r"\s*(\d{1,3})\s*,\s*(\d{1,3})\s*,\s*(\d{1,3})\s*", text, re.ASCII)
    channels = [int(channel) for channel in match.groups()] if match else []
    if not channels or max(channels) > limits.BYTE:
        cursor.report(f'{text!r} is not a colour; write "red,green,blue", each 0 to 255')
        return None
    return ",".join(str(channel) for channel in channels)


def read_name(cursor: Cursor) -> str | None:
    """The callout's text: it is cut to bytes and drawn with recolouring."""
    name = cursor.text(limits.NAME)
    if name is None:
        return None
    if not name:
        cursor.report("is empty")
        return None
    bad = next((c for c in name if not " " <= c <= "~" or c == "#"), None)
    if bad is not None:
        cursor.report(f"{bad!r} is not allowed; use printable ASCII characters other than '#'")
        return None
    return name


def read_panel_text(cursor: Cursor, limit: int) -> str | None:
    """A text that a panel draws with recolouring."""
    text = cursor.text(limit)
    if text is None:
        return None
    bad = next((c for c in text if not " " <= c <= "~" and c != "\n"), None)
    if bad is not None:
        # The application narrows these texts to bytes.
        cursor.report(f"{bad!r} is not allowed; the panel shows printable ASCII characters only")
        return None
    if "#" in text.replace("##", ""):
        cursor.report("a single '#' would start a colour in the panel; write '##' for one '#'")
        return None
    return text
