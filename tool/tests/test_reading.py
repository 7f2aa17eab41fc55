"""What the tool says about descriptions, sound and spoilt."""

from pathlib import Path

import pytest
import yaml
from PIL import Image

from boardtool import limits
from boardtool.problems import BoardError
from boardtool.reading import read_board
from conftest import MakeBoard


def complaints(path: Path) -> list[str]:
    """The errors without the folder."""
    with pytest.raises(BoardError) as caught:
        read_board(path)
    return [str(problem).removeprefix(f"{path.parent}/") for problem in caught.value.problems]


def complaint(path: Path) -> str:
    found = complaints(path)
    assert len(found) == 1, found
    return found[0]


def test_sound_board(make_board: MakeBoard) -> None:
    board = read_board(make_board())
    assert board.title == "Bench"
    assert board.picture_size == (64, 48)
    assert board.logo == limits.LOGOS["A"]
    assert board.marker == limits.MARKERS["green"]
    fan = board.components[0]
    assert fan.name == "FAN 1"
    assert fan.category == 8
    assert fan.callout == 5
    assert fan.align == 1
    assert fan.token == 0x1001
    assert fan.selectable
    assert not fan.special_group
    assert fan.status == 0
    assert fan.info[0].value == "1200 RPM"


def test_every_choice_has_the_number_of_the_contract(make_board: MakeBoard) -> None:
    for name, number in limits.CATEGORIES.items():
        board = read_board(make_board(("category: fan", f"category: {name}")))
        assert board.components[0].category == number
    assert list(limits.CATEGORIES.values()) == list(range(10))
    assert list(limits.CALLOUT_SIDES.values()) == list(range(9))


COMPLAINTS = yaml.safe_load(Path(__file__).with_name("complaints.yaml").read_text("utf-8"))


@pytest.mark.parametrize("case", COMPLAINTS, ids=lambda case: case["to"])
def test_one_spoilt_field(make_board: MakeBoard, case: dict[str, str]) -> None:
    message = complaint(make_board((case["change"], case["to"])))
    assert message.startswith("board.yaml:")
    assert case["says"] in message


def test_message_names_the_line(make_board: MakeBoard) -> None:
    path = make_board(("token: 0x1001", "token: abc"))
    line = path.read_text().splitlines().index("    token: abc") + 1
    assert complaint(path).startswith(f"board.yaml:{line}: components[0] (FAN 1).token: ")


def test_every_problem_is_reported_in_the_order_of_lines(make_board: MakeBoard) -> None:
    path = make_board(
        ("category: fan", "category: x"), ("callout: left", "callout: x"), ("board:", "bord:")
    )
    fields = [message.split(": ")[1] for message in complaints(path)]
    assert fields == ["bord", "components[0] (FAN 1).category", "components[0] (FAN 1).callout"]


@pytest.mark.parametrize("field", ["name", "category", "outline", "leader", "callout", "marker"])
def test_missing_field_of_a_component(make_board: MakeBoard, field: str) -> None:
    path = make_board()
    lines = path.read_text().splitlines()
    start = next(i for i, line in enumerate(lines) if line.lstrip(" -").startswith(f"{field}:"))
    rest = "  - selectable: true" if lines[start].startswith("  - ") else None
    lines[start : start + 1] = [rest] if rest else []
    path.write_text("\n".join(lines))
    place = "components[0]" if field == "name" else "components[0] (FAN 1)"
    assert f"{place}: field '{field}' is missing" in complaint(path)


@pytest.mark.parametrize("field", ["picture", "styles", "components"])
def test_missing_field_of_the_board(make_board: MakeBoard, field: str) -> None:
    path = make_board((f"{field}:", "other:"))
    assert any(f"field '{field}' is missing" in message for message in complaints(path))


@pytest.mark.parametrize("field", ["picture", "styles", "components"])
def test_misspelt_field_is_one_problem(make_board: MakeBoard, field: str) -> None:
    path = make_board((f"{field}:", f"x{field}:"))
    assert complaint(path).endswith(f"x{field}: unknown field; did you mean '{field}'?")


def test_counts_at_and_beyond_the_limits(make_board: MakeBoard) -> None:
    points = [[x, x % 7] for x in range(21)]
    old = "[[10, 10], [20, 10], [20, 20], [10, 20]]"
    read_board(make_board((old, str(points[:20]))))
    message = complaint(make_board((old, str(points))))
    assert "components[0] (FAN 1).outline: 21 vertices, at most 20 are allowed" in message

    old = "[[15, 15], [30, 30]]"
    read_board(make_board((old, str(points[:20]))))
    message = complaint(make_board((old, str(points))))
    assert "components[0] (FAN 1).leader: 21 leader points, at most 20 are allowed" in message

    line = "      - {label: Speed, value: 1200 RPM}\n"
    read_board(make_board((line, line * 20)))
    message = complaint(make_board((line, line * 21)))
    assert "components[0] (FAN 1).info: 21 lines, at most 20 are allowed" in message


@pytest.mark.parametrize(
    ("field", "old", "limit"),
    [("name", "FAN 1", 19), ("info[0].label", "Speed", 31), ("info[0].value", "1200 RPM", 255)],
)
def test_text_limits(make_board: MakeBoard, field: str, old: str, limit: int) -> None:
    read_board(make_board((old, "x" * limit)))
    message = complaint(make_board((old, "x" * (limit + 1))))
    assert f").{field}: {limit + 1} characters, at most {limit}" in message


def component_block(path: Path) -> str:
    text = path.read_text()
    return text[text.index("  - name") :]


def test_99_components_and_not_one_more(make_board: MakeBoard) -> None:
    path = make_board()
    block = component_block(path)
    head = path.read_text().removesuffix(block)
    blocks = [block.replace("FAN 1", f"FAN {i}") for i in range(100)]
    path.write_text(head + "".join(blocks[:99]))
    assert len(read_board(path).components) == 99
    path.write_text(head + "".join(blocks))
    assert "components: 100 components, at most 99 are allowed" in complaint(path)


def test_name_that_comes_twice(make_board: MakeBoard) -> None:
    path = make_board()
    block = component_block(path)
    first = path.read_text()[: path.read_text().index(block)].count("\n") + 1
    path.write_text(path.read_text() + block)
    assert f"the name 'FAN 1' is taken by the component in line {first}" in complaint(path)


def test_system_information(make_board: MakeBoard) -> None:
    text = "board: Bench\nsystem_info: "
    board = read_board(make_board(("board: Bench", text + '["a", "b", "c"]')))
    assert board.system_info == ("a", "b", "c")
    message = complaint(make_board(("board: Bench", text + str(["x"] * 8))))
    assert "system_info: 8 texts, at most 7 are allowed" in message
    message = complaint(make_board(("board: Bench", text + '["a", "b", "50%"]')))
    assert "system_info[2]: '%' is not allowed in the third text" in message
    message = complaint(make_board(("board: Bench", text + str(["x" * 128]))))
    assert "system_info[0]: 128 characters, at most 127 are allowed" in message


def test_blanks_in_colours_are_dropped(make_board: MakeBoard) -> None:
    board = read_board(make_board(('text: "1,2,3"', 'text: " 010, 2 ,3 "')))
    assert board.styles[0].default.text == "10,2,3"


def test_doubled_hash_is_allowed_in_panel_texts(make_board: MakeBoard) -> None:
    board = read_board(make_board(("1200 RPM", '"Port ##1"')))
    assert board.components[0].info[0].value == "Port ##1"


@pytest.mark.parametrize(
    ("content", "expected"),
    [
        (b"", "is empty"),
        (b"a: [", "a value is missing behind 'a: ['"),
        (b"\xff\xfe\xfa", "is not UTF-8 text"),
        (b"- a", "expected fields, found a list"),
        (b"just text", "expected fields, found text: 'just text'"),
        (b"[" * 5000, "is nested too deeply"),
        (b"a: b\x07", "the character '\\x07' is not allowed"),
    ],
)
def test_files_that_are_no_description(
    make_board: MakeBoard, content: bytes, expected: str
) -> None:
    path = make_board()
    path.write_bytes(content)
    assert expected in complaints(path)[0]


def test_missing_file(tmp_path: Path) -> None:
    assert "cannot be read: No such file" in complaint(tmp_path / "board.yaml")


def test_pictures_that_cannot_be_used(make_board: MakeBoard) -> None:
    path = make_board()
    picture = path.parent / "board.png"
    Image.new("L", (4096, 8)).save(picture)
    assert "has 4096 x 8 pixels, at most 4095" in complaint(path)
    Image.new("RGB", (64, 48)).save(picture, "JPEG")
    assert "is not a PNG picture" in complaint(path)
    Image.new("L", (4095, 48)).save(picture)
    assert read_board(path).picture_size == (4095, 48)


def test_no_components_is_a_board(make_board: MakeBoard) -> None:
    path = make_board()
    path.write_text(path.read_text().removesuffix(component_block(path)).rstrip() + " []\n")
    assert read_board(path).components == ()


def test_styles_without_any_style(make_board: MakeBoard) -> None:
    path = make_board()
    text = path.read_text()
    start, end = text.index("styles:"), text.index("components:")
    path.write_text(text[:start] + "styles: {}\n" + text[end:])
    assert "styles: is empty; describe at least one style" in complaint(path)


def many_components(path: Path, count: int) -> None:
    """Makes the sound board's component that many, with different names."""
    block = component_block(path)
    head = path.read_text().removesuffix(block)
    path.write_text(head + "".join(block.replace("FAN 1", f"FAN {i}") for i in range(count)))


def test_missing_styles_are_one_problem(make_board: MakeBoard) -> None:
    path = make_board()
    many_components(path, 25)
    text = path.read_text()
    start, end = text.index("styles:"), text.index("components:")
    path.write_text(text[:start] + text[end:].replace("    category", "    style: a\n    category"))
    assert complaint(path) == "board.yaml:1: field 'styles' is missing"


def test_picture_of_another_size_is_one_problem(make_board: MakeBoard) -> None:
    path = make_board()
    many_components(path, 25)
    Image.new("RGB", (28, 18)).save(path.parent / "board.png")
    assert complaint(path) == (
        "board.yaml:2: picture: has 28 x 18 pixels, and 75 points of 25 components lie outside, "
        "as far as [30, 30]; measure them on this picture, or take the one that they were measured "
        "on"
    )


def test_few_points_outside_the_picture_are_told_one_by_one(make_board: MakeBoard) -> None:
    for change in (("[30, 30]", "[64, 30]"), ("marker: [11, 11]", "marker: [64, 11]")):
        path = make_board(change)
        many_components(path, 3)
        assert len(complaints(path)) == 3


def test_picture_whose_name_differs_in_case(make_board: MakeBoard) -> None:
    path = make_board()
    (path.parent / "board.png").rename(path.parent / "Board.PNG")
    message = complaint(path)
    assert message.startswith("board.yaml:2: picture: there is no file")
    assert "'Board.PNG' is another name, as capital and small letters count" in message


def test_picture_whose_name_is_nearly_right(make_board: MakeBoard) -> None:
    assert "did you mean 'board.png'?" in complaint(make_board(("board.png", "bord.png")))


def test_picture_that_is_cut_off(make_board: MakeBoard) -> None:
    path = make_board()
    picture = path.parent / "board.png"
    picture.write_bytes(picture.read_bytes()[:-20])
    message = complaint(path)
    assert message.startswith("board.yaml:2: picture: ")
    assert "is damaged or cut off" in message
