"""A place in a YAML file: the node, the name of its field, and where problems go.

Every getter reports what is wrong, with the line, and answers None, so that reading goes on and
finds the next problem too.
"""

import difflib
import re
from collections.abc import Iterable, Mapping
from dataclasses import dataclass
from typing import Any

import yaml

from boardtool.problems import Problems, Severity

KINDS = {
    "tag:yaml.org,2002:str": "text",
    "tag:yaml.org,2002:int": "a whole number",
    "tag:yaml.org,2002:float": "a number with a fraction",
    "tag:yaml.org,2002:bool": "true or false",
    "tag:yaml.org,2002:null": "nothing",
    "tag:yaml.org,2002:timestamp": "a date",
    "tag:yaml.org,2002:seq": "a list",
    "tag:yaml.org,2002:map": "fields",
}

# From a node to what it says. To parse its text once more would take longer than all else.
VALUES: Any = yaml.constructor.SafeConstructor()


def suggestion(word: str, known: Iterable[str]) -> str:
    """What the author may have meant, as the end of a sentence."""
    names = list(known)
    for name in nearest(word, names):
        return f"; did you mean {name!r}?"
    return f"; there are: {', '.join(names)}"


def nearest(word: str, known: Iterable[str]) -> set[str]:
    """The one that the author may have meant, if there is one."""
    return set(difflib.get_close_matches(word.lower(), list(known), n=1))


@dataclass(frozen=True)
class Cursor:
    node: yaml.Node
    field: str
    problems: Problems

    def report(self, text: str) -> None:
        self.problems.add(self.line, self.field, text)

    def warn(self, text: str) -> None:
        self.problems.add(self.line, self.field, text, Severity.WARNING)

    @property
    def line(self) -> int:
        return int(self.node.start_mark.line) + 1

    def at(self, node: yaml.Node, step: str) -> "Cursor":
        below = Cursor(node, f"{self.field}{step}", self.problems)
        self.problems.lines.setdefault(below.field, below.line)
        return below

    def found(self) -> str:
        kind = KINDS.get(self.node.tag, f"a {self.node.tag}")
        if isinstance(self.node, yaml.ScalarNode) and self.node.value:
            return f"{kind}: {self.node.value!r}"
        return kind

    def expected(self, what: str) -> None:
        self.report(f"expected {what}, found {self.found()}")

    def scalar(self, tag: str) -> str | None:
        if isinstance(self.node, yaml.ScalarNode) and self.node.tag == f"tag:yaml.org,2002:{tag}":
            return str(self.node.value)
        return None

    def comment(self) -> str | None:
        """What stands behind an unquoted value and looks as if it were meant: " #9", not " # 9"."""
        if not isinstance(self.node, yaml.ScalarNode) or self.node.style is not None:
            return None
        mark = self.node.end_mark
        rest = str(mark.buffer)[mark.pointer :].partition("\n")[0]
        match = re.match(r"[ \t]+(#+[^\s#].*?)[\s\0]*$", rest)
        return match[1] if match else None

    def is_mapping(self) -> bool:
        return isinstance(self.node, yaml.MappingNode)

    def peek(self, name: str) -> str | None:
        """The text of a field, whatever else is wrong; reports nothing."""
        pairs = self.node.value if isinstance(self.node, yaml.MappingNode) else []
        texts = (value.value for key, value in pairs if key.value == name)
        return next((text for text in texts if isinstance(text, str)), None)

    def items(self) -> list["Cursor"] | None:
        """The entries of a list."""
        if not isinstance(self.node, yaml.SequenceNode):
            self.expected("a list")
            return None
        return [self.at(node, f"[{i}]") for i, node in enumerate(self.node.value)]

    def entries(self) -> dict[str, "Cursor"] | None:
        """The fields of a mapping by name; a name that comes twice is reported."""
        if not isinstance(self.node, yaml.MappingNode):
            self.expected("fields")
            return None
        result: dict[str, Cursor] = {}
        for key, value in self.node.value:
            name = str(key.value)
            entry = self.at(value, f".{name}" if self.field else name)
            if name in result:
                line = int(key.start_mark.line) + 1
                self.problems.add(line, entry.field, "stands here a second time")
            else:
                result[name] = entry
        return result

    def fields(self, required: Iterable[str], optional: Iterable[str]) -> dict[str, "Cursor"]:
        """The known fields that are there; missing and unknown ones are reported, and a misspelt
        one once."""
        entries = self.entries()
        if entries is None:
            return {}
        needed = list(required)
        known = [*needed, *optional]
        meant = set()
        for name, entry in entries.items():
            if name not in known:
                free = [field for field in known if field not in entries]
                entry.report(f"unknown field{suggestion(name, free or known)}")
                meant |= nearest(name, free)
        for name in needed:
            if name not in entries and name not in meant:
                self.report(f"field {name!r} is missing")
        return {name: entry for name, entry in entries.items() if name in known}

    def text(self, limit: int) -> str | None:
        """Text of at most limit UTF-16 code units, all of them whole characters."""
        value = self.scalar("str")
        if value is None:
            number = isinstance(self.node, yaml.ScalarNode) and self.node.value
            self.expected('text (put it between "quotes")' if number else "text")
            return None
        wide = next((c for c in value if ord(c) > 0xFFFF or c == "\0"), None)
        if wide is not None:
            self.report(f"the firmware's 16-bit texts have no room for {wide!r}")
            return None
        if len(value) > limit:
            self.report(f"{len(value)} characters, at most {limit} are allowed")
            return None
        return value

    def integer(self, low: int, high: int) -> int | None:
        value = self.scalar("int")
        if value is None:
            self.expected("a whole number")
            return None
        number = int(VALUES.construct_yaml_int(self.node))
        if not low <= number <= high:
            self.report(f"{value}, {low} to {high} are allowed")
            return None
        return number

    def integers(self) -> list[int] | None:
        """The numbers of a list that holds nothing else; reports nothing."""
        if not isinstance(self.node, yaml.SequenceNode):
            return None
        if any(node.tag != "tag:yaml.org,2002:int" for node in self.node.value):
            return None
        return [int(VALUES.construct_yaml_int(node)) for node in self.node.value]

    def boolean(self) -> bool | None:
        if self.scalar("bool") is None:
            self.expected("true or false")
            return None
        return bool(VALUES.construct_yaml_bool(self.node))

    def choice(self, values: Mapping[str, int]) -> int | None:
        name = self.scalar("str")
        if name is None:
            self.expected(f"one of {', '.join(values)}")
            return None
        if name not in values:
            self.report(f"unknown value {name!r}{suggestion(name, values)}")
            return None
        return values[name]
