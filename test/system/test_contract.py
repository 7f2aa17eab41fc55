"""The firmware's answers to what the application and its tests take for granted.

The unit tests compare the fake firmware's answers with the same file.
"""

import time
from pathlib import Path

from computer import Computer
from sticks import SEEN_BY_THE_FIRMWARE, Stick, Volume, plugged_in

CLONE = Path(__file__).resolve().parents[2]
EXPECTED = CLONE / "test" / "contract" / "expected.txt"
MARK = "|"  # before each answer on the console


def test_the_firmware_answers_as_the_fake_one_does(computer: Computer, tmp_path: Path) -> None:
    stick = Stick(tmp_path / "contract.img", [Volume("CONTRACT", 16)]).make()
    with plugged_in(computer.machine, stick):
        time.sleep(SEEN_BY_THE_FIRMWARE)
        said = computer.run("FirmwareContract.efi")
    answers = [line[1:].strip() for line in said.splitlines() if line.startswith(MARK)]
    assert answers == EXPECTED.read_text(encoding="ascii").splitlines()
    assert stick.files() == []
