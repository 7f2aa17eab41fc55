"""script/run as a user without a display calls it, from anywhere."""

import importlib.machinery
import importlib.util
import os
import subprocess
import sys
from pathlib import Path
from types import ModuleType

import pytest
from PIL import Image, ImageChops

from conftest import programs
from support.boards import binary_of, find_board
from support.failure import Failure

CLONE = Path(__file__).resolve().parents[2]
RUN = CLONE / "script" / "run"


def call(folder: Path, *arguments: str | Path) -> subprocess.CompletedProcess[str]:
    environment = {
        name: value
        for name, value in os.environ.items()
        if name not in ("DISPLAY", "WAYLAND_DISPLAY")
    }
    return subprocess.run(
        [RUN, *arguments],
        cwd=folder,
        env=environment,
        capture_output=True,
        text=True,
        timeout=250,
    )


def test_it_leaves_a_picture_and_the_log(tmp_path: Path) -> None:
    board = CLONE / "test" / "data" / "board"
    options = ["--resolution", "1024x768", "--language", "de-DE", "--outputs", "2"]
    done = call(tmp_path, "--board", board, *options, "--pointer", "mouse")
    assert done.returncode == 0, done.stdout + done.stderr
    screen, log = CLONE / "build" / "run" / "screen.png", CLONE / "build" / "run" / "boardscope.log"
    assert done.stdout.splitlines()[-2:] == [f"Picture: {screen}", f"Log: {log}"]
    with Image.open(screen) as picture:
        assert picture.size == (1024, 768)
        colours = picture.getcolors(maxcolors=1 << 20)
    assert colours is not None and len(colours) > 100
    lines = log.read_text().splitlines()
    assert lines[0].startswith("[Host] ")
    assert "current resolution: 1024 768" in lines
    assert any('"Test board"' in line for line in lines)
    assert "User used APP for" in lines[-1]


def test_it_shows_the_view_of_another_host(tmp_path: Path) -> None:
    host = programs() / "MinimalHost.efi"
    done = call(tmp_path, "--headless", "--resolution", "1024x768", "--host", host)
    assert done.returncode == 0, done.stdout + done.stderr
    log = (CLONE / "build" / "run" / "boardscope.log").read_text()
    assert "[Host]" not in log
    assert "current resolution: 1024 768" in log
    with Image.open(CLONE / "build" / "run" / "screen.png") as picture:
        # The board that files.py draws, where it lies at this size.
        assert picture.convert("RGB").getpixel((400, 500)) == (26, 70, 52)


def test_it_says_plainly_what_is_wrong_with_a_host(tmp_path: Path) -> None:
    missing = call(tmp_path, "--headless", "--host", tmp_path / "none.efi")
    assert missing.returncode == 1
    assert "build your host first" in missing.stderr
    host = programs() / "MinimalHost.efi"
    both = call(tmp_path, "--headless", "--host", host, "--filter", "usb")
    assert both.returncode == 1
    assert "--host goes with neither" in both.stderr


def test_it_says_plainly_what_is_wrong_with_a_board(tmp_path: Path) -> None:
    done = call(tmp_path, "--headless", "--board", tmp_path)
    assert done.returncode == 1
    complaint = done.stderr.splitlines()[-1]
    assert complaint.endswith(f"{tmp_path} holds neither board.yaml nor board.bin.")
    assert "Traceback" not in done.stderr


def test_it_says_plainly_that_there_is_no_such_board(tmp_path: Path) -> None:
    done = call(tmp_path, "--headless", "--board", tmp_path / "nowhere")
    assert done.returncode == 1
    assert done.stderr.splitlines()[-1].endswith(f"There is no {tmp_path / 'nowhere'}.")


def load_command() -> ModuleType:
    loader = importlib.machinery.SourceFileLoader("run_command", str(RUN))
    spec = importlib.util.spec_from_loader(loader.name, loader)
    assert spec is not None
    module = importlib.util.module_from_spec(spec)
    loader.exec_module(module)
    return module


def test_it_takes_a_board_by_its_folder_and_by_its_file(tmp_path: Path) -> None:
    description, binary = tmp_path / "board.yaml", tmp_path / "board.bin"
    binary.touch()
    assert find_board(tmp_path) == binary
    description.touch()
    assert find_board(tmp_path) == description
    assert find_board(description) == description
    assert find_board(binary) == binary


def test_it_builds_a_description_and_leaves_a_binary_alone(tmp_path: Path) -> None:
    board = CLONE / "test" / "data" / "board"
    assert binary_of(board / "board.bin", tmp_path) == board / "board.bin"
    made = binary_of(board / "board.yaml", tmp_path)
    assert made == tmp_path / "board.bin"
    assert made.read_bytes().startswith(b"OBVBOARD")


def test_it_pictures_what_a_hand_does_as_the_view_for_authors_does(tmp_path: Path) -> None:
    board = CLONE / "test" / "data" / "board"
    pose = ["--hover", "M.2 slot", "--filter", "m2"]
    size = ["--resolution", "1024x768"]
    done = call(tmp_path, "--headless", "--board", board, *pose, *size)
    assert done.returncode == 0, done.stdout + done.stderr
    shot = tmp_path / "shot.png"
    tool = CLONE / "tool" / "board"
    subprocess.run([tool, "view", board, *pose, *size, "--shot", shot], check=True)
    # Nothing that hardware tells is to be seen there.
    with Image.open(CLONE / "build" / "run" / "screen.png") as screen, Image.open(shot) as wanted:
        assert ImageChops.difference(screen.convert("RGB"), wanted.convert("RGB")).getbbox() is None


def test_a_pose_is_for_a_picture(tmp_path: Path) -> None:
    for options, complaint in (
        (["--setup", "--hover", "CPU"], "--hover and --filter are for a picture of the view"),
        (["--pointer", "mouse", "--hover", "CPU"], "--hover needs the tablet."),
    ):
        done = call(tmp_path, "--headless", *options)
        assert done.returncode == 1
        assert complaint in done.stderr.splitlines()[-1]


def test_it_says_plainly_that_the_view_did_not_come_up(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    command = load_command()
    monkeypatch.setattr(command, "FOLDER", tmp_path)
    monkeypatch.setattr(command.firmware, "build", lambda target: None)
    monkeypatch.setattr(command, "host_commands", lambda language, host: [])
    monkeypatch.setattr(sys, "argv", ["run", "--headless"])
    with pytest.raises(Failure) as caught:
        command.main()
    assert str(caught.value).startswith(
        "The application returned status 0xe before its view came up. "
    )
