"""The tool's numbers are those of the contract's headers."""

import re
from pathlib import Path

import pytest

from boardtool import limits

PROTOCOL = Path(__file__).resolve().parents[2] / "include" / "Protocol"


def defines() -> dict[str, int]:
    """Every macro of the contract that is a number."""
    found = {}
    for header in PROTOCOL.glob("Obv*.h"):
        pattern = r"^#define (OBV_\w+) +(0x[0-9A-Fa-f]+|\d+)U?$"
        for name, number in re.findall(pattern, header.read_text("ascii"), re.MULTILINE):
            found[name] = int(number, 0)
    return found


@pytest.mark.parametrize(
    ("prefix", "names", "exceptions"),
    [
        ("OBV_TYPE_", limits.CATEGORIES, {"NONE": "UNCATEGORISED", "CPU": "PROCESSOR"}),
        ("OBV_CALLOUT_", limits.CALLOUT_SIDES, {}),
        ("OBV_TEXT_", limits.ALIGNMENTS, {}),
        ("OBV_INFO_", limits.INFO_KINDS, {"SIDE": "SIDE_LIST"}),
        ("OBV_LOGO_", limits.LOGOS, {}),
        ("OBV_MARKER_", limits.MARKERS, {}),
    ],
)
def test_names_have_the_numbers_of_the_contract(
    prefix: str, names: dict[str, int], exceptions: dict[str, str]
) -> None:
    expected = {}
    for name, number in names.items():
        upper = name.upper().replace("-", "_")
        expected[prefix + exceptions.get(upper, upper)] = number
    capacities = ("_CAPACITY", "_LENGTH")
    assert expected == {
        name: number
        for name, number in defines().items()
        if name.startswith(prefix) and not name.endswith(capacities)
    }


@pytest.mark.parametrize(
    ("name", "number"),
    [
        ("OBV_MAX_COMPONENTS", limits.COMPONENTS),
        ("OBV_LEADER_POINT_CAPACITY", limits.LEADER_POINTS_MAX),
        ("OBV_INFO_CAPACITY", limits.INFO_LINES),
        ("OBV_INFO_LABEL_LENGTH", limits.LABEL + 1),
        ("OBV_INFO_VALUE_LENGTH", limits.VALUE + 1),
        ("OBV_SYSTEM_INFO_COUNT", limits.SYSTEM_INFO_TEXTS),
        ("OBV_SYSTEM_INFO_TEXT_LENGTH", limits.SYSTEM_INFO_TEXT + 1),
        ("OBV_COLOR_TEXT_SIZE", limits.COLOR_TEXT + 1),
    ],
)
def test_limits_are_those_of_the_contract(name: str, number: int) -> None:
    assert defines()[name] == number
