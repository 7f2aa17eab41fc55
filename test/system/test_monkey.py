"""Random keys, pointers, sticks and outputs in real firmware, always the same ones.

BOARDSCOPE_SEED and BOARDSCOPE_EVENTS walk elsewhere, or farther.
"""

import os
import random
import re
import time
from collections.abc import Callable
from pathlib import Path

from computer import KEY_GAP_MS, PATIENCE, Computer, Visit
from late import SIZE, tell
from sticks import Stick, Volume, plug_in, pull_out

SEED = int(os.environ.get("BOARDSCOPE_SEED", "1"))
EVENTS = int(os.environ.get("BOARDSCOPE_EVENTS", "150"))
TABLET_RANGE = 0x7FFF
KEYS = ["tab", "pgup", "pgdn", "insert", "up", "down", "left", "right", "f12", "f1"]
# With the view's mode or without, beside the others or with all of theirs.
ARRIVALS = ["v", "s", "V", "S"]
DEPARTURE = "r"
REACTION = 0.5  # seconds, for what may end the view
CHOSEN = re.compile(r"\d Button FS.* was clicked")
OUTCOME = "F12ScreenShots "
ENDED = "[Host] Application ended"
AN_ERROR = re.compile(r"error|fail|is gone|now app exit|no gop", re.IGNORECASE)


class Walk:
    """A user who does anything, and what the log may say for it."""

    def __init__(self, computer: Computer, sticks: list[Stick]) -> None:
        self._computer = computer
        self._random = random.Random(SEED)
        self._sticks = sticks
        self._plugged: list[Stick] = []
        self._arrived = ""
        self._excuses: set[str] = set()
        self._steps: list[Callable[[Visit], str]] = [
            *[self._key] * 12,
            *[self._point] * 6,
            *[self._move] * 4,
            *[self._stick] * 2,
            *[self._output] * 2,
            self._enter,
            self._click,
        ]

    def run(self, events: int) -> int:
        """Visit the view until there were so many events; returns the number of visits."""
        visits = 0
        while events > 0:
            with self._computer.visit(SIZE, fresh=visits == 0) as visit:
                visits += 1
                self._excuses.clear()
                visit.open()
                while events > 0 and not self._ends(visit):
                    events -= 1
                    did = self._random.choice(self._steps)(visit)
                    print(f"{events}: {did}")
                self._leave(visit)
            assert visit.status == 0
            self._check(visit)
        return visits

    def unplug(self) -> None:
        for stick in self._plugged:
            pull_out(self._computer.machine, stick)
        self._plugged.clear()

    def _ends(self, visit: Visit) -> bool:
        return any(
            ENDED in line or "Ready to jump" in line or "Now app exit" in line
            for line in visit.lines
        )

    def _leave(self, visit: Visit) -> None:
        """Leave by Esc, unless the walk has: the first may close a box."""
        if self._arrived:
            self._output(visit)
        if not self._ends(visit):
            # Drawing shows the view where it has gone to.
            visit.press("tab")
        while not self._ends(visit):
            visit.machine.input.tap("esc", KEY_GAP_MS)
            time.sleep(REACTION)
        visit.wait_for_end()
        visit.assert_setup_is_back()

    def _check(self, visit: Visit) -> None:
        for line in visit.lines:
            if AN_ERROR.search(line):
                assert any(re.fullmatch(excuse, line) for excuse in self._excuses), line

    def _key(self, visit: Visit) -> str:
        key = self._random.choice(KEYS)
        visit.machine.input.tap(key, KEY_GAP_MS)
        return key

    def _enter(self, visit: Visit) -> str:
        visit.machine.input.tap("ret", KEY_GAP_MS)
        time.sleep(REACTION)
        return "ret"

    def _point(self, visit: Visit) -> str:
        x, y = (self._random.randrange(TABLET_RANGE) for _ in range(2))
        visit.machine.input.point(x, y)
        return f"point {x} {y}"

    def _move(self, visit: Visit) -> str:
        dx, dy = (self._random.randrange(-100, 101) for _ in range(2))
        visit.machine.input.move(dx, dy)
        return f"move {dx} {dy}"

    def _click(self, visit: Visit) -> str:
        for down in (True, False):
            visit.machine.input.button(down)
            time.sleep(REACTION / 2)
        time.sleep(REACTION)
        return "click"

    def _stick(self, visit: Visit) -> str:
        # A stick that is pulled out in the midst of a write costs half a minute of time-outs.
        visit.machine.wait_for(lambda: not _is_saving(visit.lines), "the picture", PATIENCE)
        stick = self._random.choice(self._sticks)
        if stick in self._plugged:
            pull_out(visit.machine, stick)
            self._plugged.remove(stick)
            self._excuses |= {
                r"UserSelectedPartitionMessageBoxHandler \d+ .*",
                r"F12ScreenShots Failed .*",
            }
            return f"pull {stick.name}"
        plug_in(visit.machine, stick)
        self._plugged.append(stick)
        return f"plug {stick.name}"

    def _output(self, visit: Visit) -> str:
        if self._arrived:
            command, self._arrived = DEPARTURE, ""
            self._excuses |= {
                r"\[OBV\] The output in use is gone\.",
                r"\[F12ScreenShots\] Error occurs: Not Ready",
            }
        else:
            self._arrived = command = self._random.choice(ARRIVALS)
        if command == "S":
            self._excuses |= {r"No Gop support current resolution!", r"Now app exit\.\.\."}
        tell(visit, command)
        time.sleep(REACTION)
        return f"output {command}"


def _is_saving(lines: list[str]) -> bool:
    """Whether a volume was chosen and its picture's outcome is still to come."""
    chosen = [number for number, line in enumerate(lines) if CHOSEN.fullmatch(line)]
    return bool(chosen) and not any(OUTCOME in line for line in lines[chosen[-1] :])


def test_a_monkey_finds_its_way_back_to_the_setup_screen(
    computer: Computer, tmp_path: Path
) -> None:
    assert computer.late_screen
    sticks = [
        Stick(tmp_path / f"{name}.img", [Volume(name.upper(), 8)]) for name in ("red", "blue")
    ]
    walk = Walk(computer, [stick.make() for stick in sticks])
    try:
        visits = walk.run(EVENTS)
    finally:
        walk.unplug()
    assert visits >= 1
