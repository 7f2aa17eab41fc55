"""The setup's formset, ready to be written: pages of questions, and the entries of the view."""

import zlib
from dataclasses import dataclass

LANGUAGES = {
    "en-US": "English",
    "de-DE": "Deutsch",
    "fr-FR": "Français",
    "es-ES": "Español",
    "zh-Hans": "简体中文",
    "ja-JP": "日本語",
}

# Numbers of questions that are no component's. A token must not be one of them.
VIEW_QUESTION = 0x7000
FIRST_ENTRY_QUESTION = 0x7001
LANGUAGE_QUESTION = 0x7100
CONTRAST_QUESTION = 0x7101
TEXT_SIZE_QUESTION = 0x7102
FIRST_PAGE_QUESTION = 0x7200
FIRST_POINT_QUESTION = 0x7300
OWN_QUESTIONS = range(0x7000, 0x8000)
# The compiler numbers what has no number, from here upwards.
COMPILERS_QUESTIONS = range(1, 0x100)

MAIN_FORM = 1
FIRST_PAGE_FORM = 0x10


class FormsetError(Exception):
    """The board or the texts make no formset; the text is a plain sentence."""


@dataclass(frozen=True)
class Text:
    """A text in all languages, and the identifier of its string."""

    identifier: str
    words: dict[str, str]


@dataclass(frozen=True)
class Choice:
    value: int
    text: Text


@dataclass(frozen=True, kw_only=True)
class Question:
    """One option: a choice, or a number from 0 to `limit` when it has no choices."""

    number: int
    index: int  # in the array of values
    prompt: Text
    help: Text
    choices: tuple[Choice, ...]
    limit: int
    default: int
    shown_with: tuple[int, int] | None = None  # only when the value of this index is this


@dataclass(frozen=True, kw_only=True)
class Entry:
    """The way to the board view, at one component."""

    number: int
    name: str
    category: int
    prompt: Text


@dataclass(frozen=True, kw_only=True)
class Page:
    form: int
    question: int  # on the main page, leads here
    title: Text
    questions: tuple[Question, ...]
    entries: tuple[Entry, ...]


@dataclass(frozen=True)
class Formset:
    pages: tuple[Page, ...]
    texts: tuple[Text, ...]

    def questions(self) -> list[Question]:
        """All questions with a stored value, in the order of their indices."""
        found = [question for page in self.pages for question in page.questions]
        return sorted(found, key=lambda question: question.index)

    def entries(self) -> list[Entry]:
        return [entry for page in self.pages for entry in page.entries]

    def layout(self) -> int:
        """Names the array of values: stored values of another layout mean something else."""
        meaning = [(one.number, one.limit, one.default) for one in self.questions()]
        return zlib.crc32(repr(meaning).encode()) % 0xFFFF + 1
