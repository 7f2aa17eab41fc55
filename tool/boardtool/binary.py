"""The board binary: a header, fixed-size records, then the picture.

host/portable/BoardFormat.h states the same layout for the reader.
"""

import struct
import zlib

from boardtool import limits
from boardtool.model import Board, Component, Hardware, InfoLine, Look, Point
from boardtool.record import Record

MAGIC = b"OBVBOARD"
VERSION = 3

PREFIX = Record(magic="8s", version="H", header_size="H", checksum="I")
# Everything behind the checksum field, which the checksum covers.
HEADER = Record(
    total_size="I",
    component_count="H",
    style_count="H",
    info_count="I",
    picture_size="I",
    picture_width="H",
    picture_height="H",
    logo="B",
    marker_theme="B",
    hardware_count="H",
    title=f"{2 * (limits.TITLE + 1)}s",
)
SYSTEM_INFO_SIZE = limits.SYSTEM_INFO_TEXTS * 2 * (limits.SYSTEM_INFO_TEXT + 1)
HEADER_SIZE = PREFIX.size + HEADER.size + SYSTEM_INFO_SIZE

COLOR = f"{limits.COLOR_TEXT + 1}s"
LOOK = Record(
    text_color=COLOR,
    background_color=COLOR,
    mark_color=COLOR,
    border_color=COLOR,
    border_width="B",
    corner_radius="B",
)
COMPONENT = Record(
    name=f"{2 * (limits.NAME + 1)}s",
    type="B",
    callout_side="B",
    text_align="B",
    flags="B",
    search_token_id="H",
    style_index="H",
    marker_x="H",
    marker_y="H",
    vertex_count="B",
    leader_point_count="B",
    info_count="B",
    status="B",
    hardware_count="H",
    reserved="H",
    first_hardware="I",
    first_info="I",
    vertices=f"{4 * limits.VERTICES_MAX}s",
    leader_points=f"{4 * limits.LEADER_POINTS_MAX}s",
)
INFO = Record(kind="I", label=f"{2 * (limits.LABEL + 1)}s", value=f"{2 * (limits.VALUE + 1)}s")
HARDWARE = Record(
    kind="H",
    reserved="H",
    name=f"{limits.DEVICE_PATH}s",
    bank=f"{limits.HARDWARE_BANK + 1}s",
)

NOT_SELECTABLE = 0x01
IN_SPECIAL_GROUP = 0x02


def write_board(board: Board, picture: bytes) -> bytes:
    """The whole binary. picture is the PNG in the firmware's channel order."""
    infos = [line for component in board.components for line in component.info]
    hardware = [name for component in board.components for name in component.hardware]
    records = b"".join(
        [
            *(_look(style.default) + _look(style.focus) for style in board.styles),
            *_components(board.components),
            *(_info(line) for line in infos),
            *(_hardware(name) for name in hardware),
        ]
    )
    total = HEADER_SIZE + len(records) + len(picture)
    width, height = board.picture_size
    header = HEADER.pack(
        total_size=total,
        component_count=len(board.components),
        style_count=len(board.styles),
        info_count=len(infos),
        picture_size=len(picture),
        picture_width=width,
        picture_height=height,
        logo=board.logo,
        marker_theme=board.marker,
        hardware_count=len(hardware),
        title=_ucs2(board.title),
    )
    body = header + _system_info(board.system_info) + records + picture
    prefix = PREFIX.pack(
        magic=MAGIC, version=VERSION, header_size=HEADER_SIZE, checksum=zlib.crc32(body)
    )
    return prefix + body


def _ucs2(text: str) -> bytes:
    # Its record's field fills up with zeros, which terminates the text.
    return text.encode("utf-16-le")


def _system_info(texts: tuple[str, ...]) -> bytes:
    size = SYSTEM_INFO_SIZE // limits.SYSTEM_INFO_TEXTS
    return b"".join(_ucs2(text).ljust(size, b"\0") for text in texts).ljust(SYSTEM_INFO_SIZE, b"\0")


def _look(look: Look) -> bytes:
    return LOOK.pack(
        text_color=look.text.encode("ascii"),
        background_color=look.background.encode("ascii"),
        mark_color=look.mark.encode("ascii"),
        border_color=look.border.encode("ascii"),
        border_width=look.border_width,
        corner_radius=look.radius,
    )


def _points(points: tuple[Point, ...]) -> bytes:
    return b"".join(struct.pack("<HH", x, y) for x, y in points)


def _components(components: tuple[Component, ...]) -> list[bytes]:
    records = []
    first_info = 0
    first_hardware = 0
    for component in components:
        records.append(_component(component, first_info, first_hardware))
        first_info += len(component.info)
        first_hardware += len(component.hardware)
    return records


def _component(component: Component, first_info: int, first_hardware: int) -> bytes:
    flags = 0 if component.selectable else NOT_SELECTABLE
    flags |= IN_SPECIAL_GROUP if component.special_group else 0
    marker_x, marker_y = component.marker
    return COMPONENT.pack(
        name=_ucs2(component.name),
        type=component.category,
        callout_side=component.callout,
        text_align=component.align,
        flags=flags,
        search_token_id=component.token,
        style_index=component.style,
        marker_x=marker_x,
        marker_y=marker_y,
        vertex_count=len(component.outline),
        leader_point_count=len(component.leader),
        info_count=len(component.info),
        status=component.status,
        hardware_count=len(component.hardware),
        reserved=0,
        first_hardware=first_hardware,
        first_info=first_info,
        vertices=_points(component.outline),
        leader_points=_points(component.leader),
    )


def _info(line: InfoLine) -> bytes:
    return INFO.pack(kind=line.kind, label=_ucs2(line.label), value=_ucs2(line.value))


def _hardware(name: Hardware) -> bytes:
    return HARDWARE.pack(kind=name.kind, reserved=0, name=name.name, bank=name.bank.encode("ascii"))
