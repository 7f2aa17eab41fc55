"""A board, checked and in the units of the binary: what reading yields and writing takes."""

from dataclasses import dataclass
from pathlib import Path

Point = tuple[int, int]


@dataclass(frozen=True, kw_only=True)
class Look:
    """A callout in one state. Colours are "r,g,b" in decimal."""

    text: str
    background: str
    mark: str
    border: str
    border_width: int
    radius: int


@dataclass(frozen=True, kw_only=True)
class Style:
    default: Look
    focus: Look


@dataclass(frozen=True, kw_only=True)
class InfoLine:
    kind: int
    label: str
    value: str


@dataclass(frozen=True, kw_only=True)
class Hardware:
    """What a component names: a kind of limits.HARDWARE_KINDS, and a text or a device path."""

    kind: int
    name: bytes
    bank: str = ""


@dataclass(frozen=True, kw_only=True)
class Component:
    """Points are picture pixels, marker the dot's centre; style is an index into Board.styles."""

    name: str
    category: int
    outline: tuple[Point, ...]
    leader: tuple[Point, ...]
    callout: int
    align: int
    marker: Point
    token: int
    selectable: bool
    special_group: bool
    style: int
    status: int
    info: tuple[InfoLine, ...]
    hardware: tuple[Hardware, ...] = ()


@dataclass(frozen=True, kw_only=True)
class Board:
    title: str
    picture: Path
    picture_size: Point
    logo: int
    marker: int
    styles: tuple[Style, ...]
    system_info: tuple[str, ...]
    components: tuple[Component, ...]
