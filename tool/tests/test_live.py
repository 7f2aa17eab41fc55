"""The application itself, shown by its program: pictures, measures, and what it answers to requests
that make no sense."""

import io
import json
import os
import subprocess
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import pytest
from PIL import Image, ImageChops

from boardtool.building import build_board
from boardtool.live import PROGRAM, LiveView, Measures, ViewError, ViewOptions
from boardtool.reading import read_board

CLONE = Path(__file__).resolve().parents[2]
TEST_BOARD = CLONE / "test" / "data" / "board"


@pytest.fixture(scope="module")
def view() -> Iterator[LiveView]:
    with LiveView() as opened:
        yield opened


@pytest.fixture(scope="module")
def board() -> bytes:
    return build_board(read_board(TEST_BOARD / "board.yaml"))


def picture(view: LiveView, board: bytes, **options: Any) -> Image.Image:
    return Image.open(io.BytesIO(view.picture(board, ViewOptions(**options)))).convert("RGB")


def changed(one: Image.Image, other: Image.Image) -> tuple[int, int, int, int] | None:
    """The box around all pixels that differ."""
    return ImageChops.difference(one, other).getbbox()


def component(measures: Measures, name: str) -> Any:
    return next(found for found in measures.components if found.name == name)


def test_the_same_request_gives_the_same_picture(view: LiveView, board: bytes) -> None:
    assert view.picture(board) == view.picture(board)


@pytest.mark.parametrize("size", [(1024, 768), (1920, 1200), (3840, 2160)])
def test_picture_and_measures_have_the_size_that_was_asked_for(
    view: LiveView, board: bytes, size: tuple[int, int]
) -> None:
    resolution = f"{size[0]}x{size[1]}"
    assert picture(view, board, resolution=resolution).size == size
    measures = view.measure(board, ViewOptions(resolution=resolution))
    assert measures.screen == size
    width, height = size
    # Three quarters of the screen, at the left and in the middle.
    assert measures.picture == (0, height // 8, width * 3 // 4, height * 3 // 4)
    assert len(measures.filters) == 6
    for box in (measures.summary, measures.panel, *measures.filters):
        assert box.x >= measures.picture.width and box.x + box.width <= width
        assert measures.title.y < box.y < box.y + box.height <= measures.keys.y


def test_measures_are_where_the_picture_shows_things(view: LiveView, board: bytes) -> None:
    plain = picture(view, board)
    cpu = component(view.measure(board), "CPU")
    # The tip of the leader, at the middle of its lower side, is where the callout hangs.
    x, y, width, height = cpu.callout
    assert cpu.leader[-1] == (x + width // 2, y + height)
    # The callout's border, a style of the board, and the dot of a board whose marker is amber.
    assert plain.getpixel((x + width // 2, y)) == pytest.approx((102, 102, 102), abs=6)
    marker = cpu.marker
    middle = (int(marker.x + marker.width / 2), int(marker.y + marker.height / 2))
    assert plain.getpixel(middle) == (255, 219, 75)


def test_hover_shows_the_panel_where_it_was_measured(view: LiveView, board: bytes) -> None:
    measures = view.measure(board)
    cpu = component(measures, "CPU")
    # Brand and speed, and the core count below them.
    assert cpu.panel.lines == 3
    assert measures.panel.y < cpu.panel.bottom < cpu.panel.limit
    hovered = picture(view, board, hover="CPU")
    panel = measures.panel
    column = (int(panel.x), int(panel.y), int(panel.x + panel.width), cpu.panel.limit)
    # Without a panel there is the hint, so look for text by its brightness.
    text = hovered.crop(column).convert("L").point(lambda value: 255 if value > 100 else 0)
    box = text.getbbox()
    assert box is not None
    assert abs(panel.y + box[3] - cpu.panel.bottom) < 12


def test_a_status_takes_the_dot_away_and_fills_the_panel(view: LiveView, board: bytes) -> None:
    absent = ViewOptions(statuses={"CPU": "absent"})
    before = component(view.measure(board), "CPU")
    after = component(view.measure(board, absent), "CPU")
    assert before.dot and not after.dot
    assert after.panel.lines == before.panel.lines + 1
    box = changed(picture(view, board), picture(view, board, statuses={"CPU": "absent"}))
    assert box is not None
    assert box[2] - box[0] <= before.marker.width and box[3] - box[1] <= before.marker.height


def test_marks_of_a_status_widen_the_callout(view: LiveView, board: bytes) -> None:
    waiting = ViewOptions(statuses={"CPU": "not-ready"})
    cpu = component(view.measure(board, waiting), "CPU")
    assert cpu.text == "CPU *"
    assert cpu.callout.width > component(view.measure(board), "CPU").callout.width


def test_what_names_hardware_counts_as_present(view: LiveView, board: bytes) -> None:
    assert component(view.measure(board), "DIMM").dot


def test_a_component_without_panel_has_none(view: LiveView, board: bytes) -> None:
    assert component(view.measure(board), "USB_1").panel is None


def test_filter_hides_the_others(view: LiveView, board: bytes) -> None:
    shown = [each.name for each in view.measure(board, ViewOptions(filter="M.2")).components]
    assert len(shown) > 1
    measures = view.measure(board, ViewOptions(filter="m2"))
    assert [each.name for each in measures.components if each.shown] == ["M.2 slot"]


def test_language_and_appearance_change_the_picture(view: LiveView, board: bytes) -> None:
    plain = picture(view, board)
    assert changed(plain, picture(view, board, language="ja-JP"))
    assert changed(plain, picture(view, board, appearance="high-contrast"))
    large = view.measure(board, ViewOptions(appearance="large-text"))
    ordinary = view.measure(board)
    assert component(large, "CPU").callout.height > component(ordinary, "CPU").callout.height


@pytest.mark.parametrize(
    ("options", "complaint"),
    [
        ({"resolution": "1280x800"}, "the view has no 1280x800; take 1024x768, or 1920x1080 to"),
        ({"resolution": "large"}, '"large" is no resolution; write it like 1920x1080'),
        ({"language": "tlh"}, '"tlh" is no language of the view; there are: en-US,'),
        ({"appearance": "nice"}, '"nice" is no appearance; there are: standard,'),
        ({"statuses": {"CPU": "gone"}}, '"gone" is no status; there are: available,'),
        ({"statuses": {"GPU": "absent"}}, 'the board has no component "GPU"'),
        ({"hover": "GPU"}, 'the board has no component "GPU"'),
        ({"hover": "USB_1"}, '"USB_1" is not selectable, so it has no panel'),
        ({"hover": "CPU", "filter": "fan"}, 'the filter hides "CPU"'),
        ({"filter": "rgb"}, '"rgb" is no filter; there are: all,'),
        ({"pointer": "left"}, '"left" is no place for the pointer; write it like 960,540'),
    ],
)
def test_options_that_make_no_sense(
    view: LiveView, board: bytes, options: dict[str, Any], complaint: str
) -> None:
    with pytest.raises(ViewError) as error:
        view.picture(board, ViewOptions(**options))
    assert str(error.value).startswith(complaint)
    # The program is still there for the next one.
    assert view.measure(board).screen == (1920, 1080)


def test_a_board_that_is_none(view: LiveView, board: bytes) -> None:
    for spoilt in (b"", b"no board", board[:-1], board[:-1] + b"x"):
        with pytest.raises(ViewError, match="is no board: .*; make it with tool/board build"):
            view.measure(spoilt)


@pytest.mark.parametrize(
    ("line", "complaint"),
    [
        ("", "a request is one JSON object in one line"),
        ("{", "a request is one JSON object in one line"),
        ("[1]", "a request is one JSON object in one line"),
        ("{}", 'the request names no "board"'),
        ('{"board": 7}', '"board" has to be the path of a board.bin'),
        ('{"board": "/nowhere/board.bin"}', "cannot read /nowhere/board.bin"),
        ('{"board": "x", "statuses": ["CPU"]}', '"statuses" has to be an object of texts'),
        ('{"board": "x", "measure": "yes"}', '"measure" has to be true or false'),
        ('{"board": "x", "colour": "red"}', '"colour" is no field; there are: board,'),
        ('{"board": "\\u0000\xff"}', "cannot read "),
    ],
)
def test_lines_that_are_no_requests(
    tmp_path: Path, board: bytes, line: str, complaint: str
) -> None:
    (tmp_path / "board.bin").write_bytes(board)
    sound = json.dumps({"board": str(tmp_path / "board.bin"), "shot": str(tmp_path / "x.png")})
    run = subprocess.run(
        [os.environ[PROGRAM], "--serve"],
        input=f"{line}\n{sound}\n",
        capture_output=True,
        text=True,
        check=True,
    )
    error, answer = (json.loads(text) for text in run.stdout.splitlines())
    assert error["error"].startswith(complaint)
    assert answer == {"shot": str(tmp_path / "x.png")}


def test_the_program_as_a_person_calls_it(tmp_path: Path, board: bytes) -> None:
    (tmp_path / "board.bin").write_bytes(board)

    def call(*arguments: str) -> subprocess.CompletedProcess[str]:
        program = os.environ[PROGRAM]
        return subprocess.run(
            [program, *arguments], cwd=tmp_path, capture_output=True, text=True, check=False
        )

    both = call("board.bin", "--status", "CPU=absent", "--measure", "--shot", "x.png")
    assert both.returncode == 0
    assert json.loads(both.stdout)["components"][0]["dot"] is False
    assert Image.open(tmp_path / "x.png").size == (1920, 1080)
    for arguments, complaint in (
        (("board.bin", "--status", "CPU"), '"CPU" is no status; write it like SATA_1=absent'),
        (("board.bin", "--shot", "no/x.png"), "cannot write no/x.png: No such file or directory"),
        ((), "board is required"),
    ):
        failed = call(*arguments)
        assert failed.returncode != 0 and failed.stdout == ""
        assert complaint in failed.stderr


def test_a_program_that_ended_is_an_error(board: bytes, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv(PROGRAM, "/bin/true")
    with LiveView() as view, pytest.raises(ViewError, match="has ended"):
        view.measure(board)
