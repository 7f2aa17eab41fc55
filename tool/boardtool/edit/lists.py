"""Items that come, go and change places, each with the comment above it."""

from __future__ import annotations

import difflib
import json
from dataclasses import dataclass
from typing import TYPE_CHECKING, NamedTuple

import yaml

from boardtool.edit import nodes
from boardtool.edit.flow import item_lines
from boardtool.edit.nodes import Plain

if TYPE_CHECKING:
    from boardtool.edit.rewriting import Writer

ORIGIN = "origin"
"""In an item that the page hands back: which item of the file it was."""


def without_origins(document: dict[str, Plain]) -> dict[str, Plain]:
    """A description that the page has handed back, as a file would say it."""
    return document | {"components": [_by_origin(item).new for item in document["components"]]}


class Pair(NamedTuple):
    """A new item and the place of the old one that it was, if it was one."""

    old: int | None
    new: Plain


def pair(old: list[Plain], new: list[Plain]) -> list[Pair]:
    """Finds out what became of the items of a list."""
    if any(isinstance(item, dict) and ORIGIN in item for item in new):
        return [_by_origin(item) for item in new]
    pairs: list[Pair] = []
    before, after = ([json.dumps(item, sort_keys=True) for item in items] for items in (old, new))
    matcher = difflib.SequenceMatcher(None, before, after, autojunk=False)
    for _, i1, i2, j1, j2 in matcher.get_opcodes():
        # What stands in the same place has changed; more or fewer have come or gone.
        places: list[int | None] = [*range(i1, i2)]
        pairs += [Pair(places[k] if k < i2 - i1 else None, new[j1 + k]) for k in range(j2 - j1)]
    return pairs


def _by_origin(item: dict[str, Plain]) -> Pair:
    fields = {name: value for name, value in item.items() if name != ORIGIN}
    return Pair(item.get(ORIGIN), fields)


def can_move(node: yaml.SequenceNode, text: str) -> bool:
    """Whether each item begins a line with its dash."""
    if not nodes.is_block(node) or not node.value:
        return False
    dashes = [_dash(item, text) for item in node.value]
    return all(not text[nodes.line_start(text, dash) : dash].strip() for dash in dashes)


def _dash(item: yaml.Node, text: str) -> int:
    return text.rindex("-", 0, item.start_mark.index)


@dataclass(frozen=True)
class Piece:
    """An item's lines: empty ones, the comments above it, and from `start` to `end` its own."""

    space: str
    heading: str
    comment: str
    start: int
    end: int


def _pieces(node: yaml.SequenceNode, text: str) -> list[Piece]:
    pieces = []
    before = _first_comment(text, nodes.line_start(text, _dash(node.value[0], text)))
    for item in node.value:
        start = nodes.line_start(text, _dash(item, text))
        end = nodes.next_line(text, nodes.end_of(item, text))
        lines = text[before:start].splitlines(keepends=True)
        comments = [line for line in lines if line.strip()]
        first = lines.index(comments[0]) if comments else len(lines)
        # Comments that an empty line sets off are about what follows, not about this item alone.
        near = len(lines)
        while near > first and lines[near - 1].strip():
            near -= 1
        space, heading, comment = (
            "".join(part) for part in (lines[:first], lines[first:near], lines[near:])
        )
        pieces.append(Piece(space, heading, comment, start, end))
        before = end
    return pieces


def _first_comment(text: str, line: int) -> int:
    """The first of the empty lines and comments above a line."""
    while line > 0:
        above = nodes.line_start(text, line - 1)
        if text[above:line].strip() and not text[above:line].lstrip().startswith("#"):
            break
        line = above
    return line


def move(writer: Writer, node: yaml.SequenceNode, pairs: list[Pair], name: str) -> None:
    """Writes the items in their new order. An item takes its comments with it; the empty lines
    stay where they are, and so does a heading whose item goes."""
    text = writer.text
    pieces = _pieces(node, text)
    kept = {pair.old for pair in pairs}
    headings = {i: piece.heading for i, piece in enumerate(pieces) if i not in kept}
    parts: list[str] = []
    for place, (old, new) in enumerate(pairs):
        parts.append(pieces[min(place, len(pieces) - 1)].space)
        parts.append(
            "".join(headings.pop(i) for i in sorted(headings) if old is not None and i < old)
        )
        if old is None:
            lines = item_lines(name, new, node.start_mark.column)
            parts += [line + writer.newline for line in lines]
            continue
        piece = pieces[old]
        writer.change(node.value[old], new, name)
        parts += [piece.heading, piece.comment, writer.result(piece.start, piece.end)]
        if not parts[-1].endswith("\n"):
            parts.append(writer.newline)
    start = _first_comment(text, pieces[0].start)
    end = nodes.line_end(text, pieces[-1].end - 1)
    writer.edits = [edit for edit in writer.edits if edit.end < start or edit.start > end]
    writer.replace(start, end, "".join([*parts, *headings.values()]).rstrip("\r\n"))
