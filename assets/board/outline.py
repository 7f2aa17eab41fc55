"""Silhouettes: what is seen of a part, thinned to the vertex limit of a hotspot."""

from collections.abc import Iterable

import shapely
from shapely import Polygon

from camera import Pixel

MAX_VERTICES = 20


def _cross(o: Pixel, a: Pixel, b: Pixel) -> float:
    return (a[0] - o[0]) * (b[1] - o[1]) - (a[1] - o[1]) * (b[0] - o[0])


def convex_hull(points: list[Pixel]) -> list[Pixel]:
    """The hull's vertices in order, without points on straight edges."""
    ordered = sorted(set(points))
    chains: list[list[Pixel]] = []
    for sequence in (ordered, ordered[::-1]):
        chain: list[Pixel] = []
        for point in sequence:
            while len(chain) >= 2 and _cross(chain[-2], chain[-1], point) <= 0:
                chain.pop()
            chain.append(point)
        chains.append(chain[:-1])
    return chains[0] + chains[1]


def thin(hull: list[Pixel], limit: int = MAX_VERTICES, slack: float = 3.0) -> list[Pixel]:
    """Drops the vertices that carry least area until the limit holds and none is idle."""
    vertices = list(hull)
    while len(vertices) > 4:
        count = len(vertices)
        areas = [
            abs(_cross(vertices[i - 1], vertices[i], vertices[(i + 1) % count])) / 2
            for i in range(count)
        ]
        least = min(range(count), key=areas.__getitem__)
        if count <= limit and areas[least] > slack:
            break
        del vertices[least]
    return vertices


def hull_of(points: list[Pixel]) -> Polygon:
    """What a part would cover with nothing before it."""
    return Polygon(convex_hull(points))


def silhouette(hull: Polygon, nearer: Iterable[Polygon]) -> list[tuple[int, int]]:
    """The hotspot outline in whole picture pixels: of what the nearer parts leave, the largest
    piece."""
    left = shapely.difference(hull, shapely.union_all(list(nearer)))
    pieces = [piece for piece in shapely.get_parts(left) if isinstance(piece, Polygon)]
    largest = max(pieces, key=lambda piece: piece.area)
    vertices = [(x, y) for x, y, *_ in largest.exterior.coords[:-1]]
    return [(round(x), round(y)) for x, y in thin(vertices)]
