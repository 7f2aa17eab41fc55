"""The status dots and the pointer arrow."""

import numpy as np

from canvas import Canvas, Color

DOT_SIZE = 11
# A trace of the dot's colour reaches the corners, so that a scaled dot keeps a soft rim.
DOT_EDGE_ALPHA = 3

CURSOR_SIZE = 32
# The descriptor deliberately claims this size over the 32x32 block, so the view shows the
# block's first four rows, each cut into pieces of eight pixels laid below one another.
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


def cursor() -> np.ndarray:
    """A white arrow with a black outline that points to the upper left corner.

    Its head has a horizontal upper edge over the block's whole width: the first four rows, all
    that the view shows, are then filled with the outline and the white below it.
    """
    black: Color = (0, 0, 0)
    white: Color = (255, 255, 255)
    canvas = Canvas(CURSOR_SIZE, CURSOR_SIZE)
    outer = [
        (0, 0),
        (32, 0),
        (32, 4),
        (24, 9.4),
        (32, 18.8),
        (18.8, 32),
        (9.4, 24),
        (4, 32),
        (0, 32),
    ]
    inner = [(1, 1), (31, 1), (31, 3.4), (22.4, 9.3), (30.4, 18.8), (18.8, 30.4), (9.3, 22.4)]
    inner += [(3.4, 31), (1, 31)]
    canvas.polygon(outer, black)
    canvas.polygon(inner, white)
    return canvas.pixels()


def cursor_as_shown(block: np.ndarray) -> np.ndarray:
    """The picture that the view makes of the block under the descriptor's size."""
    count = CURSOR_SHOWN_WIDTH * CURSOR_SHOWN_HEIGHT
    flat = block.reshape(-1, 4)[:count]
    return flat.reshape(CURSOR_SHOWN_HEIGHT, CURSOR_SHOWN_WIDTH, 4)
