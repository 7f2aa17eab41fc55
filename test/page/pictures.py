"""A picture of a board to describe, and what the view lights up of it."""

from PIL import Image, ImageDraw

SIZE = (1440, 810)
"""At 1920 x 1080 the view shows it one to one."""

PARTS = {
    "CPU": (500, 250, 700, 450),
    "DIMM_A": (760, 180, 790, 500),
    "SATA_1": (1200, 500, 1260, 530),
    "AUDIO": (200, 300, 280, 420),
    "FAN": (640, 100, 700, 130),
}
"""Left, top, right and bottom of what can be seen on it."""


def draw_board() -> Image.Image:
    picture = Image.new("RGB", SIZE, (20, 60, 40))
    draw = ImageDraw.Draw(picture)
    for x in range(0, SIZE[0], 40):
        draw.line((x, 0, x, SIZE[1]), fill=(24, 70, 48))
    for left, top, right, bottom in PARTS.values():
        draw.rectangle((left, top, right - 1, bottom - 1), fill=(120, 125, 130))
    return picture
