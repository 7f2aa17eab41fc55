"""How much of the firmware's stack a whole visit uses."""

import re
import time
from pathlib import Path

from computer import Computer
from sticks import SEEN_BY_THE_FIRMWARE, Stick, Volume, plugged_in

# UEFI promises 128 KiB to whoever runs; the firmware's own drivers and interrupts live on it, too.
PROMISED = 128 * 1024
ENOUGH = PROMISED // 2
_LINE = re.compile(r"\[Probe\] stack: (\d+) bytes used, (\d+) never touched")


def test_a_visit_needs_less_than_half_of_the_promised_stack(
    computer: Computer, tmp_path: Path
) -> None:
    stick = Stick(tmp_path / "stick.img", [Volume("HOLIDAY", 16)]).make()
    with computer.visit(measured=True) as visit, plugged_in(visit.machine, stick):
        visit.open()
        visit.press("tab", "tab", "tab", "insert", "pgup")
        time.sleep(SEEN_BY_THE_FIRMWARE)
        visit.press("f12", "ret")
        visit.wait_for_log("F12ScreenShots Success")
        visit.press("ret")
        visit.wait_for_log("0 Button OK was clicked")
        visit.leave()
        visit.assert_setup_is_back()
        found = _LINE.fullmatch(visit.wait_for_log("[Probe] stack"))
        assert found is not None
    used, untouched = map(int, found.groups())
    # Something is untouched: the mark is the application's, not the stack's end.
    assert 4096 < used < ENOUGH
    assert untouched > 0
