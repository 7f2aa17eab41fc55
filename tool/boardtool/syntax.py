"""The description as YAML, and what its author is told when it is none.

The parser's own words tell where it gave up, which is often behind the mistake, and in its terms.
"""

import re
from collections.abc import Callable
from pathlib import Path

import yaml

from boardtool.colors import from_hexadecimal
from boardtool.problems import Problems

# A comment that begins right behind a value: the way to it leads around quoted texts.
STRAY_COMMENT = re.compile(
    r"""\s*[^\s#](?:[^"'#]|"(?:\\.|[^"\\])*"|'[^']*'|(?<!\s)#)*\s(?P<text>#+[^\s#].*)"""
)


def compose(problems: Problems, path: Path, text: str | None = None) -> yaml.Node | None:
    """The root node of the file, or of a text in its place; what is wrong with it is reported."""
    try:
        if text is None:
            text = path.read_text(encoding="utf-8")
        node = yaml.compose(text, Loader=yaml.SafeLoader)
    except OSError as error:
        problems.add(1, "", f"cannot be read: {error.strerror}")
    except UnicodeDecodeError:
        problems.add(1, "", "is not UTF-8 text")
    except RecursionError:
        problems.add(1, "", "is nested too deeply")
    except yaml.MarkedYAMLError as error:
        line, message = explain(error, (text or "").splitlines())
        problems.add(line + 1, "", message)
    except yaml.reader.ReaderError as error:
        line = (text or "").count("\n", 0, error.position) + 1
        problems.add(line, "", f"the character {chr(error.character)!r} is not allowed")
    else:
        if node is not None:
            return node
        problems.add(1, "", "is empty")
    return None


class _Mistake:
    """Where the parser gave up, counted from 0, and where what it was reading began."""

    def __init__(self, error: yaml.MarkedYAMLError, lines: list[str]) -> None:
        self.problem = str(error.problem)
        self.lines = lines
        mark, context = error.problem_mark, error.context_mark
        self.line = mark.line if mark else 0
        self.start = context.line if context else self.line
        self.before = self.text(self.line)[: mark.column if mark else 0]

    def text(self, line: int) -> str:
        return self.lines[line] if line < len(self.lines) else ""

    def has_content(self, line: int) -> bool:
        return not re.match(r"\s*(#|$)", self.text(line))


Explanation = tuple[int, str] | None


def explain(error: yaml.MarkedYAMLError, lines: list[str]) -> tuple[int, str]:
    """The line of the mistake, from 0, and what to do about it."""
    mistake = _Mistake(error, lines)
    explanations: tuple[Callable[[_Mistake], Explanation], ...] = (
        _tab,
        _stray_comment,
        _unclosed_quote,
        _unclosed_bracket,
        _missing_value,
        _no_colon,
        _colon,
        _dash,
        _indentation,
        _first_character,
        _second_document,
    )
    found = (explanation(mistake) for explanation in explanations)
    return next((one for one in found if one), (mistake.line, f"is not YAML: {mistake.problem}"))


def _tab(mistake: _Mistake) -> Explanation:
    if r"'\t'" not in mistake.problem:
        return None
    if mistake.before.strip():
        return mistake.line, "a tab stands where YAML wants a blank"
    return mistake.line, "indent with spaces; here stands a tab"


def _stray_comment(mistake: _Mistake) -> Explanation:
    if not mistake.problem.startswith("expected ',' or"):
        return None
    for line in range(mistake.line, mistake.start - 1, -1):
        comment = STRAY_COMMENT.match(mistake.text(line))
        if comment is None:
            continue
        color = from_hexadecimal(comment["text"])
        advice = f'a colour is written "{color}"' if color else 'put the text between "quotes"'
        return line, f"the rest of the line from {comment['text']!r} on is a comment; {advice}"
    return None


def _unclosed_quote(mistake: _Mistake) -> Explanation:
    """A text without its closing quote goes on to the next quote, and ends where none should."""
    line = mistake.start if mistake.problem == "found unexpected end of stream" else None
    if "'<scalar>'" in mistake.problem:
        span = range(mistake.start, mistake.line + 1)
        line = next((n for n in span if mistake.text(n).count('"') % 2 == 1), None)
    return None if line is None else (line, "a text in this line has no closing quote")


def _unclosed_bracket(mistake: _Mistake) -> Explanation:
    match = re.match(r"expected ',' or '(.)'", mistake.problem)
    if match is None:
        return None
    if mistake.before.strip() or mistake.line == mistake.start:
        return mistake.line, f"',' or '{match[1]}' is missing behind {mistake.before.strip()!r}"
    line = next(
        (n for n in range(mistake.line - 1, mistake.start, -1) if mistake.has_content(n)),
        mistake.start,
    )
    return line, f"',' or '{match[1]}' is missing at the end of this line"


def _missing_value(mistake: _Mistake) -> Explanation:
    if mistake.problem.startswith("expected the node content"):
        return mistake.line, f"a value is missing behind {mistake.before.strip()!r}"
    return None


def _no_colon(mistake: _Mistake) -> Explanation:
    if mistake.problem == "could not find expected ':'":
        return mistake.start, "a field needs a ':' and a blank behind its name"
    return None


def _dash(mistake: _Mistake) -> Explanation:
    if mistake.problem == "sequence entries are not allowed here":
        return mistake.line, "a list that is written with '-' begins on a line of its own"
    return None


def _colon(mistake: _Mistake) -> Explanation:
    if mistake.problem != "mapping values are not allowed here":
        return None
    if re.search(r":\s", mistake.before):
        return mistake.line, "put a text that holds ': ' between \"quotes\""
    return (
        mistake.line,
        "this field does not fit what stands above it: it is indented too far, or a ':' above "
        "has no blank behind it",
    )


def _indentation(mistake: _Mistake) -> Explanation:
    match = re.match(
        r"expected '?<(block end|document start)>'?, but found '(.*)'", mistake.problem
    )
    if match is None:
        return None
    if match[2] in ("]", "}", ","):
        return mistake.line, f"here stands a '{match[2]}' too many"
    if match[1] == "document start":
        return mistake.line, "is indented otherwise than what stands above it"
    return (
        mistake.line,
        f"is indented otherwise than what it belongs to, which begins in line {mistake.start + 1}",
    )


def _first_character(mistake: _Mistake) -> Explanation:
    match = re.match(r"found character '(.)' that cannot start", mistake.problem)
    sign = match[1] if match else None
    if mistake.problem.startswith("found undefined alias"):
        sign = "*"
    elif mistake.problem.startswith("expected alphabetic or numeric character"):
        sign = "&' or '*"
    return (
        None
        if sign is None
        else (mistake.line, f"put a text that begins with '{sign}' between \"quotes\"")
    )


def _second_document(mistake: _Mistake) -> Explanation:
    if mistake.problem == "but found another document":
        return mistake.line, "a second description begins here; a file holds one"
    return None
