"""What the contract between application and host, and the board binary, have room for."""

COMPONENTS = 99
STYLES = 99
VERTICES_MIN = 3
VERTICES_MAX = 20
LEADER_POINTS_MAX = 20
INFO_LINES = 20
HARDWARE_NAMES = 16
SYSTEM_INFO_TEXTS = 7

# Characters without the terminator.
NAME = 19
TITLE = 59
LABEL = 31
VALUE = 255
SYSTEM_INFO_TEXT = 127
COLOR_TEXT = 19
HARDWARE_NAME = 127
HARDWARE_BANK = 31
SENSOR_NAME = 31
# Bytes, with the end node.
DEVICE_PATH = 128

PICTURE_PIXELS = 4095
BYTE = 0xFF
WORD = 0xFFFF

# The names of a description and the contract's numbers for them: OBV_TYPE_*, OBV_CALLOUT_* and so
# on in include/Protocol.
CATEGORIES = {
    "none": 0,
    "usb": 1,
    "sata": 2,
    "m2": 3,
    "pcie": 4,
    "rear": 5,
    "cpu": 6,
    "memory": 7,
    "fan": 8,
    "audio": 9,
}
CALLOUT_SIDES = {
    "keep": 0,
    "right": 1,
    "bottom-right": 2,
    "bottom": 3,
    "bottom-left": 4,
    "left": 5,
    "top-left": 6,
    "top": 7,
    "top-right": 8,
}
ALIGNMENTS = {"left": 0, "center": 1, "right": 2}
STATUSES = {"available": 0, "device-error": 1, "not-ready": 2, "no-mapping": 3, "absent": 4}
INFO_KINDS = {"description": 0, "side": 1}
LOGOS = {"A": 0, "B": 1, "C": 2, "none": 0xFF}
MARKERS = {"green": 0, "red": 1, "amber": 2}
# HardwareKind in host/portable/BoardFormat.h. What names the hardware: a text, a device path, a
# mapping of locator and bank, or nothing.
HARDWARE_KINDS = {
    "processor": 1,
    "memory": 2,
    "memory-total": 3,
    "pcie": 4,
    "nvme": 5,
    "sata": 6,
    "usb": 7,
    "network": 8,
    "audio": 9,
    "display": 10,
    "fan": 11,
    "probe": 12,
    "slot": 13,
    "port": 14,
    "sensor": 15,
}
NEEDS_PROCESSOR = 16
DEVICE_PATH_KINDS = ("pcie", "nvme", "sata", "usb", "network", "audio", "display")
