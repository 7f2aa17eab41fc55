"""The example in the documentation is a board that the tool accepts."""

import re
from pathlib import Path

from PIL import Image

from boardtool.cli import main
from boardtool.reading import read_board

DOCUMENT = Path(__file__).resolve().parents[2] / "docs" / "board.md"


def test_example_works(tmp_path: Path) -> None:
    examples = re.findall(r"```yaml\n(.*?)```", DOCUMENT.read_text("utf-8"), re.DOTALL)
    assert len(examples) == 1
    (tmp_path / "board.yaml").write_text(examples[0], encoding="utf-8")
    Image.new("RGB", (640, 360)).save(tmp_path / "board.png")
    assert main(["check", "--strict", str(tmp_path)]) == 0
    assert len(read_board(tmp_path / "board.yaml").components) == 2
