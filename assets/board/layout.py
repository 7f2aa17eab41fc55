"""Where every part of the board stands. Millimetres, the origin at the front left corner."""

import random
from collections.abc import Callable
from dataclasses import dataclass
from functools import partial

import materials as m
import parts_headers as headers
import parts_power as power
import parts_rear as rear
import parts_slots as slots
from scene import Frame, Scene

BOARD_SIZE = 244.0
BOARD_THICKNESS = 1.6
HOLES = [
    (6.4, 237.6),
    (6.4, 80.0),
    (6.4, 10.2),
    (163.8, 90.6),
    (163.8, 12.4),
    (228.0, 206.0),
    (238.0, 78.5),
]
HOLE_RADIUS = 1.9


def build_board() -> Scene:
    scene = Scene()
    for x, y in HOLES:
        scene.take((x - 4, y - 4, x + 4, y + 4))
    place_processor(scene)
    place_memory(scene)
    place_slots(scene)
    place_rear(scene)
    place_power(scene)
    place_headers(scene)
    place_chips(scene)
    place_prints(scene)
    strew_passives(scene)
    return scene


def place(
    scene: Scene, name: str, x: float, y: float, quarters: int, part: Callable[[Frame], object]
) -> Frame:
    """Puts a part down as the named component."""
    frame = Frame(scene, x, y, quarters)
    with scene.component(name):
        part(frame)
    return frame


def place_processor(scene: Scene) -> None:
    place(scene, "CPU", 112, 165, 0, slots.processor_socket)
    Frame(scene, 70, 132).label(0, 0, "CPU1", 2.2, 3)


def place_memory(scene: Scene) -> None:
    names = ("DIMM_A1", "DIMM_A2", "DIMM_B1", "DIMM_B2")
    for k, name in enumerate(names):
        body = m.BLACK if k % 2 == 0 else m.COAL
        part = partial(slots.memory_slot, body=body)
        frame = place(scene, name, 167 + k * 9.6, 97, 0, part)
        frame.label(0, -4.2, name, 1.05)


def place_slots(scene: Scene) -> None:
    place(scene, "PCIEX16_1", 50, 78.5, 0, lambda f: slots.express_slot(f, 16, True)).label(
        -3.3, 0, "PCIEX16_1", 1.45, 3
    )
    place(scene, "PCIEX1_1", 50, 37, 0, lambda f: slots.express_slot(f, 1, False)).label(
        -3.3, 0, "PCIEX1_1", 1.45, 3
    )
    place(scene, "PCIEX16_2", 50, 18.5, 0, lambda f: slots.express_slot(f, 16, False)).label(
        -3.3, 0, "PCIEX16_2", 1.45, 3
    )
    cover = slots.m2_cover
    place(scene, "M2_1", 142, 103, 0, lambda f: cover(f, 82, 21, "M2_1"))
    place(scene, "M2_2", 142, 58.5, 0, lambda f: cover(f, 82, 20, "M2_2"))
    third = place(scene, "M2_3", 160, 35.5, 0, lambda f: slots.m2_open(f, 80))
    third.label(-12, 0, "M2_3", 2.4)
    third.label(-42, -5.4, "2242", 1.2)
    third.label(-60, -5.4, "2260", 1.2)
    third.label(-76, -5.4, "2280", 1.2)
    wifi = place(scene, "M2_WIFI", 50, 101, 0, lambda f: slots.m2_open(f, 30))
    wifi.label(-14, 6, "M2_WIFI", 1.8)


def place_rear(scene: Scene) -> None:
    def put(name: str, y: float, part: Callable[[Frame], object]) -> None:
        place(scene, name, 0, y, 3, part)

    put("USB_12", 229.5, lambda f: rear.usb_stack(f, 2, m.BLACK))
    put("HDMI", 212, rear.hdmi)
    put("DP", 192.5, rear.display_port)
    put("U32G1_34", 174, lambda f: rear.usb_stack(f, 2, m.BLUE))
    put("USB_C5", 157.5, rear.usb_c_and_a)
    put("U32G1_67", 139, rear.network_base)
    put("LAN", 139, rear.network_port)
    rear.antenna_posts(Frame(scene, 0, 120.5, 3))
    put("AUDIO", 98.5, rear.audio_block)


def place_power(scene: Scene) -> None:
    power.shaped_heatsink(Frame(scene, 41, 176.5), 18, 88, 27)
    Frame(scene, 31.98, 176.5, 3).print_upright(0, 0, 11.5, 6.0, "BOARDSCOPE", m.PRINT_DIM)
    power.fin_heatsink(Frame(scene, 101, 229), 78, 15, 26)
    for k in range(9):
        power.choke(Frame(scene, 57.5, 137 + k * 9.4, 1))
        power.can_capacitor(Frame(scene, 66.4, 140 + k * 8.0), 3.0, 7.4)
        power.choke(Frame(scene, 66 + k * 8.9, 215.4))
    for k in range(8):
        power.can_capacitor(Frame(scene, 76 + k * 8.4, 207.2, 1), 2.8, 7.2)
    for k in range(4):
        power.can_capacitor(Frame(scene, 152.5, 150 + k * 9.0), 3.0, 7.4)
    for y in (196.0, 205.6):
        power.choke(Frame(scene, 211, y))
        power.can_capacitor(Frame(scene, 219.6, y, 2), 2.8, 7.0)
        power.mosfet(Frame(scene, 203.6, y))
    place(scene, "EPS_12V", 39, 235.6, 0, lambda f: headers.power_connector(f, 4)).label(
        0, -7.6, "EPS_12V", 1.5
    )
    atx = place(scene, "ATX_PWR", 236, 166, 3, lambda f: headers.power_connector(f, 12))
    atx.label(0, -7.6, "ATX_PWR", 2.0)
    place(scene, "BATTERY", 160.4, 80.5, 0, slots.coin_cell)
    place(scene, "CHIPSET", 197, 50, 0, lambda f: power.chipset_heatsink(f, 47, 40))


@dataclass(frozen=True)
class Header:
    """A connector along the board's edges; its label lies below it, in its own frame."""

    name: str
    x: float
    y: float
    quarters: int
    part: Callable[[Frame], object]
    label_y: float
    label_quarters: int = 0
    label_height: float = 1.5


def fan(body: str) -> Callable[[Frame], object]:
    return lambda f: headers.fan_header(f, body)


def pins(columns: int, missing: tuple[int, int], body: str = m.BLACK) -> Callable[[Frame], object]:
    return lambda f: headers.pin_header(f, columns, 2, {missing}, body)


HEADERS = [
    Header("CPU_FAN", 151.4, 238.2, 2, fan(m.WHITE), 5.0, 2),
    Header("CPU_OPT", 151.4, 223.0, 2, fan(m.BLACK), 4.6, 2),
    Header("SYS_FAN1", 238.4, 226, 3, fan(m.BLACK), -4.6),
    Header("SYS_FAN2", 238.4, 60, 3, fan(m.BLACK), -4.6),
    Header("SYS_FAN3", 147.5, 7.2, 0, fan(m.BLACK), -4.6),
    Header("ARGB_1", 216, 239.4, 0, headers.rgb_header, -3.2),
    Header("ARGB_2", 129, 6.4, 0, headers.rgb_header, -3.4),
    Header("AAFP", 20, 7.6, 0, pins(5, (3, 1)), -4.8),
    Header("TPM", 60, 7.6, 0, pins(6, (4, 0)), -4.8),
    Header("USB_89", 84, 7.6, 0, pins(5, (4, 1)), -4.8),
    Header("USB_1011", 107, 7.6, 0, pins(5, (4, 1)), -4.8),
    Header("PANEL", 229.5, 7.6, 0, pins(5, (4, 0), m.COAL), -4.8),
    Header(
        "U32G1_1213", 235, 97.5, 3, lambda f: headers.shrouded_header(f, 10, 10.5, m.BLACK), -6.4
    ),
    Header("U32G2_C14", 234, 123, 3, headers.front_type_e, -5.6, 0, 1.4),
]


def place_headers(scene: Scene) -> None:
    for header in HEADERS:
        frame = place(scene, header.name, header.x, header.y, header.quarters, header.part)
        frame.label(0, header.label_y, header.name, header.label_height, header.label_quarters)
    headers.jumper(Frame(scene, 170.6, 22.4, 1), 2)
    for x, lower, upper in ((185.0, 1, 2), (205.0, 3, 4)):
        scene.take((x - 9, -2, x + 9, 18))
        place(scene, f"SATA6G_{lower}", x, 3.4, 0, lambda f: rear.sata_port(f, 0.2))
        block = place(scene, f"SATA6G_{upper}", x, 3.4, 0, lambda f: rear.sata_port(f, 7.6))
        block.print_flat(0, 6.6, 14.92, 2.0, "SATA6G", m.PRINT_DIM)
        block.print_flat(0, 2.6, 14.92, 2.0, f"{lower} - {upper}", m.PRINT_DIM)


def place_chips(scene: Scene) -> None:
    power.chip(Frame(scene, 24, 36), 8, 8, ["BSC-1220", "AUDIO"])
    power.chip(Frame(scene, 32, 122), 7, 7, ["BS-225V", "2.5G"])
    power.chip(Frame(scene, 228, 46), 10, 10, ["BS-6799D", "SIO"])
    power.chip(Frame(scene, 70, 122), 6, 6, ["PWM-16"])
    power.chip(Frame(scene, 212, 178), 4, 4, ["DDR"], leads=False)
    power.chip(Frame(scene, 152, 126), 5, 5, ["CK-5"])
    power.chip(Frame(scene, 214, 118), 5, 5, ["RD-32"])
    power.flash_chip(Frame(scene, 228, 27))
    for x, y in ((8, 62), (16, 62), (24, 62), (8, 53), (32, 62), (32, 53), (12, 27), (24, 23)):
        power.gold_capacitor(Frame(scene, x, y))
    for x, y in ((40, 62), (156, 58), (224, 84), (224, 138), (160, 22)):
        power.can_capacitor(Frame(scene, x, y), 2.8, 7.2)


def place_prints(scene: Scene) -> None:
    """Silkscreen that names the board itself."""
    ground = Frame(scene, 0, 0)
    ground.label(205, 86, "B1S-24", 4.0)
    ground.label(204, 80, "DDR5  PCIe 5.0  USB 20G", 1.3)
    ground.label(219, 150, "BOARDSCOPE", 2.4, 3)
    ground.label(229, 19.4, "REV 1.0", 1.2)
    ground.label(108, 86.6, "BOARDSCOPE REFERENCE BOARD", 1.4)
    ground.label(38, 36, "HIGH DEFINITION AUDIO", 1.3, 3)


def strew_passives(scene: Scene) -> None:
    """Resistors and capacitors wherever ground is left, in loose rows like a real board's."""
    dice = random.Random(24)
    placed = 0
    for _ in range(2600):
        x, y = dice.uniform(5, BOARD_SIZE - 5), dice.uniform(5, BOARD_SIZE - 5)
        quarters = dice.choice((0, 1))
        count = dice.choice((1, 1, 2, 3, 4))
        size = dice.choice((1.0, 1.0, 1.0, 1.6))
        kind = dice.choice((m.CERAMIC, m.CERAMIC, m.EPOXY))
        step = size * 1.05
        reach_x, reach_y = size * 0.7, step * count / 2 + 0.3
        if quarters:
            reach_x, reach_y = reach_y, reach_x
        rect = (x - reach_x, y - reach_y, x + reach_x, y + reach_y)
        if any(overlap(rect, other) for other in scene.taken) or near_label(scene, rect):
            continue
        scene.take(rect)
        row = Frame(scene, x, y, quarters)
        for k in range(count):
            power.passive(row.at(0, (k - (count - 1) / 2) * step), size, kind)
        placed += 1
        if placed >= 420:
            break


def overlap(a: tuple[float, float, float, float], b: tuple[float, float, float, float]) -> bool:
    return a[0] < b[2] and b[0] < a[2] and a[1] < b[3] and b[1] < a[3]


def near_label(scene: Scene, rect: tuple[float, float, float, float]) -> bool:
    for label in scene.labels:
        along, across = len(label.text) * label.height * 0.42, label.height * 0.7
        if label.quarters % 2:
            along, across = across, along
        if overlap(rect, (label.x - along, label.y - across, label.x + along, label.y + across)):
            return True
    return False
