"""A monitor that arrives while the view is up: the view stays, moves, or ends."""

import pytest

from computer import PATIENCE, Computer
from ending import LAST_FILTER_BUTTON, NO_FOCUS
from late import SIZE, LateOutput, black, since
from pictures import Picture, setup_picture

SMALL = (640, 480)
ARRIVAL = "New monitor interface detected!"
STAYS = "Current Gop still work"
ENDS = ["No Gop support current resolution!", "Now app exit..."]


@pytest.fixture
def late(computer: Computer) -> LateOutput:
    return LateOutput(computer, computer.late_screen)


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
            assert since(visit, command) == [ARRIVAL, STAYS]
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
            assert since(visit, "V") == [ARRIVAL]
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
            assert since(visit, "S")[:3] == [ARRIVAL, *ENDS]
            assert (ending.jump, ending.focus) == (0, NO_FOCUS)
    assert visit.status == 0
