"""The firmware's screen as its serial console shows it: the characters at their places, and which
of them stand out."""

import re
import unicodedata
from collections import Counter

_CODE = re.compile(r"\x1b\[([0-9;?]*)([A-Za-z])|\x1b[=>()][0-9A-B]?|([\s\S])")
_ROWS = 80
_COLUMNS = 250


def ground_of(look: str) -> str:
    """The colour behind a character; empty where nothing was written yet."""
    return next((part for part in look.split(",") if part.startswith("ground")), "")


class Terminal:
    """Follows what a console writes."""

    def __init__(self) -> None:
        self._clear()
        self._row = 0
        self._column = 0
        self._look = ""

    def feed(self, text: str) -> None:
        for match in _CODE.finditer(text):
            if match.group(2):
                self._command(match.group(1), match.group(2))
            elif match.group(3):
                self._character(match.group(3))

    def lines(self) -> list[str]:
        """The rows of the screen, without the blanks at their ends."""
        return ["".join(row).rstrip() for row in self._signs]

    def text(self) -> str:
        return "\n".join(self.lines())

    def row_of(self, text: str) -> int | None:
        """The first row that holds the text."""
        return next((row for row, line in enumerate(self.lines()) if text in line), None)

    def standing_out(self) -> list[str]:
        """The rows in which words stand on another ground than most of the row: the entry under the
        bar of a form browser is among them, whether the bar is on its name or on its value."""
        found = []
        for signs, row in zip(self._signs, self._looks, strict=True):
            grounds = [ground_of(look) for look in row]
            counts = Counter(ground for ground in grounds if ground)
            others = [ground for ground, _ in counts.most_common()[1:]]
            if any(
                sign.isalnum() for sign, own in zip(signs, grounds, strict=True) if own in others
            ):
                found.append("".join(signs).strip())
        return found

    def _clear(self) -> None:
        self._signs = [[" "] * _COLUMNS for _ in range(_ROWS)]
        self._looks = [[""] * _COLUMNS for _ in range(_ROWS)]

    def _command(self, values: str, letter: str) -> None:
        numbers = [int(value) if value.isdigit() else 0 for value in values.split(";")]
        if letter == "H":
            self._row = min(max(numbers[0], 1), _ROWS) - 1
            column = numbers[1] if len(numbers) > 1 else 1
            self._column = min(max(column, 1), _COLUMNS) - 1
        elif letter == "J":
            self._clear()
        elif letter == "m":
            self._colour(numbers)

    def _colour(self, numbers: list[int]) -> None:
        parts = dict(part.split("=") for part in self._look.split(",") if part)
        for number in numbers:
            if number == 0:
                parts = {}
            elif 30 <= number <= 37:
                parts["ink"] = str(number)
            elif 40 <= number <= 47:
                parts["ground"] = str(number)
            else:
                parts["more"] = str(number)
        self._look = ",".join(f"{key}={parts[key]}" for key in sorted(parts))

    def _character(self, sign: str) -> None:
        if sign == "\r":
            self._column = 0
        elif sign == "\n":
            self._row = min(self._row + 1, _ROWS - 1)
        elif sign == "\b":
            self._column = max(self._column - 1, 0)
        elif sign >= " ":
            self._put(sign)

    def _put(self, sign: str) -> None:
        wide = unicodedata.east_asian_width(sign) in "WF"
        if self._column < _COLUMNS:
            self._signs[self._row][self._column] = sign
            self._looks[self._row][self._column] = self._look
        self._column = min(self._column + (2 if wide else 1), _COLUMNS)
