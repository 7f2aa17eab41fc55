"""Everything that there is to say about a description: errors, and what its author may not want.

`check` is what the command check prints, and what an editor shows beside the fields.
"""

from pathlib import Path

from boardtool.background import check_background
from boardtool.geometry import check_geometry
from boardtool.live import LiveView
from boardtool.measured import check_measured
from boardtool.problems import Problem, Problems
from boardtool.reading import read_into
from boardtool.wording import check_wording


def check(path: Path, text: str | None = None, view: LiveView | None = None) -> list[Problem]:
    """The problems of a description, or of a text that is to be the file's, in the order of its
    lines. Without the view, nothing is said of what has to be measured in it."""
    problems = Problems(str(path))
    board = read_into(problems, path, text)
    if board is not None:
        check_wording(board, problems)
        check_geometry(board, problems)
        check_background(board, problems)
        if view is not None:
            check_measured(board, view, problems)
    return problems.sorted()
