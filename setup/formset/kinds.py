"""What an option of each category can be set to: one table row for each kind."""

from collections.abc import Sequence
from dataclasses import dataclass

from formset.model import Choice, Question, Text
from formset.texts import Texts


@dataclass(frozen=True)
class Kind:
    """`text` names prompt and help; `choices` are names of texts, by value."""

    text: str
    choices: tuple[str, ...]
    default: int
    points: bool = False  # with the points of a curve behind it


_LINK = ("link-auto", *(f"link-gen {number}" for number in range(1, 6)))
PORT = Kind("port", ("port-off", "port-on"), 1)
LINK = Kind("link", _LINK, 0)

# By category, as the board's description names them.
KINDS = {
    "cpu": Kind("threads", ("threads-all", "threads-one"), 0),
    "memory": Kind("profile", ("profile-standard", "profile-1", "profile-2"), 0),
    "pcie": LINK,
    "m2": LINK,
    "sata": PORT,
    "usb": PORT,
    "rear": PORT,
    "fan": Kind("fan", ("fan-auto", "fan-curve", "fan-full"), 0, points=True),
    "audio": PORT,
    "none": Kind("power", ("port-off", "port-on"), 1),
}

# Temperature and duty of the points of a fan's curve, and the mode that follows them.
CURVE = ((30, 30), (55, 60), (75, 100))
CURVE_MODE = 1
POINT_LIMIT = 100


def choices(kind: Kind, texts: Texts) -> tuple[Choice, ...]:
    return tuple(Choice(value, _choice(name, texts)) for value, name in enumerate(kind.choices))


def _choice(name: str, texts: Texts) -> Text:
    text, _, number = name.partition(" ")
    return texts.get(text, number, number=number)


def option(kind: Kind, number: int, index: int, names: Sequence[str], texts: Texts) -> Question:
    """The option of a token, which the components `names` have in common."""
    return Question(
        number=number,
        index=index,
        prompt=texts.get(kind.text, f"{number:04X}", name=", ".join(names)),
        help=texts.get(f"{kind.text}-help"),
        choices=choices(kind, texts),
        limit=len(kind.choices) - 1,
        default=kind.default,
    )


def points(
    number: int, index: int, mode: Question, name: str, texts: Texts
) -> tuple[Question, ...]:
    """The points of a fan's curve, each a temperature and a duty; numbered from `number` on."""
    found: list[Question] = []
    for place, point in enumerate(CURVE, 1):
        for what, default in zip(("temperature", "duty"), point, strict=True):
            position = len(found)
            found.append(
                Question(
                    number=number + position,
                    index=index + position,
                    prompt=texts.get(
                        f"point-{what}", f"{mode.number:04X}_{place}", name=name, number=place
                    ),
                    help=texts.get("point-help"),
                    choices=(),
                    limit=POINT_LIMIT,
                    default=default,
                    shown_with=(mode.index, CURVE_MODE),
                )
            )
    return tuple(found)
