"""A font package with the characters that firmware has no glyphs for: those of East Asia.

A firmware's own font often ends with the Latin letters. The package is a simple font of the UEFI
specification: cells of 19 lines, 8 columns for narrow and 16 for wide characters.
"""

import struct
from pathlib import Path

from PIL import Image, ImageDraw, ImageFont

from formset.files import plain
from formset.model import Formset

_PACKAGE_SIMPLE_FONT = 0x07
_LINES = 19
_COLUMNS = 16
_SIZE = 15
_TOP = 1
_LAST_LATIN = 0xFF


def characters(formset: Formset) -> list[str]:
    """Every character of the texts that is beyond Latin-1, in the order of the codes."""
    words = [plain(word) for text in formset.texts for word in text.words.values()]
    return sorted({sign for word in words for sign in word if ord(sign) > _LAST_LATIN})


def package(formset: Formset, font_file: Path) -> bytes:
    """The package as the HII library takes it, behind its size."""
    font = ImageFont.truetype(str(font_file), _SIZE)
    wide = [_wide_glyph(sign, font) for sign in characters(formset)]
    body = struct.pack("<HH", 0, len(wide)) + b"".join(wide)
    size = 4 + len(body)
    header = struct.pack("<I", size | _PACKAGE_SIMPLE_FONT << 24)
    return struct.pack("<I", 4 + size) + header + body


def _wide_glyph(sign: str, font: ImageFont.FreeTypeFont) -> bytes:
    cell = Image.new("1", (_COLUMNS, _LINES))
    ImageDraw.Draw(cell).text((0, _TOP), sign, fill=1, font=font)
    rows = cell.tobytes()
    left, right = rows[0::2], rows[1::2]
    return struct.pack("<HB", ord(sign), 0) + left + right + bytes(3)
