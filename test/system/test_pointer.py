"""The mouse and the tablet: where the pointer goes, what it focuses, what a click does."""

import time
from collections.abc import Callable

import pytest

from components import Component, Point, hit, point_inside
from computer import Computer, Visit
from test_keyboard import assert_jump

SIZE = (1920, 1080)
CENTRE = (960, 540)
CLOSE_BUTTON = (1875, 114)
TABLET_RANGE = 0x7FFF
# Four units of the mouse are seven pixels, without any rounding.
UNITS, PIXELS = 4, 7
MARGIN = 5  # the pointer lands within half of 7 pixels of where it is sent
UNITS_A_REPORT = 100  # a report of the mouse holds 127 at most


def mouse_to(visit: Visit, target: Point, start: Point = CENTRE) -> Point:
    """Move the mouse from `start` to the nearest place that it can reach exactly."""
    steps = [round((to - here) / PIXELS) for to, here in zip(target, start, strict=True)]
    x, y = steps[0] * UNITS, steps[1] * UNITS
    while x or y:
        dx, dy = _bounded(x), _bounded(y)
        visit.machine.input.move(dx, dy)
        time.sleep(0.03)
        x, y = x - dx, y - dy
    visit.picture()
    return start[0] + steps[0] * PIXELS, start[1] + steps[1] * PIXELS


def _bounded(units: int) -> int:
    return max(-UNITS_A_REPORT, min(UNITS_A_REPORT, units))


def tablet_to(visit: Visit, target: Point) -> Point:
    """Put the pen on a pixel's middle."""
    x, y = (
        round((pixel + 0.5) * TABLET_RANGE / size) for pixel, size in zip(target, SIZE, strict=True)
    )
    visit.machine.input.point(x, y)
    visit.picture()
    return target


def click(visit: Visit) -> None:
    visit.machine.input.button(True)
    time.sleep(0.3)
    visit.machine.input.button(False)
    time.sleep(0.3)


def selectable_with_inside(components: list[Component]) -> list[tuple[Component, Point]]:
    found = [
        (component, point)
        for component in components
        if component.selectable and (point := point_inside(components, component, MARGIN))
    ]
    assert len(found) >= 3, "The board has too few components to point at"
    return found


@pytest.mark.parametrize("move", [mouse_to, tablet_to], ids=["mouse", "tablet"])
def test_the_focus_follows_the_pointer(
    computer: Computer, move: Callable[[Visit, Point], Point]
) -> None:
    component, point = selectable_with_inside(computer.components())[0]
    with computer.visit() as visit:
        before = visit.open()
        reached = move(visit, point)
        after = visit.picture()
        ending = visit.leave()
        visit.assert_setup_is_back()
    assert hit(computer.components(), reached) == component
    assert_near(ending.pointer, reached)
    assert ending.focus == component.focus
    # The focused callout and its leader line change their colours.
    x, y = component.callout_point
    assert after.differs_at(before, (x - 3, y - 3, x + 4, y + 4))


def assert_near(found: Point, expected: Point) -> None:
    """Firmware scales a tablet's position twice, and each time rounds down."""
    assert all(abs(a - b) <= 1 for a, b in zip(found, expected, strict=True)), (found, expected)


def test_the_mouse_moves_seven_pixels_for_four_units(computer: Computer) -> None:
    with computer.visit() as visit:
        visit.open()
        reached = mouse_to(visit, (460, 840))
        ending = visit.leave()
    assert ending.pointer == reached


def test_the_focus_stays_where_the_pointer_finds_nothing(computer: Computer) -> None:
    components = computer.components()
    component, point = selectable_with_inside(components)[-1]
    with computer.visit() as visit:
        visit.open()
        tablet_to(visit, point)
        tablet_to(visit, (1700, 400))
        ending = visit.leave()
    assert ending.focus == component.focus
    assert_near(ending.pointer, (1700, 400))


@pytest.mark.parametrize(
    ("units", "corner"),
    [((100, 100), (1917, 1077)), ((-100, -100), (0, 0))],
    ids=["bottom-right", "top-left"],
)
def test_the_pointer_stops_at_the_edges(computer: Computer, units: Point, corner: Point) -> None:
    with computer.visit() as visit:
        visit.open()
        for _ in range(10):
            visit.machine.input.move(*units)
            time.sleep(0.03)
        visit.picture()
        ending = visit.leave()
    assert ending.pointer == corner


@pytest.mark.parametrize(
    ("pen", "corner"),
    [((TABLET_RANGE, TABLET_RANGE), (1917, 1077)), ((0, 0), (0, 0))],
    ids=["bottom-right", "top-left"],
)
def test_the_pen_reaches_the_corners(computer: Computer, pen: Point, corner: Point) -> None:
    with computer.visit() as visit:
        visit.open()
        # Through the middle: a pen that is already in its place reports nothing.
        tablet_to(visit, CENTRE)
        visit.machine.input.point(*pen)
        visit.picture()
        ending = visit.leave()
    assert ending.pointer == corner


@pytest.mark.parametrize("move", [mouse_to, tablet_to], ids=["mouse", "tablet"])
def test_a_click_on_a_callout_opens_its_setup_option(
    computer: Computer, move: Callable[[Visit, Point], Point]
) -> None:
    components = computer.components()
    component = next(
        each
        for each in components
        if each.selectable and each.token and hit(components, each.callout_point) is None
    )
    with computer.visit() as visit:
        visit.open()
        move(visit, component.callout_point)
        click(visit)
        ending = visit.wait_for_end()
        visit.assert_setup_is_back()
        lines = visit.lines
    assert (ending.jump, ending.focus) == (1, component.focus)
    assert_jump(lines, component)


def test_a_click_on_the_close_button_leaves_without_a_jump(computer: Computer) -> None:
    with computer.visit() as visit:
        visit.open()
        mouse_to(visit, CLOSE_BUTTON)
        click(visit)
        ending = visit.wait_for_end()
        visit.assert_setup_is_back()
    assert ending.jump == 0
    assert visit.status == 0
