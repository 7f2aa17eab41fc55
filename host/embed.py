#!/usr/bin/env python3
"""Writes what the host embeds: the default board's binary and an assembler file with the fonts.

Files are rewritten only when their content changes, so that builds stay incremental.
"""

import argparse
import hashlib
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tool"))

from boardtool.building import DESCRIPTION, build_board
from boardtool.picture import PictureError
from boardtool.problems import BoardError
from boardtool.reading import read_board

FACES = 3

NASM_HEAD = "    DEFAULT REL\n    SECTION .rodata\n"
NASM_FILE = """
; {digest}
    ALIGN 16
    global {symbol}Start
    global {symbol}End
{symbol}Start:
    incbin "{path}"
{symbol}End:
    db 0
"""

GNU_HEAD = '    .section .rodata\n    .section .note.GNU-stack,"",@progbits\n    .section .rodata\n'
GNU_FILE = """
# {digest}
    .balign 16
    .global {symbol}Start
    .global {symbol}End
{symbol}Start:
    .incbin "{path}"
{symbol}End:
    .byte 0
"""


def write_if_changed(path: Path, content: bytes) -> None:
    if not path.exists() or path.read_bytes() != content:
        path.write_bytes(content)


def assembler(head: str, template: str, files: dict[str, Path]) -> bytes:
    """The digests make the text change with the files: assemblers' dependencies do not show."""
    parts = [
        template.format(
            symbol=symbol, path=path, digest=hashlib.sha256(path.read_bytes()).hexdigest()
        )
        for symbol, path in files.items()
    ]
    return (head + "".join(parts)).encode()


def embed(board_dir: Path, fonts: list[Path], out: Path) -> None:
    out.mkdir(parents=True, exist_ok=True)
    board_file = out.resolve() / "board.bin"
    write_if_changed(board_file, build_board(read_board(board_dir / DESCRIPTION)))
    files = {"ObvHostBoard": board_file}
    files.update({f"ObvHostFont{i}": font.resolve() for i, font in enumerate(fonts)})
    write_if_changed(out / "HostBlobs.nasm", assembler(NASM_HEAD, NASM_FILE, files))
    write_if_changed(out / "HostBlobs.S", assembler(GNU_HEAD, GNU_FILE, files))


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--board-dir", type=Path, required=True, help="folder with a board.yaml")
    parser.add_argument(
        "--font", type=Path, action="append", required=True, help="font file; three, in face order"
    )
    parser.add_argument("--out", type=Path, required=True, help="folder to write to")
    arguments = parser.parse_args()
    if len(arguments.font) != FACES:
        parser.error(f"{len(arguments.font)} fonts given, {FACES} are needed")
    try:
        embed(arguments.board_dir, arguments.font, arguments.out)
    except (BoardError, PictureError) as error:
        print(error, file=sys.stderr)
        return 1
    except OSError as error:
        print(f"{error.filename}: {error.strerror}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
