"""What is wrong with a description, said so that its author finds the place."""

from dataclasses import dataclass, field


@dataclass(frozen=True, order=True)
class Problem:
    """line counts from 1; field is empty for the file as a whole."""

    file: str
    line: int
    field: str
    text: str

    def __str__(self) -> str:
        place = f"{self.file}:{self.line}: "
        return f"{place}{self.field}: {self.text}" if self.field else f"{place}{self.text}"


@dataclass
class Problems:
    """Collects every problem of one file, so that one run shows them all."""

    file: str
    found: list[Problem] = field(default_factory=list)

    def add(self, line: int, field_name: str, text: str) -> None:
        self.found.append(Problem(file=self.file, line=line, field=field_name, text=text))

    def sorted(self) -> list[Problem]:
        return sorted(self.found)


class BoardError(Exception):
    """A description that cannot be used, with all its problems."""

    def __init__(self, problems: list[Problem]) -> None:
        super().__init__("\n".join(str(problem) for problem in problems))
        self.problems = problems
