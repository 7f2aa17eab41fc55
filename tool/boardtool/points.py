"""Points, outlines and leader lines, and the picture that they lie on."""

import re
from dataclasses import dataclass, field

from boardtool import limits
from boardtool.cursor import Cursor
from boardtool.model import Point

# With points outside in more components than this, the picture is the wrong one, not the points.
FEW_COMPONENTS = 3


@dataclass
class Canvas:
    """The picture's size, and the points that were found outside of it."""

    size: Point
    outside: list[tuple[Cursor, Point]] = field(default_factory=list)

    def holds(self, point: Point) -> bool:
        x, y = point
        width, height = self.size
        return 0 <= x < width and 0 <= y < height

    def report_outside(self, picture: Cursor | None) -> None:
        """Each point that lies outside, or the picture when it is too small for many."""
        width, height = self.size
        # Fields are components[N].outline and the like.
        components = {cursor.field.partition(".")[0] for cursor, _ in self.outside}
        if picture is not None and len(components) > FEW_COMPONENTS:
            most = max(x for _, (x, _) in self.outside), max(y for _, (_, y) in self.outside)
            picture.report(
                f"has {width} x {height} pixels, and {len(self.outside)} points of "
                f"{len(components)} components lie outside, as far as {list(most)}; "
                "measure them on this picture, or take the one that they were measured on"
            )
            return
        lists: dict[str, list[tuple[Cursor, Point]]] = {}
        for cursor, point in self.outside:
            field_name = re.sub(r"\[\d+\]$", "", cursor.field)
            lists.setdefault(field_name, []).append((cursor, point))
        for found in lists.values():
            self._report_list(found)

    def _report_list(self, found: list[tuple[Cursor, Point]]) -> None:
        """The points of one list: several are one mistake."""
        width, height = self.size
        cursor, (x, y) = found[0]
        exchanged = all(self.holds((y, x)) for _, (x, y) in found)
        if len(found) == 1:
            meant = f"; did you mean [{y}, {x}]?" if exchanged else ""
            cursor.report(f"({x}, {y}) is outside the picture of {width} x {height} pixels{meant}")
            return
        meant = "; are x and y exchanged?" if exchanged else ""
        cursor.report(
            f"({x}, {y}) and {len(found) - 1} more are outside the picture of {width} x {height} "
            f"pixels{meant}"
        )


def read_point(cursor: Cursor, canvas: Canvas) -> Point | None:
    """A point [x, y] inside the picture."""
    text = cursor.scalar("str")
    numbers = re.fullmatch(r"\s*(\d+)\s*[,;x ]\s*(\d+)\s*", text) if text else None
    if numbers:
        cursor.report(f"write a point with brackets: [{numbers[1]}, {numbers[2]}]")
        return None
    if cursor.scalar("int") is not None:
        cursor.expected("a point [x, y]")
        return None
    items = cursor.items()
    if items is None:
        return None
    if len(items) != 2:
        cursor.report(_instead_of_point(cursor.integers(), len(items)))
        return None
    x = items[0].integer(-limits.WORD, limits.WORD)
    y = items[1].integer(-limits.WORD, limits.WORD)
    if x is None or y is None:
        return None
    if not canvas.holds((x, y)):
        canvas.outside.append((cursor, (x, y)))
        return None
    return x, y


def read_points(
    cursor: Cursor, canvas: Canvas, low: int, high: int, what: str
) -> tuple[Point, ...]:
    """A list of low to high points."""
    items = cursor.items()
    if items is None:
        return ()
    numbers = cursor.integers()
    if len(items) == 1 and len(items[0].integers() or ()) > 2:
        numbers = items[0].integers()  # Brackets around all numbers.
    if numbers:
        cursor.report(_points_from(numbers, outline=low >= limits.VERTICES_MIN))
        return ()
    if len(items) > high:
        cursor.report(f"{len(items)} {what}, at most {high} are allowed")
    elif len(items) < low:
        cursor.report(f"{len(items)} {what}, at least {low} are needed")
    points = [read_point(item, canvas) for item in items]
    return tuple(point for point in points if point is not None)


def read_outline(cursor: Cursor, canvas: Canvas) -> tuple[Point, ...]:
    points = read_points(cursor, canvas, limits.VERTICES_MIN, limits.VERTICES_MAX, "vertices")
    if len(points) >= limits.VERTICES_MIN:
        columns = {x for x, _ in points}
        rows = {y for _, y in points}
        if len(columns) == 1 or len(rows) == 1:
            cursor.report("all vertices lie on one line, so the outline has no area")
    return points


def read_leader(cursor: Cursor, canvas: Canvas) -> tuple[Point, ...]:
    return read_points(cursor, canvas, 1, limits.LEADER_POINTS_MAX, "leader points")


def _instead_of_point(numbers: list[int] | None, count: int) -> str:
    if numbers is None or count != 4:
        return f"a point is [x, y], found {count} values"
    x, y, width, height = numbers
    return (
        f"a point is [x, y], found 4 numbers; the middle of {width} x {height} pixels at "
        f"({x}, {y}) is [{x + width // 2}, {y + height // 2}]"
    )


def _points_from(numbers: list[int], outline: bool) -> str:
    """What to write instead of a list of numbers where a list of points belongs."""
    if outline and len(numbers) == 4:
        x, y, width, height = numbers
        corners = [[x, y], [x + width, y], [x + width, y + height], [x, y + height]]
        return (
            f"each corner is a point [x, y]; {width} x {height} pixels at ({x}, {y}) are {corners}"
        )
    if len(numbers) % 2 == 0:
        pairs = [list(pair) for pair in zip(numbers[::2], numbers[1::2])]
        return f"write points with brackets: {pairs}"
    return f"{len(numbers)} numbers where points [x, y] belong; write [[x, y], [x, y], ...]"
