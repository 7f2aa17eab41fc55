"""A description's text with what was changed in it, and everything else as its author wrote it.

Values that say something else are exchanged where they stand. So comments, the order and quotes of
fields, line breaks within them, and how a number is written stay to the byte. A library that reads
the whole file and writes it anew keeps comments, but joins and wraps lines, and hangs a comment
that stands above a component onto the one before it, with which it would move.
"""

from dataclasses import dataclass, field
from typing import NamedTuple

import yaml

from boardtool.edit import lists, nodes
from boardtool.edit.flow import ORDERS, field_lines, flow, in_order, value_of
from boardtool.edit.nodes import Plain


class Edit(NamedTuple):
    start: int
    end: int
    text: str


def rewrite(text: str, root: yaml.Node, new: Plain) -> str:
    """The text of which `root` was composed, changed so that it says `new`."""
    writer = Writer(text)
    writer.change(root, new, "")
    return writer.result(0, len(text))


@dataclass
class Writer:
    text: str
    edits: list[Edit] = field(default_factory=list)

    def __post_init__(self) -> None:
        self.newline = "\r\n" if "\r\n" in self.text else "\n"

    def replace(self, start: int, end: int, text: str) -> None:
        self.edits.append(Edit(start, end, text))

    def result(self, start: int, end: int) -> str:
        """A part of the text with the edits that lie in it."""
        parts = []
        at = start
        for edit in sorted(self.edits, key=lambda edit: edit[:2]):
            if start <= edit.start and edit.end <= end:
                parts += [self.text[at : edit.start], edit.text]
                at = edit.end
        return "".join([*parts, self.text[at:end]])

    def change(self, node: yaml.Node, new: Plain, name: str) -> None:
        """Makes the value of a field, or an item of it, say something else; `name` is the field's
        name."""
        if nodes.same(nodes.plain(node), new):
            return
        if isinstance(node, yaml.MappingNode) and isinstance(new, dict):
            self._change_mapping(node, new, name)
        elif isinstance(node, yaml.SequenceNode) and isinstance(new, list):
            self._change_list(node, new, name)
        else:
            self._exchange(node, value_of(name, new))

    def _exchange(self, node: yaml.Node, text: str) -> None:
        start = node.start_mark.index
        end = nodes.end_of(node, self.text)
        # A value that is not there ends where it starts, right behind the colon.
        self.replace(start, end, text if end > start else f" {text}")

    def _change_list(self, node: yaml.SequenceNode, new: list[Plain], name: str) -> None:
        pairs = lists.pair(nodes.plain(node), new)
        if [pair.old for pair in pairs] == list(range(len(node.value))):
            for item, pair in zip(node.value, pairs):
                self.change(item, pair.new, name)
        elif lists.can_move(node, self.text) and pairs:
            lists.move(self, node, pairs, name)
        else:
            self._new_list(node, [pair.new for pair in pairs], name)

    def _new_list(self, node: yaml.SequenceNode, new: list[Plain], name: str) -> None:
        colon = len(self.text[: node.start_mark.index].rstrip())
        head = self.text[nodes.line_start(self.text, colon) : colon]
        if head.strip() != f"{name}:":
            self._exchange(node, flow(new))
            return
        lines = field_lines(name, new, len(head) - len(head.lstrip()))
        lines[0] = lines[0].lstrip().removeprefix(f"{name}:")
        self.replace(colon, nodes.end_of(node, self.text), self.newline.join(lines))

    def _change_mapping(self, node: yaml.MappingNode, new: dict[str, Plain], name: str) -> None:
        old = {key.value: value for key, value in node.value}
        if not old.keys() & new.keys():
            self._exchange(node, flow(new))
        elif old.keys() == new.keys() or nodes.is_block(node):
            for field_name, value in old.items():
                if field_name in new:
                    self.change(value, new[field_name], field_name)
            self._remove(node, new)
            self._add(node, new, name)
        else:
            self._exchange(node, self._flow_mapping(old, new))

    def _flow_mapping(self, old: dict[str, yaml.Node], new: dict[str, Plain]) -> str:
        parts = []
        for name in sorted(
            new, key=lambda name: list(old).index(name) if name in old else len(old)
        ):
            text = value_of(name, new[name])
            if name in old and nodes.same(nodes.plain(old[name]), new[name]):
                text = self.text[old[name].start_mark.index : nodes.end_of(old[name], self.text)]
            parts.append(f"{flow(name)}: {text}")
        return "{" + ", ".join(parts) + "}"

    def _remove(self, node: yaml.MappingNode, new: dict[str, Plain]) -> None:
        following = [key.start_mark.index for key, _ in node.value[1:]]
        for index, (key, value) in enumerate(node.value):
            if key.value in new:
                continue
            start = nodes.line_start(self.text, key.start_mark.index)
            if self.text[start : key.start_mark.index].strip():
                # Behind the dash of a list: the next field takes its place.
                self.replace(key.start_mark.index, following[index], "")
            else:
                end = nodes.end_of(value, self.text)
                self.replace(start, nodes.next_line(self.text, max(end, key.end_mark.index)), "")

    def _add(self, node: yaml.MappingNode, new: dict[str, Plain], name: str) -> None:
        order = ORDERS.get(name, ())
        kept = [(key, value) for key, value in node.value if key.value in new]
        old = {key.value for key, _ in node.value}
        for field_name in in_order(
            [field_name for field_name in new if field_name not in old], name
        ):
            earlier = order[: order.index(field_name)] if field_name in order else order
            before = [entry for entry in kept if entry[0].value in earlier] or kept[-1:]
            key, last = before[-1]
            place = nodes.line_end(
                self.text, max(nodes.end_of(last, self.text), key.end_mark.index)
            )
            lines = field_lines(field_name, new[field_name], node.start_mark.column)
            self.replace(place, place, "".join(self.newline + line for line in lines))
