"""From the setup screen to the view and back: modes, log lines, and what comes back."""

import re
from pathlib import Path

import pytest

from computer import Computer
from conftest import Room
from ending import FIRST_FILTER_BUTTON

SHELL_NOT_FOUND = 0x0E
NAME = "VeltBoardscopeAppEntryPoint"

LEAKS = "of N memory leaks, amounting to NKB"

# The setup screen's size, and the view's.
SIZES = [
    ((1024, 768), (1024, 768)),
    ((1280, 1024), (1920, 1080)),
    ((1920, 1080), (1920, 1080)),
    ((2560, 1440), (2560, 1440)),
]


def transcript(setup: tuple[int, int], view: tuple[int, int], board: str) -> list[str]:
    """The log of a visit that begins and ends undisturbed; numbers that vary are N."""
    return [
        "[Host] Hardware connected in N ms",
        f"previous resolution: {setup[0]} {setup[1]}",
        "Load multilangage string success",
        f"current resolution: {view[0]} {view[1]}",
        "[Host] Hardware read in N ms",
        f"[Host] Board {board} components",
        f"2880 1620 {view[0] * 3 // 4} {view[1] * 3 // 4}",
        "LocateProtocol gVeltSetupEventHandlerProtocolGuid Status = Not Found",
        f"[{NAME}] Preparation cost: Nms",
        "[Host] Application ended: jump 0, focus 0, category 0, "
        f"pointer {setup[0] // 2} {setup[1] // 2}",
        f"[{NAME}] AfterAppLife cost: Nms",
        f"There are a total {LEAKS} in total, and it has been freed!",
        f"[{NAME}] User used APP for Ns",
    ]


def masked(line: str) -> str:
    """The line with times and memory sizes replaced by N."""
    line = re.sub(r"(cost: |APP for )\d+(ms|s)$", r"\1N\2", line)
    line = re.sub(r" in \d+ ms", " in N ms", line)
    return re.sub(r"of \d+ memory leaks, amounting to \d+KB", LEAKS, line)


@pytest.mark.parametrize(("setup", "view"), SIZES, ids=lambda size: f"{size[0]}x{size[1]}")
def test_the_view_comes_up_and_the_setup_screen_comes_back(
    computer: Computer, setup: tuple[int, int], view: tuple[int, int]
) -> None:
    count = len(computer.components())
    with computer.visit(setup) as visit:
        shown = visit.open()
        save(visit.machine.options.folder, computer, f"view-{setup[0]}x{setup[1]}")
        assert shown.size == view
        visit.leave()
        visit.assert_setup_is_back()
        lines = visit.lines
    assert visit.status == 0
    title = re.search(r'Board (".*"), ', "\n".join(lines))
    assert title is not None, lines
    assert [masked(line) for line in lines] == transcript(setup, view, f"{title[1]}, {count}")


def save(folder: Path, computer: Computer, name: str) -> None:
    """Keep a picture for people to look at."""
    computer.machine.screenshot(folder / f"{name}.png")


def test_without_a_host_the_application_returns_at_once(
    single_room: Room, computer: Computer
) -> None:
    assert computer is not None  # powered on, which includes the start without a host
    refusal = single_room.refusal
    assert refusal is not None
    assert refusal.status == SHELL_NOT_FOUND
    assert refusal.log == []
    assert refusal.before == refusal.after


def test_a_second_visit_brings_back_focus_category_and_pointer(computer: Computer) -> None:
    size = (1920, 1080)
    with computer.visit(size) as visit:
        visit.open()
        visit.machine.input.move(-40, -80)  # units of 7/4 pixels
        visit.picture()
        visit.press("pgup", "pgup", "pgup", "pgup", "ret")  # onto SATA, and choose it
        visit.press("tab", "tab")  # the focus goes on to PCIE
        first = visit.leave()
        visit.assert_setup_is_back()
    assert first.pointer == (960 - 70, 540 - 140)
    assert first.category == 2
    assert first.focus == FIRST_FILTER_BUTTON + 4

    with computer.visit(size, fresh=False) as visit:
        again = visit.open()
        save(visit.machine.options.folder, computer, "second-visit")
        second = visit.leave()
        visit.assert_setup_is_back()
    assert second == first

    with computer.visit(size, fresh=True) as visit:
        anew = visit.open()
        third = visit.leave()
    assert third.category == 0
    assert anew != again


def test_the_saved_pointer_is_in_the_setup_screens_pixels(computer: Computer) -> None:
    with computer.visit((1280, 1024)) as visit:
        visit.open()
        visit.machine.input.move(40, 40)
        visit.picture()
        first = visit.leave()
    assert first.pointer == ((960 + 70) * 1280 // 1920, (540 + 70) * 1024 // 1080)
    with computer.visit((1024, 768), fresh=False) as visit:
        visit.open()
        second = visit.leave()
    # The same view position, through both truncations; the setup screen is another one now.
    assert second.pointer == first.pointer
