"""From the board's components to the formset."""

from collections.abc import Sequence

from boardtool.limits import CATEGORIES
from boardtool.model import Component
from formset import kinds, model
from formset.model import Entry, Formset, FormsetError, Page, Question
from formset.texts import Texts

# The order of the pages.
ORDER = ("cpu", "memory", "pcie", "m2", "sata", "usb", "rear", "fan", "audio", "none")

# What the pages say beside the questions.
FIXED = (
    "formset formset-help view view-help on-board on-board-help pages page-help look language "
    "language-help contrast contrast-help contrast-standard contrast-high text-size "
    "text-size-help text-standard text-large error-missing error-refused error-no-host "
    "error-no-option error-failed"
).split()


def build(components: Sequence[Component], texts: Texts) -> Formset:
    """The formset of a board. Raises FormsetError when tokens clash."""
    for name in FIXED:
        texts.get(name)
    for code, name in model.LANGUAGES.items():
        texts.literal(f"language-{code}", name)
    builder = _Builder(texts)
    pages = [builder.page(category, components) for category in ORDER]
    formset = Formset(tuple(page for page in pages if page is not None), texts.used())
    _check(formset)
    return formset


class _Builder:
    """Numbers questions, values and entries while the pages are made one after the other."""

    def __init__(self, texts: Texts) -> None:
        self._texts = texts
        self._index = 0
        self._entry = model.FIRST_ENTRY_QUESTION
        self._point = model.FIRST_POINT_QUESTION
        self._tokens: dict[int, str] = {}

    def page(self, category: str, components: Sequence[Component]) -> Page | None:
        """The page of a category; None when none of its components has a token."""
        number = CATEGORIES[category]
        own = [one for one in components if one.category == number and one.token != 0]
        if not own:
            return None
        place = ORDER.index(category)
        return Page(
            form=model.FIRST_PAGE_FORM + place,
            question=model.FIRST_PAGE_QUESTION + place,
            title=self._texts.get(f"group-{category}"),
            questions=self._questions(category, own),
            entries=tuple(self._entry_of(one) for one in own if one.selectable),
        )

    def _questions(self, category: str, own: Sequence[Component]) -> tuple[Question, ...]:
        found: list[Question] = []
        for token in dict.fromkeys(one.token for one in own):
            names = [one.name for one in own if one.token == token]
            self._claim(token, category)
            found += self._option(kinds.KINDS[category], token, names)
        return tuple(found)

    def _claim(self, token: int, category: str) -> None:
        other = self._tokens.setdefault(token, category)
        if other != category:
            raise FormsetError(f"Token {token:#x} stands for an option of {other} and {category}.")
        if token in model.OWN_QUESTIONS or token in model.COMPILERS_QUESTIONS:
            raise FormsetError(
                f"Token {token:#x} is not free: tokens are from 0x100 to 0x6fff, or from 0x8000 on."
            )

    def _option(self, kind: kinds.Kind, token: int, names: Sequence[str]) -> list[Question]:
        option = kinds.option(kind, token, self._index, names, self._texts)
        self._index += 1
        if not kind.points:
            return [option]
        points = kinds.points(self._point, self._index, option, names[0], self._texts)
        self._index += len(points)
        self._point += len(points)
        return [option, *points]

    def _entry_of(self, component: Component) -> Entry:
        number = self._entry
        self._entry += 1
        return Entry(
            number=number,
            name=component.name,
            category=component.category,
            prompt=self._texts.literal(f"entry-{number:04X}", component.name),
        )


def _check(formset: Formset) -> None:
    numbers = [one.number for one in formset.questions()]
    if not numbers:
        raise FormsetError("No component has a token: a setup needs one option at least.")
    numbers += [one.number for one in formset.entries()]
    numbers += [page.question for page in formset.pages]
    numbers += [model.VIEW_QUESTION, model.LANGUAGE_QUESTION]
    numbers += [model.CONTRAST_QUESTION, model.TEXT_SIZE_QUESTION]
    twice = sorted({number for number in numbers if numbers.count(number) > 1})
    if twice:
        raise FormsetError(f"Two questions have the number {twice[0]:#x}.")
