"""The hardware of the demo machine: something behind every category, something missing in each.

assets/board/catalog.py names it by the addresses that stand here.
"""

from __future__ import annotations

from pathlib import Path

from support import smbios
from support.qemu_disk import make_image
from support.qemu_machine import Machine, escape
from support.qemu_qmp import QmpError

BRAND = "Reference Core 8-Core Processor"
TERABYTE = 1000 * 1000 * 1000 * 1000

# Root ports by the name of the slot below them.
ROOT_PORTS = {
    "PCIEX16_1": 0x10,
    "PCIEX1_1": 0x11,
    "M2_1": 0x18,
    "M2_2": 0x19,
    "M2_3": 0x1A,
    "M2_WIFI": 0x1C,
}
AUDIO = 0x1B
LAN = 0x16
LAN_ADDRESS = "02:00:5e:10:00:24"
# Ports of the USB host controller, counted as QEMU does; qemu_machine has keyboard and pointers on
# the first ones.
HUB_PORT = "4"
PLUG_PORT = "5"
HUB_STICK = "hub-stick.img"
PLUG_STICK = "plug-stick.img"

# SMBIOS values.
WIDTH_X1, WIDTH_X16 = 0x08, 0x0D
AUDIO_CONNECTOR, AUDIO_PORT = 0x1F, 0x1D


def demo_options(folder: Path) -> list[str]:
    """QEMU's options for all of it; writes the files that they name into folder."""
    return [
        "-cpu",
        f"qemu64,model-id={BRAND}",
        *_smbios(folder),
        *_root_ports(),
        *_disks(),
        *_usb(folder),
        *_network(),
        "-audiodev",
        "none,id=sound",
        "-device",
        f"ich9-intel-hda,id=audio,addr={AUDIO:#x}",
        "-device",
        "hda-duplex,bus=audio.0,audiodev=sound",
    ]


def _smbios(folder: Path) -> list[str]:
    options = [
        "-smbios",
        "type=0,vendor=Boardscope,version=1.0.0,date=11/22/2026,uefi=on",
        "-smbios",
        "type=1,manufacturer=Boardscope,product=Reference PC,serial=BS-PC-0001",
        "-smbios",
        "type=2,manufacturer=Boardscope,product=B1S reference board,serial=BS-0001",
    ]
    folder.mkdir(parents=True, exist_ok=True)
    for i, structure in enumerate(smbios.pack_all(_structures())):
        file = folder / f"smbios{i}.bin"
        file.write_bytes(structure)
        options += ["-smbios", f"file={escape(file)}"]
    return options


def _structures() -> list[smbios.Structure]:
    return [
        smbios.processor("B1S-24", BRAND, 3800, 8, 16),
        smbios.memory_slot("DIMM_A1", "Channel A", 0, 0, ""),
        smbios.memory_slot("DIMM_A2", "Channel A", 16, 5600, "BS56-16G-A"),
        smbios.memory_slot("DIMM_B1", "Channel B", 0, 0, ""),
        smbios.memory_slot("DIMM_B2", "Channel B", 8, 5600, "BS56-8G-A"),
        smbios.fan("SYS_FAN1", 1500),
        smbios.fan("SYS_FAN2", 1500, smbios.STATUS_CRITICAL),
        smbios.temperature_probe("CHIPSET", 470, 1050),
        smbios.slot("PCIEX16_1", 1, WIDTH_X16, in_use=True),
        smbios.slot("PCIEX1_1", 3, WIDTH_X1, in_use=False),
        smbios.port("AUDIO", "Line out", AUDIO_CONNECTOR, AUDIO_PORT),
    ]


def _root_ports() -> list[str]:
    options: list[str] = []
    for number, (name, address) in enumerate(ROOT_PORTS.items(), start=1):
        place = f"chassis={number},slot={number},addr={address:#x}"
        options += ["-device", f"pcie-root-port,id={name},{place}"]
    return options


def _disks() -> list[str]:
    """Drives that read zeros, of the size that they tell: nothing is stored."""
    options: list[str] = []
    for name, size in (("m2a", TERABYTE), ("m2b", TERABYTE // 2), ("ssd", TERABYTE // 2)):
        options += ["-blockdev", f"driver=null-co,node-name={name},size={size},read-zeroes=on"]
    spare_is_low = 1
    return [
        *options,
        "-device",
        "nvme,id=nvme1,bus=M2_1,drive=m2a,serial=BS-NVME-0001",
        "-device",
        f"nvme,id=nvme2,bus=M2_2,drive=m2b,serial=BS-NVME-0002,smart_critical_warning={spare_is_low}",
        "-device",
        "ide-hd,id=sata1,bus=ide.0,drive=ssd,model=BS SSD 500GB,serial=BS-SSD-0001,ver=1.2,"
        "rotation_rate=1",
        "-device",
        "ide-cd,id=sata2,bus=ide.1,model=BS DVD,serial=BS-DVD-0001,ver=1.0",
    ]


def _usb(folder: Path) -> list[str]:
    for stick in (HUB_STICK, PLUG_STICK):
        make_image(folder / stick, {"README.TXT": b"A stick of the demo machine.\r\n"})
    return [
        "-device",
        f"usb-hub,id=hub,bus=usb.0,port={HUB_PORT}",
        "-drive",
        f"if=none,id=hubdisk,format=raw,file={escape(folder / HUB_STICK)}",
        "-device",
        f"usb-storage,id=hubstick,bus=usb.0,port={HUB_PORT}.1,drive=hubdisk,serial=BS-STICK-1",
    ]


def _network() -> list[str]:
    """Cables that lead nowhere, so that nothing of the demo reaches a network."""
    return [
        "-netdev",
        "hubport,id=cable1,hubid=1",
        "-device",
        f"virtio-net-pci,id=lan,addr={LAN:#x},netdev=cable1,mac={LAN_ADDRESS},romfile=",
        "-netdev",
        "hubport,id=cable2,hubid=2",
        "-device",
        "e1000e,id=card,bus=PCIEX16_1,netdev=cable2,mac=02:00:5e:10:00:25,romfile=",
    ]


class Stick:
    """The stick that comes and goes while the view is up."""

    NAME = "plugstick"

    def __init__(self, machine: Machine) -> None:
        self._machine = machine
        self.is_in = False

    def plug_in(self) -> None:
        image = self._machine.options.folder / PLUG_STICK
        file = {"driver": "file", "filename": str(image.resolve())}
        qmp = self._machine.qmp
        qmp.command("blockdev-add", driver="raw", node_name=self.NAME, file=file)
        qmp.command(
            "device_add",
            driver="usb-storage",
            id=self.NAME,
            bus="usb.0",
            port=PLUG_PORT,
            drive=self.NAME,
            serial="BS-STICK-2",
        )
        self.is_in = True

    def pull_out(self) -> None:
        self._machine.qmp.command("device_del", id=self.NAME)
        self._machine.wait_for(self._let_go, "the stick to be out", 10.0)
        self.is_in = False

    def _let_go(self) -> bool:
        """QEMU drops the stick's file some time after the stick is out."""
        try:
            self._machine.qmp.command("blockdev-del", node_name=self.NAME)
        except QmpError:
            return False
        return True
