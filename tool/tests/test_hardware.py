"""Hardware names: device paths in bytes, and the records of the board binary."""

import re
import struct
from pathlib import Path

import pytest

from boardtool import limits
from boardtool.binary import COMPONENT, HARDWARE, HEADER_SIZE, INFO, LOOK, write_board
from boardtool.device_path import DevicePathError, parse_device_path
from boardtool.reading import read_board
from conftest import MakeBoard

FORMAT = Path(__file__).resolve().parents[2] / "host" / "portable" / "BoardFormat.h"
END = "7fff0400"
ROOT = "02010c00d041030a00000000"


@pytest.mark.parametrize(
    ("text", "expected"),
    [
        ("PciRoot(0x0)", ROOT),
        ("PciRoot(0)", ROOT),
        ("PcieRoot(0x1)", "02010c00d041080a01000000"),
        # The function stands before the device.
        ("PciRoot(0x0)/Pci(0x1F,0x2)", ROOT + "01010600021f"),
        ("PciRoot(0x0)/Pci(0x14,0x0)/USB(0x9,0x1)", ROOT + "010106000014" + "030506000901"),
        (
            "PciRoot(0x0)/Pci(0x1F,0x2)/Sata(0x1,0xFFFF,0x2)",
            ROOT + "01010600021f" + "03120a000100ffff0200",
        ),
    ],
)
def test_a_device_path_has_the_bytes_of_its_nodes_and_an_end(text: str, expected: str) -> None:
    assert parse_device_path(text).hex() == expected + END


@pytest.mark.parametrize(
    ("text", "complaint"),
    [
        ("", "'' is not a node"),
        ("PciRoot", "'PciRoot' is not a node"),
        ("Pci(0x1,0x0)", "begins with 'Pci'; a path begins with PciRoot or PcieRoot"),
        ("PciRoot(0x0)/", "'' is not a node"),
        ("PciRoot(0x0)/Pc(0x1,0x0)", "unknown node 'Pc'; there are: Pci, USB, Sata"),
        ("PciRoot(0x0)/Pci(0x1)", "needs 2 numbers that fit their fields"),
        ("PciRoot(0x0)/Pci(0x100,0x0)", "needs 2 numbers that fit their fields"),
        ("PciRoot(0x0)/Pci(-1,0x0)", "needs 2 numbers that fit their fields"),
        ("PciRoot(0x0)/Pci(one,0x0)", "holds something else than numbers"),
        ("PciRoot(0x0)/Pci()", "holds something else than numbers"),
    ],
)
def test_a_wrong_device_path_says_what_is_wrong(text: str, complaint: str) -> None:
    with pytest.raises(DevicePathError, match=re.escape(complaint)):
        parse_device_path(text)


HARDWARE_BOARD = """\
    token: 0x1001
    needs-processor: Core
    hardware:
      - sensor: CPU fan
      - memory: {locator: DIMM 0, bank: BANK 0}
      - memory: DIMM 1
      - memory-total: all
      - processor: boot
      - processor: CPU 1
      - nvme: PciRoot(0x0)/Pci(0x1,0x0)
"""


def test_names_stand_in_the_binary_with_their_kinds(make_board: MakeBoard) -> None:
    picture = b"picture"
    binary = write_board(read_board(make_board(("    token: 0x1001\n", HARDWARE_BOARD))), picture)
    names = 8
    assert struct.unpack_from("<H", binary, 38) == (names,)
    component = HEADER_SIZE + 2 * LOOK.size
    assert struct.unpack_from("<HHI", binary, component + 56) == (names, 0, 0)
    start = len(binary) - len(picture) - names * HARDWARE.size
    assert start == component + COMPONENT.size + INFO.size
    records = list(struct.iter_unpack("<HH128s32s", binary[start : -len(picture)]))
    path = parse_device_path("PciRoot(0x0)/Pci(0x1,0x0)")
    assert [(kind, name.rstrip(b"\0"), bank.rstrip(b"\0")) for kind, _, name, bank in records] == [
        (16, b"Core", b""),
        (15, b"CPU fan", b""),
        (2, b"DIMM 0", b"BANK 0"),
        (2, b"DIMM 1", b""),
        (3, b"", b""),
        (1, b"", b""),
        (1, b"CPU 1", b""),
        (5, path.rstrip(b"\0"), b""),
    ]


def test_one_alternative_needs_no_list(make_board: MakeBoard) -> None:
    board = read_board(
        make_board(("    token: 0x1001\n", "    hardware: {fan: CPU fan}\n    token: 0x1001\n"))
    )
    assert [(name.kind, name.name) for name in board.components[0].hardware] == [(11, b"CPU fan")]


def test_kinds_have_the_numbers_of_the_format() -> None:
    lines = re.findall(r"kHardware(\w+) = (\d+),", FORMAT.read_text("ascii"))
    expected = {re.sub(r"(?<!^)([A-Z])", r"-\1", name).lower(): int(n) for name, n in lines}
    assert {**limits.HARDWARE_KINDS, "needs-processor": limits.NEEDS_PROCESSOR} == expected
    assert set(limits.DEVICE_PATH_KINDS) < set(limits.HARDWARE_KINDS)
