"""What the board's description says about each component, besides where it is.

Hardware is named as the demo machine has it, which script/support/qemu_hardware.py sets up; the
firmware tells the rest. A status stands where firmware has nobody to ask.
"""

from dataclasses import dataclass, field

Line = tuple[str, str, str]  # kind, label, value
Hardware = tuple[str, str]  # kind, name

XHCI = "PciRoot(0x0)/Pci(0x14,0x0)"
# The USB host controller counts its 3.x ports first, then the 2.0 ones.
USB_PORTS = 15
AHCI = "PciRoot(0x0)/Pci(0x1F,0x2)"


@dataclass(frozen=True)
class Entry:
    """One component. The side is the edge of the picture where its callout stands."""

    name: str
    category: str
    side: str
    token: int
    info: list[Line] = field(default_factory=list)
    status: str = "available"
    selectable: bool = True
    special: bool = False
    style: str = "normal"
    # Alternatives; with them the status is not written.
    hardware: list[Hardware] = field(default_factory=list)
    needs_processor: str = ""


def text(label: str, value: str) -> Line:
    return ("description", label, value)


def side(label: str, value: str) -> Line:
    return ("side", label, value)


def below(device: int) -> str:
    """The root port above a slot."""
    return f"PciRoot(0x0)/Pci(0x{device:X},0x0)"


def disk(port: int) -> Hardware:
    return ("sata", f"{AHCI}/Sata(0x{port:X},0xFFFF,0x0)")


def halves(*ports: int) -> list[Hardware]:
    """USB 3.x ports by their numbers from 1: each is a 3.x port and a 2.0 port in one."""
    return [
        ("usb", f"{XHCI}/USB(0x{port - 1 + half:X},0x0)")
        for port in ports
        for half in (0, USB_PORTS)
    ]


def usb2(*ports: int) -> list[Hardware]:
    return [("usb", f"{XHCI}/USB(0x{port - 1 + USB_PORTS:X},0x0)") for port in ports]


def fan(name: str, place: str, token: int, hardware: list[Hardware]) -> Entry:
    info = [text("Header", "4-pin PWM, 12 V, 1 A")]
    return Entry(name, "fan", place, token, info, hardware=hardware)


def sata(name: str, token: int, port: int) -> Entry:
    info = [text("Port", "SATA 6 Gb/s")]
    return Entry(name, "sata", "bottom", token, info, hardware=[disk(port)])


def memory(name: str, channel: str) -> Entry:
    info = [text("Slot", f"DDR5, channel {channel}")]
    return Entry(name, "memory", "top", 0x2100, info, hardware=[("memory", name)])


def slot(name: str, place: str, token: int, kind: str, lanes: str, device: int) -> Entry:
    info = [text("Slot", kind), side("Lanes from", lanes)]
    return Entry(name, "pcie", place, token, info, hardware=[("pcie", below(device))])


def m2(name: str, place: str, token: int, kind: str, hardware: list[Hardware]) -> Entry:
    return Entry(name, "m2", place, token, [text("Socket", kind)], hardware=hardware)


def usb(name: str, place: str, token: int, kind: str, hardware: list[Hardware]) -> Entry:
    return Entry(name, "usb", place, token, [text("Port", kind)], hardware=hardware)


ENTRIES = [
    Entry("CPU", "cpu", "top", 0x2001, hardware=[("processor", "boot")]),
    memory("DIMM_A1", "A"),
    memory("DIMM_A2", "A"),
    memory("DIMM_B1", "B"),
    memory("DIMM_B2", "B"),
    # The last of its category: the view's summary takes its lines.
    Entry("MEMORY", "memory", "top", 0x2100, hardware=[("memory-total", "all")]),
    slot("PCIEX16_1", "left", 0x2201, "PCI Express 5.0 x16", "CPU", 0x10),
    Entry(
        "PCIEX16_2",
        "pcie",
        "bottom",
        0x2202,
        [text("Slot", "PCI Express 4.0 x16 (x4)"), side("Lanes from", "CPU")],
        hardware=[("pcie", below(0x12))],
        needs_processor="12-Core",
    ),
    slot("PCIEX1_1", "left", 0x2203, "PCI Express 3.0 x1", "Chipset", 0x11),
    m2("M2_1", "left", 0x2301, "Key M, 2280, PCIe 4.0 x4", [("nvme", below(0x18))]),
    m2("M2_2", "left", 0x2302, "Key M, 2280, PCIe 4.0 x4", [("nvme", below(0x19))]),
    m2(
        "M2_3",
        "bottom",
        0x2303,
        "Key M, 2242 to 2280, PCIe or SATA",
        [("nvme", below(0x1A)), disk(4)],
    ),
    Entry(
        "M2_WIFI",
        "m2",
        "left",
        0x2304,
        [text("Socket", "Key E, 2230")],
        special=True,
        hardware=[("pcie", below(0x1C))],
    ),
    sata("SATA6G_1", 0x2401, 0),
    sata("SATA6G_2", 0x2402, 1),
    sata("SATA6G_3", 0x2403, 2),
    sata("SATA6G_4", 0x2404, 3),
    usb("USB_12", "left", 0x2501, "Rear, 2 x USB 2.0", usb2(1)),
    usb("U32G1_34", "left", 0x2502, "Rear, 2 x USB 5 Gb/s", halves(5)),
    usb("USB_C5", "left", 0x2503, "Rear, USB-C and USB-A, 10 Gb/s", halves(3)),
    Entry(
        "U32G1_67",
        "usb",
        "left",
        0x2504,
        [text("Port", "Rear, 2 x USB 5 Gb/s"), side("State", "Over-current")],
        "device-error",
    ),
    usb("USB_89", "bottom", 0x2505, "Front header, 2 x USB 2.0", usb2(4)),
    Entry(
        "USB_1011",
        "usb",
        "bottom",
        0x2506,
        [text("Port", "Front header, 2 x USB 2.0")],
        "not-ready",
    ),
    usb("U32G1_1213", "right", 0x2507, "Front header, 2 x USB 5 Gb/s", usb2(2)),
    Entry(
        "U32G2_C14",
        "usb",
        "right",
        0x2508,
        [text("Port", "Front connector, USB-C 20 Gb/s")],
        special=True,
        hardware=halves(6),
    ),
    Entry(
        "LAN",
        "rear",
        "left",
        0x2601,
        [text("Port", "2.5 Gb/s Ethernet")],
        special=True,
        hardware=[("network", below(0x16))],
    ),
    Entry("HDMI", "rear", "left", 0x2602, [text("Port", "HDMI 2.1")], "absent"),
    Entry(
        "DP",
        "rear",
        "left",
        0x2603,
        [text("Port", "DisplayPort 1.4")],
        hardware=[("display", below(0x2))],
    ),
    fan("CPU_FAN", "top", 0x2701, [("sensor", "CPU fan")]),
    fan("SYS_FAN1", "right", 0x2703, [("fan", "SYS_FAN1")]),
    fan("SYS_FAN2", "right", 0x2704, [("fan", "SYS_FAN2")]),
    fan("SYS_FAN3", "bottom", 0x2705, [("fan", "SYS_FAN3")]),
    Entry(
        "AUDIO",
        "audio",
        "left",
        0x2801,
        [text("Port", "5 jacks and optical output")],
        hardware=[("audio", below(0x1B))],
    ),
    Entry(
        "AAFP",
        "audio",
        "left",
        0x2802,
        [text("Port", "Front audio header")],
        hardware=[("port", "Front audio")],
    ),
    Entry(
        "ARGB_1",
        "audio",
        "right",
        0x2803,
        [text("Type", "Addressable light header, 5 V"), side("Effect", "Rainbow")],
    ),
    Entry(
        "ARGB_2",
        "audio",
        "bottom",
        0x2804,
        [text("Type", "Addressable light header, 5 V")],
        "not-ready",
    ),
    Entry(
        "EPS_12V",
        "none",
        "top",
        0,
        [text("Type", "8-pin processor power")],
        style="quiet",
        selectable=False,
    ),
    Entry(
        "ATX_PWR",
        "none",
        "right",
        0,
        [text("Type", "24-pin main power")],
        style="quiet",
        selectable=False,
    ),
    Entry(
        "BATTERY",
        "none",
        "right",
        0,
        [text("Type", "CR2032"), side("Voltage", "3.06 V")],
        style="quiet",
    ),
    Entry(
        "CHIPSET",
        "none",
        "right",
        0x2901,
        [text("Type", "Platform controller")],
        hardware=[("probe", "CHIPSET")],
    ),
    Entry("PANEL", "none", "bottom", 0, [text("Type", "Front panel header")], style="quiet"),
]
