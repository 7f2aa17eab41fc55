"""Connectors with openings. Local frame: they look along -y, x runs to their right."""

import materials as m
from scene import Frame

PORT_FACE = -1.4  # how far the faces stand out over the board's edge


def shell(
    f: Frame,
    x0: float,
    x1: float,
    z0: float,
    z1: float,
    depth: float,
    openings: list[tuple[float, float, float, float]],
    texture: str = m.STEEL,
) -> None:
    """A metal case with rectangular openings (x0, z0, x1, z1) in its face."""
    holes = [((a, PORT_FACE - 1, b), (c, PORT_FACE + 11, d)) for a, b, c, d in openings]
    face = (x0, x1)
    f.cut_box((x0, PORT_FACE, z0), (x1, depth, z1), holes, texture)
    for a, b, c, d in openings:
        # The inside is as good as dark a little behind the face.
        f.box((a + 0.01, PORT_FACE + 1.6, b + 0.01), (c - 0.01, PORT_FACE + 10, d - 0.01), m.CAVITY)
        for x0, x1 in ((a - 0.5, a), (c, c + 0.5)):
            f.box((x0, PORT_FACE - 0.18, b - 0.5), (x1, PORT_FACE, d + 0.5), texture)
    spring_cuts(f, x0=face[0], x1=face[1], top=z1, depth=depth)


def spring_cuts(f: Frame, x0: float, x1: float, top: float, depth: float) -> None:
    """The spring tongues punched into the upper side of a metal case."""
    for center in (x0 + (x1 - x0) * 0.28, x0 + (x1 - x0) * 0.72):
        y0, y1, half = 1.4, min(6.4, depth - 3), 1.15
        for a, b in (
            ((-half, y0), (-half + 0.28, y1)),
            ((half - 0.28, y0), (half, y1)),
            ((-half, y1 - 0.28), (half, y1)),
        ):
            f.box((center + a[0], a[1], top - 0.02), (center + b[0], b[1], top + 0.03), m.CAVITY)
    f.box((x0, depth - 2.1, top - 0.02), (x1, depth - 1.85, top + 0.03), m.COAL)


def usb_a_opening(f: Frame, x: float, z: float, tongue: str) -> tuple[float, float, float, float]:
    """One USB type A opening with its lower left corner at (x, z); draws the tongue."""
    f.box((x + 0.8, PORT_FACE + 0.5, z + 2.4), (x + 12.3, PORT_FACE + 10, z + 4.5), tongue)
    for k in range(4):
        left = x + 1.9 + k * 2.6
        f.box((left, PORT_FACE + 0.48, z + 2.2), (left + 1.2, PORT_FACE + 9, z + 2.42), m.GOLD)
    return (x, z, x + 13.1, z + 5.2)


def usb_stack(f: Frame, count: int, tongue: str, z0: float = 0.4) -> None:
    """USB type A ports above each other; 14.6 mm wide, centred."""
    f.take(-8, -2, 8, 19)
    height = 7.6
    openings = [usb_a_opening(f, -6.55, z0 + 1.2 + k * height, tongue) for k in range(count)]
    shell(f, -7.4, 7.4, z0, z0 + count * height, 17.5, openings)
    f.box((-7.4, 16.5, 0), (7.4, 18, z0 + count * height - 0.4), m.BLACK)
    for side in (-1, 1):
        f.box((side * 7.4 - 0.1, 3, 0), (side * 7.4 + 0.1, 6, z0 + 3), m.STEEL)


def usb_c_and_a(f: Frame) -> None:
    """A USB type C port below a type A port."""
    f.take(-8, -2, 8, 17)
    openings = [usb_a_opening(f, -6.55, 8.0, m.TEAL), (-4.6, 2.6, 4.6, 5.8)]
    shell(f, -7.4, 7.4, 0.4, 14.6, 15, openings)
    f.box((-3.4, PORT_FACE + 0.7, 3.9), (3.4, PORT_FACE + 9, 4.5), m.GREY)


def display_ports(f: Frame) -> tuple[tuple[float, float], tuple[float, float]]:
    """The block behind HDMI and DisplayPort; returns the x ranges of both faces."""
    return ((-20.5, -2.5), (2.5, 20.5))


def hdmi(f: Frame) -> None:
    f.take(-9, -2, 9, 14)
    shell(f, -8.2, 8.2, 0.4, 7.4, 12.5, [(-7.2, 1.6, 7.2, 6.2)])
    f.box((-6.0, PORT_FACE + 0.8, 3.6), (6.0, PORT_FACE + 9, 4.6), m.BLACK)
    for k in range(9):
        f.box(
            (-5.3 + k * 1.2, PORT_FACE + 0.75, 4.55), (-4.8 + k * 1.2, PORT_FACE + 8, 4.72), m.GOLD
        )


def display_port(f: Frame) -> None:
    f.take(-10, -2, 10, 16)
    shell(f, -9.2, 9.2, 0.4, 8.0, 14.5, [(-8.2, 1.6, 8.2, 6.6)])
    f.box((-6.8, PORT_FACE + 0.8, 3.7), (6.8, PORT_FACE + 9, 4.7), m.BLACK)
    for k in range(10):
        f.box(
            (-6.2 + k * 1.3, PORT_FACE + 0.75, 4.65), (-5.6 + k * 1.3, PORT_FACE + 8, 4.8), m.GOLD
        )


def network_port(f: Frame) -> None:
    """The network jack, on top of two USB ports; only the jack is the network component."""
    opening = [(-5.9, 18.4, 5.9, 25.6), (-3.2, 25.5, 3.2, 27.6)]
    shell(f, -8.1, 8.1, 16.4, 29.0, 21.5, opening)
    for k in range(8):
        f.box(
            (-3.9 + k * 1.0, PORT_FACE + 2.4, 18.4), (-3.5 + k * 1.0, PORT_FACE + 8, 19.6), m.GOLD
        )
    f.box((-7.2, PORT_FACE - 0.08, 26.4), (-4.4, PORT_FACE, 27.9), m.LIME)
    f.box((4.4, PORT_FACE - 0.08, 26.4), (7.2, PORT_FACE, 27.9), m.AMBER)


def network_base(f: Frame) -> None:
    """The two USB ports under the network jack."""
    f.take(-9, -2, 9, 23)
    openings = [usb_a_opening(f, -6.55, 1.6, m.BLUE), usb_a_opening(f, -6.55, 9.2, m.BLUE)]
    shell(f, -8.1, 8.1, 0.4, 16.4, 21.5, openings)


def audio_jack(f: Frame, z: float, color: str) -> None:
    f.rod((0, PORT_FACE - 1.2, z), (0, PORT_FACE + 2.5, z), 3.9, color)
    f.rod((0, PORT_FACE - 1.3, z), (0, PORT_FACE - 1.15, z), 2.1, m.CAVITY)
    f.rod((0, PORT_FACE - 1.26, z), (0, PORT_FACE - 1.19, z), 2.7, m.GOLD)


def audio_block(f: Frame) -> None:
    """Five jacks and an optical output in two columns and three rows."""
    f.take(-15, -2, 15, 15)
    f.box((-13.4, PORT_FACE + 0.8, 0), (13.4, 13.5, 33.0), m.BLACK, 0.5)
    rows = (6.0, 16.4, 26.8)
    for z, color in zip(rows, (m.PINK, m.LIME, m.SKY), strict=True):
        audio_jack(f.at(6.6, 0), z, color)
    for z, color in zip(rows[1:], (m.BLACK, m.AMBER), strict=True):
        audio_jack(f.at(-6.6, 0), z, color)
    f.box((-10.4, PORT_FACE - 0.3, 2.2), (-2.8, PORT_FACE + 1, 9.8), m.COAL, 0.4)
    f.box((-8.6, PORT_FACE - 0.4, 3.8), (-4.6, PORT_FACE - 0.25, 8.0), m.CAVITY)


def antenna_posts(f: Frame) -> None:
    """Two threaded aerial connectors."""
    f.take(-10, -2, 10, 9)
    f.box((-9, PORT_FACE + 1, 0), (9, 7, 13.6), m.STEEL, 0.4)
    for x in (-4.4, 4.4):
        f.rod((x, PORT_FACE - 6.5, 7), (x, PORT_FACE + 1.5, 7), 3.0, m.GOLD)
        f.rod((x, PORT_FACE - 6.7, 7), (x, PORT_FACE - 6.45, 7), 1.4, m.CAVITY)


def sata_port(f: Frame, z: float) -> None:
    """One angled SATA plug place of a two-storey block; 17 mm wide, centred."""
    holes = [((-6.4, -6, z + 2.2), (6.2, 5, z + 4.9)), ((-7.4, -6, z + 1.2), (7.4, -2.6, z + 6.1))]
    f.cut_box((-8.5, -4.4, z + 0.1), (8.5, 13, z + 7.3), holes, m.SLATE)
    f.box((-5.6, -4.1, z + 3.3), (5.2, 5, z + 4.3), m.GREY)
    f.box((3.9, -4.1, z + 2.4), (5.2, 5, z + 4.3), m.GREY)
    for k in range(7):
        f.box((-4.8 + k * 1.27, -4.12, z + 4.28), (-4.1 + k * 1.27, 4, z + 4.4), m.GOLD)
    f.box((-6.4, -2.2, z + 2.21), (6.2, 5.1, z + 4.89), m.CAVITY)
