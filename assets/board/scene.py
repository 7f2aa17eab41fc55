"""Collects solids for the ray tracer and remembers which points belong to which component."""

import itertools
import math
from collections.abc import Iterator, Sequence
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path

from camera import Vector, pov

FONT_BOLD = Path("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf")
FONT = Path("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")
ROUND_SAMPLES = 16
# The height of a capital letter in parts of the font size.
CAPITAL_HEIGHT = 0.73

Rect = tuple[float, float, float, float]


@dataclass(frozen=True)
class Label:
    """Silkscreen text, centred on a point of the board; height is that of a capital in mm."""

    x: float
    y: float
    height: float
    text: str
    quarters: int


class Scene:
    """The growing scene text, the points of every component, and the ground that is taken."""

    def __init__(self) -> None:
        self._solids: list[str] = []
        self._current: list[str] = []
        self.points: dict[str, list[Vector]] = {}
        self.taken: list[Rect] = []
        self.labels: list[Label] = []

    @contextmanager
    def component(self, name: str) -> Iterator[None]:
        """Everything drawn inside belongs to the component's silhouette."""
        self._current.append(name)
        self.points.setdefault(name, [])
        yield
        self._current.pop()

    @contextmanager
    def outside(self) -> Iterator[None]:
        """Drawn inside a component's block, yet no part of its silhouette."""
        saved, self._current = self._current, []
        yield
        self._current = saved

    def track(self, points: Sequence[Vector]) -> None:
        for name in self._current:
            self.points[name].extend(points)

    def take(self, rect: Rect) -> None:
        """Reserves ground, so that the small parts strewn later keep clear."""
        self.taken.append(rect)

    def solid(self, text: str) -> None:
        self._solids.append(text)

    def text(self) -> str:
        return "\n".join(self._solids) + "\n"


class Frame:
    """A place on the board with its own axes, turned by whole quarters counter-clockwise."""

    def __init__(self, scene: Scene, x: float, y: float, quarters: int = 0, z: float = 0) -> None:
        self.scene = scene
        self._x, self._y, self._z = x, y, z
        self.quarters = quarters % 4

    def at(self, x: float, y: float, quarters: int = 0, z: float = 0) -> "Frame":
        """A frame inside this one."""
        px, py, pz = self.point((x, y, z))
        return Frame(self.scene, px, py, self.quarters + quarters, pz)

    def point(self, p: Vector) -> Vector:
        x, y = p[0], p[1]
        for _ in range(self.quarters):
            x, y = -y, x
        return (self._x + x, self._y + y, self._z + p[2])

    def _corners(self, a: Vector, b: Vector) -> tuple[Vector, Vector]:
        p, q = self.point(a), self.point(b)
        low = (min(p[0], q[0]), min(p[1], q[1]), min(p[2], q[2]))
        high = (max(p[0], q[0]), max(p[1], q[1]), max(p[2], q[2]))
        return low, high

    def take(self, x0: float, y0: float, x1: float, y1: float) -> None:
        low, high = self._corners((x0, y0, 0), (x1, y1, 0))
        self.scene.take((low[0], low[1], high[0], high[1]))

    def _track_box(self, a: Vector, b: Vector) -> None:
        self.scene.track(
            [(x, y, z) for x in (a[0], b[0]) for y in (a[1], b[1]) for z in (a[2], b[2])]
        )

    def box(self, a: Vector, b: Vector, texture: str, chamfer: float = 0) -> None:
        """A box between two corners; the chamfer bevels its upper edges."""
        low, high = self._corners(a, b)
        self._track_box(low, high)
        if chamfer <= 0:
            self.scene.solid(f"box {{ {pov(low)}, {pov(high)} texture {{ {texture} }} }}")
            return
        ring = [(low[0], low[1]), (high[0], low[1]), (high[0], high[1]), (low[0], high[1])]
        self.scene.solid(beveled_mesh(ring, low[2], high[2], chamfer, texture))

    def cut_box(
        self, a: Vector, b: Vector, holes: Sequence[tuple[Vector, Vector]], texture: str
    ) -> None:
        """A box with box-shaped holes."""
        low, high = self._corners(a, b)
        self._track_box(low, high)
        cuts = []
        for hole in holes:
            hole_low, hole_high = self._corners(*hole)
            cuts.append(f"box {{ {pov(hole_low)}, {pov(hole_high)} }}")
        body = f"box {{ {pov(low)}, {pov(high)} }}"
        self.scene.solid(f"difference {{ {body} {' '.join(cuts)} texture {{ {texture} }} }}")

    def slab(
        self,
        ring: Sequence[tuple[float, float]],
        z0: float,
        z1: float,
        texture: str,
        chamfer: float = 0,
    ) -> None:
        """A convex outline, counter-clockwise, extruded from z0 to z1."""
        placed = [self.point((x, y, 0)) for x, y in ring]
        flat = [(p[0], p[1]) for p in placed]
        low, high = self._z + z0, self._z + z1
        self.scene.track([(x, y, z) for x, y in flat for z in (low, high)])
        self.scene.solid(beveled_mesh(flat, low, high, chamfer, texture))

    def rod(self, a: Vector, b: Vector, radius: float, texture: str) -> None:
        """A cylinder between two points of its axis, which runs along one of the axes."""
        p, q = self.point(a), self.point(b)
        self._track_round(p, q, radius)
        self.scene.solid(f"cylinder {{ {pov(p)}, {pov(q)}, {radius:.4f} texture {{ {texture} }} }}")

    def _track_round(self, p: Vector, q: Vector, radius: float) -> None:
        axis = max(range(3), key=lambda i: abs(p[i] - q[i]))
        others = [i for i in range(3) if i != axis]
        for end in (p, q):
            for step in range(ROUND_SAMPLES):
                angle = 2 * math.pi * step / ROUND_SAMPLES
                rim = list(end)
                rim[others[0]] += radius * math.cos(angle)
                rim[others[1]] += radius * math.sin(angle)
                self.scene.track([(rim[0], rim[1], rim[2])])

    def label(self, x: float, y: float, text: str, height: float = 1.9, quarters: int = 0) -> None:
        """Silkscreen text on the board itself."""
        p = self.point((x, y, 0))
        self.scene.labels.append(Label(p[0], p[1], height, text, (self.quarters + quarters) % 4))

    def print_flat(
        self,
        x: float,
        y: float,
        z: float,
        height: float,
        text: str,
        texture: str,
        quarters: int = 0,
    ) -> None:
        """Text printed on an upper surface, centred on the point; height is that of a capital."""
        turn = -90 * (self.quarters + quarters)
        self._print(self.point((x, y, z)), height, text, texture, f"rotate x*90 rotate y*{turn}")

    def print_upright(
        self, x: float, y: float, z: float, height: float, text: str, texture: str
    ) -> None:
        """Text on a surface that looks along -y of this frame, centred on the point."""
        turn = f"rotate y*{-90 * self.quarters}"
        self._print(self.point((x, y, z)), height, text, texture, turn)

    def _print(self, p: Vector, height: float, text: str, texture: str, turn: str) -> None:
        size = height / CAPITAL_HEIGHT
        glyphs = f'text {{ ttf "{FONT_BOLD}" "{text}" 0.02, 0 texture {{ {texture} }} }}'
        self.scene.solid(
            f"#local Print = {glyphs}\n"
            "object { Print translate -(min_extent(Print) + max_extent(Print)) / 2\n"
            f"  scale {size:.4f} {turn} translate {pov(p)} no_shadow }}"
        )


def beveled_mesh(
    ring: Sequence[tuple[float, float]], z0: float, z1: float, chamfer: float, texture: str
) -> str:
    """An extruded convex outline with beveled upper edges, as a mesh."""
    top = inset(ring, chamfer) if chamfer > 0 else list(ring)
    rings = [
        [(x, y, z0) for x, y in ring],
        [(x, y, z1 - chamfer) for x, y in ring],
        [(x, y, z1) for x, y in top],
    ]
    count = len(ring)
    triangles: list[tuple[Vector, Vector, Vector]] = []
    for lower, upper in itertools.pairwise(rings):
        for i in range(count):
            j = (i + 1) % count
            triangles.append((lower[i], lower[j], upper[j]))
            triangles.append((lower[i], upper[j], upper[i]))
    for i in range(1, count - 1):
        triangles.append((rings[2][0], rings[2][i], rings[2][i + 1]))
    body = "".join(f" triangle {{ {pov(a)},{pov(b)},{pov(c)} }}" for a, b, c in triangles)
    return f"mesh {{{body} texture {{ {texture} }} }}"


def inset(ring: Sequence[tuple[float, float]], amount: float) -> list[tuple[float, float]]:
    """A convex outline drawn in by the same amount at every edge."""
    count = len(ring)
    area = sum(
        ring[i][0] * ring[(i + 1) % count][1] - ring[(i + 1) % count][0] * ring[i][1]
        for i in range(count)
    )
    sign = 1 if area > 0 else -1
    result = []
    for i in range(count):
        p, q, r = ring[i - 1], ring[i], ring[(i + 1) % count]
        n0, n1 = _normal(p, q, sign), _normal(q, r, sign)
        scale = amount / (1 + n0[0] * n1[0] + n0[1] * n1[1])
        result.append((q[0] + (n0[0] + n1[0]) * scale, q[1] + (n0[1] + n1[1]) * scale))
    return result


def _normal(p: tuple[float, float], q: tuple[float, float], sign: int) -> tuple[float, float]:
    dx, dy = q[0] - p[0], q[1] - p[1]
    length = math.hypot(dx, dy) or 1.0
    return (-dy / length * sign, dx / length * sign)
