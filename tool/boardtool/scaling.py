"""A board with a smaller picture, for firmware with little room: points move with the picture."""

from dataclasses import replace

from boardtool.model import Board, Component, Point
from boardtool.picture import PictureError


def scale_board(board: Board, width: int) -> Board:
    """The board as it is on a picture of this width; raises PictureError for a wider one."""
    before = board.picture_size
    if not 1 <= width <= before[0]:
        raise PictureError(
            f"a picture {before[0]} pixels wide can only shrink: {width} is no width for it"
        )
    after = (width, max(1, round(before[1] * width / before[0])))
    return replace(
        board,
        picture_size=after,
        components=tuple(_scale_component(one, before, after) for one in board.components),
    )


def _scale_component(component: Component, before: Point, after: Point) -> Component:
    def scaled(point: Point) -> Point:
        x, y = (
            min(round(place * new / old), new - 1)
            for place, old, new in zip(point, before, after, strict=True)
        )
        return x, y

    return replace(
        component,
        outline=tuple(map(scaled, component.outline)),
        leader=tuple(map(scaled, component.leader)),
        marker=scaled(component.marker),
    )
