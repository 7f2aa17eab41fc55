"""Device paths: from the text that firmware shows to the bytes that firmware compares.

The nodes that lead to what a board names, as the UEFI specification defines their texts and bytes.
"""

import re
import struct

PCI_ROOT_BRIDGES = {"PciRoot": 0x0A03, "PcieRoot": 0x0A08}
EISA_PNP = 0x41D0
END = bytes([0x7F, 0xFF, 4, 0])

# Type and subtype, and the layout behind the node's header.
NODES = {
    "Pci": (1, 1, "<BB"),
    "USB": (3, 5, "<BB"),
    "Sata": (3, 18, "<HHH"),
}


class DevicePathError(ValueError):
    """What is wrong with a text, as the end of a sentence that begins with the text."""


def parse_device_path(text: str) -> bytes:
    """The path's bytes with the end node; raises DevicePathError."""
    nodes = [_parse_node(node, first=i == 0) for i, node in enumerate(text.split("/"))]
    return b"".join(nodes) + END


def _parse_node(text: str, first: bool) -> bytes:
    match = re.fullmatch(r"(\w+)\(([^()]*)\)", text, re.ASCII)
    if match is None:
        raise DevicePathError(f"{text!r} is not a node; write it like Pci(0x1F,0x2)")
    name, arguments = match.groups()
    if first:
        return _root(name, _numbers(text, arguments))
    if name not in NODES:
        raise DevicePathError(f"unknown node {name!r}; there are: {', '.join(NODES)}")
    kind, subtype, layout = NODES[name]
    values = _pack(text, layout, _numbers(text, arguments))
    # The UEFI specification keeps a PCI node's function before its device.
    return _node(kind, subtype, values[::-1] if name == "Pci" else values)


def _root(name: str, numbers: list[int]) -> bytes:
    if name not in PCI_ROOT_BRIDGES:
        raise DevicePathError(f"begins with {name!r}; a path begins with PciRoot or PcieRoot")
    hid = PCI_ROOT_BRIDGES[name] << 16 | EISA_PNP
    return _node(2, 1, struct.pack("<I", hid) + _pack(name, "<I", numbers))


def _numbers(text: str, arguments: str) -> list[int]:
    try:
        return [int(argument, 0) for argument in arguments.split(",")]
    except ValueError:
        raise DevicePathError(f"{text!r} holds something else than numbers") from None


def _pack(text: str, layout: str, numbers: list[int]) -> bytes:
    try:
        return struct.pack(layout, *numbers)
    except struct.error:
        raise DevicePathError(
            f"{text!r} needs {len(layout) - 1} numbers that fit their fields"
        ) from None


def _node(kind: int, subtype: int, data: bytes) -> bytes:
    return struct.pack("<BBH", kind, subtype, len(data) + 4) + data
