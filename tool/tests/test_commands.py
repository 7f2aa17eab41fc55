"""The commands as a person calls them."""

import subprocess
import sys
from pathlib import Path

import pytest
from PIL import Image

from boardtool.cli import main
from boardtool.preview import AMBER, place_callout
from conftest import MakeBoard

CLONE = Path(__file__).resolve().parents[2]
FONT = Path("/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf")


def test_check_of_a_sound_board(make_board: MakeBoard, capsys: pytest.CaptureFixture[str]) -> None:
    path = make_board()
    assert main(["check", str(path)]) == 0
    assert capsys.readouterr().out == f"{path}: nothing to complain about\n"


def test_check_takes_a_folder(make_board: MakeBoard) -> None:
    assert main(["check", str(make_board().parent)]) == 0


def test_problems_go_to_stderr(make_board: MakeBoard, capsys: pytest.CaptureFixture[str]) -> None:
    path = make_board(("category: fan", "category: x"))
    assert main(["build", str(path)]) == 1
    output = capsys.readouterr()
    assert output.out == ""
    assert f"{path}:" in output.err
    assert not (path.parent / "board.bin").exists()


def test_warnings_fail_only_a_strict_check(
    make_board: MakeBoard, capsys: pytest.CaptureFixture[str]
) -> None:
    path = make_board(("board: Bench", "board: Prüfbank"))
    assert main(["check", str(path)]) == 0
    output = capsys.readouterr()
    assert output.out == ""
    assert output.err.startswith(f"{path}:1: warning: board: ")
    assert main(["check", "--strict", str(path)]) == 1
    assert main(["build", str(path)]) == 0


def test_strict_check_of_a_sound_board(make_board: MakeBoard) -> None:
    assert main(["check", "--strict", str(make_board())]) == 0


def test_build_writes_beside_the_description(make_board: MakeBoard) -> None:
    path = make_board()
    assert main(["build", str(path)]) == 0
    assert (path.parent / "board.bin").read_bytes().startswith(b"OBVBOARD")


def test_build_writes_where_it_is_told(make_board: MakeBoard, tmp_path: Path) -> None:
    assert main(["build", str(make_board()), "-o", str(tmp_path / "x.bin")]) == 0
    assert (tmp_path / "x.bin").exists()


def test_unwritable_output_is_a_plain_sentence(
    make_board: MakeBoard, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    assert main(["build", str(make_board()), "-o", str(tmp_path / "no" / "x.bin")]) == 1
    assert "No such file or directory" in capsys.readouterr().err


def test_damaged_picture_is_found(
    make_board: MakeBoard, capsys: pytest.CaptureFixture[str]
) -> None:
    path = make_board()
    picture = path.parent / "board.png"
    data = bytearray(picture.read_bytes())
    data[len(data) // 2] ^= 0xFF
    picture.write_bytes(data)
    assert main(["check", str(path)]) == 1
    assert f"{path}:2: picture: {picture} is damaged" in capsys.readouterr().err


def test_preview_draws_over_the_picture(make_board: MakeBoard) -> None:
    path = make_board()
    assert main(["preview", str(path)]) == 0
    preview = Image.open(path.parent / "preview.png")
    assert preview.size == (64, 48)
    # Inside the outline it is tinted, in a free corner it is not.
    assert preview.getpixel((17, 12)) != (200, 100, 50)
    assert preview.getpixel((2, 45)) == (200, 100, 50)


def test_preview_shows_the_view_through_a_transparent_picture(make_board: MakeBoard) -> None:
    path = make_board()
    picture = Image.new("RGBA", (64, 48), (200, 100, 50, 0))
    picture.putpixel((3, 45), (200, 100, 50, 255))
    picture.putpixel((4, 45), (255, 255, 255, 128))
    picture.save(path.parent / "board.png")
    assert main(["preview", str(path)]) == 0
    preview = Image.open(path.parent / "preview.png")
    assert preview.mode == "RGB"
    assert preview.getpixel((2, 45)) == (0x2C, 0x2C, 0x2C)
    assert preview.getpixel((3, 45)) == (200, 100, 50)
    assert preview.getpixel((4, 45)) == (150, 150, 150)


GREEN, RED = (0, 255, 0), (255, 0, 0)


@pytest.mark.parametrize(
    ("theme", "component", "color"),
    [
        ("", "", GREEN),
        ("marker: green\n", "", GREEN),
        ("marker: red\n", "", RED),
        ("marker: amber\n", "", AMBER),
        ("marker: red\n", "    status: device-error\n", AMBER),
        ("marker: red\n", "    status: absent\n", None),
        ("marker: red\n", "    status: not-ready\n", None),
    ],
)
def test_preview_colors_the_dot(
    make_board: MakeBoard, theme: str, component: str, color: tuple[int, int, int] | None
) -> None:
    # Away from the outline's tint.
    path = make_board(
        ("styles:\n", f"{theme}styles:\n"),
        ("    marker: [11, 11]\n", f"    marker: [40, 5]\n{component}"),
    )
    assert main(["preview", str(path)]) == 0
    preview = Image.open(path.parent / "preview.png")
    assert preview.getpixel((40, 5)) == (color or (200, 100, 50))


def test_preview_shows_no_dot_without_a_category(make_board: MakeBoard) -> None:
    path = make_board(("category: fan", "category: none"), ("marker: [11, 11]", "marker: [40, 5]"))
    assert main(["preview", str(path)]) == 0
    preview = Image.open(path.parent / "preview.png")
    assert preview.getpixel((40, 5)) == (200, 100, 50)


def test_preview_centres_the_dot_on_the_point(make_board: MakeBoard) -> None:
    # In a picture of 2880 pixels the view's 11 pixels are 22.
    path = make_board(("marker: [11, 11]", "marker: [1000, 700]"))
    Image.new("RGB", (2880, 1620), (200, 100, 50)).save(path.parent / "board.png")
    assert main(["preview", str(path)]) == 0
    preview = Image.open(path.parent / "preview.png")
    for reach, color in ((9, GREEN), (13, (200, 100, 50))):
        for x, y in ((reach, 0), (-reach, 0), (0, reach), (0, -reach)):
            assert preview.getpixel((1000 + x, 700 + y)) == color


@pytest.mark.parametrize(
    ("side", "box"),
    [
        (0, (95, 47, 105, 53)),
        (1, (90, 47, 100, 53)),
        (2, (90, 44, 100, 50)),
        (3, (95, 44, 105, 50)),
        (4, (100, 44, 110, 50)),
        (5, (100, 47, 110, 53)),
        (6, (100, 50, 110, 56)),
        (7, (95, 50, 105, 56)),
        (8, (90, 50, 100, 56)),
    ],
)
def test_callout_places(side: int, box: tuple[int, int, int, int]) -> None:
    assert place_callout(side, (100, 50), (10, 6)) == box


def embed(
    out: Path, board: Path, *options: str, fonts: int = 3
) -> subprocess.CompletedProcess[str]:
    faces = ["--font", str(FONT)] * fonts
    arguments = ["--board-dir", str(board), *faces, "--out", str(out), *options]
    script = CLONE / "host" / "embed.py"
    return subprocess.run(
        [sys.executable, script, *arguments], capture_output=True, text=True, check=False
    )


def test_embed_writes_once_and_again_only_after_changes(
    make_board: MakeBoard, tmp_path: Path
) -> None:
    path = make_board()
    out = tmp_path / "out"
    assert embed(out, path.parent).returncode == 0
    files = [out / name for name in ("board.bin", "HostBlobs.nasm", "HostBlobs.S")]
    every = [*files, out / "fallback.ttf"]
    before = [file.stat().st_mtime_ns for file in every]
    assert embed(out, path.parent).returncode == 0
    assert [file.stat().st_mtime_ns for file in every] == before
    # Another board of the same size must make the assembler run again, too.
    path.write_text(path.read_text().replace("FAN 1", "FAN 2"))
    assert embed(out, path.parent).returncode == 0
    assert all(file.stat().st_mtime_ns > old for file, old in zip(files, before[:3], strict=True))


def test_embed_takes_the_fallback_font_whole_or_for_other_texts(
    make_board: MakeBoard, tmp_path: Path
) -> None:
    board = make_board().parent
    listing = tmp_path / "out" / "HostBlobs.S"
    assert embed(tmp_path / "out", board).returncode == 0
    usual = (tmp_path / "out" / "fallback.ttf").stat().st_size
    assert listing.read_text().count("fallback.ttf") == 1
    (tmp_path / "texts.txt").write_text("電", encoding="utf-8")
    texts = ["--texts", str(tmp_path / "texts.txt")]
    assert embed(tmp_path / "out", board, *texts).returncode == 0
    assert (tmp_path / "out" / "fallback.ttf").stat().st_size < usual
    assert embed(tmp_path / "out", board, "--whole-font").returncode == 0
    assert listing.read_text().count(str(FONT)) == 3
    assert embed(tmp_path / "out", board, "--whole-font", *texts).returncode == 2


def test_embed_reports_what_is_wrong(make_board: MakeBoard, tmp_path: Path) -> None:
    path = make_board(("category: fan", "category: x"))
    result = embed(tmp_path / "out", path.parent)
    assert result.returncode == 1
    assert "components[0] (FAN 1).category" in result.stderr
    assert embed(tmp_path / "out", path.parent, fonts=2).returncode == 2
    path = make_board()
    result = embed(tmp_path / "out", path.parent, "--picture-width", "65")
    assert result.returncode == 1
    assert "65 is no width for it" in result.stderr
