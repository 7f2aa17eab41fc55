"""The inventory of a PC: what a component can name as its hardware, each with what it is."""

from typing import Any

import yaml

from boardtool import limits
from boardtool.edit import nodes


class InventoryError(Exception):
    """A file that is no inventory; the text says why."""


def read_inventory(text: str) -> list[dict[str, Any]]:
    """Each name with its kind, and what the comment above it says of it."""
    try:
        root = yaml.compose(text, Loader=yaml.SafeLoader)
    except (yaml.YAMLError, RecursionError) as error:
        raise InventoryError(f"it is not YAML: {error}") from None
    fields = dict(_fields(root))
    if not isinstance(fields.get("hardware"), yaml.SequenceNode):
        raise InventoryError("it has no list 'hardware'; drop the inventory.yaml of a PC here")
    lines = text.splitlines()
    found = []
    for item in fields["hardware"].value:
        for kind, value in _fields(item):
            if kind in limits.HARDWARE_KINDS:
                about = _comment_above(lines, item.start_mark.line)
                found.append({"kind": kind, "name": nodes.plain(value), "about": about})
    return found


def _fields(node: yaml.Node | None) -> list[tuple[str, yaml.Node]]:
    if not isinstance(node, yaml.MappingNode):
        return []
    return [(str(key.value), value) for key, value in node.value]


def _comment_above(lines: list[str], line: int) -> str:
    comments: list[str] = []
    while line > 0 and (text := lines[line - 1].strip()).startswith("#"):
        comments.insert(0, text.removeprefix("#").strip())
        line -= 1
    return " ".join(comments)
