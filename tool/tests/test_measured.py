"""What the tool warns of after laying a board out in the application itself."""

import re
from collections.abc import Callable, Iterator
from pathlib import Path

import pytest

from boardtool.checking import check
from boardtool.cli import main
from boardtool.live import LiveView
from boardtool.measured import SIZES, build_plain
from boardtool.reading import read_board
from conftest import MakeBoard
from support.failure import Failure

CLONE = Path(__file__).resolve().parents[2]
DEFAULT_BOARD = CLONE / "assets" / "board"

# On a screen of 1024 x 768, a pixel of the sound board's picture is 12 wide and high.
PART = """\
  - name: {name}
    category: fan
    outline: [[10, 10], [20, 10], [20, 20], [10, 20]]
    leader: [[15, 15], {end}]
    callout: {side}
    marker: [15, 15]
    selectable: {selectable}
    token: 1
"""


def part(name: str, end: str, side: str = "left", start: int = 15, selectable: str = "true") -> str:
    return PART.format(name=name, start=start, end=end, side=side, selectable=selectable)


RUNS = "has more lines than the panel has room for, and they run into"

Measured = Callable[..., list[str]]


@pytest.fixture(scope="module")
def view() -> Iterator[LiveView]:
    with LiveView() as opened:
        yield opened


@pytest.fixture
def measured(make_board: MakeBoard, view: LiveView) -> Measured:
    """The warnings that measuring brings, of the sound board with other components."""

    def read(*parts: str) -> list[str]:
        path = make_board()
        text = path.read_text()
        path.write_text(text[: text.index("  - name")] + "".join(parts))
        known = check(path)
        found = [problem for problem in check(path, view=view) if problem not in known]
        return [str(problem).removeprefix(f"{path.parent}/") for problem in found]

    return read


def test_callouts_with_room(measured: Measured) -> None:
    assert measured(part("ONE", "[30, 10]"), part("TWO", "[30, 20]")) == []


def test_callouts_on_top_of_each_other(measured: Measured) -> None:
    # The first is before the others in the file, so they are the ones to move.
    parts = [part(name, "[30, 30]") for name in ("ONE", "TWO", "THREE")]
    assert measured(*parts) == [
        "board.yaml:20: warning: components[1] (TWO).callout: overlaps the callout of ONE at "
        "every size",
        "board.yaml:28: warning: components[2] (THREE).callout: overlaps the callouts of ONE and "
        "TWO at every size",
    ]


def test_callouts_that_overlap_on_a_small_screen_only(measured: Measured) -> None:
    # 48 pixels beside each other there, and 90 on the next larger screen.
    assert measured(part("CPU_FAN", "[30, 30]"), part("SYS_FAN", "[34, 30]")) == [
        "board.yaml:20: warning: components[1] (SYS_FAN).callout: overlaps the callout of CPU_FAN "
        "at 1024x768 and 1024x768 with large text"
    ]


@pytest.mark.parametrize(
    ("end", "side", "says"),
    [
        ("[63, 20]", "left", "lies on the panel at every size"),
        ("[63, 44]", "left", "lies on the summary at every size"),
        ("[1, 20]", "right", "is cut at the screen's left edge at every size"),
    ],
)
def test_callouts_beside_the_picture(measured: Measured, end: str, side: str, says: str) -> None:
    assert measured(part("FAN", end, side)) == [
        f"board.yaml:12: warning: components[0] (FAN).callout: {says}"
    ]


def test_callout_on_an_outline(measured: Measured) -> None:
    def elsewhere(name: str, end: str) -> str:
        corners = "[[40, 30], [50, 30], [50, 40], [40, 40]]"
        return re.sub("outline: .*", f"outline: {corners}", part(name, end))

    one, two = part("ONE", "[30, 30]"), elsewhere("TWO", "[12, 15]")
    assert measured(one, two, elsewhere("SIX", "[12, 18]")) == [
        "board.yaml:10: warning: components[0] (ONE).outline: comes first and takes the pointer "
        "from the callouts of TWO and SIX at every size"
    ]
    # A callout before it in the file gets the pointer first, as it lies on top.
    assert measured(two, one) == []
    assert measured(part("ONE", "[30, 30]", selectable="false"), two) == []
    # An outline that covers others has this consequence, too.
    assert measured(one, part("TWO", "[12, 15]")) == []


def test_callout_in_the_margin_is_where_it_belongs(measured: Measured) -> None:
    assert measured(part("FAN", "[30, 47]", "top"), part("CPU", "[30, 0]", "bottom")) == []


def info(lines: int, value: str) -> str:
    """Half of them in the panel's text, half in the list under it."""
    kinds = ("description", "side")
    line = "      - {{kind: {}, label: Line, value: {}}}\n"
    return "    info:\n" + "".join(line.format(kinds[i % 2], value) for i in range(lines))


def test_lines_that_the_panel_has_no_room_for(measured: Measured) -> None:
    long = "value " * 9  # Two lines at 1024 x 768, one at larger sizes.
    assert measured(part("FAN", "[30, 30]") + info(20, 2 * long)) == [
        f"board.yaml:17: warning: components[0] (FAN).info: {RUNS} the summary, the filter buttons "
        "and the key help at every size"
    ]
    assert measured(part("FAN", "[30, 30]") + info(14, long)) == [
        f"board.yaml:17: warning: components[0] (FAN).info: {RUNS} {whom}"
        for whom in (
            "the summary and the filter buttons at 1024x768",
            "the summary, the filter buttons and the key help at 1024x768 with large text",
        )
    ]
    assert measured(part("FAN", "[30, 30]") + info(4, long)) == []
    assert measured(part("FAN", "[30, 30]", selectable="false") + info(20, 2 * long)) == []


def test_command_measures(make_board: MakeBoard, capsys: pytest.CaptureFixture[str]) -> None:
    path = make_board(("leader: [[15, 15], [30, 30]]", "leader: [[15, 15], [63, 20]]"))
    assert main(["check", str(path)]) == 0
    assert "components[0] (FAN 1).callout: lies on the panel" in capsys.readouterr().err
    assert main(["check", "--strict", str(path)]) == 1


def test_nothing_is_measured_of_a_board_with_errors(
    make_board: MakeBoard, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setenv("BOARDSCOPE_VIEW_PROGRAM", "/none")
    assert main(["check", str(make_board(("category: fan", "category: fam")))]) == 1


def test_what_is_known_is_told_when_nothing_can_be_measured(
    make_board: MakeBoard, monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    def missing() -> Path:
        raise Failure("there is no compiler")

    monkeypatch.setattr("boardtool.live.program", missing)
    assert main(["check", str(make_board(("board: Bench", "board: Prüfbank")))]) == 1
    warning, failure = capsys.readouterr().err.splitlines()
    assert "warning: board: the log cannot show" in warning
    assert failure == "there is no compiler"


@pytest.mark.parametrize("size", SIZES)
def test_size_of_callouts_is_documented(view: LiveView, size: str) -> None:
    rows = (CLONE / "docs" / "board.md").read_text(encoding="utf-8").splitlines()
    (row,) = [row for row in rows if row.startswith(f"| {size} |")]
    documented = [int(cell) for cell in row.split("|")[2:-1]]
    board = build_plain(read_board(DEFAULT_BOARD / "board.yaml"))
    measures = view.measure(board, SIZES[size])
    callouts = {one.name: one.callout for one in measures.components}
    across, down = 2880 / measures.picture.width, 1620 / measures.picture.height
    measured = [callouts["CPU"].height * down]
    measured += [callouts[name].width * across for name in ("CPU", "DIMM_A1", "U32G1_1213")]
    assert documented == pytest.approx(measured, abs=1)


def test_default_board_passes_the_strict_check() -> None:
    assert main(["check", "--strict", str(DEFAULT_BOARD)]) == 0
