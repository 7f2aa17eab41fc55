"""What is wrong with a description, said so that its author finds the place.

Whoever shows problems elsewhere than in a terminal takes them from `checking.check`, as `Problem`s:
`field` is the path of the field, like "components[18].leader[1]", `component` its number and `name`
the component's name, `text` the message without any of them, and `severity` tells an error, with
which there is no board, from a warning.
"""

import re
from collections.abc import Iterable
from dataclasses import dataclass, field, replace
from enum import StrEnum


class Severity(StrEnum):
    ERROR = "error"
    WARNING = "warning"


@dataclass(frozen=True)
class Problem:
    """line counts from 1; field is empty for the file as a whole."""

    file: str
    line: int
    field: str
    text: str
    severity: Severity = Severity.ERROR
    name: str = ""

    @property
    def component(self) -> int | None:
        """The number of the component that it is about, from 0; None for the rest of the board."""
        match = re.match(r"components\[(\d+)\]", self.field)
        return int(match[1]) if match else None

    @property
    def place(self) -> str:
        """The field for a person, who knows components by their names."""
        head, bracket, rest = self.field.partition("]")
        return f"{head}{bracket} ({self.name}){rest}" if self.name else self.field

    def __str__(self) -> str:
        kind = "" if self.severity is Severity.ERROR else f"{self.severity}: "
        field_name = f"{self.place}: " if self.field else ""
        return f"{self.file}:{self.line}: {kind}{field_name}{self.text}"


def has_errors(problems: Iterable[Problem]) -> bool:
    return any(problem.severity is Severity.ERROR for problem in problems)


@dataclass
class Problems:
    """Collects every problem of one file, so that one run shows them all."""

    file: str
    found: list[Problem] = field(default_factory=list)
    lines: dict[str, int] = field(default_factory=dict)
    """Where each field stands, for what is found after reading."""
    names: dict[int, str] = field(default_factory=dict)
    """The components' names, as far as they have any."""

    def add(
        self, line: int, field_name: str, text: str, severity: Severity = Severity.ERROR
    ) -> None:
        self.found.append(Problem(self.file, line, field_name, text, severity))

    def warn(self, field_name: str, text: str) -> None:
        """Warns of a field that was read, or that is missing where it belongs."""
        self.add(self._line_of(field_name), field_name, text, Severity.WARNING)

    def about(self, field_name: str) -> bool:
        """Whether something is said of a field already."""
        return any(problem.field == field_name for problem in self.found)

    def sorted(self) -> list[Problem]:
        """In the order of the lines, and for one line in the order in which they were found."""
        named = (self._named(problem) for problem in self.found)
        return sorted(named, key=lambda problem: problem.line)

    def _line_of(self, field_name: str) -> int:
        while field_name and field_name not in self.lines:
            field_name = field_name[: max(field_name.rfind("."), field_name.rfind("["), 0)]
        return self.lines.get(field_name, 1)

    def _named(self, problem: Problem) -> Problem:
        name = "" if problem.component is None else self.names.get(problem.component, "")
        return replace(problem, name=name)


class BoardError(Exception):
    """A description that cannot be used, with all its problems."""

    def __init__(self, problems: list[Problem]) -> None:
        super().__init__("\n".join(str(problem) for problem in problems))
        self.problems = problems
