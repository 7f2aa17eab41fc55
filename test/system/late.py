"""What a test has the driver of late outputs do while the view is up."""

from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass

import numpy as np

from computer import PATIENCE, Computer, Visit
from pictures import Picture

SIZE = (1024, 768)
_BLACK = b"\0\0\0"
# The scratch register of the host log's serial port, where the driver looks for commands.
_MAILBOX = 0x3EF


def tell(visit: Visit, command: str) -> None:
    """Have the driver carry out a command, and wait until it has done so."""
    done = f"[Late] {command} Success"
    order = f"o /b {_MAILBOX:#x} {ord(command):#x}"
    first = len(visit.machine.log_lines())
    visit.machine.qmp.command("human-monitor-command", command_line=order)
    visit.machine.wait_for_log(done, PATIENCE, first)


def since(visit: Visit, command: str) -> list[str]:
    """The log after the driver's own line: it runs until it is done, then others are told."""
    lines = visit.lines
    return lines[lines.index(f"[Late] {command} Success") + 1 :]


@contextmanager
def without_adapter(visit: Visit) -> Iterator[None]:
    """Take the first adapter's driver away, and with it its outputs, until the end."""
    tell(visit, "x")
    try:
        yield
    finally:
        tell(visit, "c")


@dataclass
class LateOutput:
    """The output that arrives when it is told to; its screen is a piece of the memory."""

    computer: Computer
    screen: int

    @contextmanager
    def arrival(self, visit: Visit, command: str) -> Iterator[None]:
        """Let the output arrive; in the end it goes, and the others have their modes again."""
        try:
            tell(visit, command)
            yield
        finally:
            tell(visit, "r")

    def picture(self, size: tuple[int, int] = SIZE) -> Picture:
        """What the output shows now."""
        machine = self.computer.machine
        width, height = size
        dump = machine.options.folder / "late-screen.bin"
        machine.qmp.command(
            "pmemsave", val=self.screen, size=width * height * 4, filename=str(dump.resolve())
        )
        pixels = np.fromfile(dump, np.uint8).reshape(height, width, 4)
        body = np.ascontiguousarray(pixels[:, :, 2::-1]).tobytes()
        return Picture(f"P6\n{width} {height}\n255\n".encode("ascii") + body)

    def wait_for(self, expected: Picture, what: str) -> None:
        self.computer.machine.wait_for(lambda: self.picture() == expected, what, PATIENCE)


def black(size: tuple[int, int] = SIZE) -> Picture:
    width, height = size
    return Picture(f"P6\n{width} {height}\n255\n".encode("ascii") + _BLACK * width * height)
