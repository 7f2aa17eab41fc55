"""F12 and real USB sticks: what is offered, what is saved, and what is said when it can't be."""

import io
import re
import time
from collections.abc import Callable
from datetime import datetime, timedelta
from pathlib import Path

import numpy as np
import pytest
from PIL import Image

from computer import PATIENCE, POWER_ON, Computer, Visit
from pictures import Picture
from sticks import SEEN_BY_THE_FIRMWARE, Stick, Volume, plugged_in, pull_out

SIZE = (1024, 768)
HANDLER = "UserSelectedPartitionMessageBoxHandler"
# The log shows the first character of this message alone.
NO_STICK = "["
NAME = re.compile(r"\d{4}(-\d\d){5}\.png")

Make = Callable[..., Stick]


@pytest.fixture
def make(tmp_path: Path) -> Make:
    def stick(name: str, *volumes: tuple[str, int], partitioned: bool = True) -> Stick:
        contents = [Volume(label, size) for label, size in volumes]
        return Stick(tmp_path / f"{name}.img", contents, partitioned).make()

    return stick


class Log:
    """The lines of a visit in the order in which the test asks for them."""

    def __init__(self, visit: Visit) -> None:
        self._visit = visit
        self._read = len(visit.lines)

    def expect(self, *lines: str) -> None:
        """Wait for as many further lines, and compare each."""
        end = self._read + len(lines)
        self._visit.machine.wait_for(
            lambda: len(self._visit.lines) >= end, f"the log lines {lines}", PATIENCE
        )
        assert self._visit.lines[self._read : end] == list(lines)
        self._read = end


def open_box(visit: Visit, before: Picture) -> Picture:
    """Press F12, and return what is shown once a box is there."""
    visit.machine.input.tap("f12")
    visit.machine.wait_for(
        lambda: Picture(visit.machine.picture()) != before, "a box to open", PATIENCE
    )
    return visit.picture()


def saved_picture(stick: Stick, volume: int = 0) -> Picture:
    """The one picture on a volume, checked to be named by the clock."""
    names = stick.files(volume)
    assert len(names) == 1 and NAME.fullmatch(names[0]), names
    taken = datetime.strptime(names[0], "%Y-%m-%d-%H-%M-%S.png")
    assert POWER_ON < taken < POWER_ON + timedelta(hours=1)
    with Image.open(io.BytesIO(stick.read(names[0], volume))) as image:
        # The encoder leaves out an alpha channel that says nothing.
        assert (image.format, image.mode) == ("PNG", "RGB")
        pixels = np.asarray(image)
    height, width = pixels.shape[:2]
    return Picture(f"P6\n{width} {height}\n255\n".encode() + pixels.tobytes())


def close_box(visit: Visit, log: Log, before: Picture) -> None:
    """Press the selected button of a result box; the view is then as before F12."""
    visit.press("ret")
    log.expect("0 Button OK was clicked")
    visit.picture().assert_equal(before, visit.machine.options.folder / "after-screenshot")


def leave(visit: Visit) -> None:
    visit.leave()
    visit.assert_setup_is_back()


def test_a_stick_that_comes_and_goes_while_the_view_is_up(computer: Computer, make: Make) -> None:
    stick = make("plain", ("HOLIDAY", 16))
    button = stick.button(0)
    with computer.visit(SIZE) as visit:
        shown = visit.open()
        log = Log(visit)
        no_stick = open_box(visit, shown)
        log.expect(NO_STICK)
        close_box(visit, log, shown)

        with plugged_in(visit.machine, stick):
            time.sleep(SEEN_BY_THE_FIRMWARE)
            choice = open_box(visit, shown)
            assert choice != no_stick
            log.expect(button)
            visit.machine.input.tap("ret")
            log.expect(f"0 Button {button} was clicked", "F12ScreenShots Success")
            success = visit.picture()
            assert success not in (choice, shown)
            close_box(visit, log, shown)

            assert open_box(visit, shown) == choice
            log.expect(button)
            visit.press("right", "ret")
            log.expect("1 Button Cancel was clicked", "F12ScreenShots Canceled")
            visit.picture().assert_equal(shown, visit.machine.options.folder / "after-cancel")

            assert open_box(visit, shown) == choice
            log.expect(button)
            pull_out(visit.machine, stick)
            time.sleep(SEEN_BY_THE_FIRMWARE)
            visit.machine.input.tap("ret")
            log.expect(
                f"0 Button {button} was clicked",
                f"{HANDLER} 1183 Media changed",
                "F12ScreenShots Failed Media changed",
            )
            close_box(visit, log, shown)

        assert open_box(visit, shown) == no_stick
        log.expect(NO_STICK)
        close_box(visit, log, shown)
        leave(visit)
    assert saved_picture(stick) == shown


def test_three_partitions(computer: Computer, make: Make) -> None:
    stick = make("parted", ("FIRST", 8), ("SECOND", 16), ("THIRD", 32))
    buttons = [stick.button(number, number) for number in range(3)]
    with plugged_in(computer.machine, stick):
        time.sleep(SEEN_BY_THE_FIRMWARE)
        with computer.visit(SIZE) as visit:
            visit.open()
            visit.press("tab", "tab")
            shown = visit.picture()
            log = Log(visit)
            open_box(visit, shown)
            log.expect(*buttons)
            visit.press("right", "down", "ret")
            log.expect(f"2 Button {buttons[2]} was clicked", "F12ScreenShots Success")
            close_box(visit, log, shown)
            leave(visit)
    assert stick.files(0) == stick.files(1) == []
    assert saved_picture(stick, 2) == shown


def test_two_sticks(computer: Computer, make: Make) -> None:
    first = make("first", ("RED", 16))
    second = make("second", ("BLUE", 12), partitioned=False)
    buttons = [first.button(0), second.button(1)]
    with plugged_in(computer.machine, first):
        time.sleep(SEEN_BY_THE_FIRMWARE)
        with plugged_in(computer.machine, second), computer.visit(SIZE) as visit:
            shown = visit.open()
            # The firmware may not have looked at the second stick's port before.
            time.sleep(SEEN_BY_THE_FIRMWARE)
            log = Log(visit)
            open_box(visit, shown)
            log.expect(*buttons)
            visit.press("right", "ret")
            log.expect(f"1 Button {buttons[1]} was clicked", "F12ScreenShots Success")
            close_box(visit, log, shown)
            leave(visit)
    assert first.files() == []
    assert saved_picture(second) == shown


def test_sticks_that_cannot_be_written(computer: Computer, make: Make) -> None:
    locked = make("locked", ("LOCKED", 16))
    full = make("full", ("FULL", 8))
    full.fill()
    buttons = [locked.button(0), full.button(1)]
    with plugged_in(computer.machine, locked, read_only=True):
        time.sleep(SEEN_BY_THE_FIRMWARE)
        with plugged_in(computer.machine, full), computer.visit(SIZE) as visit:
            shown = visit.open()
            # The firmware may not have looked at the second stick's port before.
            time.sleep(SEEN_BY_THE_FIRMWARE)
            log = Log(visit)
            boxes = []
            for number, failure in enumerate(("1183 Write Protected", "1209 Volume Full")):
                open_box(visit, shown)
                log.expect(*buttons)
                visit.press(*["right"] * number)
                visit.machine.input.tap("ret")
                log.expect(
                    f"{number} Button {buttons[number]} was clicked",
                    f"{HANDLER} {failure}",
                    f"F12ScreenShots Failed {failure[5:]}",
                )
                boxes.append(visit.picture())
                close_box(visit, log, shown)
            leave(visit)
    assert boxes[0] != boxes[1]
    assert locked.files() == []
