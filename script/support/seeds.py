"""What the fuzz targets start from besides their corpora: the files and texts that ship."""

import re
import shutil
import struct
from collections.abc import Callable, Iterator
from pathlib import Path

from support import paths

# Sizes in the board binary, as host/portable/BoardFormat.h has them.
HEADER_SIZE = 1952
STYLE_SIZE = 164
COMPONENT_SIZE = 228
INFO = struct.Struct("<I64s512s")

# The first byte of a TextFuzz input: what is done with the text.
TRIM, CONVERT, APPEND_LINE, PRINT = 1, 2, 3, 5
TEXT_ROOM = 512


def make(fuzz_build: Path, folder: Path) -> None:
    """Puts the seeds of each target into a folder of the target's name, in place of older ones."""
    board = fuzz_build / "host" / "board.bin"
    sources: dict[str, Callable[[], Iterator[tuple[str, bytes]]]] = {
        "BoardBinaryFuzz": lambda: _files([board]),
        "BoardViewFuzz": lambda: _files([board]),
        "FontFuzz": lambda: _files(list(paths.FONT_FILES)),
        "PngFuzz": lambda: _files(sorted((paths.CLONE / "assets").glob("*/*.png"))),
        "TextFuzz": lambda: _texts(board.read_bytes()),
    }
    shutil.rmtree(folder, ignore_errors=True)
    for target, seeds in sources.items():
        (folder / target).mkdir(parents=True)
        for name, content in seeds():
            (folder / target / name).write_bytes(content)


def _files(files: list[Path]) -> Iterator[tuple[str, bytes]]:
    for file in files:
        yield file.name, file.read_bytes()


def _texts(board: bytes) -> Iterator[tuple[str, bytes]]:
    """The host's texts in every language, and the lines that the default board shows."""
    source = (paths.CLONE / "host" / "portable" / "Texts.cpp").read_text()
    texts = re.findall(r'u"((?:[^"\\]|\\.)*)"', source)
    for number, text in enumerate(dict.fromkeys(texts)):
        field = _field(text.encode("utf-16-le"))
        room = struct.pack("<H", TEXT_ROOM)
        yield f"trim-{number:03}", bytes([TRIM]) + field
        yield f"convert-{number:03}", bytes([CONVERT, 1]) + field
        yield f"print-{number:03}", bytes([PRINT]) + room + field
    for number, line in enumerate(dict.fromkeys(_lines(board))):
        yield f"line-{number:03}", line


def _lines(board: bytes) -> Iterator[bytes]:
    components, styles, infos = struct.unpack_from("<HHI", board, 20)
    start = HEADER_SIZE + styles * STYLE_SIZE + components * COMPONENT_SIZE
    for number in range(infos):
        _, label, value = INFO.unpack_from(board, start + number * INFO.size)
        yield bytes([APPEND_LINE]) + struct.pack("<H", TEXT_ROOM) + _unit(label) + _unit(value)


def _unit(text: bytes) -> bytes:
    """A text that ends with the first NUL of its field."""
    return _field(text.decode("utf-16-le").split("\0")[0].encode("utf-16-le"))


def _field(text: bytes) -> bytes:
    return struct.pack("<H", len(text) // 2) + text
