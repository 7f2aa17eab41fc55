"""The keyboard: what is typed too early, walking, leaving, opening a setup option."""

import time

import pytest

from components import Component
from computer import Computer
from ending import FILTER_BUTTONS, FIRST_FILTER_BUTTON, NO_FOCUS

# Longer than any key would take to end the view.
_SETTLED = 1.0


def walk_order(components: list[Component]) -> list[int]:
    """Focus numbers in the order in which the keyboard walks: the close button comes first."""
    callouts = [component.focus for component in components if component.selectable]
    return [NO_FOCUS, *callouts, *range(FIRST_FILTER_BUTTON, FIRST_FILTER_BUTTON + FILTER_BUTTONS)]


def test_a_key_typed_before_the_view_is_up_is_dropped(computer: Computer) -> None:
    with computer.visit() as visit:
        visit.start()
        visit.machine.input.tap("esc")
        visit.wait_for_view()
        time.sleep(_SETTLED)
        assert not visit.ended
        visit.leave()
        visit.assert_setup_is_back()


WALKS = [
    ([], 0),
    (["tab"] * 3, 3),
    (["pgdn"] * 2, 2),
    (["tab", "tab", "tab", "pgup"], 2),
    (["pgup"], -1),
    (["pgup"] * 3, -3),
    (["tab"] * 6, 6),
    (["pgdn"] * 8, 8),
]


@pytest.mark.parametrize(("keys", "steps"), WALKS, ids=lambda value: str(value))
def test_tab_page_down_and_page_up_walk(computer: Computer, keys: list[str], steps: int) -> None:
    order = walk_order(computer.components())
    with computer.visit() as visit:
        visit.open()
        visit.press(*keys)
        ending = visit.leave()
    # The close button, the first of the order, has the focus at the start.
    assert ending.focus == order[steps % len(order)]


def test_enter_opens_the_setup_option_of_the_focused_component(computer: Computer) -> None:
    order = walk_order(computer.components())
    component = next(
        each for each in reversed(computer.components()) if each.selectable and each.token
    )
    steps = len(order) - order.index(component.focus)  # backwards from the close button
    with computer.visit() as visit:
        visit.open()
        visit.press(*["pgup"] * steps)
        visit.machine.input.tap("ret")
        ending = visit.wait_for_end()
        visit.assert_setup_is_back()
        lines = visit.lines
    assert ending.jump == 1
    assert ending.focus == component.focus
    assert_jump(lines, component)


def assert_jump(lines: list[str], component: Component) -> None:
    """The log of a jump, and that it comes between the view and its end."""
    name, token = component.name, f"{component.token:X}"
    jump = [
        f"[OBV] Ready to jump: Name {name} SearchTokenID 0x{token}",
        "[OBV] Use VeltSetupEventHandler to jump, ExitApp = TRUE.",
        f"[Host] Setup would show option 0x{token} of component {component.index}, {name}",
    ]
    start = lines.index(jump[0])
    assert lines[start : start + 3] == jump
    assert "Preparation cost" in lines[start - 1]
    assert "Find BIOS option cost" in lines[start + 3]


def test_enter_on_a_component_without_a_setup_option_does_nothing(computer: Computer) -> None:
    order = walk_order(computer.components())
    component = next(
        each for each in reversed(computer.components()) if each.selectable and not each.token
    )
    steps = len(order) - order.index(component.focus)  # backwards from the close button
    with computer.visit() as visit:
        visit.open()
        visit.press(*["pgup"] * steps, "ret")
        time.sleep(_SETTLED)
        assert not visit.ended
        ending = visit.leave()
    assert ending.jump == 0
    assert ending.focus == component.focus
