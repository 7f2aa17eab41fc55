"""The commands as a person calls them."""

import subprocess
import sys
from pathlib import Path

import pytest
from PIL import Image

from boardtool.cli import main
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


def test_view_makes_a_picture_without_a_window(
    make_board: MakeBoard, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    path = make_board()
    shots = [tmp_path / name for name in ("plain.png", "chosen.png")]
    chosen = ["--status", "FAN 1=absent", "--hover", "FAN 1", "--appearance", "large-text"]
    for shot, options in zip(shots, ([], chosen)):
        arguments = ["--shot", str(shot), "--resolution", "1024x768", *options]
        assert main(["view", str(path.parent), *arguments]) == 0
        assert capsys.readouterr().out == f"{shot}: 1 components at 1024x768\n"
    plain, other = (Image.open(shot).convert("RGB") for shot in shots)
    assert plain.size == (1024, 768)
    # The dot of the only component, which the option took away, in the middle of the marker.
    assert plain.getpixel((11 * 12, 96 + 11 * 12)) == (0, 255, 0)
    assert other.getpixel((11 * 12, 96 + 11 * 12)) != (0, 255, 0)


def test_view_says_what_makes_no_sense(
    make_board: MakeBoard, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    path, shot = make_board(), tmp_path / "shot.png"
    for options, complaint in (
        (["--hover", "GPU"], 'the board has no component "GPU"\n'),
        (["--font", "/nowhere/font.ttf"], "cannot read /nowhere/font.ttf\n"),
        (["--font", "a"] * 4, "the host has no more than three fonts\n"),
    ):
        assert main(["view", str(path), "--shot", str(shot), *options]) == 1
        assert capsys.readouterr().err == complaint
        assert not shot.exists()
    for options in (["--hover", "FAN 1"], ["--status", "FAN 1"]):
        with pytest.raises(SystemExit):
            main(["view", str(path), *options])
    spoilt = make_board(("category: fan", "category: x"))
    capsys.readouterr()
    assert main(["view", str(spoilt), "--shot", str(shot)]) == 1
    assert f"{spoilt}:" in capsys.readouterr().err


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
