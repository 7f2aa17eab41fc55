"""What the contract between application and host, and the board binary, have room for."""

COMPONENTS = 99
STYLES = 99
VERTICES_MIN = 3
VERTICES_MAX = 20
LEADER_POINTS_MAX = 20
INFO_LINES = 20
SYSTEM_INFO_TEXTS = 7

# Characters without the terminator.
NAME = 19
TITLE = 59
LABEL = 31
VALUE = 255
SYSTEM_INFO_TEXT = 127
COLOR_TEXT = 19

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
