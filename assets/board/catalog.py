"""What the board's description says about each component, besides where it is."""

from dataclasses import dataclass, field

Line = tuple[str, str, str]  # kind, label, value


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


def text(label: str, value: str) -> Line:
    return ("description", label, value)


def side(label: str, value: str) -> Line:
    return ("side", label, value)


def fan(name: str, place: str, token: int, speed: str, status: str = "available") -> Entry:
    info = [text("Type", "4-pin PWM header, 12 V, 1 A")]
    if speed:
        info += [text("Mode", "PWM"), side("Speed", speed), side("Source", "CPU temperature")]
    return Entry(name, "fan", place, token, info, status)


def sata(name: str, token: int, model: str, size: str, status: str = "available") -> Entry:
    info = [text("Type", "SATA 6 Gb/s")]
    if model:
        info += [text("Device", model), side("Capacity", size), side("Mode", "AHCI")]
    return Entry(name, "sata", "bottom", token, info, status)


def memory(name: str, channel: str, module: str, extra: list[Line] | None = None) -> Entry:
    info = [text("Slot", f"DDR5, channel {channel}")]
    if not module:
        return Entry(name, "memory", "top", 0x2100, info, "absent")
    info += [text("Module", module), text("Size", "16384 MB"), *(extra or [])]
    return Entry(name, "memory", "top", 0x2100, info)


def usb(name: str, place: str, token: int, kind: str, devices: list[str], **more: object) -> Entry:
    info = [text("Type", kind)] + [side(f"Port {k + 1}", d) for k, d in enumerate(devices)]
    status = "available" if devices else "absent"
    return Entry(name, "usb", place, token, info, **{"status": status, **more})  # type: ignore[arg-type]


PROCESSOR = [
    text("Brand", "Reference Core 8-Core Processor"),
    text("Speed", "3800 MHz"),
    text("Socket", "B1S-24"),
    side("Cores", "8"),
    side("Threads", "16"),
    side("Temperature", "41 C"),
]
KIT = [
    text("Total Memory", "32768 MB"),
    text("Frequency", "5600 MHz"),
    side("Timings", "36-36-36-76"),
    side("Voltage", "1.25 V"),
]

ENTRIES = [
    Entry("CPU", "cpu", "top", 0x2001, PROCESSOR),
    memory("DIMM_A1", "A", ""),
    memory("DIMM_A2", "A", "BS56-16G-A", KIT),
    memory("DIMM_B1", "B", ""),
    memory("DIMM_B2", "B", "BS56-16G-A"),
    Entry(
        "PCIEX16_1",
        "pcie",
        "left",
        0x2201,
        [
            text("Type", "PCI Express 5.0 x16"),
            text("Device", "Display controller"),
            side("Link", "x16 Gen 4"),
            side("Lanes from", "CPU"),
        ],
    ),
    Entry(
        "PCIEX16_2",
        "pcie",
        "bottom",
        0x2202,
        [text("Type", "PCI Express 4.0 x16 (x4)"), side("Lanes from", "CPU")],
        "no-mapping",
    ),
    Entry(
        "PCIEX1_1",
        "pcie",
        "left",
        0x2203,
        [text("Type", "PCI Express 3.0 x1"), side("Lanes from", "Chipset")],
        "absent",
    ),
    Entry(
        "M2_1",
        "m2",
        "left",
        0x2301,
        [
            text("Type", "M.2 key M, 2280, PCIe 4.0 x4"),
            text("Device", "BS NVMe 1TB"),
            side("Capacity", "1000.2 GB"),
            side("Link", "x4 Gen 4"),
        ],
    ),
    Entry(
        "M2_2",
        "m2",
        "left",
        0x2302,
        [
            text("Type", "M.2 key M, 2280, PCIe 4.0 x4"),
            text("Device", "BS NVMe 500GB"),
            side("Health", "Self-test failed"),
        ],
        "device-error",
    ),
    Entry(
        "M2_3",
        "m2",
        "bottom",
        0x2303,
        [text("Type", "M.2 key M, 2242 to 2280"), text("State", "Waiting for link training")],
        "not-ready",
    ),
    Entry(
        "M2_WIFI",
        "m2",
        "left",
        0x2304,
        [text("Type", "M.2 key E, 2230"), text("Device", "Wireless adapter")],
        special=True,
    ),
    sata("SATA6G_1", 0x2401, "BS SSD 512GB", "512.1 GB"),
    sata("SATA6G_2", 0x2402, "BS HDD 4TB", "4000.8 GB", "device-error"),
    sata("SATA6G_3", 0x2403, "", "", "absent"),
    sata("SATA6G_4", 0x2404, "", "", "absent"),
    usb("USB_12", "left", 0x2501, "Rear, 2 x USB 2.0", ["Keyboard", "Mouse"]),
    usb("U32G1_34", "left", 0x2502, "Rear, 2 x USB 5 Gb/s", ["Mass storage", "Empty"]),
    usb("USB_C5", "left", 0x2503, "Rear, USB-C and USB-A, 10 Gb/s", []),
    usb(
        "U32G1_67",
        "left",
        0x2504,
        "Rear, 2 x USB 5 Gb/s",
        ["Hub", "Over-current"],
        status="device-error",
    ),
    usb("USB_89", "bottom", 0x2505, "Front header, 2 x USB 2.0", ["Card reader"]),
    usb("USB_1011", "bottom", 0x2506, "Front header, 2 x USB 2.0", [], status="not-ready"),
    usb("U32G1_1213", "right", 0x2507, "Front header, 2 x USB 5 Gb/s", []),
    usb("U32G2_C14", "right", 0x2508, "Front connector, USB-C 20 Gb/s", [], special=True),
    Entry(
        "LAN",
        "rear",
        "left",
        0x2601,
        [
            text("Type", "2.5 Gb/s Ethernet"),
            side("Address", "02-00-5E-10-00-24"),
            side("Link", "1000 Mb/s"),
        ],
        special=True,
    ),
    Entry(
        "HDMI",
        "rear",
        "left",
        0x2602,
        [text("Type", "HDMI 2.1"), side("Monitor", "None")],
        "absent",
    ),
    Entry(
        "DP",
        "rear",
        "left",
        0x2603,
        [text("Type", "DisplayPort 1.4"), side("Monitor", "3840 x 2160, 60 Hz")],
    ),
    fan("CPU_FAN", "top", 0x2701, "1180 RPM"),
    fan("SYS_FAN1", "right", 0x2703, "860 RPM"),
    fan("SYS_FAN2", "right", 0x2704, "0 RPM", "device-error"),
    fan("SYS_FAN3", "bottom", 0x2705, "", "absent"),
    Entry(
        "AUDIO",
        "audio",
        "left",
        0x2801,
        [text("Type", "5 jacks and optical output"), side("Line out", "Connected")],
    ),
    Entry("AAFP", "audio", "left", 0x2802, [text("Type", "Front audio header")], "absent"),
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
        [text("Type", "Platform controller"), side("Temperature", "47 C")],
    ),
    Entry("PANEL", "none", "bottom", 0, [text("Type", "Front panel header")], style="quiet"),
]
