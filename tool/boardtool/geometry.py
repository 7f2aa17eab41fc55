"""Warns of outlines, dots and leader lines that are not where their author meant them."""

import itertools
import re
from collections.abc import Sequence

import shapely
from shapely import LineString, Polygon
from shapely.geometry.base import BaseGeometry

from boardtool import limits
from boardtool.model import Board, Component, Point
from boardtool.problems import Problems
from boardtool.wording import listed

# In pixels of a screen of 1920 x 1080, on which the picture is 1440 wide.
SHOWN_WIDTH = 1440
DOT_RADIUS = 5.5
LEADER_GAP = 30

# Of an outline, what may be left free of the ones before it without being of use.
SLIVER = 0.01
# How much shorter a line gets when the one point whose x and y were exchanged is mended.
EXCHANGED = 0.5


def check_geometry(board: Board, problems: Problems) -> None:
    scale = board.picture_size[0] / SHOWN_WIDTH
    for i, component in enumerate(board.components):
        field = f"components[{i}]"
        if _check_outline(component, f"{field}.outline", problems):
            _check_places(component, field, scale, problems)
    _check_found(board.components, problems)
    _check_leaders(board.components, problems)


def area(points: Sequence[Point]) -> BaseGeometry:
    """What an outline encloses, by the even-odd rule where it crosses itself."""
    return shapely.make_valid(Polygon(points))


def _check_outline(component: Component, field: str, problems: Problems) -> bool:
    """Whether the outline goes once around something."""
    exchanged = _exchanged_point(component.outline)
    if exchanged is not None:
        x, y = component.outline[exchanged]
        problems.warn(f"{field}[{exchanged}]", f"far off; did you mean [{y}, {x}]?")
        return False
    crossing = re.search(
        r"Self-intersection\[(\S+) (\S+)\]", shapely.is_valid_reason(Polygon(component.outline))
    )
    if crossing:
        x, y = (round(float(number)) for number in crossing.groups())
        problems.warn(
            field, f"crosses itself at ({x}, {y}); list the corners one by one around the component"
        )
    return crossing is None


def _exchanged_point(outline: Sequence[Point]) -> int | None:
    """The point without which the outline is but half as long, once its x and y are exchanged."""
    length = Polygon(outline).length
    for i in range(len(outline)):
        mended = [point[::-1] if k == i else point for k, point in enumerate(outline)]
        if Polygon(mended).length < length * EXCHANGED:
            return i
    return None


def _check_places(component: Component, field: str, scale: float, problems: Problems) -> None:
    """Whether the dot and the leader line's begin lie at the outline."""
    shape = area(component.outline)
    exchanged = area([(y, x) for x, y in component.outline])
    start = ("leader[0]", component.leader[0], LEADER_GAP * scale, "the leader line begins")
    dot = ("marker", component.marker, DOT_RADIUS * scale, "the dot lies")
    places = [start] if component.category == limits.CATEGORIES["none"] else [start, dot]
    astray = [place for place in places if _gap(shape, place[1]) > place[2]]
    if astray == places and all(_gap(exchanged, point) <= gap for _, point, gap, _ in places):
        problems.warn(
            f"{field}.outline", "lies elsewhere than dot and leader line; are x and y exchanged?"
        )
        return
    for name, (x, y), gap, what in astray:
        distance = round(_gap(shape, (x, y)))
        meant = f"; did you mean [{y}, {x}]?" if _gap(shape, (y, x)) <= gap else ""
        problems.warn(f"{field}.{name}", f"{what} {distance} pixels beside the outline{meant}")


def _gap(shape: BaseGeometry, point: Point) -> float:
    return shape.distance(shapely.Point(point))


def _check_found(components: Sequence[Component], problems: Problems) -> None:
    """Whether the pointer finds each component: of outlines that overlap, the first gets it."""
    shapes = [area(component.outline) for component in components]
    covered_by: dict[int, list[str]] = {}
    for i, component in enumerate(components):
        before = [
            k for k in range(i) if components[k].selectable and shapes[k].intersects(shapes[i])
        ]
        if not component.selectable or not before:
            continue
        alone = [k for k in before if _is_covered(shapes[i], [shapes[k]])]
        if alone:
            covered_by.setdefault(alone[0], []).append(component.name)
        elif _is_covered(shapes[i], [shapes[k] for k in before]):
            problems.warn(
                f"components[{i}].outline",
                f"lies whole under the outlines of {listed([components[k].name for k in before])}, "
                "which come before it and take the pointer; give it a place of its own",
            )
        else:
            _check_dot(i, component, [(components[k].name, shapes[k]) for k in before], problems)
    for k, names in covered_by.items():
        problems.warn(
            f"components[{k}].outline",
            f"covers {listed(names)} whole and takes the pointer from there; put it behind, or "
            "make it smaller",
        )


def _check_dot(
    i: int, component: Component, before: Sequence[tuple[str, BaseGeometry]], problems: Problems
) -> None:
    dot = shapely.Point(component.marker)
    name = next((name for name, shape in before if shape.contains(dot)), None)
    if name is not None and component.category != limits.CATEGORIES["none"]:
        problems.warn(
            f"components[{i}].marker",
            f"the dot lies on {name}, which comes before it and takes the pointer there",
        )


def _is_covered(shape: BaseGeometry, others: Sequence[BaseGeometry]) -> bool:
    return shape.difference(shapely.union_all(others)).area < shape.area * SLIVER


def _check_leaders(components: Sequence[Component], problems: Problems) -> None:
    lines = {
        i: LineString(component.leader)
        for i, component in enumerate(components)
        if len(component.leader) > 1
    }
    crossed: dict[int, list[str]] = {}
    for i, k in itertools.combinations(lines, 2):
        if lines[i].crosses(lines[k]) or lines[i].overlaps(lines[k]):
            crossed.setdefault(k, []).append(components[i].name)
    for k, names in crossed.items():
        plural = "s" if len(names) > 1 else ""
        problems.warn(
            f"components[{k}].leader", f"crosses the leader line{plural} of {listed(names)}"
        )
