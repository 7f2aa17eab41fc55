"""New values as YAML, in the manner of the descriptions in docs/board.md."""

import math
import re
from collections.abc import Iterable

import yaml

from boardtool.components import OPTIONAL, REQUIRED
from boardtool.edit.nodes import Plain

ORDERS = {
    "": ("board", "picture", "logo", "marker", "styles", "system_info", "components"),
    "components": (*REQUIRED, *OPTIONAL),
}
"""In which order fields follow one another, by the name of the list or mapping they stand in."""

HEX_FIELDS = ("token",)
PLAIN_WORD = re.compile(r"[A-Za-z_][\w-]*")


def in_order(fields: Iterable[str], name: str) -> list[str]:
    """The fields of a mapping that belongs to the list or field `name`, as they follow."""
    order = ORDERS.get(name, ())
    return sorted(fields, key=lambda field: order.index(field) if field in order else len(order))


class _Dumper(yaml.SafeDumper):
    def ignore_aliases(self, data: object) -> bool:
        return True


def _text(dumper: yaml.SafeDumper, text: str) -> yaml.Node:
    style = None if PLAIN_WORD.fullmatch(text) else '"'
    return dumper.represent_scalar("tag:yaml.org,2002:str", text, style=style)


_Dumper.add_representer(str, _text)


def flow(value: Plain) -> str:
    """A value in one line, fit to stand inside brackets, too."""
    line = yaml.dump(
        [value],
        Dumper=_Dumper,
        default_flow_style=True,
        width=math.inf,
        allow_unicode=True,
        sort_keys=False,
    )
    return line.strip()[1:-1]


def value_of(name: str, value: Plain) -> str:
    """A field's value in one line."""
    if name in HEX_FIELDS and isinstance(value, int) and value > 0:
        return f"0x{value:04X}"
    return flow(value)


def field_lines(name: str, value: Plain, indent: int) -> list[str]:
    """A field as lines: what is a list of mappings gets a line for each."""
    head = " " * indent + flow(name) + ":"
    if isinstance(value, list) and value and all(isinstance(item, dict) for item in value):
        return [head, *(line for item in value for line in item_lines(name, item, indent + 2))]
    return [f"{head} {value_of(name, value)}"]


def item_lines(name: str, item: Plain, indent: int) -> list[str]:
    """An item of a list; of `components`, with a line for each field."""
    if isinstance(item, dict) and len(item) == 1:
        [(field, value)] = item.items()
        return [" " * indent + f"- {flow(field)}: {value_of(field, value)}"]
    if name != "components" or not isinstance(item, dict):
        return [" " * indent + "- " + flow(item)]
    fields = in_order(item, name)
    lines = [line for field in fields for line in field_lines(field, item[field], indent + 2)]
    return [" " * indent + "- " + lines[0].lstrip(), *lines[1:]]
