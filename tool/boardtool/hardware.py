"""The hardware that a component names instead of a status."""

from boardtool import limits
from boardtool.cursor import Cursor, suggestion
from boardtool.device_path import DevicePathError, parse_device_path
from boardtool.fields import warn_of_comment
from boardtool.model import Hardware

# What the value of these two says of itself.
BOOT_PROCESSOR = "boot"
ALL_MEMORY = "all"


def read_hardware(cursor: Cursor | None) -> tuple[Hardware, ...]:
    """The alternatives; the first that is present answers. One alone needs no list."""
    if cursor is None:
        return ()
    items = [cursor] if cursor.is_mapping() else cursor.items()
    if items is None:
        return ()
    if not items:
        cursor.report("names no hardware")
    if len(items) > limits.HARDWARE_NAMES:
        cursor.report(f"{len(items)} alternatives, at most {limits.HARDWARE_NAMES} are allowed")
    names = [_read_one(item) for item in items]
    return tuple(name for name in names if name is not None)


def read_needed_processor(cursor: Cursor | None) -> tuple[Hardware, ...]:
    """A text that the processor's brand string must contain."""
    text = _read_ascii(cursor, limits.HARDWARE_NAME) if cursor else None
    if text is None:
        return ()
    return (Hardware(kind=limits.NEEDS_PROCESSOR, name=text.encode("ascii")),)


def _read_one(cursor: Cursor) -> Hardware | None:
    entries = cursor.entries()
    if entries is None:
        return None
    if len(entries) != 1:
        cursor.report(f"{len(entries)} fields; each alternative is one 'kind: name'")
        return None
    kind, value = next(iter(entries.items()))
    if kind not in limits.HARDWARE_KINDS:
        value.report(f"unknown kind of hardware{suggestion(kind, limits.HARDWARE_KINDS)}")
        return None
    number = limits.HARDWARE_KINDS[kind]
    if kind == "memory":
        return _read_memory(value, number)
    name = _read_path(value) if kind in limits.DEVICE_PATH_KINDS else _read_name(kind, value)
    return None if name is None else Hardware(kind=number, name=name)


def _read_memory(cursor: Cursor, kind: int) -> Hardware | None:
    """A device locator, alone or with the bank that tells it from its namesakes."""
    fields = {"locator": cursor}
    if cursor.is_mapping():
        fields = cursor.fields(("locator", "bank"), ())
    locator = _read_ascii(fields.get("locator"), limits.HARDWARE_NAME)
    if locator is None:
        return None
    bank = _read_ascii(fields["bank"], limits.HARDWARE_BANK) if "bank" in fields else ""
    return Hardware(kind=kind, name=locator.encode("ascii"), bank=bank or "")


def _read_name(kind: str, cursor: Cursor) -> bytes | None:
    limit = limits.SENSOR_NAME if kind == "sensor" else limits.HARDWARE_NAME
    text = _read_ascii(cursor, limit)
    if text is None:
        return None
    if kind == "memory-total":
        if text != ALL_MEMORY:
            cursor.report(f"{text!r}; write {ALL_MEMORY!r}")
        return b""
    return b"" if kind == "processor" and text == BOOT_PROCESSOR else text.encode("ascii")


def _read_path(cursor: Cursor) -> bytes | None:
    text = cursor.text(limits.WORD)
    if text is None:
        return None
    try:
        path = parse_device_path(text)
    except DevicePathError as error:
        cursor.report(str(error))
        return None
    if len(path) > limits.DEVICE_PATH:
        cursor.report(f"{len(path)} bytes as a device path, at most {limits.DEVICE_PATH}")
        return None
    return path


def _read_ascii(cursor: Cursor | None, limit: int) -> str | None:
    text = cursor.text(limit) if cursor else None
    if cursor is None or text is None:
        return None
    warn_of_comment(cursor)
    if not text or not all(" " <= character <= "~" for character in text):
        cursor.report(f"{text!r} is not a name; use printable ASCII characters")
        return None
    return text
