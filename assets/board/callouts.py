"""Finds each callout a place at the picture's rim and draws its leader line there."""

import itertools
import math
from collections.abc import Callable, Sequence
from dataclasses import dataclass

from camera import Pixel

MAX_ROUNDS = 40
CROSSING_COST = 4000.0
OUTLINE_COST = 60.0
CLEARANCE = 50.0


@dataclass(frozen=True)
class Part:
    """A component on the picture: its silhouette and where its leader starts."""

    outline: list[tuple[int, int]]
    start: Pixel


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


def crossings(one: list[Pixel], other: Sequence[Pixel]) -> int:
    """How often two polylines cross."""
    return sum(
        crosses(a, b, c, d)
        for a, b in itertools.pairwise(one)
        for c, d in itertools.pairwise(other)
    )


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


def path_cost(name: str, path: list[Pixel], parts: dict[str, Part]) -> float:
    """The length of a leader, and what lies under it besides its own component."""
    total = math.dist(path[0], path[1])
    for other, part in parts.items():
        if other != name:
            total += crossings(path, [*part.outline, part.outline[0]]) * OUTLINE_COST
            total += nearness(part.start, path)
    return total


def lay_out(chosen: list[str], parts: dict[str, Part], rim: Rim) -> dict[str, Slot]:
    """Gives each chosen component a slot so that leaders are short and do not cross."""
    slots = rim.slots(len(chosen))
    along_x = abs(rim.last[0] - rim.first[0]) > abs(rim.last[1] - rim.first[1])
    order = sorted(chosen, key=lambda name: parts[name].start[0 if along_x else 1])
    if (rim.last[0] < rim.first[0]) if along_x else (rim.last[1] < rim.first[1]):
        order.reverse()
    paths = {
        (name, k): leader(parts[name].start, slot)
        for name in chosen
        for k, slot in enumerate(slots)
    }
    costs = {key: path_cost(key[0], path, parts) for key, path in paths.items()}

    def cost(trial: list[str]) -> float:
        keys = [(name, k) for k, name in enumerate(trial)]
        hits = sum(crossings(paths[a], paths[b]) for a, b in itertools.combinations(keys, 2))
        return sum(costs[key] for key in keys) + hits * CROSSING_COST

    return dict(zip(improve(order, cost), slots, strict=True))


def improve(order: list[str], cost: Callable[[list[str]], float]) -> list[str]:
    """Swaps pairs, and moves single names elsewhere, as long as that makes the order cheaper."""
    best = cost(order)
    for _ in range(MAX_ROUNDS):
        before = best
        for i, j in itertools.permutations(range(len(order)), 2):
            swapped, moved = list(order), list(order)
            swapped[i], swapped[j] = swapped[j], swapped[i]
            moved.insert(j, moved.pop(i))
            for trial in (swapped, moved):
                value = cost(trial)
                if value < best - 1e-6:
                    order, best = trial, value
        if best == before:
            break
    return order
