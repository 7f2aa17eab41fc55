"""Warns of names and labels that the view takes otherwise than their author meant."""

import difflib
from collections.abc import Sequence

from boardtool import limits
from boardtool.model import Board
from boardtool.problems import Problems

# What the view's summary takes from components of a category, and the text of system_info that
# stands in for it.
SUMMARY_LABELS = {
    "cpu": (("Brand", "Speed"), 3),
    "memory": (("Total Memory", "Frequency"), 4),
}
# What authors call the same.
NAMESAKES = {
    "cpu": ("name", "model", "processor", "cpu", "type", "clock", "frequency"),
    "memory": ("total", "memory", "capacity", "size", "speed", "clock"),
}

NAMED = 3


def check_wording(board: Board, problems: Problems) -> None:
    _check_names(board, problems)
    for category in SUMMARY_LABELS:
        _check_summary(board, category, problems)


def _check_names(board: Board, problems: Problems) -> None:
    first: dict[str, str] = {}
    for i, component in enumerate(board.components):
        other = first.setdefault(component.name.lower(), component.name)
        if other != component.name:
            problems.warn(
                f"components[{i}].name",
                f"differs from {other!r} only in capital and small letters",
            )


def _check_summary(board: Board, category: str, problems: Problems) -> None:
    """Warns when the category's lines are there but the summary finds none of them."""
    labels, override = SUMMARY_LABELS[category]
    own = [
        (i, component)
        for i, component in enumerate(board.components)
        if component.category == limits.CATEGORIES[category]
    ]
    lines = [
        (f"components[{i}].info[{k}].label", line.label)
        for i, component in own
        for k, line in enumerate(component.info)
    ]
    hardware = any(component.hardware for _, component in own)
    replaced = len(board.system_info) > override and board.system_info[override] != ""
    if hardware or replaced or any(label in labels for _, label in lines):
        return
    for field, label in lines:
        if _is_meant(label, (*labels, *NAMESAKES[category])):
            wanted = " and ".join(repr(label) for label in labels)
            problems.warn(
                field,
                f"{label!r} is not in the view's summary, which takes the lines labelled {wanted}",
            )


def _is_meant(label: str, known: tuple[str, ...]) -> bool:
    words = [word.lower() for word in known]
    return bool(difflib.get_close_matches(label.strip(" :").lower(), words, n=1, cutoff=0.8))


def listed(names: Sequence[str]) -> str:
    """ "A, B and 7 more"; what few names say whole, many say in part."""
    if len(names) <= NAMED + 1:
        return " and ".join([", ".join(names[:-1]), names[-1]] if len(names) > 1 else names)
    return f"{', '.join(names[:NAMED])} and {len(names) - NAMED} more"
