"""A supersampled drawing surface: shapes are drawn large and averaged down to crisp small art."""

from pathlib import Path

import numpy as np
from PIL import Image, ImageDraw, ImageFont

OVERSAMPLING = 16

Color = tuple[int, int, int]
Point = tuple[float, float]


class Canvas:
    """A transparent picture addressed in final pixels, with fractions."""

    def __init__(self, width: int, height: int) -> None:
        self.width = width
        self.height = height
        size = (width * OVERSAMPLING, height * OVERSAMPLING)
        self._image = Image.new("RGBA", size, (0, 0, 0, 0))
        self._draw = ImageDraw.Draw(self._image)

    def polygon(self, points: list[Point], color: Color) -> None:
        self._draw.polygon([(x * OVERSAMPLING, y * OVERSAMPLING) for x, y in points], (*color, 255))

    def box(self, x0: float, y0: float, x1: float, y1: float, radius: float, color: Color) -> None:
        # Pillow includes the far row and column; the canvas means half-open boxes.
        area = [x0 * OVERSAMPLING, y0 * OVERSAMPLING, x1 * OVERSAMPLING - 1, y1 * OVERSAMPLING - 1]
        self._draw.rounded_rectangle(area, radius * OVERSAMPLING, (*color, 255))

    def disc(self, cx: float, cy: float, radius: float, color: Color | None) -> None:
        """A filled disc; without a colour it punches a transparent hole."""
        area = [(v * OVERSAMPLING) for v in (cx - radius, cy - radius, cx + radius, cy + radius)]
        self._draw.ellipse(area, (0, 0, 0, 0) if color is None else (*color, 255))

    def stroke(self, points: list[Point], width: float, color: Color) -> None:
        """A line through the points with round ends and joints."""
        scaled = [(x * OVERSAMPLING, y * OVERSAMPLING) for x, y in points]
        self._draw.line(scaled, (*color, 255), round(width * OVERSAMPLING))
        for x, y in points:
            self.disc(x, y, width / 2, color)

    def text(
        self, x: float, baseline: float, width: float, text: str, font: Path, color: Color
    ) -> None:
        """Text that starts at x on the baseline and is made exactly the given width."""
        face = ImageFont.truetype(str(font), 100 * OVERSAMPLING // 8)
        left, top, right, bottom = face.getbbox(text, anchor="ls")
        mask = Image.new("L", (int(right - left), int(bottom - top)))
        ImageDraw.Draw(mask).text((-left, -top), text, 255, face, anchor="ls")
        scale = width * OVERSAMPLING / mask.width
        size = (round(mask.width * scale), round(mask.height * scale))
        mask = mask.resize(size, Image.Resampling.BOX)
        place = (round(x * OVERSAMPLING), round(baseline * OVERSAMPLING + top * scale))
        self._image.paste((*color, 255), place, mask)

    def pixels(self) -> np.ndarray:
        """The averaged picture: height x width x RGBA, 8 bits, straight alpha."""
        large = np.asarray(self._image, dtype=np.float64) / 255
        alpha = large[..., 3:]
        weighted = np.concatenate([large[..., :3] * alpha, alpha], axis=2)
        blocks = weighted.reshape(self.height, OVERSAMPLING, self.width, OVERSAMPLING, 4)
        mean = blocks.mean(axis=(1, 3))
        color = mean[..., :3] / np.maximum(mean[..., 3:], 1e-9)
        straight = np.concatenate([color, mean[..., 3:]], axis=2)
        return np.asarray(np.rint(straight * 255), dtype=np.uint8)
