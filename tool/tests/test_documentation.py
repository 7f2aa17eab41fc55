"""Examples in the documentation are what they say: a board, a program."""

import re
from pathlib import Path

from PIL import Image

from boardtool.cli import main
from boardtool.reading import read_board

CLONE = Path(__file__).resolve().parents[2]
DOCUMENT = CLONE / "docs" / "board.md"


def test_example_works(tmp_path: Path) -> None:
    examples = re.findall(r"```yaml\n(.*?)```", DOCUMENT.read_text("utf-8"), re.DOTALL)
    assert len(examples) == 1
    (tmp_path / "board.yaml").write_text(examples[0], encoding="utf-8")
    Image.new("RGB", (640, 360)).save(tmp_path / "board.png")
    assert main(["check", "--strict", str(tmp_path)]) == 0
    assert len(read_board(tmp_path / "board.yaml").components) == 2


def test_the_start_from_a_volume_is_the_one_that_is_built() -> None:
    page = (CLONE / "docs" / "firmware.md").read_text("utf-8")
    program = (CLONE / "host" / "start" / "BoardscopeStart.c").read_text("utf-8")
    examples = re.findall(r"```c\n(STATIC.*?)```", page, re.DOTALL)
    assert len(examples) == 1
    assert examples[0] in program
