#!/usr/bin/env python3
"""Writes what the host embeds: the default board's binary and an assembler file with the fonts.

Of the second font, which the others fall back to, it takes the characters of the host's texts.
Files are rewritten only when their content changes, so that builds stay incremental.
"""

import argparse
import hashlib
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "tool")]

try:
    from boardtool.building import DESCRIPTION, build_board
    from boardtool.picture import PictureError
    from boardtool.problems import BoardError
    from boardtool.reading import read_board
    from fallback_font import TEXTS, FontError, characters, cut
except ModuleNotFoundError as missing:
    sys.exit(
        f"{sys.executable} has no module {missing.name}. It needs fontTools, Pillow and PyYAML: "
        "docs/firmware.md says where they come from."
    )

FACES = 3
FALLBACK_FACE = 1

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


def embed(arguments: argparse.Namespace) -> None:
    out: Path = arguments.out.resolve()
    out.mkdir(parents=True, exist_ok=True)
    board = read_board(arguments.board_dir / DESCRIPTION)
    write_if_changed(out / "board.bin", build_board(board, arguments.picture_width))
    fonts: list[Path] = [font.resolve() for font in arguments.font]
    if not arguments.whole_font:
        kept = characters(arguments.texts or [TEXTS])
        whole, fonts[FALLBACK_FACE] = fonts[FALLBACK_FACE], out / "fallback.ttf"
        write_if_changed(fonts[FALLBACK_FACE], cut(whole, kept))
    files = {"ObvHostBoard": out / "board.bin"}
    files.update({f"ObvHostFont{i}": font for i, font in enumerate(fonts)})
    write_if_changed(out / "HostBlobs.nasm", assembler(NASM_HEAD, NASM_FILE, files))
    write_if_changed(out / "HostBlobs.S", assembler(GNU_HEAD, GNU_FILE, files))


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--board-dir", type=Path, required=True, help="folder with a board.yaml")
    parser.add_argument(
        "--picture-width", type=int, metavar="PIXELS", help="make the board's picture narrower"
    )
    parser.add_argument(
        "--font", type=Path, action="append", required=True, help="font file; three, in face order"
    )
    parser.add_argument(
        "--texts",
        type=Path,
        action="append",
        metavar="FILE",
        help="take these characters, in UTF-8, of the second font; may be given more than once "
        f"(default: {TEXTS.name} of the host)",
    )
    parser.add_argument("--whole-font", action="store_true", help="take all of the second font")
    parser.add_argument("--out", type=Path, required=True, help="folder to write to")
    arguments = parser.parse_args()
    if len(arguments.font) != FACES:
        parser.error(f"{len(arguments.font)} fonts given, {FACES} are needed")
    if arguments.whole_font and arguments.texts:
        parser.error("--texts names a part of the font, --whole-font all of it")
    return arguments


def main() -> int:
    arguments = parse_arguments()
    try:
        embed(arguments)
    except (BoardError, FontError, PictureError) as error:
        print(error, file=sys.stderr)
        return 1
    except OSError as error:
        print(f"{error.filename}: {error.strerror}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
