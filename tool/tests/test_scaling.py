"""A board with a narrower picture: the same view, less room in the firmware."""

import io
from collections.abc import Iterator
from dataclasses import replace
from pathlib import Path

import pytest
from PIL import Image

from boardtool.building import build_board
from boardtool.cli import main
from boardtool.live import Box, LiveView, Measures, ViewOptions
from boardtool.model import Board
from boardtool.picture import PictureError
from boardtool.reading import read_board
from boardtool.scaling import scale_board
from conftest import MakeBoard

CLONE = Path(__file__).resolve().parents[2]
WIDTH = 1920
# Pixels: a half for rounding in the small picture, and for rounding on each of the two screens.
TOLERANCE = 1.5


@pytest.fixture(scope="module")
def board() -> Board:
    return read_board(CLONE / "assets" / "board" / "board.yaml")


@pytest.fixture(scope="module")
def whole(board: Board) -> bytes:
    return build_board(board)


@pytest.fixture(scope="module")
def view() -> Iterator[LiveView]:
    with LiveView() as opened:
        yield opened


def picture_of(content: bytes) -> Image.Image:
    return Image.open(io.BytesIO(content[content.index(b"\x89PNG") :]))


def boxes(measures: Measures) -> list[Box]:
    """Everything that stands where the description says, as boxes."""
    found = []
    for one in measures.components:
        points = [Box(x, y, 0, 0) for x, y in (*one.outline, *one.leader)]
        found += [one.callout, one.marker, *points]
    return found


def zoom(picture_width: int, screen_width: int) -> float:
    """How large the view shows the picture's whole width, in shares of its room: the step that it
    scales with is a whole number of 256ths."""
    room = screen_width * 3 // 4
    step = picture_width * 256 // room
    return picture_width * 256 / step / room


@pytest.mark.parametrize(
    ("size", "width"), [((1024, 768), 1920), ((1920, 1080), 1920), ((2560, 1440), 2160)]
)
def test_the_view_is_the_same_but_for_rounding(
    view: LiveView, board: Board, whole: bytes, size: tuple[int, int], width: int
) -> None:
    options = ViewOptions(resolution=f"{size[0]}x{size[1]}")
    before = view.measure(whole, options)
    after = view.measure(build_board(board, width), options)
    assert after.picture == before.picture
    assert len(boxes(after)) == len(boxes(before)) > len(board.components)
    ratio = zoom(width, size[0]) / zoom(board.picture_size[0], size[0])
    top = before.picture.y
    for old, new in zip(boxes(before), boxes(after), strict=True):
        expected = (old.x * ratio, top + (old.y - top) * ratio, old.width, old.height)
        assert tuple(new) == pytest.approx(expected, abs=TOLERANCE)


@pytest.mark.parametrize("width", [1440, 2160])
def test_widths_that_the_view_shows_whole(width: int) -> None:
    for screen_width in (1024, 1920, 2560, 3840):
        assert zoom(width, screen_width) == 1


def test_all_points_move_and_nothing_else_changes(board: Board) -> None:
    small = scale_board(board, WIDTH)
    assert small.picture_size == (1920, 1080)
    for before, after in zip(board.components, small.components, strict=True):
        for name in ("outline", "leader"):
            old, new = getattr(before, name), getattr(after, name)
            expected = [(round(x / 1.5), round(y / 1.5)) for x, y in old]
            assert list(new) == expected
        assert after.marker == tuple(round(place / 1.5) for place in before.marker)
        points = {name: getattr(before, name) for name in ("outline", "leader", "marker")}
        assert replace(after, **points) == before
    unmoved = replace(small, picture_size=board.picture_size, components=board.components)
    assert unmoved == board


def test_points_at_the_edge_stay_inside(make_board: MakeBoard) -> None:
    board = read_board(make_board(("[20, 20]", "[63, 47]")))
    assert scale_board(board, 32).components[0].outline[2] == (31, 23)
    assert scale_board(board, 1).components[0].outline[2] == (0, 0)


def test_the_picture_is_the_one_that_was_drawn(board: Board) -> None:
    small = picture_of(build_board(board, WIDTH))
    assert small.size == (1920, 1080)
    blue, green, red, _ = small.split()
    drawn = Image.open(board.picture).convert("RGB")
    expected = drawn.resize(small.size, Image.Resampling.LANCZOS)
    assert Image.merge("RGB", (red, green, blue)).tobytes() == expected.tobytes()


def test_the_width_that_it_has_changes_nothing(board: Board, whole: bytes) -> None:
    assert build_board(board, board.picture_size[0]) == whole


@pytest.mark.parametrize("width", [-1, 0, 65])
def test_a_width_that_is_none(make_board: MakeBoard, width: int) -> None:
    board = read_board(make_board())
    with pytest.raises(PictureError, match=f"64 pixels wide can only shrink: {width} is"):
        scale_board(board, width)


def test_as_a_person_calls_it(make_board: MakeBoard, capsys: pytest.CaptureFixture[str]) -> None:
    path = make_board()
    assert main(["build", str(path), "--picture-width", "32"]) == 0
    assert picture_of((path.parent / "board.bin").read_bytes()).size == (32, 24)
    assert main(["build", str(path), "--picture-width", "65"]) == 1
    assert "65 is no width for it" in capsys.readouterr().err
