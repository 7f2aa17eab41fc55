"""The three Boardscope logos, drawn for a dark background."""

from pathlib import Path

import numpy as np

from canvas import Canvas, Color

FONT_BOLD = Path("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf")

AMBER: Color = (255, 196, 60)
WHITE: Color = (240, 242, 244)
TEAL: Color = (72, 201, 190)
SLATE: Color = (120, 132, 140)
INK: Color = (30, 34, 38)


def draw_lens(canvas: Canvas, cx: float, cy: float, radius: float, ring: Color) -> None:
    """A magnifier over a chip: the mark that all three logos share."""
    grip = radius * 0.72
    reach = radius * 1.62
    canvas.stroke([(cx + grip, cy + grip), (cx + reach, cy + reach)], radius * 0.42, ring)
    canvas.disc(cx, cy, radius, ring)
    canvas.disc(cx, cy, radius * 0.74, None)
    half = radius * 0.31
    pin = radius * 0.13
    for step in (-1, 0, 1):
        offset = step * half * 0.72
        canvas.stroke(
            [(cx + offset, cy - half * 1.75), (cx + offset, cy + half * 1.75)], pin, WHITE
        )
        canvas.stroke(
            [(cx - half * 1.75, cy + offset), (cx + half * 1.75, cy + offset)], pin, WHITE
        )
    canvas.box(cx - half, cy - half, cx + half, cy + half, half * 0.3, WHITE)


def logo_a() -> np.ndarray:
    """93x19: the mark and the name on one line."""
    canvas = Canvas(93, 19)
    draw_lens(canvas, 7.3, 7.3, 7.0, AMBER)
    canvas.text(21.5, 13.6, 36.2, "Board", FONT_BOLD, WHITE)
    canvas.text(58.4, 13.6, 34.2, "scope", FONT_BOLD, AMBER)
    return canvas.pixels()


def logo_b() -> np.ndarray:
    """67x35: the mark beside the name on two lines, over a trace that runs into the mark."""
    canvas = Canvas(67, 35)
    canvas.stroke([(66, 31.6), (31, 31.6), (25.5, 26.1)], 1.3, TEAL)
    canvas.disc(65.2, 31.6, 1.7, TEAL)
    draw_lens(canvas, 13.2, 13.2, 12.6, TEAL)
    canvas.text(30.5, 12.8, 36, "Board", FONT_BOLD, WHITE)
    canvas.text(30.5, 25.2, 34.2, "scope", FONT_BOLD, TEAL)
    return canvas.pixels()


def logo_c() -> np.ndarray:
    """67x35: a chip with pins that carries the name as its print."""
    canvas = Canvas(67, 35)
    for column in range(9):
        x = 5.6 + column * 6.6
        canvas.box(x, 0.4, x + 2.6, 34.6, 0.8, SLATE)
    canvas.box(0.5, 4.2, 66.5, 30.8, 3, WHITE)
    canvas.box(1.9, 5.6, 65.1, 29.4, 2, INK)
    canvas.disc(8.2, 25.6, 1.7, AMBER)
    canvas.text(8, 15.9, 51, "BOARD", FONT_BOLD, WHITE)
    canvas.text(12, 27.3, 47, "SCOPE", FONT_BOLD, AMBER)
    return canvas.pixels()
