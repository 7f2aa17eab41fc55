"""A board as its author sees it: the picture with everything that the view puts over it."""

from PIL import Image, ImageDraw, ImageFont

from boardtool import limits
from boardtool.model import Board, Component, Look, Point

Color = tuple[int, int, int]
Box = tuple[int, int, int, int]

# Sizes at 1920 pixels of view width, of which the picture takes three quarters.
SHOWN_WIDTH = 1440
FONT_SIZE = 14
MARKER_SIZE = 11
CALLOUT_PADDING = 2

# The view's own, as is the amber below.
BACKGROUND_COLOR = (0x2C, 0x2C, 0x2C)
AMBER = (255, 219, 75)
OUTLINE_COLOR = AMBER
LEADER_COLOR = (230, 230, 230)
MARKER_COLORS = {
    limits.MARKERS["green"]: (0, 255, 0),
    limits.MARKERS["red"]: (255, 0, 0),
    limits.MARKERS["amber"]: AMBER,
}


def draw_preview(board: Board, picture: Image.Image) -> Image.Image:
    """A new picture of the same size."""
    preview = on_background(picture)
    scale = max(picture.width / SHOWN_WIDTH, 0.5)
    draw = ImageDraw.Draw(preview, "RGBA")
    font = ImageFont.load_default(FONT_SIZE * scale)
    for component in board.components:
        draw.polygon(component.outline, fill=(*OUTLINE_COLOR, 40), outline=(*OUTLINE_COLOR, 255))
        draw.line(component.leader, fill=LEADER_COLOR, width=max(1, round(scale)))
        _draw_marker(draw, component, marker_color(board, component), scale)
    for component in board.components:
        _draw_callout(draw, component, board.styles[component.style].default, font, scale)
    return preview


def on_background(picture: Image.Image) -> Image.Image:
    """The picture as the view shows it, whose dark grey shines through where it is transparent."""
    view = Image.new("RGBA", picture.size, BACKGROUND_COLOR)
    view.alpha_composite(picture.convert("RGBA"))
    return view.convert("RGB")


def marker_color(board: Board, component: Component) -> Color | None:
    """The colour of a component's dot; None where the view shows no dot."""
    if component.category == limits.CATEGORIES["none"]:
        return None
    if component.status == limits.STATUSES["available"]:
        return MARKER_COLORS[board.marker]
    return AMBER if component.status == limits.STATUSES["device-error"] else None


def _draw_marker(
    draw: ImageDraw.ImageDraw, component: Component, fill: Color | None, scale: float
) -> None:
    x, y = component.marker
    half = MARKER_SIZE * scale / 2
    draw.ellipse((x - half, y - half, x + half, y + half), fill=fill, outline=(0, 0, 0))


def _draw_callout(
    draw: ImageDraw.ImageDraw,
    component: Component,
    look: Look,
    font: ImageFont.FreeTypeFont | ImageFont.ImageFont,
    scale: float,
) -> None:
    left, top, right, bottom = draw.textbbox((0, 0), component.name, font=font)
    padding = round(CALLOUT_PADDING * scale)
    size = (round(right - left) + 2 * padding, round(bottom - top) + 2 * padding)
    box = place_callout(component.callout, component.leader[-1], size)
    border = _color(look.border) if look.border_width else None
    draw.rounded_rectangle(
        box, radius=look.radius * scale, fill=_color(look.background), outline=border
    )
    origin = (box[0] + padding - left, box[1] + padding - top)
    draw.text(origin, component.name, font=font, fill=_color(look.text))


def place_callout(side: int, anchor: Point, size: Point) -> Box:
    """Where a callout stands whose side touches the anchor."""
    names = {number: name for name, number in limits.CALLOUT_SIDES.items()}
    x, y = anchor
    width, height = size
    name = names[side]
    left = x - width // 2
    if "left" in name:
        left = x
    elif "right" in name:
        left = x - width
    top = y - height // 2
    if "top" in name:
        top = y
    elif "bottom" in name:
        top = y - height
    return left, top, left + width, top + height


def _color(text: str) -> Color:
    red, green, blue = (int(channel) for channel in text.split(","))
    return red, green, blue
