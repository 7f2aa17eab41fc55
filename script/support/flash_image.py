"""The modules in OVMF's flash image: taking one out, putting others in the places of its own."""

import lzma
import struct
import uuid
from collections.abc import Iterator, Mapping
from dataclasses import dataclass
from enum import IntEnum

from support.failure import Failure

_LZMA = uuid.UUID("EE4E5898-3914-4259-9D6E-DC7BD79403CF")
_SIGNATURE = b"_FVH"
_SIGNATURE_OFFSET = 40
_LENGTH_OFFSET = 32
_HEADER_LENGTH_OFFSET = 48
_EXTENSION_OFFSET = 52
_FILE_HEADER = 24  # bytes
_FILE_ALIGNMENT = 8
_SECTION_ALIGNMENT = 4
_VALID = 0xF8  # a file's state, in flash whose erased bits are ones
_NO_CONTENT_CHECKSUM = 0xAA
_PAD = 0xF0
_FV_FILE = 0x0B
_GUIDED = 0x02
_FV_SECTION = 0x17
_NOTHING = b"\xff"


class Section(IntEnum):
    """What a part of a module's file holds."""

    PE32 = 0x10
    DXE_DEPEX = 0x13
    PEI_DEPEX = 0x1B


class Kind(IntEnum):
    """Who starts a module, and when."""

    DXE_CORE = 0x05
    PEIM = 0x06
    DRIVER = 0x07


@dataclass(frozen=True)
class _File:
    start: int
    end: int  # with its header, without what fills up to the next file
    kind: int
    name: uuid.UUID


def make_file(name: uuid.UUID, kind: Kind, sections: Mapping[Section, bytes]) -> bytes:
    """A module as a firmware volume holds it."""
    content = bytearray()
    for section, data in sections.items():
        _fill(content, _SECTION_ALIGNMENT, b"\0")
        content += _section(section, data)
    return _file(name, kind, bytes(content))


def program(flash: bytes, name: uuid.UUID) -> bytes:
    """The program in a module of the flash image."""
    _, _, inner = _unpack(flash)
    for start in _inner_volumes(inner):
        volume = _volume(inner, start)
        for file in _files(volume):
            if file.name == name:
                return _program_of(volume[file.start + _FILE_HEADER : file.end])
    raise Failure(f"The firmware's flash image has no module {name}.")


def replace(flash: bytes, modules: Mapping[uuid.UUID, bytes]) -> bytes:
    """The flash image with other modules in it, by their names; all of them must be there."""
    place, header, inner = _unpack(flash)
    left = set(modules)
    for start in _inner_volumes(inner):
        volume = bytearray(_volume(inner, start))
        for file in list(_files(volume)):
            if file.name in left:
                _exchange(volume, file, modules[file.name])
                left.remove(file.name)
        inner[start : start + len(volume)] = volume
    if left:
        raise Failure(f"The firmware's flash image has no module {', '.join(map(str, left))}.")
    content = header + _compress(bytes(inner))
    outer = _volume(flash, 0)
    head = outer[: place.start] + _file(place.name, place.kind, _sized(content, _GUIDED))
    # Whatever follows is room that a larger file takes.
    if len(head) > len(outer):
        raise Failure("The modules do not fit into the firmware's flash image.")
    return head.ljust(len(outer), _NOTHING) + flash[len(outer) :]


def _unpack(flash: bytes) -> tuple[_File, bytes, bytearray]:
    """The file that holds all modules, the header of its packed section, and what is in that."""
    outer = _volume(flash, 0)
    place = next((file for file in _files(outer) if file.kind == _FV_FILE), None)
    if place is None:
        raise Failure("The firmware's flash image has no volume of modules.")
    header, packed = _guided(outer[place.start + _FILE_HEADER : place.end])
    return place, header, bytearray(lzma.decompress(packed, lzma.FORMAT_ALONE))


def _exchange(volume: bytearray, old: _File, new: bytes) -> None:
    """Puts a module at the volume's end: those that run in their places must not move."""
    end = max(file.end for file in _files(volume))
    start = (end + _FILE_ALIGNMENT - 1) // _FILE_ALIGNMENT * _FILE_ALIGNMENT
    if start + len(new) > len(volume):
        raise Failure("The modules do not fit into a volume of the firmware's flash image.")
    volume[start : start + len(new)] = new
    nothing = uuid.UUID(bytes=_NOTHING * 16)
    pad = _file(nothing, _PAD, _NOTHING * (old.end - old.start - _FILE_HEADER))
    volume[old.start : old.end] = pad


def _volume(data: bytes | bytearray, start: int) -> bytes:
    found = data[start + _SIGNATURE_OFFSET :][: len(_SIGNATURE)]
    if found != _SIGNATURE:
        raise Failure(f"The firmware's flash image has no volume at {start:#x}.")
    (length,) = struct.unpack_from("<Q", data, start + _LENGTH_OFFSET)
    return bytes(data[start : start + length])


def _files(volume: bytes | bytearray) -> Iterator[_File]:
    start, extension = struct.unpack_from("<H2xH", volume, _HEADER_LENGTH_OFFSET)
    if extension:
        (size,) = struct.unpack_from("<I", volume, extension + 16)
        start = extension + size
    while True:
        start = (start + _FILE_ALIGNMENT - 1) // _FILE_ALIGNMENT * _FILE_ALIGNMENT
        header = bytes(volume[start : start + _FILE_HEADER])
        if len(header) < _FILE_HEADER or header == _NOTHING * _FILE_HEADER:
            return
        end = start + int.from_bytes(header[20:23], "little")
        yield _File(start, end, header[18], uuid.UUID(bytes_le=header[:16]))
        start = end


def _sections(data: bytes | bytearray) -> Iterator[tuple[int, int, int]]:
    """Kind, begin and end of the content of each section."""
    start = 0
    while start + 4 <= len(data):
        size = int.from_bytes(data[start : start + 3], "little")
        yield data[start + 3], start + 4, start + size
        start += (size + _SECTION_ALIGNMENT - 1) // _SECTION_ALIGNMENT * _SECTION_ALIGNMENT


def _inner_volumes(sections: bytearray) -> list[int]:
    """Where the volumes begin in what was unpacked."""
    return [start for kind, start, _ in _sections(sections) if kind == _FV_SECTION]


def _program_of(content: bytes) -> bytes:
    for kind, start, end in _sections(content):
        if kind == Section.PE32:
            return content[start:end]
    raise Failure("A module of the firmware's flash image holds no program.")


def _guided(section: bytes) -> tuple[bytes, bytes]:
    """The header behind size and type of a packed section, and what is packed."""
    size, kind = int.from_bytes(section[:3], "little"), section[3]
    (offset,) = struct.unpack_from("<H", section, 20)
    if kind != _GUIDED or uuid.UUID(bytes_le=section[4:20]) != _LZMA:
        raise Failure("The firmware's modules are packed in a way that is not known here.")
    return section[4:offset], section[offset:size]


def _compress(data: bytes) -> bytes:
    packed = lzma.compress(data, lzma.FORMAT_ALONE)
    # The firmware wants to know the size before; here stands that it is not known.
    return packed[:5] + struct.pack("<Q", len(data)) + packed[13:]


def _section(kind: int, data: bytes) -> bytes:
    return _sized(data, kind)


def _sized(data: bytes, kind: int) -> bytes:
    return (len(data) + 4).to_bytes(3, "little") + bytes([kind]) + data


def _file(name: uuid.UUID, kind: int, content: bytes) -> bytes:
    size = (_FILE_HEADER + len(content)).to_bytes(3, "little")
    header = name.bytes_le + b"\0\0" + bytes([kind, 0]) + size
    checksum = -sum(header) & 0xFF
    checked = name.bytes_le + bytes([checksum, _NO_CONTENT_CHECKSUM, kind, 0]) + size
    return checked + bytes([_VALID]) + content


def _fill(data: bytearray, alignment: int, filler: bytes) -> None:
    data += filler * (-len(data) % alignment)
