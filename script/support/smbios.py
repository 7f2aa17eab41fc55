"""SMBIOS structures for the emulated computer, one file each, as QEMU's -smbios file= takes them.

Offsets and values are those of the SMBIOS specification; each structure ends with its texts.
"""

from __future__ import annotations

import struct
from dataclasses import dataclass, field

# Above the handles that QEMU gives to the structures it writes itself.
FIRST_HANDLE = 0x8000
DDR5 = 0x22
DIMM = 0x09
SYNCHRONOUS = 0x80
MEGABYTES_LIMIT = 0x7FFF  # larger modules stand in the extended size
STATUS_OK = 3
STATUS_CRITICAL = 5
UNKNOWN = 0x8000


@dataclass
class Structure:
    """Formatted fields after the header, and the texts that they number from 1."""

    kind: int
    fields: bytes = b""
    texts: list[str] = field(default_factory=list)

    def number(self, text: str) -> int:
        """The number of a text, which is added; 0 stands for none."""
        if not text:
            return 0
        self.texts.append(text)
        return len(self.texts)

    def pack(self, handle: int) -> bytes:
        header = struct.pack("<BBH", self.kind, len(self.fields) + 4, handle)
        texts = b"".join(text.encode("ascii") + b"\0" for text in self.texts) or b"\0"
        return header + self.fields + texts + b"\0"


def processor(socket: str, brand: str, megahertz: int, cores: int, threads: int) -> Structure:
    one = Structure(4)
    named = one.number(socket)
    maker, version = one.number("Boardscope"), one.number(brand)
    central, family, populated_and_enabled, upgrade = 3, 0xC6, 0x41, 0x01
    one.fields = struct.pack("<BBBBQBB", named, central, family, maker, 0, version, 0)
    one.fields += struct.pack("<HHHBB", 100, megahertz, megahertz, populated_and_enabled, upgrade)
    no_cache = 0xFFFF
    one.fields += struct.pack("<HHHBBB", no_cache, no_cache, no_cache, 0, 0, 0)
    one.fields += struct.pack("<BBBHH", cores, cores, threads, 0x0004, family)
    return one


def memory_slot(locator: str, bank: str, gigabytes: int, speed: int, part: str) -> Structure:
    """One slot; 0 gigabytes for an empty one."""
    one = Structure(17)
    array, no_error = 0x1000, 0xFFFE
    named, in_bank = one.number(locator), one.number(bank)
    maker, serial, model = (
        (one.number("Boardscope"), one.number(f"{gigabytes:04}{named:04}"), one.number(part))
        if gigabytes
        else (0, 0, 0)
    )
    size = min(gigabytes * 1024, MEGABYTES_LIMIT)
    extended = gigabytes * 1024 if size == MEGABYTES_LIMIT else 0
    width = 64 if gigabytes else 0
    one.fields = struct.pack("<HHHHH", array, no_error, width, width, size)
    one.fields += struct.pack("<BBBBBH", DIMM, 0, named, in_bank, DDR5, SYNCHRONOUS)
    one.fields += struct.pack("<HBBBBB", speed if gigabytes else 0, maker, serial, 0, model, 0)
    one.fields += struct.pack("<IHHHH", extended, speed if gigabytes else 0, 1100, 1100, 1100)
    return one


def fan(name: str, nominal: int, status: int = STATUS_OK) -> Structure:
    one = Structure(27)
    chassis_fan, no_probe = 0x03, 0xFFFF
    one.fields = struct.pack("<HBBI", no_probe, status << 5 | chassis_fan, 0, 0)
    one.fields += struct.pack("<HB", nominal, one.number(name))
    return one


def temperature_probe(name: str, tenths: int, highest: int) -> Structure:
    one = Structure(28)
    on_the_motherboard = 0x07
    one.fields = struct.pack("<BB", one.number(name), STATUS_OK << 5 | on_the_motherboard)
    one.fields += struct.pack("<HHHHH", highest, 0, 1, UNKNOWN, UNKNOWN)
    one.fields += struct.pack("<IH", 0, tenths)
    return one


def slot(name: str, number: int, width: int, in_use: bool) -> Structure:
    """A PCI Express slot; width is the SMBIOS value of its data bus."""
    one = Structure(9)
    pci_express, long_length = 0xA5, 4
    usage = 4 if in_use else 3
    one.fields = struct.pack("<BBBBB", one.number(name), pci_express, width, usage, long_length)
    one.fields += struct.pack("<HBBHBB", number, 0x04, 0x01, 0, 0xFF, 0xFF)
    return one


def port(internal: str, external: str, connector: int, kind: int) -> Structure:
    one = Structure(8)
    inside, outside = one.number(internal), one.number(external)
    one.fields = struct.pack("<BBBBB", inside, 0, outside, connector, kind)
    return one


def pack_all(structures: list[Structure]) -> list[bytes]:
    return [one.pack(FIRST_HANDLE + i) for i, one in enumerate(structures)]
