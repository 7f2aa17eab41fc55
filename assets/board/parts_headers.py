"""Pin headers and power connectors."""

import materials as m
from scene import Frame

PITCH = 2.54


def pin(f: Frame, x: float, y: float, height: float = 8.4) -> None:
    f.box((x - 0.32, y - 0.32, 0), (x + 0.32, y + 0.32, height), m.GOLD, 0.25)


def pin_header(
    f: Frame, columns: int, rows: int, missing: set[tuple[int, int]], body: str = m.BLACK
) -> None:
    """Bare pins on a low base, centred on the origin."""
    half_x, half_y = columns * PITCH / 2, rows * PITCH / 2
    f.take(-half_x - 1, -half_y - 1, half_x + 1, half_y + 1)
    f.box((-half_x, -half_y, 0), (half_x, half_y, 2.5), body, 0.3)
    for i in range(columns):
        for j in range(rows):
            if (i, j) not in missing:
                pin(f, -half_x + (i + 0.5) * PITCH, -half_y + (j + 0.5) * PITCH)


def fan_header(f: Frame, body: str) -> None:
    """A four-pin fan header with its guide tongue behind the pins."""
    half = 5.1
    f.take(-half - 1, -4, half + 1, 5)
    f.box((-half, -2.4, 0), (half, 2.6, 3.4), body, 0.3)
    f.box((-half + 0.2, 2.4, 0), (half - 2.6, 3.5, 9.4), body, 0.35)
    for i in range(4):
        pin(f, -half + 1.3 + i * PITCH, 0)


def rgb_header(f: Frame) -> None:
    """A four-pin light header, one place left empty."""
    pin_header(f, 4, 1, {(2, 0)}, m.WHITE)


def shrouded_header(f: Frame, columns: int, height: float, body: str) -> None:
    """Two rows of pins inside a wall, as for front USB 3 cables; the key notch looks along -y."""
    half_x, half_y = columns * 2.0 / 2 + 2.2, 4.4
    f.take(-half_x - 1, -half_y - 1, half_x + 1, half_y + 1)
    holes = [
        ((-half_x + 1, -half_y + 1, 1.6), (half_x - 1, half_y - 1, height + 1)),
        ((-2.2, -half_y - 1, 4), (2.2, -half_y + 2, height + 1)),
    ]
    f.cut_box((-half_x, -half_y, 0), (half_x, half_y, height), holes, body)
    f.box((-half_x + 2, -0.7, 1), (half_x - 2, 0.7, height - 1.8), m.BLUE)
    for i in range(columns):
        for side in (-1, 1):
            x = -columns + 1 + i * 2.0
            f.box((x - 0.3, side * 1.2 - 0.2, 1), (x + 0.3, side * 1.2 + 0.2, height - 2.6), m.GOLD)


def front_type_e(f: Frame) -> None:
    """The key-A socket of a front USB type C cable, which stands on the board and looks up."""
    f.take(-7, -5, 7, 5)
    f.cut_box((-5.6, -3.4, 0), (5.6, 3.4, 11), [((-4.6, -2.4, 2), (4.6, 2.4, 12))], m.STEEL)
    f.box((-3.8, -0.6, 1), (3.8, 0.6, 9.8), m.BLACK)
    f.box((-3.4, -0.72, 6), (3.4, 0.72, 9.4), "T_ContactsX")
    for side in (-1, 1):
        f.box((side * 6.4 - 0.9, -2, 0), (side * 6.4 + 0.9, 2, 4.4), m.STEEL, 0.3)


def power_connector(f: Frame, columns: int) -> None:
    """Two rows of power cells with a latch on the +y side, centred on the origin."""
    pitch, height = 4.2, 13.0
    half_x = columns * pitch / 2 + 0.7
    f.take(-half_x - 1, -6, half_x + 1, 8)
    holes = []
    for i in range(columns):
        for j in (-1, 1):
            x, y = -columns * pitch / 2 + (i + 0.5) * pitch, j * 2.15
            holes.append(((x - 1.7, y - 1.7, 2), (x + 1.7, y + 1.7, height + 1)))
    f.cut_box((-half_x, -4.9, 0), (half_x, 4.9, height), holes, m.BLACK)
    for i in range(columns):
        for j in (-1, 1):
            x, y = -columns * pitch / 2 + (i + 0.5) * pitch, j * 2.15
            f.box((x - 0.5, y - 0.5, 1), (x + 0.5, y + 0.5, height - 3.4), m.TIN)
    f.slab([(-2.6, 4.9), (2.6, 4.9), (2.6, 6.6), (-2.6, 6.6)], 3, 9, m.BLACK, 0.4)


def jumper(f: Frame, columns: int) -> None:
    pin_header(f, columns, 1, set())
