"""A graphics adapter that leaves while the view is up: the view moves, or ends."""

import pytest

from computer import PATIENCE, Computer
from ending import LAST_FILTER_BUTTON
from late import SIZE, LateOutput, since, without_adapter
from pictures import setup_picture

GONE = "[OBV] The output in use is gone."
ARRIVAL = "New monitor interface detected!"
STAYS = "Current Gop still work"
NO_OUTPUT = [
    GONE,
    "[GetAllGopPrrotocol] Error occurs: Not Found",
    "[ClearAllScreen] Error occurs: Not Found",
    "[GetAllGopPrrotocol] Error occurs: Not Found",
    "Get Gop Protocol failed!",
    # No output has a mode to set or a screen to give back.
    "[GetAllGopPrrotocol] Error occurs: Not Found",
    "[SetAllGopMode] Error occurs: Not Found",
    "[GetAllGopPrrotocol] Error occurs: Not Found",
    "[RecoverScreenContent] Error occurs: Not Found",
]


@pytest.fixture
def late(computer: Computer) -> LateOutput:
    return LateOutput(computer, computer.late_screen)


def test_the_view_moves_to_the_other_adapter(passing_double_computer: Computer) -> None:
    assert passing_double_computer.late_screen
    passing_double_computer.probe("restore-all", 0)
    with passing_double_computer.visit(SIZE) as visit:
        visit.open()
        visit.press("pgup")
        expected = visit.picture()
        visit.press("pgdn")
        with without_adapter(visit):
            # The application notices when it has something to draw.
            visit.machine.input.tap("pgup")
            visit.machine.wait_for(
                lambda: visit.picture(1) == expected, "the view on the other output", PATIENCE
            )
            assert since(visit, "x") == [GONE]
            assert visit.leave().focus == LAST_FILTER_BUTTON
            visit.assert_setup_is_back(1)
    assert visit.status == 0


def test_the_view_stays_where_it_has_moved_to(computer: Computer, late: LateOutput) -> None:
    with computer.visit(SIZE) as visit, late.arrival(visit, "v"):
        visit.open()
        visit.press("pgup")
        expected = visit.picture()
        visit.press("pgdn")
        with without_adapter(visit):
            visit.machine.input.tap("pgup")
            late.wait_for(expected, "the view on the output that is left")
            assert since(visit, "x") == [GONE]
        # The adapter is back, and the setup screen's output is the one that the view has gone to.
        visit.machine.wait_for(
            lambda: since(visit, "c") == [ARRIVAL, STAYS] and late.picture() == expected,
            "the view to be drawn again",
            PATIENCE,
        )
        assert visit.leave().focus == LAST_FILTER_BUTTON
        late.wait_for(setup_picture(SIZE), "the setup screen on the output that is left")
    assert visit.status == 0


def test_the_run_ends_without_any_output(computer: Computer) -> None:
    assert computer.late_screen
    with computer.visit(SIZE) as visit:
        visit.open()
        with without_adapter(visit):
            visit.machine.input.tap("pgup")
            ending = visit.wait_for_end()
            assert since(visit, "x")[: len(NO_OUTPUT)] == NO_OUTPUT
            assert (ending.jump, ending.focus) == (0, LAST_FILTER_BUTTON)
    assert visit.status == 0
