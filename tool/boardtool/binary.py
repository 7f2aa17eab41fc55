"""The board binary: a header, fixed-size records, then the picture.

host/portable/BoardFormat.h states the same layout for the reader.
"""

import struct
import zlib

from boardtool import limits
from boardtool.model import Board, Component, InfoLine, Look, Point

MAGIC = b"OBVBOARD"
VERSION = 2

# Everything behind the checksum field, which the checksum covers.
HEADER = struct.Struct(f"<IHHIIHHBB2x{2 * (limits.TITLE + 1)}s")
PREFIX = struct.Struct("<8sHHI")
SYSTEM_INFO_SIZE = limits.SYSTEM_INFO_TEXTS * 2 * (limits.SYSTEM_INFO_TEXT + 1)
HEADER_SIZE = PREFIX.size + HEADER.size + SYSTEM_INFO_SIZE

LOOK = struct.Struct("<20s20s20s20sBB")
COMPONENT = struct.Struct(f"<{2 * (limits.NAME + 1)}sBBBBHHHHBBBBHHII80s80s")
INFO = struct.Struct(f"<I{2 * (limits.LABEL + 1)}s{2 * (limits.VALUE + 1)}s")

NOT_SELECTABLE = 0x01
IN_SPECIAL_GROUP = 0x02
STATUS_FROM_DESCRIPTION = 0


def write_board(board: Board, picture: bytes) -> bytes:
    """The whole binary. picture is the PNG in the firmware's channel order."""
    infos = [line for component in board.components for line in component.info]
    records = b"".join(
        [
            *(_look(style.default) + _look(style.focus) for style in board.styles),
            *_components(board.components),
            *(_info(line) for line in infos),
        ]
    )
    total = HEADER_SIZE + len(records) + len(picture)
    width, height = board.picture_size
    header = HEADER.pack(
        total,
        len(board.components),
        len(board.styles),
        len(infos),
        len(picture),
        width,
        height,
        board.logo,
        board.marker,
        _ucs2(board.title),
    )
    body = header + _system_info(board.system_info) + records + picture
    return PREFIX.pack(MAGIC, VERSION, HEADER_SIZE, zlib.crc32(body)) + body


def _ucs2(text: str) -> bytes:
    # struct pads with zeros, which terminates the text.
    return text.encode("utf-16-le")


def _system_info(texts: tuple[str, ...]) -> bytes:
    size = SYSTEM_INFO_SIZE // limits.SYSTEM_INFO_TEXTS
    return b"".join(_ucs2(text).ljust(size, b"\0") for text in texts).ljust(SYSTEM_INFO_SIZE, b"\0")


def _look(look: Look) -> bytes:
    colors = (look.text, look.background, look.mark, look.border)
    return LOOK.pack(*(color.encode("ascii") for color in colors), look.border_width, look.radius)


def _points(points: tuple[Point, ...]) -> bytes:
    return b"".join(struct.pack("<HH", x, y) for x, y in points)


def _components(components: tuple[Component, ...]) -> list[bytes]:
    records = []
    first_info = 0
    for component in components:
        records.append(_component(component, first_info))
        first_info += len(component.info)
    return records


def _component(component: Component, first_info: int) -> bytes:
    flags = 0 if component.selectable else NOT_SELECTABLE
    flags |= IN_SPECIAL_GROUP if component.special_group else 0
    return COMPONENT.pack(
        _ucs2(component.name),
        component.category,
        component.callout,
        component.align,
        flags,
        component.token,
        component.style,
        *component.marker,
        len(component.outline),
        len(component.leader),
        len(component.info),
        component.status,
        STATUS_FROM_DESCRIPTION,
        0,
        0,
        first_info,
        _points(component.outline),
        _points(component.leader),
    )


def _info(line: InfoLine) -> bytes:
    return INFO.pack(line.kind, _ucs2(line.label), _ucs2(line.value))
