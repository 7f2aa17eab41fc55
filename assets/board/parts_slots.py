"""Sockets and slots: processor, memory, PCI Express, M.2."""

import math

import materials as m
from scene import Frame


def processor_socket(f: Frame) -> None:
    """A land grid socket with its steel frame and lever; the frame's centre is the origin."""
    f.take(-33, -38, 33, 38)
    f.slab([(-32, -37), (32, -37), (32, 37), (-32, 37)], 0, 0.6, m.STEEL)
    f.cut_box(
        (-25.5, -27.5, 0), (25.5, 27.5, 4.6), [((-19.6, -21.4, 3.1), (19.6, 21.4, 5))], m.BLACK
    )
    land_grid(f)
    frame_top = 6.2
    for x0, y0, x1, y1 in (
        (-29, -32, -22.4, 32),
        (22.4, -32, 29, 32),
        (-22.4, 24.2, 22.4, 32),
        (-22.4, -32, 22.4, -24.2),
    ):
        f.box((x0, y0, 4.4), (x1, y1, frame_top), m.STEEL, 0.5)
    f.slab([(-9, 31.5), (9, 31.5), (7, 37), (-7, 37)], 1.0, 5.6, m.STEEL, 0.4)
    f.slab([(-6, -37), (6, -37), (8, -31.5), (-8, -31.5)], 1.0, 5.6, m.STEEL, 0.4)
    f.rod((31.4, -33, 4.2), (31.4, 30, 4.2), 0.95, m.NICKEL)
    f.rod((20, -33, 4.2), (31.4, -33, 4.2), 0.95, m.NICKEL)
    f.slab([(29.8, 27), (33.6, 27), (33.6, 32), (29.8, 32)], 1, 3.2, m.STEEL, 0.3)
    for x in (-29, 29):
        for y in (-34.6, 34.6):
            screw(f.at(x * 0.72, y), 1.9, 0.6)
    f.print_flat(-25.6, 0, frame_top, 1.7, "BOARDSCOPE  B1S-24", "T_Engraved", 3)


def land_grid(f: Frame) -> None:
    """The field of contact springs around the socket's open centre."""
    f.box((-19.6, -21.4, 3.0), (19.6, 21.4, 3.15), m.COAL)
    pitch = 1.12
    pins = []
    columns, rows = int(38 / pitch), int(41.6 / pitch)
    for i in range(columns):
        for j in range(rows):
            x, y = -18.6 + i * pitch, -20.4 + j * pitch
            if abs(x) < 5.4 and abs(y) < 6.6:
                continue
            p = f.point((x, y, 3.15))
            pins.append(
                f"box {{ <{p[0]:.3f},{p[2]:.3f},{p[1]:.3f}>, <{p[0] + 0.62:.3f},"
                f"{p[2] + 0.3:.3f},{p[1] + 0.5:.3f}> }}"
            )
    f.scene.solid(f"union {{ {' '.join(pins)} texture {{ {m.GOLD} }} }}")
    for k in range(12):
        x, y = -4.2 + (k % 4) * 2.4, -4.4 + (k // 4) * 3.6
        f.box((x, y, 3.1), (x + 1.2, y + 1.9, 3.9), m.CERAMIC)


def screw(f: Frame, radius: float, z: float) -> None:
    f.rod((0, 0, z), (0, 0, z + 0.9), radius, m.NICKEL)
    f.box((-radius * 0.62, -0.18, z + 0.86), (radius * 0.62, 0.18, z + 0.93), m.CAVITY)
    f.box((-0.18, -radius * 0.62, z + 0.86), (0.18, radius * 0.62, z + 0.93), m.CAVITY)


def memory_slot(f: Frame, body: str) -> None:
    """A memory slot along y, its front end at the origin, latches at both ends."""
    length, half = 141.0, 3.3
    f.take(-4, -2, 4, length + 2)
    key = 66.0
    groove = 0.75
    holes = [
        ((-groove, 5.5, 2.2), (groove, key, 9)),
        ((-groove, key + 1.6, 2.2), (groove, length - 5.5, 9)),
    ]
    f.cut_box((-half, 4, 0), (half, length - 4, 6.4), holes, body)
    for x in (-groove, groove):
        f.box((x - 0.12, 6.2, 3.4), (x + 0.12, length - 6.2, 6.2), "T_Contacts")
    for y, sign in ((0.0, 1), (length, -1)):
        near, far = sorted((y - 1.2 * sign, y + 6 * sign))
        f.cut_box(
            (-half - 0.35, near, 0),
            (half + 0.35, far, 9.4),
            [((-1.5, y + 1.2 * sign, 4), (1.5, y + 6.2 * sign, 10))],
            m.COAL,
        )
        inner = sorted((y - 2.2 * sign, y + 1.2 * sign))
        f.slab(
            [(-2.6, inner[0]), (2.6, inner[0]), (2.6, inner[1]), (-2.6, inner[1])],
            2.5,
            11.6,
            m.GREY,
            0.7,
        )


def express_slot(f: Frame, lanes: int, armored: bool) -> None:
    """A PCI Express slot along x, its rear end at the origin."""
    length = {1: 25.0, 4: 39.0, 16: 89.0}[lanes]
    half, top, key = 3.75, 11.0, 13.4
    f.take(-2, -5, length + 10, 5)
    holes = [
        ((2.2, -0.95, 3.0), (key - 0.9, 0.95, 12)),
        ((key + 0.9, -0.95, 3.0), (length - 2.2, 0.95, 12)),
    ]
    f.cut_box((0, -half, 0), (length, half, top), holes, m.BLACK)
    for side in (-1, 1):
        for x0, x1 in ((2.6, key - 1.2), (key + 1.2, length - 2.6)):
            f.box((x0, side * 0.95 - 0.12, 6), (x1, side * 0.95 + 0.12, top - 0.5), "T_ContactsX")
    if armored:
        shell = [((-1, -half - 0.02, -1), (length + 1, half + 0.02, 12))]
        f.cut_box((-0.4, -half - 0.55, 0), (length + 0.4, half + 0.55, top - 0.8), shell, m.STEEL)
        for window in range(6, int(length) - 4, 12):
            f.box((window, -half - 0.62, 1.2), (window + 3.4, -half - 0.4, 3.2), m.CAVITY)
        for x in (-0.4, length - 0.8):
            f.box((x, -half - 0.55, top - 0.8), (x + 1.2, half + 0.55, top + 0.25), m.STEEL)
    if lanes == 16:
        f.box((length, -2.6, 0), (length + 4.6, 2.6, 7.5), m.COAL, 0.5)
        f.slab(
            [(length + 3.2, -2.2), (length + 8.2, -1.6), (length + 8.2, 1.6), (length + 3.2, 2.2)],
            6.2,
            9.6,
            m.GREY,
            0.6,
        )


def m2_socket(f: Frame) -> None:
    """The M.2 connector alone; a card would lie towards -x from the origin."""
    f.take(-2, -12, 8, 12)
    f.cut_box(
        (0, -11, 0),
        (6.2, 11, 3.4),
        [((-1, -9.6, 1.1), (3.4, 9.6, 2.3)), ((-1, 4.6, 1), (3.6, 5.8, 4))],
        m.BLACK,
    )
    f.box((1.6, -10, 3.3), (4.6, 10, 3.46), m.COAL)
    for i in range(30):
        f.box((6.2, -9.4 + i * 0.64, 0), (7.1, -9.1 + i * 0.64, 0.25), m.TIN)


def m2_open(f: Frame, card: float) -> None:
    """An M.2 place without a cover: connector and the post for the card's screw."""
    m2_socket(f)
    f.take(-card - 4, -12, 0, 12)
    for length in (42.0, 60.0, 80.0):
        if length > card:
            continue
        f.rod((-length, 0, 0), (-length, 0, 0.12), 3.3, m.GOLD)
        f.rod((-length, 0, 0.12), (-length, 0, 0.14), 1.5, m.CAVITY)
    f.rod((-card, 0, 0), (-card, 0, 2.6), 2.5, m.NICKEL)
    f.rod((-card, 0, 2.6), (-card, 0, 2.7), 1.5, m.CAVITY)


def m2_cover(f: Frame, length: float, depth: float, title: str) -> None:
    """An M.2 place under a grooved heat spreader; the origin is the cover's right end."""
    f.take(-length - 2, -depth / 2 - 1, 8, depth / 2 + 1)
    m2_socket(f.at(-1, 0))
    half = depth / 2
    cut = 6.0
    ring = [
        (-length, -half),
        (-cut, -half),
        (0, -half + cut),
        (0, half),
        (-length + cut, half),
        (-length, half - cut),
    ]
    f.slab(ring, 3.6, 7.6, m.ARMOR, 0.7)
    for i in range(7):
        x = -length + 12 + i * 2.6
        f.slab(
            [(x, -half + 2), (x + 1.2, -half + 2), (x + 7.2, half - 2), (x + 6.0, half - 2)],
            7.4,
            8.2,
            m.ALUMINIUM,
            0.25,
        )
    f.box((-length + 30, -half + 1.6, 7.55), (-5, -half + 2.1, 7.68), m.AMBER)
    f.print_flat(-length / 2 + 12, 1.6, 7.62, 4.0, title, m.PRINT)
    f.print_flat(-length / 2 + 12, -4.6, 7.62, 1.5, "PCI EXPRESS 4.0 x4  2280", m.PRINT_DIM)
    for x in (-length + 5, -6.5):
        screw(f.at(x, 0 if x < -20 else 3, z=7.2), 2.0, 0)


def coin_cell(f: Frame) -> None:
    """A coin cell in its holder."""
    f.take(-13, -12, 13, 12)
    octagon = [
        (12.2 * math.cos(math.pi * k / 8), 11.6 * math.sin(math.pi * k / 8)) for k in range(16)
    ]
    f.slab(octagon, 0, 3.2, m.BLACK, 0.5)
    f.rod((0, 0, 1.5), (0, 0, 4.6), 10.1, m.NICKEL)
    f.rod((0, 0, 4.6), (0, 0, 4.75), 8.7, m.STEEL)
    f.box((9, -3, 0), (12.6, 3, 5.4), m.NICKEL, 0.4)
    f.box((-13, -2.2, 0), (-9.4, 2.2, 5.6), m.BLACK, 0.5)
    f.print_flat(0, 3.1, 4.76, 2.4, "CR2032", "T_Engraved")
    f.print_flat(0, -1.0, 4.76, 3.2, "+", "T_Engraved")
    f.print_flat(0, -4.4, 4.76, 1.5, "LITHIUM 3V", "T_Engraved")
