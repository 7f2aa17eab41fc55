"""`tool/board view` on a desktop: a window under Xvfb, which shows the pictures that --shot makes
after real events from xdotool."""

import io
import os
import shutil
import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path

import pytest
from desktop import (
    CLONE,
    PATIENCE,
    Desktop,
    WaylandDesktop,
    virtual_desktop,
    wait_for,
    wayland,
)
from PIL import Image, ImageChops

from boardtool.building import build_board
from boardtool.live import LiveView, ViewOptions
from boardtool.reading import read_board

DESKTOP = "1920x1080"
SMALL = "1024x768"
EMPTY = (900, 300)  # At the small size.


@pytest.fixture
def display() -> Iterator[str]:
    """One for each test: where the last one has left the pointer counts, too."""
    with virtual_desktop(DESKTOP) as name:
        yield name


class Twin:
    """What --shot shows of the same board."""

    def __init__(self, view: LiveView, desktop: Desktop) -> None:
        self.view = view
        self.desktop = desktop

    def picture(self, options: ViewOptions) -> Image.Image:
        board = build_board(read_board(self.desktop.folder / "board.yaml"))
        return Image.open(io.BytesIO(self.view.picture(board, options))).convert("RGB")

    def callout(self, name: str, resolution: str = SMALL) -> tuple[int, int]:
        """The middle of a callout."""
        board = build_board(read_board(self.desktop.folder / "board.yaml"))
        measures = self.view.measure(board, ViewOptions(resolution=resolution))
        box = next(each.callout for each in measures.components if each.name == name)
        return int(box.x + box.width / 2), int(box.y + box.height / 2)

    def expect(self, **options: object) -> None:
        """Waits until the window shows the same."""
        wanted = self.picture(ViewOptions(**options))  # type: ignore[arg-type]
        self.wait(wanted, str(options))

    def wait(self, wanted: Image.Image, what: str) -> None:
        seen = wanted

        def same() -> bool:
            nonlocal seen
            seen = self.desktop.screen(wanted.size)
            return ImageChops.difference(seen, wanted).getbbox() is None

        try:
            wait_for(same, f"the picture with {what}")
        except AssertionError:
            seen.save(self.desktop.folder / "seen.png")
            wanted.save(self.desktop.folder / "wanted.png")
            raise


@pytest.fixture
def desktop(display: str, tmp_path: Path) -> Iterator[Desktop]:
    shutil.copytree(CLONE / "test" / "data" / "board", tmp_path, dirs_exist_ok=True)
    opened = Desktop(display, tmp_path, "--resolution", "1024x768")
    yield opened
    opened.end()


@pytest.fixture(scope="module")
def view() -> Iterator[LiveView]:
    with LiveView() as opened:
        yield opened


def at(place: tuple[int, int]) -> str:
    return f"{place[0]},{place[1]}"


def test_a_visit(desktop: Desktop, view: LiveView) -> None:
    twin = Twin(view, desktop)
    assert desktop.title().startswith("Boardscope   F2 1024x768   F3 en-US   F4 standard   F5")
    # A movement over the board, to a callout and its panel.
    desktop.move(EMPTY)
    twin.expect(resolution=SMALL, pointer=at(EMPTY))
    cpu = twin.callout("CPU")
    desktop.move(cpu)
    twin.expect(resolution=SMALL, pointer=at(cpu))
    # A click leads to the setup, which comes back to where it was left.
    desktop.xdotool("click", "1")
    desktop.wait_for_line("CPU: the setup would open option 0x1001")
    twin.expect(resolution=SMALL, pointer=at(cpu))
    # What F3, F4 and F5 change, the view takes along.
    desktop.press("F3")
    desktop.press("F4")
    desktop.press("F5")
    absent = {"statuses": {"CPU": "available"}, "appearance": "high-contrast"}
    language = desktop.title().split("F3 ")[1].split()[0]
    assert language != "en-US"
    twin.expect(resolution=SMALL, pointer=at(cpu), language=language, **absent)
    desktop.press("Escape")
    assert desktop.process.wait(PATIENCE) == 0


def test_a_screenshot_goes_to_the_folder(desktop: Desktop, view: LiveView) -> None:
    twin = Twin(view, desktop)
    desktop.move(EMPTY)
    twin.expect(resolution=SMALL, pointer=at(EMPTY))
    shown = desktop.screen((1024, 768))
    desktop.press("F12")
    wait_for(lambda: desktop.screen((1024, 768)) != shown, "the box that asks where to")
    desktop.press("Return")
    desktop.wait_for_line("Screenshot: ")
    (file,) = (desktop.folder / "screenshots").iterdir()
    # The application's own screenshots are without the arrow.
    assert Image.open(file).size == (1024, 768)
    assert f"Screenshot: {file}\n" in desktop.terminal()


def test_it_follows_the_files(desktop: Desktop, view: LiveView) -> None:
    twin = Twin(view, desktop)
    description = desktop.folder / "board.yaml"
    sound = description.read_text()
    cpu = twin.callout("CPU")
    desktop.move(cpu)
    twin.expect(resolution=SMALL, pointer=at(cpu))
    # The description, in place and by way of another file.
    description.write_text(sound.replace("4.20 GHz", "5.70 GHz"))
    twin.expect(resolution=SMALL, pointer=at(cpu))
    new = desktop.folder / "new"
    new.write_text(sound.replace("marker: amber", "marker: red"))
    new.replace(description)
    twin.expect(resolution=SMALL, pointer=at(cpu))
    # The picture.
    Image.new("RGB", (320, 180), (10, 60, 110)).save(desktop.folder / "board.png")
    twin.expect(resolution=SMALL, pointer=at(cpu))
    # An error stands over the last good view and on the terminal, until it is gone.
    good = desktop.screen((1024, 768))
    description.write_text(sound.replace("category: cpu", "category: cpuu"))
    complaint = f"{description}:16: components[0] (CPU).category: unknown value 'cpuu'"
    desktop.wait_for_line(complaint)
    wait_for(lambda: desktop.screen((1024, 768)) != good, "the complaint")
    over = ImageChops.difference(desktop.screen((1024, 768)), good).getbbox()
    assert over is not None and over[1] > 600
    description.write_text(sound)
    twin.expect(resolution=SMALL, pointer=at(cpu))


def test_a_larger_view_gets_a_larger_window(desktop: Desktop, view: LiveView) -> None:
    twin = Twin(view, desktop)
    desktop.move(EMPTY)
    twin.expect(resolution=SMALL, pointer=at(EMPTY))
    desktop.press("F2")
    wait_for(lambda: "F2 1920x1080" in desktop.title(), "the larger view")
    wait_for(lambda: desktop.corner() == (0, 0), "the larger window")
    desktop.move((1700, 300))
    twin.expect(resolution=DESKTOP, pointer="1700,300")
    desktop.interrupt()
    assert desktop.process.wait(PATIENCE) == 0


def test_a_visit_on_wayland(display: str, tmp_path: Path, view: LiveView) -> None:
    shutil.copytree(CLONE / "test" / "data" / "board", tmp_path, dirs_exist_ok=True)
    (tmp_path / "runtime").mkdir()
    with wayland(display, DESKTOP, tmp_path / "runtime"):
        desktop = WaylandDesktop(display, tmp_path)
        try:
            twin = Twin(view, desktop)
            cpu = twin.callout("CPU", DESKTOP)
            desktop.move(cpu)
            twin.expect(pointer=at(cpu))
            desktop.xdotool("click", "1")
            desktop.wait_for_line("CPU: the setup would open option 0x1001")
            twin.expect(pointer=at(cpu))
            desktop.press("Escape")
            assert desktop.process.wait(PATIENCE) == 0
        finally:
            desktop.end()


def test_without_a_desktop_it_says_what_to_do(tmp_path: Path) -> None:
    folder = CLONE / "test" / "data" / "board"
    command: list[str | Path] = [sys.executable, CLONE / "tool" / "board", "view", folder]
    environment = {**os.environ, "SDL_VIDEODRIVER": "x11", "DISPLAY": ":9999"}
    run = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    assert run.returncode == 1
    assert "--shot FILE makes a picture without one" in run.stderr
