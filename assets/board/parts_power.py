"""Voltage regulators, heatsinks, chips and the small parts around them."""

import math

import materials as m
from scene import Frame


def choke(f: Frame) -> None:
    """A moulded power inductor, 8 mm."""
    f.take(-4.2, -4.2, 4.2, 4.2)
    f.box((-4.4, -2.4, 0), (4.4, 2.4, 1.2), m.TIN)
    f.box((-4, -4, 0.3), (4, 4, 5.2), m.CHOKE, 0.7)
    f.print_flat(0, 0, 5.22, 1.9, "R15", m.PRINT_DIM)


def can_capacitor(f: Frame, radius: float = 3.2, height: float = 7.6) -> None:
    """A polymer capacitor in its can; the dark half of the top marks the negative pole."""
    f.take(-radius - 0.4, -radius - 0.4, radius + 0.4, radius + 0.4)
    f.box((-radius - 0.1, -radius - 0.1, 0), (radius + 0.1, radius + 0.1, 0.9), m.BLACK, 0.3)
    f.rod((0, 0, 0.6), (0, 0, height - 0.5), radius, m.TIN)
    f.rod((0, 0, height - 0.6), (0, 0, height), radius - 0.45, m.NICKEL)
    ring = [(0.0, 0.0)] + [
        (
            (radius - 0.5) * math.cos(math.pi * (k / 10 - 0.5)),
            (radius - 0.5) * math.sin(math.pi * (k / 10 - 0.5)),
        )
        for k in range(11)
    ]
    f.slab(ring[1:], height, height + 0.06, m.SLEEVE)


def gold_capacitor(f: Frame) -> None:
    """An audio capacitor with a gilt sleeve."""
    f.take(-3.4, -3.4, 3.4, 3.4)
    f.rod((0, 0, 0), (0, 0, 9.4), 3.0, "T_Gilt")
    f.rod((0, 0, 9.4), (0, 0, 9.55), 2.5, m.NICKEL)


def mosfet(f: Frame) -> None:
    f.take(-3, -3.2, 3, 3.2)
    f.box((-2.6, -3.1, 0), (2.6, 3.1, 0.35), m.TIN)
    f.box((-2.5, -2.7, 0), (2.5, 2.7, 1.0), m.EPOXY, 0.15)


def chip(f: Frame, width: float, depth: float, lines: list[str], leads: bool = True) -> None:
    """A chip with print on it, centred; with leads on all four sides."""
    f.take(-width / 2 - 1.2, -depth / 2 - 1.2, width / 2 + 1.2, depth / 2 + 1.2)
    f.box((-width / 2, -depth / 2, 0.1), (width / 2, depth / 2, 1.2), m.EPOXY, 0.2)
    f.rod(
        (-width / 2 + 0.9, depth / 2 - 0.9, 1.2),
        (-width / 2 + 0.9, depth / 2 - 0.9, 1.22),
        0.4,
        m.COAL,
    )
    if leads:
        for sx, sy, span in ((1, 0, depth), (-1, 0, depth), (0, 1, width), (0, -1, width)):
            _leads(f, sx, sy, width, depth, span)
    size = min(width / max(max(len(t) for t in lines), 5) * 1.05, depth / (len(lines) + 1) * 0.62)
    for row, text in enumerate(lines):
        y = (len(lines) - 1) / 2 * size * 1.7 - row * size * 1.7
        f.print_flat(0, y, 1.22, size, text, m.PRINT_DIM)


def _leads(f: Frame, sx: int, sy: int, width: float, depth: float, span: float) -> None:
    count = max(int((span - 1) / 0.8), 2)
    for k in range(count):
        t = -span / 2 + 0.5 + (span - 1) * (k + 0.5) / count
        x = sx * (width / 2 + 0.4) if sx else t
        y = sy * (depth / 2 + 0.4) if sy else t
        dx, dy = (0.5, 0.14) if sx else (0.14, 0.5)
        f.box((x - dx, y - dy, 0), (x + dx, y + dy, 0.3), m.TIN)


def flash_chip(f: Frame) -> None:
    """An eight-pin flash chip."""
    f.take(-4, -4, 4, 4)
    f.box((-2.6, -2.6, 0.2), (2.6, 2.6, 1.9), m.EPOXY, 0.25)
    for k in range(4):
        f.box((-3.9, -2.1 + k * 1.27, 0), (3.9, -1.7 + k * 1.27, 0.4), m.TIN)
    f.print_flat(0, 0.4, 1.92, 1.0, "25Q256", m.PRINT_DIM)


def fin_heatsink(f: Frame, width: float, depth: float, height: float) -> None:
    """A finned heatsink over a row of transistors, its fins along y, centred."""
    f.take(-width / 2 - 1, -depth / 2 - 1, width / 2 + 1, depth / 2 + 1)
    f.box((-width / 2, -depth / 2, 2.2), (width / 2, depth / 2, 6.0), m.ALUMINIUM, 0.3)
    count = int(width / 3.4)
    pitch = width / count
    for k in range(count):
        x = -width / 2 + (k + 0.5) * pitch
        drop = 1.6 if k % 5 == 4 else 0
        f.box(
            (x - 0.75, -depth / 2 + 0.4, 6),
            (x + 0.75, depth / 2 - 0.4, height - drop),
            m.ALUMINIUM,
            0.35,
        )


def shaped_heatsink(f: Frame, width: float, depth: float, height: float) -> None:
    """A heatsink along y with slanted grooves and a raised crest, centred."""
    f.take(-width / 2 - 1, -depth / 2 - 1, width / 2 + 1, depth / 2 + 1)
    w, d = width / 2, depth / 2
    f.slab(
        [(-w, -d), (w, -d + 3), (w, d - 3), (w - 3, d), (-w, d)], 2.2, height - 5, m.ALUMINIUM, 1.0
    )
    count = int(depth / 4.2)
    pitch = (depth - 8) / count
    for k in range(count):
        y = -d + 4 + k * pitch
        f.slab(
            [
                (-w + 1, y),
                (w - 1.5, y + 1.5),
                (w - 1.5, y + pitch - 0.1),
                (-w + 1, y + pitch - 1.6),
            ],
            height - 6,
            height,
            m.ARMOR,
            0.6,
        )


def chipset_heatsink(f: Frame, width: float, depth: float) -> None:
    """The low cover over the chipset, with the product's name, centred."""
    f.take(-width / 2 - 1, -depth / 2 - 1, width / 2 + 1, depth / 2 + 1)
    w, d, c = width / 2, depth / 2, 9.0
    f.slab(
        [(-w, -d), (w - c, -d), (w, -d + c), (w, d), (-w + c, d), (-w, d - c)],
        2.0,
        8.6,
        m.ARMOR,
        0.9,
    )
    for k in range(5):
        x = w - 19 + k * 3.0
        f.slab(
            [(x - 4, -d + 3), (x - 2.6, -d + 3), (x + 4.6 - 4, -d + 12), (x + 3.2 - 4, -d + 12)],
            8.4,
            9.1,
            m.ALUMINIUM,
            0.2,
        )
    f.slab(
        [(-w + 3, d - 11.6), (-w + 4.2, d - 11.6), (-w + 12.4, d - 3.4), (-w + 11.2, d - 3.4)],
        8.55,
        8.68,
        m.AMBER,
    )
    f.print_flat(1.5, 4.6, 8.62, 4.2, "BOARDSCOPE", m.PRINT)
    f.print_flat(1.5, -1.8, 8.62, 2.0, "REFERENCE BOARD", m.PRINT_AMBER)
    f.print_flat(-9, -10.5, 8.62, 1.8, "MICRO-ATX", m.PRINT_DIM)


def passive(f: Frame, length: float, kind: str) -> None:
    """A tiny resistor or capacitor along x, centred."""
    half, width = length / 2, length * 0.28
    height = 0.45 * length if kind == m.CERAMIC else 0.25 * length
    f.box((-half, -width, 0), (half, width, height * 0.96), m.TIN)
    f.box((-half * 0.52, -width * 1.02, 0), (half * 0.52, width * 1.02, height), kind)
