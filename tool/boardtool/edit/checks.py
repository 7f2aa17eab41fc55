"""What the tool says about a text that is to be a description."""

from pathlib import Path
from typing import Any

from boardtool.building import DESCRIPTION
from boardtool.checking import check
from boardtool.live import LiveView
from boardtool.problems import Problem


def problems_of(
    folder: Path, text: str | None = None, view: LiveView | None = None
) -> list[dict[str, Any]]:
    """The problems with the component and the field that each is about; of the file as it is, when
    there is no text. Without the view, nothing is said of what has to be measured in it."""
    return [_for_page(problem) for problem in check(folder / DESCRIPTION, text, view)]


def _for_page(problem: Problem) -> dict[str, Any]:
    inside = problem.component is not None
    return {
        "line": problem.line,
        "place": problem.place,
        "component": problem.component,
        "field": problem.field.partition("]")[2].removeprefix(".") if inside else problem.field,
        "text": problem.text,
        "severity": problem.severity,
    }
