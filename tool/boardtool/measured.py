"""Warns of callouts and panels that do not fit the screen, as the application lays them out."""

import functools
import itertools
from collections.abc import Iterator
from dataclasses import dataclass, field

import shapely
from PIL import Image

from boardtool.binary import write_board
from boardtool.geometry import area
from boardtool.live import Box, LiveView, Measures, ViewOptions
from boardtool.model import Board, Point
from boardtool.picture import encode_for_firmware
from boardtool.problems import Problems
from boardtool.wording import listed

# The smallest screen of the view, at which large text takes most of the picture, and larger ones.
SIZES = {
    "1024x768": ViewOptions(resolution="1024x768"),
    "1024x768 with large text": ViewOptions(resolution="1024x768", appearance="large-text"),
    **{
        resolution: ViewOptions(resolution=resolution)
        for resolution in ("1920x1080", "2560x1440", "3840x2160")
    },
}

CUT = "is cut at the screen's"
OVERLAPS = "overlaps the callout{s} of"
LIES_ON = "lies on"
TAKES_POINTER = "comes first and takes the pointer from the callout{s} of"
PRINTS_OVER = "has more lines than the panel has room for, and they run into"


@dataclass
class Findings:
    """What was found at each field: what it does to whom, at which sizes."""

    found: dict[tuple[str, str], dict[str, list[str]]] = field(default_factory=dict)

    def add(self, field_name: str, what: str, whom: str, size: str) -> None:
        sizes = self.found.setdefault((field_name, what), {}).setdefault(whom, [])
        if size not in sizes:
            sizes.append(size)

    def report(self, problems: Problems) -> None:
        """One warning for everything that a field does at the same sizes."""
        for (field_name, what), sizes_of in self.found.items():
            for sizes in dict.fromkeys(map(tuple, sizes_of.values())):
                whom = [name for name, at in sizes_of.items() if tuple(at) == sizes]
                deed = what.format(s="s" if len(whom) > 1 else "")
                problems.warn(field_name, f"{deed} {listed(whom)} {_at(sizes)}")


def build_plain(board: Board) -> bytes:
    """The board with one colour for a picture: what it shows moves nothing, and that is quicker."""
    return write_board(board, _plain_picture(board.picture_size))


@functools.lru_cache(maxsize=2)
def _plain_picture(size: Point) -> bytes:
    return encode_for_firmware(Image.new("RGBA", size))


def check_measured(board: Board, view: LiveView, problems: Problems) -> None:
    binary = build_plain(board)
    # What is wrong with an outline otherwise has consequences that need no telling.
    free = [
        i for i in range(len(board.components)) if not problems.about(f"components[{i}].outline")
    ]
    findings = Findings()
    for size, options in SIZES.items():
        measures = view.measure(binary, options)
        _check_callouts(measures, size, findings)
        for i in free:
            _check_pointer(i, board, measures, size, findings)
        _check_panels(measures, size, findings)
    findings.report(problems)


def _check_callouts(measures: Measures, size: str, findings: Findings) -> None:
    components = list(enumerate(measures.components))
    for i, component in components:
        for edge in _edges(measures, component.callout):
            findings.add(f"components[{i}].callout", CUT, edge, size)
        for name, box in _neighbours(measures):
            if _overlap(component.callout, box):
                findings.add(f"components[{i}].callout", LIES_ON, name, size)
    for (_, first), (k, second) in itertools.combinations(components, 2):
        if _overlap(first.callout, second.callout):
            findings.add(f"components[{k}].callout", OVERLAPS, first.name, size)


def _neighbours(measures: Measures) -> Iterator[tuple[str, Box]]:
    """What stands on the screen besides the picture."""
    yield "the panel", measures.panel
    yield "the summary", measures.summary
    for box in measures.filters:
        yield "the filter buttons", box
    yield "the key help", measures.keys
    yield "the title", measures.title
    yield "the line at the bottom", measures.footer
    yield "the close button", measures.close


def _check_pointer(
    first: int, board: Board, measures: Measures, size: str, findings: Findings
) -> None:
    """Whether callouts of later components lie on the outline of this one, which comes first."""
    if not board.components[first].selectable:
        return
    outline = area(measures.components[first].outline)
    for later, component in list(enumerate(measures.components))[first + 1 :]:
        x, y, width, height = component.callout
        lies_on = outline.intersection(shapely.box(x, y, x + width, y + height)).area > 0
        if lies_on and board.components[later].selectable:
            findings.add(f"components[{first}].outline", TAKES_POINTER, component.name, size)


def _edges(measures: Measures, callout: Box) -> Iterator[str]:
    """The edges of the screen that the callout reaches over."""
    width, height = measures.screen
    reaches_over = {
        "left edge": callout.x < 0,
        "top edge": callout.y < 0,
        "right edge": callout.x + callout.width > width,
        "bottom edge": callout.y + callout.height > height,
    }
    return (edge for edge, reached in reaches_over.items() if reached)


def _overlap(one: Box, other: Box) -> bool:
    return (
        one.x < other.x + other.width
        and other.x < one.x + one.width
        and one.y < other.y + other.height
        and other.y < one.y + one.height
    )


def _check_panels(measures: Measures, size: str, findings: Findings) -> None:
    for i, component in enumerate(measures.components):
        panel = component.panel
        if panel is not None and panel.bottom > panel.limit:
            below = "the summary and the filter buttons"
            if panel.bottom > measures.keys.y:
                below = "the summary, the filter buttons and the key help"
            findings.add(f"components[{i}].info", PRINTS_OVER, below, size)


def _at(sizes: tuple[str, ...]) -> str:
    return "at every size" if len(sizes) == len(SIZES) else f"at {listed(sizes)}"
