"""The order of the rooms, as script/check holds it."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "script"))

from support import rooms


def test_an_include_that_climbs_is_a_problem() -> None:
    includes = {
        "platform/Pointer.cpp": ["platform/Pointer.h", "app/base/Run.h", "view/Look.h"],
        "view/Look.cpp": ["platform/FontTable.h", "app/Entry.h"],
    }
    assert list(rooms.climbing(includes)) == [
        "platform/Pointer.cpp includes view/Look.h: view stands above platform.",
        "view/Look.cpp includes app/Entry.h: app stands above view.",
    ]


def test_host_and_application_share_the_contract_alone() -> None:
    includes = {
        "host/portable/Host.cpp": ["host/portable/Host.h", "app/base/Types.h"],
        "app/Entry.cpp": ["host/portable/Host.h"],
    }
    assert len(list(rooms.climbing(includes))) == 2


def test_the_view_for_authors_stands_above_everything() -> None:
    includes = {
        "tool/view/View.cpp": ["tool/view/View.h", "view/ViewState.h", "host/portable/Host.h"],
        "host/portable/Host.cpp": ["tool/view/View.h"],
        "app/Entry.cpp": ["tool/view/View.h"],
    }
    assert list(rooms.climbing(includes)) == [
        "host/portable/Host.cpp includes tool/view/View.h: tool/view stands above everything.",
        "app/Entry.cpp includes tool/view/View.h: tool/view stands above everything.",
    ]


def test_a_circle_between_units_is_a_problem() -> None:
    includes = {
        "view/A.cpp": ["view/A.h", "view/B.h"],
        "view/B.cpp": ["view/B.h", "view/C.h"],
        "view/C.h": ["view/A.h"],
    }
    assert list(rooms.circles(includes)) == [
        "view/A includes view/B includes view/C includes view/A: a circle."
    ]


def test_what_only_goes_down_is_no_problem() -> None:
    includes = {
        "view/A.cpp": ["view/A.h", "view/B.h", "app/base/C.h"],
        "view/B.h": ["view/C.h"],
        "app/A.cpp": ["view/A.h", "app/base/C.h"],
    }
    assert list(rooms.climbing(includes)) == []
    assert list(rooms.circles(includes)) == []


def test_the_innermost_room_counts() -> None:
    assert rooms.room_of("app/base/Run.h") == "app/base"
    assert rooms.room_of("app/Entry.cpp") == "app"
    assert rooms.room_of("test/unit/app/LifecycleTest.cpp") is None
