"""What the application hands over to the host at its end, as the host logs it."""

import re
from dataclasses import dataclass

NO_FOCUS = 0
FIRST_FILTER_BUTTON = 101
FILTER_BUTTONS = 6
LAST_FILTER_BUTTON = FIRST_FILTER_BUTTON + FILTER_BUTTONS - 1

_LINE = re.compile(
    r"\[Host\] Application ended: "
    r"jump (\d+), focus (\d+), category (\d+), pointer (\d+) (\d+)"
)


@dataclass(frozen=True)
class Ending:
    jump: int
    focus: int  # 0 none, 1 to 99 component index + 1, 101 to 106 filter button
    category: int
    pointer: tuple[int, int]  # in the setup screen's pixels


def read_ending(lines: list[str]) -> Ending:
    """The one ending among a visit's log lines."""
    found = [match for line in lines if (match := _LINE.fullmatch(line))]
    assert len(found) == 1, f"There is not one ending in {lines}"
    jump, focus, category, x, y = map(int, found[0].groups())
    return Ending(jump, focus, category, (x, y))
