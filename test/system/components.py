"""The host's components as the probe lists them, and points inside their outlines."""

import re
from dataclasses import dataclass

Point = tuple[int, int]

_HEAD = re.compile(r"\[Probe\] component (\d+) (\d+) (\d+) ([01]) (\d+) (.*)")

# Which way the callout lies from the end of its leader line, by side.
_INWARD = {
    1: (-1, 0),
    2: (-1, -1),
    3: (0, -1),
    4: (1, -1),
    5: (1, 0),
    6: (1, 1),
    7: (0, 1),
    8: (-1, 1),
}
_INTO_CALLOUT = 5  # pixels; callouts are at least twice as high


@dataclass(frozen=True)
class Component:
    index: int
    category: int
    token: int
    selectable: bool
    side: int
    name: str
    outline: list[Point]
    leader: list[Point]

    @property
    def focus(self) -> int:
        """The focus number that the application hands over for this component."""
        return self.index + 1

    @property
    def callout_point(self) -> Point:
        """A point on the callout, near the end of the leader line."""
        dx, dy = _INWARD[self.side]
        x, y = self.leader[-1]
        return x + dx * _INTO_CALLOUT, y + dy * _INTO_CALLOUT

    def contains(self, point: Point) -> bool:
        """Even-odd test, as for any polygon."""
        px, py = point
        inside = False
        previous = self.outline[-1]
        for vertex in self.outline:
            (xi, yi), (xj, yj) = vertex, previous
            if (yi > py) != (yj > py) and px < (xj - xi) * (py - yi) / (yj - yi) + xi:
                inside = not inside
            previous = vertex
        return inside


def read_components(lines: list[str]) -> list[Component]:
    found: list[Component] = []
    for number, line in enumerate(lines):
        if match := _HEAD.fullmatch(line):
            index, category, token, selectable, side = map(int, match.groups()[:5])
            outline, leader = _points(lines[number + 1]), _points(lines[number + 2])
            found.append(
                Component(index, category, token, bool(selectable), side, match[6], outline, leader)
            )
    assert found, f"The probe listed no components: {lines}"
    return found


def hit(components: list[Component], point: Point) -> Component | None:
    """The component whose outline catches the pointer: the first by index."""
    for component in components:
        if component.selectable and component.contains(point):
            return component
    return None


def point_inside(components: list[Component], component: Component, margin: int) -> Point | None:
    """A point whose whole neighbourhood the outline of this component catches."""
    xs, ys = zip(*component.outline, strict=True)
    for x in range(min(xs), max(xs), 2):
        for y in range(min(ys), max(ys), 2):
            around = [
                (x + dx, y + dy) for dx in (-margin, 0, margin) for dy in (-margin, 0, margin)
            ]
            if all(hit(components, point) == component for point in around):
                return x, y
    return None


def _points(line: str) -> list[Point]:
    texts = (text.split(",") for text in line.split()[2:])
    return [(int(x), int(y)) for x, y in texts]
