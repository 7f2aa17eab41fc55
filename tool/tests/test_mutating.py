"""Which changes script/mutate makes to a line, and which lines it leaves alone."""

import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "script"))

from support import mutating


def changes(line: str) -> set[str]:
    return {mutant.becomes for mutant in mutating.mutants_of("a.cpp", line)}


def test_comparison_and_number() -> None:
    assert changes("  if (i < 3) {") == {"  if (i <= 3) {", "  if (i < (3 + 1)) {"}


def test_each_place_is_changed_alone() -> None:
    assert changes("  bool x = a && b && c;") == {
        "  bool x = a || b && c;",
        "  bool x = a && b || c;",
    }


def test_statement_is_left_out() -> None:
    assert "" in changes("  (void)gBS->CloseEvent(gHotPlug.Event);")
    assert "" in changes("  gRun.ExitRequested = done;")


def test_declaration_is_not_left_out() -> None:
    assert "" not in changes("  UINTN count = Count();")


@pytest.mark.parametrize(
    "line",
    [
        "// if (a < b) return 0;",
        '#include "app/base/Run.h"',
        "static_assert(sizeof(Board) == 40);",
    ],
)
def test_what_the_machine_does_not_run_is_left_alone(line: str) -> None:
    assert changes(line) == set()


def test_texts_are_left_alone() -> None:
    assert changes('  LogError("a < b && 1\\n");') == {""}


def test_sample_is_the_same_for_the_same_seed() -> None:
    files = mutating.sources()
    first = mutating.choose(files, 20, 7)
    assert first == mutating.choose(files, 20, 7)
    assert first != mutating.choose(files, 20, 8)
    assert len(first) == 20
