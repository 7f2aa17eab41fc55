"""Boards in a temporary folder, for tests to spoil."""

import os
import sys
from collections.abc import Callable
from pathlib import Path

import pytest
from PIL import Image

CLONE = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CLONE / "tool"), str(CLONE / "script")]

# The one that the native tests are built with: its sanitizers look on.
os.environ.setdefault("BOARDSCOPE_VIEW_PROGRAM", str(CLONE / "build" / "native" / "board-view"))

BOARD = """\
board: Bench
picture: board.png
styles:
  normal:
    default: {text: "1,2,3", background: "204,205,206", mark: "7,8,9"}
    focus: {text: "1,2,3", background: "204,205,206", mark: "7,8,9"}
components:
  - name: FAN 1
    category: fan
    outline: [[10, 10], [20, 10], [20, 20], [10, 20]]
    leader: [[15, 15], [30, 30]]
    callout: left
    marker: [11, 11]
    token: 0x1001
    info:
      - {label: Speed, value: 1200 RPM}
"""

MakeBoard = Callable[..., Path]


@pytest.fixture
def make_board(tmp_path: Path) -> MakeBoard:
    """Writes the sound board with pairs of old and new text exchanged; returns its file."""

    def make(*changes: tuple[str, str]) -> Path:
        text = BOARD
        for old, new in changes:
            assert old in text, f"the test exchanges {old!r}, which is not there"
            text = text.replace(old, new, 1)
        (tmp_path / "board.yaml").write_text(text, encoding="utf-8")
        Image.new("RGB", (64, 48), (200, 100, 50)).save(tmp_path / "board.png")
        return tmp_path / "board.yaml"

    return make
