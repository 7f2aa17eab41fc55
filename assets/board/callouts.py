"""Finds each callout a place at the picture's rim and draws its leader line there."""

import itertools
import math
from dataclasses import dataclass

from camera import Pixel

MAX_ROUNDS = 40
CROSSING_COST = 4000.0
CLEARANCE = 50.0


@dataclass(frozen=True)
class Slot:
    """A place for a callout: where the leader ends, its bend before that, the side it touches."""

    anchor: Pixel
    knee: Pixel
    callout: str


@dataclass(frozen=True)
class Rim:
    """A row of slots between two anchors; the knee lies `reach` off each anchor."""

    first: Pixel
    last: Pixel
    reach: Pixel
    callout: str

    def slots(self, count: int) -> list[Slot]:
        result = []
        for k in range(count):
            t = k / max(count - 1, 1)
            x = self.first[0] + (self.last[0] - self.first[0]) * t
            y = self.first[1] + (self.last[1] - self.first[1]) * t
            knee = (x + self.reach[0], y + self.reach[1])
            result.append(Slot((x, y), knee, self.callout))
        return result


def crosses(a: Pixel, b: Pixel, c: Pixel, d: Pixel) -> bool:
    def turn(p: Pixel, q: Pixel, r: Pixel) -> float:
        return (q[0] - p[0]) * (r[1] - p[1]) - (q[1] - p[1]) * (r[0] - p[0])

    return turn(a, b, c) * turn(a, b, d) < 0 and turn(c, d, a) * turn(c, d, b) < 0


def leader(start: Pixel, slot: Slot) -> list[Pixel]:
    return [start, slot.knee, slot.anchor]


def pair_cost(one: list[Pixel], other: list[Pixel]) -> float:
    hits = 0
    for a, b in itertools.pairwise(one):
        for c, d in itertools.pairwise(other):
            hits += crosses(a, b, c, d)
    return hits * CROSSING_COST


def nearness(start: Pixel, path: list[Pixel]) -> float:
    """What it costs that a leader passes close to the start of another."""
    total = 0.0
    for (ax, ay), (bx, by) in itertools.pairwise(path):
        dx, dy = bx - ax, by - ay
        square = dx * dx + dy * dy or 1.0
        t = min(max(((start[0] - ax) * dx + (start[1] - ay) * dy) / square, 0.0), 1.0)
        gap = math.dist(start, (ax + dx * t, ay + dy * t))
        total += max(CLEARANCE - gap, 0.0) * 12
    return total


def lay_out(starts: dict[str, Pixel], rim: Rim) -> dict[str, Slot]:
    """Gives every start a slot so that leaders are short and do not cross."""
    names = list(starts)
    slots = rim.slots(len(names))
    along_x = abs(rim.last[0] - rim.first[0]) > abs(rim.last[1] - rim.first[1])
    names.sort(key=lambda name: starts[name][0 if along_x else 1])
    if (rim.last[0] < rim.first[0]) if along_x else (rim.last[1] < rim.first[1]):
        names.reverse()

    def cost(order: list[str]) -> float:
        paths = [leader(starts[name], slot) for name, slot in zip(order, slots)]
        total = sum(math.dist(path[0], path[1]) for path in paths)
        for one, other in itertools.permutations(paths, 2):
            total += nearness(one[0], other)
        return total + sum(pair_cost(a, b) for a, b in itertools.combinations(paths, 2))

    best = cost(names)
    for _ in range(MAX_ROUNDS):
        improved = False
        for i, j in itertools.combinations(range(len(names)), 2):
            trial = list(names)
            trial[i], trial[j] = trial[j], trial[i]
            value = cost(trial)
            if value < best - 1e-6:
                names, best, improved = trial, value, True
        if not improved:
            break
    return dict(zip(names, slots))
