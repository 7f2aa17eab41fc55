"""Writes the board's description: the scene's silhouettes joined with the catalogue."""

import math
from dataclasses import dataclass
from pathlib import Path

from callouts import Part, Rim, Slot, lay_out, leader
from camera import BOARD_CAMERA, Pixel, Vector
from catalog import ENTRIES, Entry
from outline import hull_of, silhouette
from scene import Scene

# The slots lie 76 pixels below each other: room for large text on the smallest screen.
RIMS = {
    "left": Rim((330, 590), (980, 1612), (60, 0), "right"),
    "right": Rim((1690, 70), (2560, 740), (-60, 0), "left"),
    "top": Rim((540, 535), (1440, 0), (30, 40), "bottom-right"),
    "bottom": Rim((1440, 1612), (2580, 822), (-60, 0), "left"),
}

# Points of the silhouette's box where leaders start, when its middle would be the wrong place.
STARTS: dict[str, tuple[float, float]] = {
    "DIMM_A1": (0.10, 0.12),
    "DIMM_A2": (0.10, 0.12),
    "DIMM_B1": (0.10, 0.12),
    "DIMM_B2": (0.10, 0.12),
    "U32G1_67": (0.2, 0.5),
    "USB_C5": (0.3, 0.45),
    "EPS_12V": (0.35, 0.4),
    "BATTERY": (0.8, 0.25),
    "M2_WIFI": (0.35, 0.6),
    "CPU": (0.42, 0.32),
    "M2_1": (0.12, 0.78),
    "M2_2": (0.12, 0.78),
    "PCIEX16_1": (0.08, 0.8),
    "PCIEX1_1": (0.3, 0.6),
    "PCIEX16_2": (0.08, 0.8),
    "M2_3": (0.82, 0.3),
    "CHIPSET": (0.8, 0.3),
    "SATA6G_1": (0.5, 0.55),
    "SATA6G_3": (0.5, 0.55),
    "SATA6G_2": (0.5, 0.3),
    "SATA6G_4": (0.5, 0.3),
}

# The memory as a whole is the ground around the slots, which lie on it and come first in the file.
MODULES = ("DIMM_A1", "DIMM_A2", "DIMM_B1", "DIMM_B2")
MEMORY_GROUND: list[Vector] = [(157, 90, 0), (206, 90, 0), (206, 242, 0), (157, 242, 0)]
MEMORY_START: Vector = (160, 214, 0)

HEAD = """\
# The default board. Written by assets/board/generate.py, which draws the picture with the very
# same camera; change the layout or the catalogue there.
board: Boardscope reference board
picture: board.png
logo: A
marker: green
styles:
  normal:
    default: {text: "226,228,230", background: "58,61,65", mark: "255,190,60",
              border: "132,138,144", border_width: 1, radius: 3}
    focus: {text: "20,20,20", background: "255,203,72", mark: "150,40,0",
            border: "255,240,200", border_width: 1, radius: 3}
  quiet:
    default: {text: "168,172,176", background: "47,49,52", mark: "214,160,60",
              border: "92,96,100", border_width: 1, radius: 3}
    focus: {text: "20,20,20", background: "255,203,72", mark: "150,40,0",
            border: "255,240,200", border_width: 1, radius: 3}
components:
"""


@dataclass(frozen=True)
class Placed:
    """A component with everything that is measured in picture pixels."""

    entry: Entry
    outline: list[tuple[int, int]]
    start: Pixel
    slot: Slot


def place_components(scene: Scene) -> list[Placed]:
    parts = find_parts(scene.points | {"MEMORY": MEMORY_GROUND})
    slots: dict[str, Slot] = {}
    for side, rim in RIMS.items():
        slots |= lay_out([entry.name for entry in ENTRIES if entry.side == side], parts, rim)
    return [Placed(e, parts[e.name].outline, parts[e.name].start, slots[e.name]) for e in ENTRIES]


def find_parts(solids: dict[str, list[Vector]]) -> dict[str, Part]:
    """What is seen of each component: the pointer finds the one that the picture shows."""
    names = [entry.name for entry in ENTRIES]
    hulls = {name: hull_of([BOARD_CAMERA.project(p) for p in solids[name]]) for name in names}
    depths = {name: BOARD_CAMERA.depth(solids[name]) for name in names}
    depths["MEMORY"] = math.inf
    parts = {}
    for name in names:
        before = [other for other in names if depths[other] < depths[name]]
        if name == "MEMORY":
            before = [other for other in before if other not in MODULES]
        outline = silhouette(hulls[name], [hulls[other] for other in before])
        parts[name] = Part(outline, start_of(name, outline))
    return parts


def start_of(name: str, outline: list[tuple[int, int]]) -> Pixel:
    if name == "MEMORY":
        return BOARD_CAMERA.project(MEMORY_START)
    xs, ys = [x for x, _ in outline], [y for _, y in outline]
    tx, ty = STARTS.get(name, (0.5, 0.5))
    return (min(xs) + (max(xs) - min(xs)) * tx, min(ys) + (max(ys) - min(ys)) * ty)


def points(path: list[Pixel] | list[tuple[int, int]]) -> str:
    return "[" + ", ".join(f"[{round(x)}, {round(y)}]" for x, y in path) + "]"


def quoted(value: str) -> str:
    return '"' + value.replace("\\", "\\\\").replace('"', '\\"') + '"'


def state(entry: Entry) -> list[str]:
    """Who tells the component's state: hardware, else the description."""
    if not entry.hardware:
        return [f"    status: {entry.status}"]
    lines = ["    hardware:"]
    lines += [f"      - {kind}: {quoted(name)}" for kind, name in entry.hardware]
    if entry.needs_processor:
        lines.append(f"    needs-processor: {quoted(entry.needs_processor)}")
    return lines


def component_text(placed: Placed) -> str:
    entry = placed.entry
    x, y = placed.start
    lines = [
        f"  - name: {entry.name}",
        f"    category: {entry.category}",
        f"    outline: {points(placed.outline)}",
        f"    leader: {points(leader(placed.start, placed.slot))}",
        f"    callout: {placed.slot.callout}",
        "    align: center",
        f"    marker: [{round(x)}, {round(y)}]",
        f"    token: 0x{entry.token:04x}",
        f"    selectable: {str(entry.selectable).lower()}",
        f"    special_group: {str(entry.special).lower()}",
        f"    style: {entry.style}",
        *state(entry),
    ]
    if entry.info:
        lines.append("    info:")
    for kind, label, value in entry.info:
        lines.append(f"      - {{kind: {kind}, label: {quoted(label)}, value: {quoted(value)}}}")
    return "\n".join(lines) + "\n"


def write_description(scene: Scene, path: Path) -> None:
    text = HEAD + "\n".join(component_text(placed) for placed in place_components(scene))
    path.write_text(text, encoding="ascii")
