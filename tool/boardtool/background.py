"""Warns of outlines around nothing: where the picture shows its background alone.

That is what becomes of a component all of whose points have x and y exchanged, on most pictures.
"""

from collections.abc import Iterable, Sequence

from PIL import Image, ImageDraw, ImageStat

from boardtool.model import Board, Point
from boardtool.picture import load_picture
from boardtool.problems import Problems

Color = tuple[int, ...]

# What scaling and compression may have changed.
TOLERANCE = 4
TRANSPARENT: Color = (0, 0, 0, 0)


def check_background(board: Board, problems: Problems) -> None:
    picture = _without_hidden_colors(load_picture(board.picture))
    background = _background(picture)
    if background is None:
        return
    for i, component in enumerate(board.components):
        field = f"components[{i}].outline"
        if problems.about(field) or not _shows_only(picture, component.outline, background):
            continue
        exchanged = [(y, x) for x, y in component.outline]
        inside = all(x < picture.width and y < picture.height for x, y in exchanged)
        meant = inside and not _shows_only(picture, exchanged, background)
        problems.warn(
            field,
            "the picture shows nothing but its background there"
            + ("; are x and y exchanged?" if meant else ""),
        )


def _without_hidden_colors(picture: Image.Image) -> Image.Image:
    """The same to the eye: what is wholly transparent has one colour."""
    seen = Image.new("RGBA", picture.size, TRANSPARENT)
    seen.alpha_composite(picture)
    return seen


def _background(picture: Image.Image) -> Color | None:
    """The colour of all four corners; None when they differ, or when there is nothing else."""
    right, bottom = picture.width - 1, picture.height - 1
    corners = [
        picture.getpixel(corner) for corner in ((0, 0), (right, 0), (0, bottom), (right, bottom))
    ]
    colors = [color for color in corners if isinstance(color, tuple)]
    if not _alike(list(zip(*colors)), colors[0]) or _alike(
        ImageStat.Stat(picture).extrema, colors[0]
    ):
        return None
    return colors[0]


def _shows_only(picture: Image.Image, outline: Sequence[Point], color: Color) -> bool:
    columns, rows = zip(*outline)
    left, top = min(columns), min(rows)
    part = picture.crop((left, top, max(columns) + 1, max(rows) + 1))
    mask = Image.new("1", part.size)
    ImageDraw.Draw(mask).polygon([(x - left, y - top) for x, y in outline], fill=1)
    return _alike(ImageStat.Stat(part, mask).extrema, color)


def _alike(values: Iterable[Iterable[float]], color: Color) -> bool:
    """Whether the extremes, or all values, of each channel are nearly the colour's."""
    return all(
        abs(value - wanted) <= TOLERANCE
        for channel, wanted in zip(values, color)
        for value in channel
    )
