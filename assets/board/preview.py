"""Draws outlines, leaders and callouts over the picture, for a person to check the fit."""

import argparse
import sys
from pathlib import Path
from typing import Any

import yaml
from PIL import Image, ImageDraw, ImageFont

from scene import FONT

# Callout corner relative to the anchor, in callout widths and heights.
CORNERS = {
    "right": (-1, -0.5),
    "bottom-right": (-1, -1),
    "bottom": (-0.5, -1),
    "bottom-left": (0, -1),
    "left": (0, -0.5),
    "top-left": (0, 0),
    "top": (-0.5, 0),
    "top-right": (-1, 0),
}
MARKS = {"available": (0, 255, 0), "device-error": (255, 219, 75)}

Box = tuple[float, float, float, float]
Node = dict[str, Any]


def callout_text(component: Node) -> str:
    text = str(component["name"])
    text += " *" if component["status"] == "not-ready" else ""
    return text + (" **" if component["token"] == 0 else "")


def draw(
    board: Node, picture: Image.Image, size: tuple[int, int], font_pixels: int
) -> tuple[Image.Image, list[str]]:
    image = picture.resize(size, Image.Resampling.BILINEAR).convert("RGBA")
    overlay = Image.new("RGBA", size, (0, 0, 0, 0))
    pen = ImageDraw.Draw(overlay)
    face = ImageFont.truetype(str(FONT), font_pixels)
    sx, sy = size[0] / picture.width, size[1] / picture.height
    boxes: list[tuple[str, Box]] = []
    for component in board["components"]:
        pen.polygon(
            [(x * sx, y * sy) for x, y in component["outline"]],
            (255, 200, 60, 40),
            (255, 210, 90, 255),
        )
    for component in board["components"]:
        pen.line([(x * sx, y * sy) for x, y in component["leader"]], (190, 195, 200, 255), 1)
        mark = MARKS.get(component["status"])
        if mark:
            # The dot is 11 pixels on a 1920 pixel screen, whose picture is 1440 wide.
            x, y = component["marker"][0] * sx, component["marker"][1] * sy
            half = 11 * size[0] / 1440 / 2
            pen.ellipse([x - half, y - half, x + half, y + half], mark)
        boxes.append((component["name"], draw_callout(pen, component, sx, sy, face)))
    image.alpha_composite(overlay)
    return image, overlaps(boxes, size)


def draw_callout(
    pen: ImageDraw.ImageDraw, component: Node, sx: float, sy: float, face: ImageFont.FreeTypeFont
) -> Box:
    text = callout_text(component)
    width, height = face.getlength(text) + 4, sum(face.getmetrics()) + 4
    x, y = component["leader"][-1]
    dx, dy = CORNERS[component["callout"]]
    left, top = x * sx + dx * width, y * sy + dy * height
    box = (left, top, left + width, top + height)
    pen.rectangle(box, (58, 61, 65, 255), (132, 138, 144, 255))
    pen.text((left + 2, top + 2), text, (226, 228, 230, 255), face)
    return box


def overlaps(boxes: list[tuple[str, Box]], size: tuple[int, int]) -> list[str]:
    found = []
    for i, (name, a) in enumerate(boxes):
        if a[0] < 0 or a[1] < 0 or a[2] > size[0] or a[3] > size[1]:
            found.append(f"{name} leaves the picture")
        for other, b in boxes[i + 1 :]:
            if a[0] < b[2] and b[0] < a[2] and a[1] < b[3] and b[1] < a[3]:
                found.append(f"{name} overlaps {other}")
    return found


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", type=Path, help="where board.yaml and its picture are")
    parser.add_argument("out", type=Path, help="folder for the overlays")
    arguments = parser.parse_args()
    board = yaml.safe_load((arguments.folder / "board.yaml").read_text(encoding="ascii"))
    picture = Image.open(arguments.folder / board["picture"]).resize((2880, 1620))
    faults = 0
    for size, font_pixels in (((768, 576), 11), ((1440, 810), 14), ((2880, 1620), 28)):
        image, found = draw(board, picture, size, font_pixels)
        image.convert("RGB").save(arguments.out / f"overlay-{size[0]}.png")
        for fault in found:
            print(f"{size[0]}x{size[1]}: {fault}")
        faults += len(found)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
