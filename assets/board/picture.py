"""The whole scene for the ray tracer, and the last touches on what it returns."""

from pathlib import Path

from PIL import Image, ImageChops, ImageDraw, ImageFilter

import materials
from camera import BOARD_CAMERA, PICTURE_WIDTH
from layout import BOARD_SIZE, BOARD_THICKNESS, HOLE_RADIUS, HOLES
from scene import Scene

# The view's own background; the picture blends into it.
BACKGROUND = (0x2C, 0x2C, 0x2C)

QUALITY_OPTIONS = {
    "draft": ["+Q9", "-A"],
    "preview": ["+Q9", "+A0.2", "+R2", "+AM1"],
    "final": ["+Q9", "+A0.08", "+R3", "+AM1", "-J"],
}
LIGHT_SAMPLES = {"draft": 2, "preview": 5, "final": 9}

_EXTRA = """
#declare T_Engraved = texture { pigment { srgb <0.22,0.22,0.23> } finish { F_Matte } }
#declare T_Gilt = texture { pigment { srgb <0.68,0.48,0.18> } finish { F_Anodised } }
#declare T_Contacts = texture {
  gradient z texture_map {
    [0.0 T_Gold] [0.62 T_Gold] [0.62 T_Black] [1.0 T_Black] } scale 0.85 }
#declare T_ContactsX = texture {
  gradient x texture_map {
    [0.0 T_Gold] [0.6 T_Gold] [0.6 T_Black] [1.0 T_Black] } scale 1.0 }
"""


def scene_text(scene: Scene, work: Path, quality: str) -> str:
    """The complete scene; the artwork is read from the work folder."""
    head = materials.prologue(LIGHT_SAMPLES[quality], quality == "final") + _EXTRA
    return head + board_text() + scene.text()


def board_text() -> str:
    """The board itself: a slab with holes and the artwork on its upper side."""
    drills = " ".join(
        f"cylinder {{ <{x},-9,{y}>, <{x},1,{y}>, {HOLE_RADIUS} texture {{ T_Gold }} }}"
        for x, y in HOLES
    )
    top = (
        'pigment { image_map { png "artwork.png" interpolate 2 } rotate x*90'
        f" scale <{BOARD_SIZE},1,{BOARD_SIZE}> }} finish {{ F_Board }}"
    )
    side = "pigment { srgb <0.34,0.33,0.29> } finish { F_Matte }"
    skin = 0.2
    return (
        f"difference {{ box {{ <0,{-BOARD_THICKNESS},0>, <{BOARD_SIZE},{-skin},{BOARD_SIZE}> }}"
        f" {drills} texture {{ {side} }} }}\n"
        f"difference {{ box {{ <0,{-skin},0>, <{BOARD_SIZE},0,{BOARD_SIZE}> }}"
        f" {drills} texture {{ {top} }} }}\n"
    )


def inner_mask(size: tuple[int, int], scale: float) -> Image.Image:
    """White inside and black along the rim, so that a shadow ends before the picture does."""
    mask = Image.new("L", size, 0)
    margin = 48 * scale
    area = [margin, margin, size[0] - margin, size[1] - margin]
    ImageDraw.Draw(mask).rectangle(area, 255)
    return mask.filter(ImageFilter.GaussianBlur(15 * scale))


def finish(traced: Image.Image) -> Image.Image:
    """Lays the traced board over the view's background, with a soft shadow under it."""
    scale = traced.width / PICTURE_WIDTH
    corners = [(0, 0), (BOARD_SIZE, 0), (BOARD_SIZE, BOARD_SIZE), (0, BOARD_SIZE)]
    foot = [BOARD_CAMERA.project((x - 4, y - 4, -12.0)) for x, y in corners]
    shade = Image.new("L", traced.size, 0)
    ImageDraw.Draw(shade).polygon([(x * scale, y * scale) for x, y in foot], 150)
    shade = shade.filter(ImageFilter.GaussianBlur(26 * scale))
    shade = ImageChops.multiply(shade, inner_mask(traced.size, scale))
    ground = Image.new("RGBA", traced.size, (*BACKGROUND, 255))
    dark = Image.new("RGBA", traced.size, (10, 10, 11, 255))
    ground = Image.composite(dark, ground, shade)
    ground.alpha_composite(traced)
    return ground.convert("RGB")
