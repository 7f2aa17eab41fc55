"""Where the parts of a description stand in its text, and what they say in plain values."""

import json
from typing import Any

import yaml

Plain = Any
"""What a field can say, as JSON has it: dict, list, str, int, bool or None."""

CONSTRUCTED = {f"tag:yaml.org,2002:{kind}" for kind in ("int", "bool", "null")}


def plain(node: yaml.Node) -> Plain:
    """What a node says. A scalar of a kind that no field takes is its text."""
    if isinstance(node, yaml.MappingNode):
        return {str(key.value): plain(value) for key, value in node.value}
    if isinstance(node, yaml.SequenceNode):
        return [plain(item) for item in node.value]
    if node.tag in CONSTRUCTED:
        try:
            return yaml.constructor.SafeConstructor().construct_document(node)
        except (ValueError, KeyError, yaml.YAMLError):  # An explicit tag may stand before anything.
            pass
    return str(node.value)


def same(one: Plain, other: Plain) -> bool:
    """Whether two values say the same; unlike ==, true is not 1."""
    return json.dumps(one, sort_keys=True) == json.dumps(other, sort_keys=True)


def repeated(node: yaml.Node, seen: set[int] | None = None) -> yaml.Node | None:
    """A node that stands in more than one place, by an anchor and its aliases."""
    seen = set() if seen is None else seen
    if id(node) in seen:
        return node
    seen.add(id(node))
    for child in _children(node):
        if (found := repeated(child, seen)) is not None:
            return found
    return None


def _children(node: yaml.Node) -> list[yaml.Node]:
    if isinstance(node, yaml.MappingNode):
        return [part for entry in node.value for part in entry]
    return node.value if isinstance(node, yaml.SequenceNode) else []


def is_block(node: yaml.Node) -> bool:
    """Whether it is a collection written over lines, without brackets."""
    return isinstance(node, yaml.CollectionNode) and not node.flow_style


def end_of(node: yaml.Node, text: str) -> int:
    """Where the last character of a node is over; its end mark lies behind blanks and comments."""
    if is_block(node) and node.value:
        last = node.value[-1]
        return end_of(last[1] if isinstance(last, tuple) else last, text)
    start, end = node.start_mark.index, node.end_mark.index
    return start + len(text[start:end].rstrip())


def line_start(text: str, index: int) -> int:
    return text.rfind("\n", 0, index) + 1


def line_end(text: str, index: int) -> int:
    """Where the line's text is over, before its line break."""
    end = text.find("\n", index)
    end = len(text) if end < 0 else end
    return end - 1 if text[end - 1 : end] == "\r" else end


def next_line(text: str, index: int) -> int:
    """Where the line behind this one begins."""
    end = text.find("\n", index)
    return len(text) if end < 0 else end + 1


NOWHERE = yaml.Mark("", 0, 0, 0, "\0", 0)
TAGS = {bool: "bool", int: "int", str: "str", type(None): "null"}


def compose(value: Plain) -> yaml.Node:
    """A node that says a value, without a text behind it."""
    if isinstance(value, dict):
        entries = [(compose(name), compose(item)) for name, item in value.items()]
        return yaml.MappingNode("tag:yaml.org,2002:map", entries, NOWHERE, NOWHERE)
    if isinstance(value, list):
        items = [compose(item) for item in value]
        return yaml.SequenceNode("tag:yaml.org,2002:seq", items, NOWHERE, NOWHERE)
    text = str(value).lower() if isinstance(value, bool) else str(value)
    tag = f"tag:yaml.org,2002:{TAGS[type(value)]}"
    return yaml.ScalarNode(tag, text, NOWHERE, NOWHERE)
