"""The status dots and the pointer arrow."""

import numpy as np

from canvas import Canvas, Color, Point

BLACK: Color = (0, 0, 0)
WHITE: Color = (255, 255, 255)

DOT_SIZE = 11
# A trace of the dot's colour reaches the corners, so that a scaled dot keeps a soft rim.
DOT_EDGE_ALPHA = 3

CURSOR_SIZE = 32
# The descriptor deliberately claims this size over the 32x32 block, so the view shows the
# block's first four rows, each cut into pieces of eight pixels laid below one another. They hold
# an arrow of that size; a part of the large arrow would be no arrow when it is shown so.
CURSOR_SHOWN_WIDTH = 8
CURSOR_SHOWN_HEIGHT = 16


def dot(color: Color) -> np.ndarray:
    """A filled round dot whose every pixel has the one colour; only alpha makes the rim."""
    canvas = Canvas(DOT_SIZE, DOT_SIZE)
    center = DOT_SIZE / 2
    canvas.disc(center, center, center - 0.3, color)
    pixels = canvas.pixels()
    pixels[..., :3] = color
    pixels[..., 3] = np.maximum(pixels[..., 3], DOT_EDGE_ALPHA)
    return pixels


def large_arrow() -> np.ndarray:
    """A white arrow with a black outline that points to the upper left corner of the block.

    Its head has a horizontal upper edge over the block's whole width, so that the rows which hold
    the small arrow lie within that edge.
    """
    canvas = Canvas(CURSOR_SIZE, CURSOR_SIZE)
    outer: list[Point] = [(0, 0), (32, 0), (32, 4), (24, 9.4), (32, 18.8), (18.8, 32), (9.4, 24)]
    outer += [(4, 32), (0, 32)]
    inner: list[Point] = [(1, 1), (31, 1), (31, 3.4), (22.4, 9.3), (30.4, 18.8), (18.8, 30.4)]
    inner += [(9.3, 22.4), (3.4, 31), (1, 31)]
    canvas.polygon(outer, BLACK)
    canvas.polygon(inner, WHITE)
    return canvas.pixels()


def small_arrow() -> np.ndarray:
    """The arrow that a person sees: a white pointer with its tail and a black outline.

    The left edge fills the first column and the other edge of the head falls at 45 degrees, a
    little outside of the pixels' diagonal: outline and tip stay black there, and what the edge
    covers of the next pixel makes it soft.
    """
    canvas = Canvas(CURSOR_SHOWN_WIDTH, CURSOR_SHOWN_HEIGHT)
    head: list[Point] = [(0, 0), (0.8, 0), (8, 7.2), (8, 8.9), (5.5, 8.9)]
    tail: list[Point] = [(7.5, 13.4), (7.1, 14.2), (4.9, 15.2), (4.4, 15), (2.45, 11.1)]
    canvas.polygon([*head, *tail, (1, 12.5), (0, 12.5)], BLACK)
    inner_head: list[Point] = [(1, 1.8), (7, 7.8), (7, 7.9), (4, 7.9)]
    inner_tail: list[Point] = [(6.4, 13.3), (5, 13.9), (2.8, 9.4)]
    canvas.polygon([*inner_head, *inner_tail, (1, 11.2)], WHITE)
    return canvas.pixels()


def cursor() -> np.ndarray:
    """The block: the large arrow, and in its first rows all pixels of the small one.

    LVGL goes by the descriptor's size and takes the block's first pixels, eight for a row. So a
    row of the block holds four rows of the small arrow, one after the other.
    """
    block = large_arrow()
    rows = CURSOR_SHOWN_WIDTH * CURSOR_SHOWN_HEIGHT // CURSOR_SIZE
    block[:rows] = small_arrow().reshape(rows, CURSOR_SIZE, 4)
    return block


def cursor_as_shown(block: np.ndarray) -> np.ndarray:
    """The picture that the view makes of the block under the descriptor's size."""
    count = CURSOR_SHOWN_WIDTH * CURSOR_SHOWN_HEIGHT
    flat = block.reshape(-1, 4)[:count]
    return flat.reshape(CURSOR_SHOWN_HEIGHT, CURSOR_SHOWN_WIDTH, 4)
