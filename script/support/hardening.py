"""What lets firmware protect the memory of an EFI image: checked in the file, and marked there.

Offsets and flags are those of the PE32+ format.
"""

import struct
from dataclasses import dataclass
from pathlib import Path

from support.failure import Failure

PAGE = 0x1000
EXECUTABLE = 0x20000000
WRITABLE = 0x80000000
NX_COMPATIBLE = 0x0100

DOS_MAGIC = b"MZ"
DOS_NEW_HEADER = 0x3C
PE_MAGIC = b"PE\0\0"
OPTIONAL_MAGIC = b"\x0b\x02"

# From PE_MAGIC.
SECTION_COUNT = 6
OPTIONAL_SIZE = 20
OPTIONAL_HEADER = 24

# From the start of the optional header.
SECTION_ALIGNMENT = 32
DLL_CHARACTERISTICS = 70

# Size of an entry in the section table, and what matters of it: name, address, characteristics.
SECTION_SIZE = 40
SECTION_FORMAT = "<8s4xI20xI"


@dataclass(frozen=True)
class Section:
    """An entry of the section table."""

    name: str
    address: int
    characteristics: int


@dataclass(frozen=True)
class Image:
    """What the headers of an EFI image say; `flags` are its DLL characteristics."""

    section_alignment: int
    flags: int
    flags_offset: int
    sections: tuple[Section, ...]


def mark(file: Path) -> None:
    """Says in the file that firmware may forbid to execute its data, as EDK2's GenFw cannot. The
    checksum stays as it is: zero, for none."""
    image = _read(file)
    if image.flags & NX_COMPATIBLE:
        return  # The file keeps its time.
    content = bytearray(file.read_bytes())
    struct.pack_into("<H", content, image.flags_offset, image.flags | NX_COMPATIBLE)
    file.write_bytes(content)


def check(file: Path) -> None:
    """Raises a Failure when firmware could not protect the image's memory."""
    image = _read(file)
    options = "Look at DLINK_FLAGS in Boardscope.dsc."
    _check_alignment(file, "says that its sections are", image.section_alignment, options)
    for section in image.sections:
        _check_alignment(file, f"has its section {section.name}", section.address, options)
        if section.characteristics & EXECUTABLE and section.characteristics & WRITABLE:
            raise Failure(
                f"{file.name}: its section {section.name} is writable and executable. Look for "
                f"writable data among its code in the linker's map, {file.stem}.map. {options}"
            )
    if not image.flags & NX_COMPATIBLE:
        raise Failure(
            f"{file.name} does not say that it is NX compatible, so firmware leaves its data "
            "executable. Call mark of script/support/hardening.py on it after GenFw."
        )


def _check_alignment(file: Path, what: str, value: int, options: str) -> None:
    if value == 0 or value % PAGE != 0:
        raise Failure(
            f"{file.name} {what} at {value:#x}, not at a multiple of {PAGE:#x}, so firmware "
            f"cannot give each page its rights. {options}"
        )


def _read(file: Path) -> Image:
    try:
        return _parse(file.read_bytes())
    except (ValueError, struct.error) as error:
        raise Failure(
            f"{file.name} is no PE32+ image. Delete build/workspace and build again."
        ) from error


def _parse(content: bytes) -> Image:
    _expect(content, 0, DOS_MAGIC)
    header = _number(content, "<I", DOS_NEW_HEADER)
    _expect(content, header, PE_MAGIC)
    optional = header + OPTIONAL_HEADER
    _expect(content, optional, OPTIONAL_MAGIC)
    table = optional + _number(content, "<H", header + OPTIONAL_SIZE)
    count = _number(content, "<H", header + SECTION_COUNT)
    return Image(
        section_alignment=_number(content, "<I", optional + SECTION_ALIGNMENT),
        flags=_number(content, "<H", optional + DLL_CHARACTERISTICS),
        flags_offset=optional + DLL_CHARACTERISTICS,
        sections=tuple(_section(content, table + i * SECTION_SIZE) for i in range(count)),
    )


def _expect(content: bytes, offset: int, magic: bytes) -> None:
    if content[offset : offset + len(magic)] != magic:
        raise ValueError(f"{magic!r} is not at {offset:#x}")


def _number(content: bytes, layout: str, offset: int) -> int:
    return int(struct.unpack_from(layout, content, offset)[0])


def _section(content: bytes, offset: int) -> Section:
    name, address, characteristics = struct.unpack_from(SECTION_FORMAT, content, offset)
    return Section(name.rstrip(b"\0").decode("latin-1"), address, characteristics)
