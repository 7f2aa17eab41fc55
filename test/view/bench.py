#!/usr/bin/env python3
"""Measures tool/board view: how soon there is a picture, and how soon it follows a change.

Started by script/bench.
"""

import contextlib
import io
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable, Iterator
from pathlib import Path

CLONE = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CLONE / folder) for folder in ("script", "tool", "tool/tests")]

from desktop import Desktop, virtual_desktop, wait_for
from PIL import ImageGrab

from boardtool.building import build_quickly
from boardtool.live import LiveView, ViewOptions, program
from boardtool.reading import read_board

TOOL = CLONE / "tool" / "board"
BOARD = CLONE / "assets" / "board"
NAMES = ("SYS_FAN1", "SYS_FAN_A")  # by turns of one component
SCREEN = (1920, 1080)
ROUNDS = 7
PAUSE = 0.5
"""Seconds between changes: a person is no faster."""


def say(what: str, ours: list[float], peer: str, theirs: float) -> None:
    value = statistics.median(ours) * 1000
    print(
        f"  {what:<44} {value:>9.1f} ms   {peer:<34} {theirs * 1000:>9.1f} ms   "
        f"{value / theirs / 1000:>8.2f}"
    )


def seconds(action: Callable[[], object]) -> float:
    start = time.perf_counter()
    action()
    return time.perf_counter() - start


def call(*arguments: str | Path) -> Callable[[], object]:
    return lambda: subprocess.run([TOOL, *arguments], check=True, capture_output=True)


@contextlib.contextmanager
def running_view() -> Iterator[LiveView]:
    with contextlib.ExitStack() as stack:
        # It says that the program is up to date.
        with contextlib.redirect_stdout(io.StringIO()):
            view = stack.enter_context(LiveView())
        yield view


def measure_shots(folder: Path) -> None:
    shoot = call("view", folder, "--shot", folder / "shot.png")
    shots = [seconds(shoot) for _ in range(ROUNDS)]
    builds = [seconds(call("build", folder)) for _ in range(3)]
    say("start to picture, --shot", shots, "tool/board build", statistics.median(builds))
    board = build_quickly(read_board(folder / "board.yaml"))
    with running_view() as view:
        view.measure(board)
        pictures = [seconds(lambda: view.picture(board)) for _ in range(ROUNDS)]
        measures = [seconds(lambda: view.measure(board)) for _ in range(ROUNDS)]
    say("picture from the running program", pictures, "aim", 0.2)
    say("measures from the running program", measures, "aim", 0.2)


def changes(folder: Path, desktop: Desktop) -> Iterator[float]:
    """Seconds from a saved description until the window shows it."""
    board = build_quickly(read_board(folder / "board.yaml"))
    with running_view() as view:
        measures = view.measure(board, ViewOptions(resolution=f"{SCREEN[0]}x{SCREEN[1]}"))
    box = next(each.callout for each in measures.components if each.name == NAMES[0])
    place = (int(box.x), int(box.y), int(box.x + box.width), int(box.y + box.height))

    def callout() -> bytes:
        return ImageGrab.grab(bbox=place, xdisplay=desktop.display).tobytes()

    description = folder / "board.yaml"
    for turn in range(ROUNDS):
        time.sleep(PAUSE)
        before = callout()
        old, new = NAMES[turn % 2], NAMES[(turn + 1) % 2]
        text = description.read_text().replace(f"name: {old}", f"name: {new}")
        start = time.perf_counter()
        description.write_text(text)
        wait_for(lambda before=before: callout() != before, "the change")  # type: ignore[misc]
        yield time.perf_counter() - start


def measure_window(folder: Path) -> None:
    with virtual_desktop(f"{SCREEN[0]}x{SCREEN[1]}") as display:
        starts = []
        for _ in range(3):
            start = time.perf_counter()
            desktop = Desktop(display, folder)
            starts.append(time.perf_counter() - start)
            desktop.end()
        say("start to the window's first picture", starts, "aim", 1.0)
        desktop = Desktop(display, folder)
        try:
            say("saved description to its picture", list(changes(folder, desktop)), "aim", 0.5)
        finally:
            desktop.end()


def main() -> int:
    program()
    print("\nView of a board for its author, 1920x1080")
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for file in ("board.yaml", "board.png"):
            shutil.copy(BOARD / file, folder)
        measure_shots(folder)
        measure_window(folder)
    return 0


if __name__ == "__main__":
    sys.exit(main())
