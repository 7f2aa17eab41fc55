"""A screenshot whose writing is cut off: what is on the stick then, and what the user is told.

A power cut after the n-th write leaves the same on a stick as one that fails from then on, so that
each cut needs no computer of its own.
"""

import random
import re
import subprocess
import time
from pathlib import Path

from computer import PATIENCE, Computer, Visit
from sticks import (
    SEEN_BY_THE_FIRMWARE,
    Stick,
    Volume,
    plug_in_to_break,
    plugged_in,
    pull_out,
    writes_to,
)

SIZE = (1024, 768)
HANDLER = "UserSelectedPartitionMessageBoxHandler"
CONTENT, FLUSH = 1209, 1215  # where the log says that it failed
PNG = b"\x89PNG"
NAME = re.compile(r"\d{4}(-\d\d){5}\.png")
KEPT = {
    "KEPT.BIN": random.Random(1).randbytes(100_000),
    "KEPT.TXT": b"What was here before stays as it was.\r\n",
}
# What a cut may leave: nothing of it touches another file, and each is mended without loss.
ACCEPTED = [
    r"fsck\.fat .*",
    r".*\.img: \d+ files, \d+/\d+ clusters",
    # The tables are written one after the other.
    r"FATs differ but appear to be intact\.",
    r"  Using first FAT\.",
    # The new file's, as its name does not know of them yet.
    r"Reclaimed \d+ unused clusters? \(\d+ bytes\)\.",
    r"",
    r"Leaving filesystem unchanged\.",
]


def make(folder: Path, name: str) -> Stick:
    stick = Stick(folder / f"{name}.img", [Volume(name.upper(), 16)], partitioned=False).make()
    for file, content in KEPT.items():
        stick.put(file, content)
    return stick


def assert_nothing_else_changed(stick: Stick) -> None:
    """The other files are as before. What is in the new one is lost: FAT keeps no journal, and its
    driver writes part of the content after the name's last change."""
    files = stick.files()
    assert files[: len(KEPT)] == list(KEPT)
    for file, content in KEPT.items():
        assert stick.read(file) == content
    (new,) = files[len(KEPT) :]
    assert NAME.fullmatch(new)


def complaints(stick: Stick) -> list[str]:
    """What the checker says of the volume, apart from what is no complaint."""
    command: list[str | Path] = ["fsck.fat", "-n", stick.image]
    done = subprocess.run(command, capture_output=True, text=True)
    assert done.returncode in (0, 1) and not done.stderr
    lines = done.stdout.splitlines()
    return [line for line in lines if not any(re.fullmatch(good, line) for good in ACCEPTED)]


def cuts(writes: int) -> dict[int, int]:
    """After how many of all writes of a screenshot to cut, and where it then fails.

    The new name comes first, then most of the content; in the end the tables, the name with its
    size, and the rest.
    """
    return {1: CONTENT, 4: CONTENT, writes - 2: FLUSH, writes - 1: FLUSH}


def save_to_the_first(visit: Visit) -> list[str]:
    """Press F12 and choose the first volume; returns the log of that with its outcome."""
    first = len(visit.lines)
    visit.press("f12")
    visit.machine.input.tap("ret")
    visit.machine.wait_for(
        lambda: any("F12ScreenShots" in line for line in visit.lines[first:]),
        "the outcome of the screenshot",
        PATIENCE,
    )
    return visit.lines[first:]


def count_writes(visit: Visit, folder: Path) -> int:
    """Save a screenshot undisturbed, and count how often that writes to the stick."""
    stick = make(folder, "whole")
    with plugged_in(visit.machine, stick):
        time.sleep(SEEN_BY_THE_FIRMWARE)
        assert save_to_the_first(visit)[-1] == "F12ScreenShots Success"
        visit.press("ret")
        writes = writes_to(visit.machine, stick)
    assert stick.read(stick.files()[-1]).startswith(PNG)
    assert complaints(stick) == []
    return writes


def test_a_cut_costs_the_new_picture_alone(computer: Computer, tmp_path: Path) -> None:
    with computer.visit(SIZE) as visit:
        shown = visit.open()
        places = cuts(count_writes(visit, tmp_path))
        sticks = {cut: make(tmp_path, f"cut{cut}") for cut in places}
        for cut, stick in sticks.items():
            plug_in_to_break(visit.machine, stick, cut)
        time.sleep(SEEN_BY_THE_FIRMWARE)
        for _ in places:
            # One without a medium is not offered any more. Which of the others is the first, the
            # firmware decides.
            clicked, *outcome = save_to_the_first(visit)[-3:]
            (cut,) = [cut for cut in places if f"[USB CUT{cut} " in clicked]
            stick = sticks[cut]
            assert clicked == f"0 Button {stick.button(0)} was clicked"
            assert outcome == [
                f"{HANDLER} {places[cut]} No Media",
                "F12ScreenShots Failed No Media",
            ]
            assert visit.picture() != shown
            visit.press("ret")
            visit.picture().assert_equal(shown, visit.machine.options.folder / "after-cut")
            pull_out(visit.machine, stick)
        visit.leave()
        visit.assert_setup_is_back()
    for stick in sticks.values():
        assert_nothing_else_changed(stick)
        assert complaints(stick) == []
