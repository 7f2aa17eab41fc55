"""Firmware that watches over memory: nothing the application does is caught by it.

Each pool block and each page lies between pages without access, address 0 is one, too, and what
holds data does not run.
"""

import time
from collections.abc import Iterator
from pathlib import Path

import pytest

from components import point_inside
from computer import PATIENCE, Computer, boot
from conftest import FOLDER, programs
from sticks import SEEN_BY_THE_FIRMWARE, Stick, Volume, plugged_in
from support import guarded

SIZE = (1024, 768)
TABLET_RANGE = 0x7FFF
FAULT = "!!!! X64 Exception Type"
# The VGA driver of OVMF reads from address 0 on purpose.
FIRMWARE = {
    "code": guarded.image(),
    "variables": guarded.VARIABLES,
    "adapter": "virtio-gpu-pci",
}
GUARDS = [
    "null",
    "behind a block",
    "behind a page",
    "end of the stack",
    "writing code",
    "running a block",
    "running the stack",
    "running data",
]


@pytest.fixture(scope="module")
def watched() -> Iterator[Computer]:
    with boot(FOLDER / "guarded", programs(), firmware=FIRMWARE) as computer:
        computer.load_host()
        yield computer


def assert_no_fault(computer: Computer) -> None:
    assert FAULT not in computer.machine.console_text()


def test_the_view_is_used_and_the_setup_screen_comes_back(
    watched: Computer, tmp_path: Path
) -> None:
    components = watched.components(SIZE)
    inside = next(
        point
        for component in components
        if component.selectable and (point := point_inside(components, component, 3))
    )
    stick = Stick(tmp_path / "stick.img", [Volume("HOLIDAY", 16)]).make()
    with watched.visit(SIZE) as visit, plugged_in(visit.machine, stick):
        shown = visit.open()
        x, y = (
            round((at + 0.5) * TABLET_RANGE / size) for at, size in zip(inside, SIZE, strict=True)
        )
        visit.machine.input.point(x, y)
        assert visit.picture() != shown
        visit.press("pgup", "pgup", "tab", "insert", "insert")
        time.sleep(SEEN_BY_THE_FIRMWARE)
        visit.press("f12", "ret")
        visit.wait_for_log("F12ScreenShots Success")
        visit.press("ret")
        visit.wait_for_log("0 Button OK was clicked")
        first = visit.leave()
        visit.assert_setup_is_back()
    assert visit.status == 0
    assert len(stick.files()) == 1
    assert first.category == 2

    with watched.visit(SIZE, fresh=False) as visit:
        visit.open()
        assert visit.leave() == first
        visit.assert_setup_is_back()
    assert visit.status == 0
    assert_no_fault(watched)


def test_the_firmware_watches_over_memory(watched: Computer) -> None:
    said = watched.probe("guards")
    assert [line for line in said.splitlines() if line.endswith("caught")] == [
        f"{guard} is caught" for guard in GUARDS
    ]


def test_a_fault_is_seen(watched: Computer) -> None:
    """The last, as the processor stops there."""
    assert_no_fault(watched)
    watched.type("SystemProbe.efi null")
    watched.machine.wait_for(
        lambda: FAULT in watched.machine.console_text(), "the processor to stop", PATIENCE
    )
