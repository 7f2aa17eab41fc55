"""Colours: "red,green,blue", as the host hands them to the view."""

import re

from boardtool import limits
from boardtool.cursor import Cursor

# What the web's guidelines for accessibility ask of the contrast between text and background.
LEGIBLE = 4.5


def read_color(cursor: Cursor) -> str | None:
    """ "r,g,b" with numbers from 0 to 255; blanks are dropped."""
    meant = _meant(cursor)
    if meant is not None:
        found, color = meant
        cursor.report(f'{found} is not a colour here; write "{color}"')
        return None
    text = cursor.text(limits.COLOR_TEXT)
    if text is None:
        return None
    match = re.fullmatch(r"\s*(\d{1,3})\s*,\s*(\d{1,3})\s*,\s*(\d{1,3})\s*", text, re.ASCII)
    channels = [int(channel) for channel in match.groups()] if match else []
    if not channels or max(channels) > limits.BYTE:
        cursor.report(f'{text!r} is not a colour; write "red,green,blue", each 0 to 255')
        return None
    return ",".join(str(channel) for channel in channels)


def _meant(cursor: Cursor) -> tuple[str, str] | None:
    """Another way to write a colour that stands here, and the colour."""
    code = cursor.scalar("str") or cursor.comment() or ""
    color = from_hexadecimal(code)
    if color is not None:
        return code, color
    numbers = cursor.integers()
    if numbers is not None and len(numbers) == 3:
        return str(numbers), ",".join(str(number) for number in numbers)
    return None


def from_hexadecimal(code: str) -> str | None:
    """ "220,220,220" for "#dcdcdc"; None for anything else."""
    match = re.match(r"#([0-9a-fA-F]{2})([0-9a-fA-F]{2})([0-9a-fA-F]{2})\b", code)
    return ",".join(str(int(channel, 16)) for channel in match.groups()) if match else None


def contrast(one: str, other: str) -> float:
    """How far two colours stand apart, 1 to 21, as the same guidelines define it."""
    light, dark = sorted((_luminance(one), _luminance(other)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


def _luminance(color: str) -> float:
    red, green, blue = (_linear(int(channel) / limits.BYTE) for channel in color.split(","))
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def _linear(share: float) -> float:
    return share / 12.92 if share <= 0.04045 else ((share + 0.055) / 1.055) ** 2.4
