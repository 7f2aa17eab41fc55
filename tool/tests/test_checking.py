"""What the tool warns of in descriptions that are boards, but hardly what their author meant."""

from collections.abc import Callable
from pathlib import Path

import pytest
import yaml
from PIL import Image

from boardtool.checking import check
from boardtool.problems import Severity
from boardtool.reading import read_board
from conftest import MakeBoard

WARNINGS = yaml.safe_load(Path(__file__).with_name("warnings.yaml").read_text("utf-8"))

# A part in the sound board's picture: its outline is a square around its dot.
PART = """\
  - name: {name}
    category: fan
    outline: [[{left}, {top}], [{right}, {top}], [{right}, {bottom}], [{left}, {bottom}]]
    leader: [[{x}, {y}], [{x}, 45]]
    callout: left
    marker: [{x}, {y}]
    token: 1
"""


def part(name: str, x: int, y: int, half: int = 3) -> str:
    sides = {"left": x - half, "right": x + half, "top": y - half, "bottom": y + half}
    return PART.format(name=name, x=x, y=y, **sides)


def warnings(path: Path) -> list[str]:
    problems = check(path)
    assert all(problem.severity is Severity.WARNING for problem in problems), problems
    return [str(problem).removeprefix(f"{path.parent}/") for problem in problems]


WarningsOf = Callable[..., list[str]]


@pytest.fixture
def warnings_of(make_board: MakeBoard) -> WarningsOf:
    """The warnings of the sound board with these components instead of its own."""

    def read(*parts: str) -> list[str]:
        path = make_board()
        text = path.read_text()
        path.write_text(text[: text.index("  - name")] + "".join(parts))
        return warnings(path)

    return read


@pytest.mark.parametrize("case", WARNINGS, ids=lambda case: case["to"])
def test_one_doubtful_field(make_board: MakeBoard, case: dict[str, str]) -> None:
    found = warnings(make_board((case["change"], case["to"])))
    assert len(found) == 1, found
    assert case["says"] in found[0]


def test_nothing_to_warn_of(make_board: MakeBoard) -> None:
    assert warnings(make_board()) == []


def test_comment_with_a_blank_is_a_comment(make_board: MakeBoard) -> None:
    changes = (("name: FAN 1", "name: FAN 1 # the big one"), ("0x1001", "0x1001 #page 4"))
    assert warnings(make_board(*changes)) == []


def test_problem_tells_an_editor_where_it_belongs(make_board: MakeBoard) -> None:
    (problem,) = check(make_board(("marker: [11, 11]", "marker: [64, 11]")))
    assert (problem.line, problem.field, problem.component) == (13, "components[0].marker", 0)
    assert (problem.name, problem.severity) == ("FAN 1", Severity.ERROR)
    (problem,) = check(make_board(("board: Bench", "board: Prüfbank")))
    assert (problem.line, problem.field, problem.component) == (1, "board", None)


def test_text_that_is_not_saved_yet(make_board: MakeBoard) -> None:
    path = make_board()
    text = path.read_text().replace("board: Bench", "board: Prüfbank")
    assert [problem.field for problem in check(path, text)] == ["board"]
    assert check(path) == []
    assert read_board(path, text).title == "Prüfbank"


def test_names_that_differ_in_case(warnings_of: WarningsOf) -> None:
    assert warnings_of(part("Fan", 10, 10), part("FAN", 30, 10), part("fan", 50, 10)) == [
        f"board.yaml:{line}: warning: components[{i}] ({name}).name: differs from 'Fan' only in "
        "capital and small letters"
        for i, name, line in ((1, "FAN", 15), (2, "fan", 22))
    ]


@pytest.mark.parametrize("label", ["Name", "Model", "brand", "Brand:", "speed "])
def test_label_that_the_summary_does_not_find(make_board: MakeBoard, label: str) -> None:
    old = "{label: Speed"
    changes = (("category: fan", "category: cpu"), (old, f'{{label: "{label}"'))
    assert warnings(make_board(*changes)) == [
        f"board.yaml:16: warning: components[0] (FAN 1).info[0].label: {label!r} is not in the "
        "view's summary, which takes the lines labelled 'Brand' and 'Speed'"
    ]


def test_label_that_the_summary_finds(make_board: MakeBoard) -> None:
    cpu = ("category: fan", "category: cpu")
    name = ("{label: Speed", "{label: Name")
    assert warnings(make_board(cpu)) == []
    assert (
        warnings(make_board(cpu, ("    info:", "    hardware: [{processor: boot}]\n    info:")))
        == []
    )
    both = ("      - {", "      - {label: Name, value: x}\n      - {")
    assert warnings(make_board(cpu, both)) == []
    hardware = ("    token: 0x1001\n", "    hardware: [{processor: boot}]\n")
    assert warnings(make_board(cpu, name, hardware)) == []
    text = ("styles:", 'system_info: ["", "", "", Example processor]\nstyles:')
    assert warnings(make_board(cpu, name, text)) == []


def test_exchanged_coordinates(warnings_of: WarningsOf) -> None:
    sound = part("FAN", 40, 10)
    swapped = sound.replace(
        "[[37, 7], [43, 7], [43, 13], [37, 13]]", "[[7, 37], [7, 43], [13, 43], [13, 37]]"
    )
    assert warnings_of(swapped) == [
        "board.yaml:10: warning: components[0] (FAN).outline: lies elsewhere than dot and leader "
        "line; are x and y exchanged?"
    ]
    dot = "the dot lies 38 pixels beside the outline; did you mean [40, 10]?"
    assert warnings_of(sound.replace("marker: [40, 10]", "marker: [10, 40]")) == [
        f"board.yaml:13: warning: components[0] (FAN).marker: {dot}"
    ]
    line = "the leader line begins 38 pixels beside the outline; did you mean [40, 10]?"
    assert warnings_of(sound.replace("leader: [[40, 10]", "leader: [[10, 40]")) == [
        f"board.yaml:11: warning: components[0] (FAN).leader[0]: {line}"
    ]


BACKGROUNDS = [("RGB", (44, 44, 44)), ("RGBA", (90, 9, 9, 0)), ("L", 255)]


@pytest.mark.parametrize(("mode", "background"), BACKGROUNDS)
def test_outline_around_nothing(
    make_board: MakeBoard, mode: str, background: tuple[int, ...] | int
) -> None:
    def warnings_on(*drawn: tuple[int, int, int, int], dot: str = "10, 32") -> list[str]:
        path = make_board(
            ("[[10, 10], [20, 10], [20, 20], [10, 20]]", "[[8, 30], [13, 30], [13, 35], [8, 35]]"),
            ("[[15, 15],", f"[[{dot}],"),
            ("[11, 11]", f"[{dot}]"),
        )
        picture = Image.new(mode, (64, 48), background)
        for box in drawn:
            picture.paste(Image.new("L", (9, 9), 99), box)
        picture.save(path.parent / "board.png")
        return warnings(path)

    nothing = (
        "board.yaml:10: warning: components[0] (FAN 1).outline: the picture shows nothing but its "
        "background there"
    )
    mirrored = (28, 6, 37, 15)
    assert warnings_on(mirrored) == [f"{nothing}; are x and y exchanged?"]
    assert warnings_on((50, 30, 59, 39)) == [nothing]
    assert warnings_on((6, 28, 15, 37)) == []
    # Something on its rim is something.
    assert warnings_on((13, 35, 22, 44)) == []
    assert warnings_on() == []
    # What is said already is not said twice.
    (elsewhere,) = warnings_on(mirrored, dot="32, 10")
    assert "outline: lies elsewhere than dot and leader line" in elsewhere


def test_component_without_a_dot_may_have_its_marker_anywhere(warnings_of: WarningsOf) -> None:
    quiet = part("FAN", 40, 10).replace("marker: [40, 10]", "marker: [5, 40]")
    assert warnings_of(quiet.replace("category: fan", "category: none")) == []


def whole_picture(selectable: str = "true") -> str:
    corners = "[[0, 0], [63, 0], [63, 47], [0, 47]]"
    outline = part("ALL", 20, 20).replace("[[17, 17], [23, 17], [23, 23], [17, 23]]", corners)
    return f"{outline}    selectable: {selectable}\n"


def test_outline_that_swallows_the_others(warnings_of: WarningsOf) -> None:
    parts = [part(f"FAN {i}", 6 + 8 * i, 30) for i in range(6)]
    assert warnings_of(whole_picture(), *parts) == [
        "board.yaml:10: warning: components[0] (ALL).outline: covers FAN 0, FAN 1, FAN 2 and 3 "
        "more whole and takes the pointer from there; put it behind, or make it smaller"
    ]
    assert warnings_of(*parts, whole_picture()) == []
    assert warnings_of(whole_picture("false"), *parts) == []


def test_outline_under_several_others(warnings_of: WarningsOf) -> None:
    top, bottom = part("LEFT", 10, 10, 5), part("RIGHT", 20, 10, 5)
    assert warnings_of(top, bottom, part("MIDDLE", 15, 10, 4)) == [
        "board.yaml:24: warning: components[2] (MIDDLE).outline: lies whole under the outlines of "
        "LEFT and RIGHT, which come before it and take the pointer; give it a place of its own"
    ]
    assert warnings_of(top, bottom, part("MIDDLE", 15, 10, 6)) == []


def test_dot_on_another_component(warnings_of: WarningsOf) -> None:
    one, other = part("ONE", 10, 10, 5), part("TWO", 18, 10, 5)
    assert warnings_of(one, other) == []
    other = other.replace("marker: [18, 10]", "marker: [14, 10]")
    assert warnings_of(one, other) == [
        "board.yaml:20: warning: components[1] (TWO).marker: the dot lies on ONE, which comes "
        "before it and takes the pointer there"
    ]
    assert warnings_of(other, one) == []
    assert warnings_of(one, other.replace("category: fan", "category: none")) == []
    assert warnings_of(f"{one}    selectable: false\n", other) == []


def test_leader_lines_that_cross(warnings_of: WarningsOf) -> None:
    one = part("ONE", 10, 10).replace("[10, 45]", "[40, 30]")
    other = part("TWO", 40, 10).replace("[40, 45]", "[10, 30]")
    assert warnings_of(one, other) == [
        "board.yaml:18: warning: components[1] (TWO).leader: crosses the leader line of ONE"
    ]
    assert warnings_of(one, part("TWO", 50, 10)) == []
    point = part("TWO", 25, 20).replace(", [25, 45]]", "]")
    assert warnings_of(one, point) == []
