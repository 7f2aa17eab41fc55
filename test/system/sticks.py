"""USB sticks: what is on them, plugging them in, and reading them after they were pulled out."""

import os
import subprocess
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass, field
from pathlib import Path

from support.qemu_machine import USB_PORTS, Machine
from support.qemu_qmp import QmpError

_SECTOR = 512
_MIB = 1024 * 1024
_FIRST_PARTITION = 2048  # sectors
_FAT16 = 0x0E
_ENOMEDIUM = 123
# The firmware's USB bus looks at its ports once a second.
SEEN_BY_THE_FIRMWARE = 2.5
_OTHER_PORTS = range(7, USB_PORTS + 1)


@dataclass
class Volume:
    """A FAT volume: its label, its size, and where it lies on its stick."""

    label: str
    mebibytes: int
    offset: int = field(default=0, init=False)  # bytes


@dataclass
class Stick:
    """A USB stick as a file; with a partition table unless it has one volume without one."""

    image: Path
    volumes: list[Volume]
    partitioned: bool = True

    @property
    def name(self) -> str:
        return self.image.stem

    def button(self, number: int, volume: int = 0) -> str:
        """The text of the choice box's button for one of the volumes."""
        label, size = self.volumes[volume].label, self._bytes(volume) >> 20
        return f"FS{number}:\\ [USB {label} {size}MB]"

    def files(self, volume: int = 0) -> list[str]:
        """The names in a volume's root directory."""
        listing = self._mtools("mdir", volume, "-b", "::").decode()
        return [line.removeprefix("::/") for line in listing.splitlines() if line]

    def read(self, name: str, volume: int = 0) -> bytes:
        return self._mtools("mcopy", volume, f"::{name}", "-")

    def put(self, name: str, content: bytes) -> None:
        """Write a file into the first volume's root directory."""
        self._mtools("mcopy", 0, "-", f"::{name}", content=content)

    def fill(self, volume: int = 0) -> None:
        """Use up every cluster; the root directory keeps room for names."""
        boot = self._boot_sector(volume)
        left = _clusters(boot) * boot[13] * _SECTOR
        self._mtools("mcopy", volume, "-", "::FULL.BIN", content=bytes(left))

    def make(self) -> "Stick":
        """Write the stick anew, with empty volumes."""
        first = _FIRST_PARTITION * _SECTOR if self.partitioned else 0
        for volume in self.volumes:
            volume.offset = first
            first += volume.mebibytes * _MIB
        with self.image.open("wb") as stream:
            stream.truncate(first)
            if self.partitioned:
                stream.write(_partition_table(self.volumes))
        for number, volume in enumerate(self.volumes):
            sectors = volume.mebibytes * _MIB // _SECTOR
            geometry = ["-T", str(sectors), "-h", "16", "-s", "63"]
            self._mtools("mformat", number, *geometry, "-v", volume.label, "::")
        return self

    def _bytes(self, volume: int) -> int:
        """The size that the volume's own description tells."""
        boot = self._boot_sector(volume)
        return _clusters(boot) * boot[13] * _SECTOR

    def _boot_sector(self, volume: int) -> bytes:
        with self.image.open("rb") as stream:
            stream.seek(self.volumes[volume].offset)
            return stream.read(_SECTOR)

    def _mtools(self, tool: str, volume: int, *arguments: str, content: bytes = b"") -> bytes:
        environment = {**os.environ, "MTOOLSRC": os.devnull, "MTOOLS_SKIP_CHECK": "1"}
        place = f"{self.image}@@{self.volumes[volume].offset}"
        command = [tool, "-i", place, *arguments]
        done = subprocess.run(command, input=content, capture_output=True, env=environment)
        assert done.returncode == 0, f"{command}: {done.stderr.decode(errors='replace')}"
        return done.stdout


def _partition_table(volumes: list[Volume]) -> bytes:
    table = b""
    for volume in volumes:
        start, sectors = volume.offset // _SECTOR, volume.mebibytes * _MIB // _SECTOR
        # Cylinders, heads and sectors say: too far out, use the numbers that follow.
        entry = bytes([0, 0xFE, 0xFF, 0xFF, _FAT16, 0xFE, 0xFF, 0xFF])
        table += entry + start.to_bytes(4, "little") + sectors.to_bytes(4, "little")
    return bytes(446) + table.ljust(64, b"\0") + b"\x55\xaa"


def _clusters(boot: bytes) -> int:
    """How many clusters a FAT16 volume has for files."""

    def number(offset: int, size: int) -> int:
        return int.from_bytes(boot[offset : offset + size], "little")

    sectors = number(19, 2) or number(32, 4)
    tables = boot[16] * number(22, 2)
    names = (number(17, 2) * 32 + _SECTOR - 1) // _SECTOR
    return (sectors - number(14, 2) - tables - names) // boot[13]


def plug_in(machine: Machine, stick: Stick, read_only: bool = False) -> None:
    file = {"driver": "file", "filename": str(stick.image), "read-only": read_only}
    machine.qmp.command(
        "blockdev-add", driver="raw", node_name=stick.name, read_only=read_only, file=file
    )
    _put_in(machine, stick)


def _put_in(machine: Machine, stick: Stick, **more: str) -> None:
    """Into the first free port of which the default board tells nothing."""
    for port in _OTHER_PORTS:
        try:
            machine.qmp.command(
                "device_add",
                driver="usb-storage",
                id=stick.name,
                bus="usb.0",
                port=str(port),
                drive=stick.name,
                **more,
            )
            return
        except QmpError as error:
            if "in use" not in str(error):
                raise
    raise AssertionError(f"There is no free port for {stick.name}.")


def pull_out(machine: Machine, stick: Stick) -> None:
    machine.qmp.command("device_del", id=stick.name)
    machine.wait_for(lambda: _let_go(machine, stick), f"{stick.name} to be out", 10.0)


def _let_go(machine: Machine, stick: Stick) -> bool:
    """QEMU drops the stick's file some time after the stick is out."""
    try:
        machine.qmp.command("blockdev-del", node_name=stick.name)
    except QmpError:
        return False
    return True


def _is_in(machine: Machine, stick: Stick) -> bool:
    devices = machine.qmp.command("qom-list", path="/machine/peripheral")
    return any(device["name"] == stick.name for device in devices)


@contextmanager
def plugged_in(machine: Machine, *sticks: Stick, read_only: bool = False) -> Iterator[None]:
    """Sticks that are in their ports until the end, unless the test pulls one out before."""
    try:
        for stick in sticks:
            plug_in(machine, stick, read_only)
        yield
    finally:
        for stick in sticks:
            if _is_in(machine, stick):
                pull_out(machine, stick)


def plug_in_to_break(machine: Machine, stick: Stick, writes: int) -> None:
    """Plug a stick in that takes so many writes and then has no medium any more.

    With any other failure, and with a stick that is really pulled out in the midst of a write, the
    firmware's driver tries again for half a minute and longer.
    """
    event = "write_aio"
    steps = [
        {"event": event, "state": state, "new_state": state + 1} for state in range(1, writes + 1)
    ]
    file = {
        "driver": "blkdebug",
        "image": {"driver": "file", "filename": str(stick.image)},
        "set-state": steps,
        "inject-error": [{"event": event, "state": writes + 1, "errno": _ENOMEDIUM}],
    }
    machine.qmp.command("blockdev-add", driver="raw", node_name=stick.name, file=file)
    _put_in(machine, stick, werror="report")


def writes_to(machine: Machine, stick: Stick) -> int:
    """How many writes a stick has got since it was plugged in."""
    for drive in machine.qmp.command("query-blockstats"):
        if drive.get("qdev", "").startswith(f"/machine/peripheral/{stick.name}/"):
            return int(drive["stats"]["wr_operations"])
    raise AssertionError(f"{stick.name} is not in its port.")
