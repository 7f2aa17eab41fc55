"""A board to edit."""

from pathlib import Path

from pictures import draw_board

TEXT = """\
# A board for tests of the page.
board: Tests
picture: board.png   # one to one at 1920 x 1080
styles:
  normal:
    default: {text: "226,228,230", background: "58,61,65", mark: "255,190,60"}
    focus: {text: "20,20,20", background: "255,203,72", mark: "150,40,0"}
components:
  # the processor
  - name: CPU
    category: cpu
    outline: [[500, 250], [700, 250], [700, 450], [500, 450]]
    leader: [[600, 350], [300, 200], [260, 200]]
    callout: right
    marker: [600, 350]
    token: 0x2001
    info:
      - {label: Brand, value: Example processor}

  # slots
  - name: DIMM_1
    category: memory
    outline: [[760, 180], [790, 180], [790, 500], [760, 500]]
    leader: [[775, 200], [1000, 120]]
    callout: left
    marker: [775, 200]
"""


def describe_board(folder: Path) -> Path:
    """Writes the description and its picture."""
    draw_board().save(folder / "board.png")
    (folder / "board.yaml").write_text(TEXT)
    return folder
