"""The board's flat artwork: solder mask, traces, vias and silkscreen, as one picture."""

import itertools
import math
import random

import numpy as np
from PIL import Image, ImageDraw, ImageFont

from layout import BOARD_SIZE, HOLES
from scene import FONT_BOLD, Label, Scene

PIXELS_PER_MM = 14
MASK = (20, 22, 25)
BAND = (26, 28, 32)
TRACE = (44, 49, 54)
POUR = (24, 26, 30)
VIA = (100, 90, 62)
SILK = (184, 188, 192)
SILK_DIM = (104, 108, 112)
RIM = (88, 93, 98)
ACCENT = (186, 112, 22)
PAD = (158, 128, 74)

Path = list[tuple[float, float]]


class Artwork:
    """A drawing surface in plan coordinates."""

    def __init__(self) -> None:
        side = int(BOARD_SIZE * PIXELS_PER_MM)
        self.image = Image.new("RGB", (side, side), MASK)
        self.draw = ImageDraw.Draw(self.image)
        self._dice = random.Random(7)
        self._routed = np.zeros((int(BOARD_SIZE * 2) + 1,) * 2, dtype=bool)

    def xy(self, x: float, y: float) -> tuple[float, float]:
        return (x * PIXELS_PER_MM, (BOARD_SIZE - y) * PIXELS_PER_MM)

    def line(self, path: Path, width: float, color: tuple[int, int, int]) -> None:
        points = [self.xy(x, y) for x, y in path]
        self.draw.line(points, color, max(round(width * PIXELS_PER_MM), 1), joint="curve")

    def disc(self, x: float, y: float, radius: float, color: tuple[int, int, int]) -> None:
        cx, cy = self.xy(x, y)
        r = radius * PIXELS_PER_MM
        self.draw.ellipse([cx - r, cy - r, cx + r, cy + r], color)

    def polygon(self, path: Path, color: tuple[int, int, int]) -> None:
        self.draw.polygon([self.xy(x, y) for x, y in path], color)

    def via(self, x: float, y: float) -> None:
        self.disc(x, y, 0.34, VIA)
        self.disc(x, y, 0.15, MASK)

    def bundle(self, path: Path, count: int, pitch: float = 0.42, vias: bool = True) -> None:
        """Parallel traces along a path, with vias where they end."""
        for k in range(count):
            shifted = offset(path, (k - (count - 1) / 2) * pitch)
            self.line(shifted, 0.2, TRACE)
            if vias:
                stagger = 0.5 * (k % 2)
                for (x, y), (qx, qy) in ((shifted[0], shifted[1]), (shifted[-1], shifted[-2])):
                    length = math.hypot(qx - x, qy - y) or 1
                    self.via(x + (qx - x) / length * stagger, y + (qy - y) / length * stagger)

    def text(self, label: Label, color: tuple[int, int, int] = SILK) -> None:
        face = ImageFont.truetype(str(FONT_BOLD), round(label.height / 0.73 * PIXELS_PER_MM))
        left, top, right, bottom = face.getbbox(label.text)
        mask = Image.new("L", (int(right - left), int(bottom - top)))
        ImageDraw.Draw(mask).text((-left, -top), label.text, 255, face)
        mask = mask.rotate(90 * label.quarters, expand=True)
        cx, cy = self.xy(label.x, label.y)
        place = (round(cx - mask.width / 2), round(cy - mask.height / 2))
        self.image.paste(color, place, mask)

    def wander(self, attempts: int) -> None:
        """Fills free ground with bundles that run straight and bend by 45 degrees."""
        for _ in range(attempts):
            count = self._dice.choice((1, 2, 2, 3, 4, 6))
            path = self._walk()
            cells = [cell for cell in self._cells(path, count)]
            if any(self._routed[cell] for cell in cells):
                continue
            for cell in cells:
                self._routed[cell] = True
            self.bundle(path, count)

    def _walk(self) -> Path:
        x, y = self._dice.uniform(4, BOARD_SIZE - 4), self._dice.uniform(4, BOARD_SIZE - 4)
        heading = self._dice.randrange(8)
        path = [(x, y)]
        for _ in range(self._dice.choice((2, 3, 3, 4))):
            length = self._dice.uniform(4, 22) if heading % 2 == 0 else self._dice.uniform(2, 8)
            x += math.cos(heading * math.pi / 4) * length
            y += math.sin(heading * math.pi / 4) * length
            path.append((min(max(x, 3), BOARD_SIZE - 3), min(max(y, 3), BOARD_SIZE - 3)))
            heading = (heading + self._dice.choice((-1, 1))) % 8
        return path

    def _cells(self, path: Path, count: int) -> set[tuple[int, int]]:
        cells = set()
        reach = math.ceil(count * 0.42 / 2 + 0.3)
        for (x0, y0), (x1, y1) in itertools.pairwise(path):
            steps = int(math.hypot(x1 - x0, y1 - y0) * 2) + 1
            for s in range(steps + 1):
                x, y = x0 + (x1 - x0) * s / steps, y0 + (y1 - y0) * s / steps
                for dx in range(-reach, reach + 1):
                    for dy in range(-reach, reach + 1):
                        row, column = int((y + dy * 0.5) * 2), int((x + dx * 0.5) * 2)
                        cells.add((min(max(row, 0), 488), min(max(column, 0), 488)))
        return cells

    def reserve(self, path: Path, count: int) -> None:
        for cell in self._cells(path, count):
            self._routed[cell] = True


def offset(path: Path, amount: float) -> Path:
    """A path moved sideways, with its corners kept parallel."""
    result = []
    for i, (x, y) in enumerate(path):
        before = path[max(i - 1, 0)], path[max(i, 1)]
        after = path[min(i, len(path) - 2)], path[min(i + 1, len(path) - 1)]
        n0, n1 = _normal(*before), _normal(*after)
        scale = amount / max(1 + n0[0] * n1[0] + n0[1] * n1[1], 0.2)
        result.append((x + (n0[0] + n1[0]) * scale, y + (n0[1] + n1[1]) * scale))
    return result


def _normal(p: tuple[float, float], q: tuple[float, float]) -> tuple[float, float]:
    dx, dy = q[0] - p[0], q[1] - p[1]
    length = math.hypot(dx, dy) or 1
    return (-dy / length, dx / length)


def draw_artwork(scene: Scene) -> Image.Image:
    art = Artwork()
    draw_bands(art)
    for path, count in main_routes():
        art.reserve(path, count)
        art.bundle(path, count)
    art.wander(5200)
    draw_vias(art)
    draw_silkscreen(art, scene)
    return art.image


def draw_bands(art: Artwork) -> None:
    """The solder mask's own decoration, a shade lighter than the rest."""
    for k in range(7):
        x = -40 + k * 46
        art.polygon([(x, 0), (x + 20, 0), (x + 142, 122), (x + 264, 244), (x + 244, 244)], BAND)
    art.polygon([(0, 0), (42, 0), (42, 70), (34, 78), (0, 78)], POUR)


def main_routes() -> list[tuple[Path, int]]:
    """The busy routes: processor to memory and slots, chipset to everything else."""
    routes: list[tuple[Path, int]] = []
    for k in range(9):
        y = 132 + k * 8
        routes.append(([(142, y), (150, y), (154, y + 4), (164, y + 4)], 12))
    routes += [
        ([(100, 130), (100, 119), (96, 115), (96, 84)], 24),
        ([(120, 130), (120, 119), (116, 115), (116, 84)], 24),
        ([(136, 130), (144, 122), (154, 112), (154, 98), (176, 76), (176, 70)], 18),
        ([(172, 60), (162, 60), (150, 60), (146, 58)], 14),
        ([(176, 34), (168, 36), (162, 36)], 12),
        ([(172, 46), (150, 46), (144, 46), (128, 30), (100, 30), (76, 30)], 10),
        ([(184, 32), (184, 18)], 10),
        ([(206, 32), (206, 18)], 10),
        ([(218, 66), (222, 70), (222, 92), (230, 100)], 10),
        ([(214, 70), (214, 96), (216, 98), (228, 110), (228, 120)], 8),
        ([(208, 70), (208, 110), (206, 112)], 8),
        ([(20, 176), (28, 176), (30, 174), (30, 126), (52, 120), (66, 120)], 6),
        ([(84, 10), (84, 12), (96, 24), (160, 24), (172, 32)], 6),
        ([(107, 10), (109, 12), (160, 12), (176, 28)], 6),
        ([(12, 96), (20, 88), (28, 80), (28, 44)], 6),
        ([(18, 10), (18, 30)], 8),
    ]
    return routes


def draw_vias(art: Artwork) -> None:
    """Stitching along the board's edge and around the audio ground."""
    for k in range(int(BOARD_SIZE / 3.2)):
        t = 2.0 + k * 3.2
        for x, y in ((t, 1.2), (t, BOARD_SIZE - 1.2), (1.2, t), (BOARD_SIZE - 1.2, t)):
            art.via(x, y)
    for k in range(32):
        art.via(43.2, 2 + k * 2.1)


def draw_silkscreen(art: Artwork, scene: Scene) -> None:
    # The pale rim keeps the dark board apart from the view's dark background.
    far = BOARD_SIZE
    art.line([(0, 0), (far, 0), (far, far), (0, far), (0, 0)], 0.7, RIM)
    for x, y in HOLES:
        art.disc(x, y, 4.2, PAD)
        art.disc(x, y, 3.9, (134, 108, 62))
    for x0, y0, x1, y1 in scene.taken:
        if x1 - x0 > 6 and y1 - y0 > 4:
            inset_box = [(x0, y0), (x1, y0), (x1, y1), (x0, y1), (x0, y0)]
            art.line(inset_box, 0.16, SILK_DIM)
    for label in scene.labels:
        art.text(label)
    art.line([(43.2, 2), (43.2, 68)], 0.3, ACCENT)
