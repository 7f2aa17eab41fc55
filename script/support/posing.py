"""The view as a hand leaves it, in the emulated machine: the pointer on a component, a category
chosen."""

import sys
from pathlib import Path

from support import paths
from support.failure import Failure
from support.qemu_machine import Machine

sys.path.insert(0, str(paths.CLONE / "tool"))

from boardtool.live import LiveView, ViewError, ViewOptions

# In the order in which Insert goes from one to the next.
CATEGORIES = ("all", "usb", "sata", "m2", "pcie", "fan")
TABLET_RANGE = 0x7FFF


def choose_category(machine: Machine, category: str) -> None:
    """Presses the key for it, in a view that shows all."""
    for _ in range(CATEGORIES.index(category)):
        machine.input.tap("insert")


def point_at(machine: Machine, board: Path, name: str, category: str | None) -> None:
    """Puts the tablet's pen where it meets the component of this board."""
    size = view_size(machine.log_lines())
    options = ViewOptions(resolution=f"{size[0]}x{size[1]}", hover=name, filter=category)
    try:
        with LiveView() as view:
            place = view.measure(board.read_bytes(), options).pointer
    except ViewError as error:
        raise Failure(f"--hover: {error}.") from None
    x, y = (round((pixel + 0.5) * TABLET_RANGE / whole) for pixel, whole in zip(place, size))
    machine.input.point(x, y)


def view_size(log: list[str]) -> tuple[int, int]:
    """The size that the application has chosen, as it logs it."""
    line = next(line for line in log if line.startswith("current resolution: "))
    width, height = line.split()[2:4]
    return int(width), int(height)
