"""A monitor that arrives while the view is up: the view stays, moves there, or ends."""

from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass

import numpy as np
import pytest

from computer import PATIENCE, Computer, Visit
from ending import LAST_FILTER_BUTTON, NO_FOCUS
from pictures import Picture, setup_picture

SIZE = (1024, 768)
SMALL = (640, 480)
BLACK = b"\0\0\0"
# The scratch register of the host log's serial port, where the driver looks for commands.
MAILBOX = 0x3EF
ARRIVAL = "New monitor interface detected!"
STAYS = "Current Gop still work"
ENDS = ["No Gop support current resolution!", "Now app exit..."]


@dataclass
class LateOutput:
    """The output that arrives when it is told to; its screen is a piece of the memory."""

    computer: Computer
    screen: int

    @contextmanager
    def arrival(self, visit: Visit, command: str) -> Iterator[None]:
        """Let the output arrive; in the end it goes, and the others have their modes again."""
        try:
            self._tell(visit, command)
            yield
        finally:
            self._tell(visit, "r")

    def _tell(self, visit: Visit, command: str) -> None:
        done = f"[Late] {command} Success"
        order = f"o /b {MAILBOX:#x} {ord(command):#x}"
        first = len(visit.machine.log_lines())
        visit.machine.qmp.command("human-monitor-command", command_line=order)
        visit.machine.wait_for_log(done, PATIENCE, first)

    def picture(self, size: tuple[int, int] = SIZE) -> Picture:
        """What the output shows now."""
        machine = self.computer.machine
        width, height = size
        dump = machine.options.folder / "late-screen.bin"
        machine.qmp.command(
            "pmemsave", val=self.screen, size=width * height * 4, filename=str(dump.resolve())
        )
        pixels = np.fromfile(dump, np.uint8).reshape(height, width, 4)
        body = np.ascontiguousarray(pixels[:, :, 2::-1]).tobytes()
        return Picture(f"P6\n{width} {height}\n255\n".encode("ascii") + body)

    def wait_for(self, expected: Picture, what: str) -> None:
        self.computer.machine.wait_for(lambda: self.picture() == expected, what, PATIENCE)


@pytest.fixture
def late(computer: Computer) -> LateOutput:
    return LateOutput(computer, computer.late_screen)


def black(size: tuple[int, int] = SIZE) -> Picture:
    width, height = size
    return Picture(f"P6\n{width} {height}\n255\n".encode("ascii") + BLACK * width * height)


def since_arrival(visit: Visit) -> list[str]:
    """The log after the driver's own line: it runs until it is done, then others are told."""
    lines = visit.lines
    arrival = next(number for number, line in enumerate(lines) if line.startswith("[Late]"))
    return lines[arrival + 1 :]


@pytest.mark.parametrize("command", ["v", "s"], ids=["with-the-views-size", "without"])
def test_the_view_stays_where_it_can_be_shown(
    computer: Computer, late: LateOutput, command: str
) -> None:
    with computer.visit(SIZE) as visit:
        shown = visit.open()
        with late.arrival(visit, command):
            visit.machine.wait_for(
                lambda: STAYS in visit.lines and visit.picture() == shown,
                "the view to be drawn again",
                PATIENCE,
            )
            assert since_arrival(visit) == [ARRIVAL, STAYS]
            # It was not black before: each output is cleared.
            assert late.picture(SMALL) == black(SMALL)
            visit.press("pgup")
            assert visit.picture() != shown
            assert late.picture(SMALL) == black(SMALL)
            assert visit.leave().focus == LAST_FILTER_BUTTON
            visit.assert_setup_is_back()
    assert visit.status == 0


def test_the_view_moves_to_the_new_output(computer: Computer, late: LateOutput) -> None:
    with computer.visit(SIZE) as visit:
        shown = visit.open()
        with late.arrival(visit, "V"):
            late.wait_for(shown, "the view on the new output")
            assert since_arrival(visit) == [ARRIVAL]
            assert Picture(visit.machine.picture()) == black()
            visit.machine.input.tap("pgup")
            visit.machine.wait_for(lambda: late.picture() != shown, "the focus to move", PATIENCE)
            assert Picture(visit.machine.picture()) == black()
            assert visit.leave().focus == LAST_FILTER_BUTTON
            late.wait_for(setup_picture(SIZE), "the setup screen on the new output")
    assert visit.status == 0


def test_the_view_ends_when_no_output_can_show_it(computer: Computer, late: LateOutput) -> None:
    with computer.visit(SIZE) as visit:
        visit.open()
        with late.arrival(visit, "S"):
            ending = visit.wait_for_end()
            assert since_arrival(visit)[:3] == [ARRIVAL, *ENDS]
            assert (ending.jump, ending.focus) == (0, NO_FOCUS)
    assert visit.status == 0
