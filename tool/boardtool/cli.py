"""The commands check, build and preview."""

import argparse
import sys
from pathlib import Path

from boardtool.binary import write_board
from boardtool.model import Board
from boardtool.picture import PictureError, encode_for_firmware, load_picture
from boardtool.preview import draw_preview
from boardtool.problems import BoardError
from boardtool.reading import read_board

DESCRIPTION = "board.yaml"


def build_board(board: Board) -> bytes:
    """The binary of a checked board; raises PictureError when its picture is damaged."""
    return write_board(board, encode_for_firmware(load_picture(board.picture)))


def parse_arguments(arguments: list[str] | None) -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="board", description=__doc__)
    commands = parser.add_subparsers(dest="command", required=True, metavar="COMMAND")
    for name, text, output in (
        ("check", "say what is wrong with a board description", None),
        ("build", "turn a description into the binary that the host reads", "board.bin"),
        ("preview", "draw outlines, leader lines and callouts over the picture", "preview.png"),
    ):
        command = commands.add_parser(name, help=text, description=text)
        command.add_argument(
            "board", type=Path, help=f"the description, or its folder with a {DESCRIPTION}"
        )
        if output is not None:
            command.add_argument(
                "-o", "--output", type=Path, help=f"default: {output} beside the description"
            )
            command.set_defaults(default_output=output)
    return parser.parse_args(arguments)


def run(arguments: argparse.Namespace) -> None:
    path: Path = arguments.board / DESCRIPTION if arguments.board.is_dir() else arguments.board
    board = read_board(path)
    if arguments.command == "check":
        load_picture(board.picture)
        print(f"{path}: {len(board.components)} components, nothing to complain about")
        return
    output: Path = arguments.output or path.parent / arguments.default_output
    if arguments.command == "build":
        binary = build_board(board)
        output.write_bytes(binary)
        print(f"{output}: {len(board.components)} components, {len(binary)} bytes")
    else:
        draw_preview(board, load_picture(board.picture)).save(output, "PNG")
        print(f"{output}: {len(board.components)} components drawn")


def main(arguments: list[str] | None = None) -> int:
    parsed = parse_arguments(arguments)
    try:
        run(parsed)
    except (BoardError, PictureError) as error:
        print(error, file=sys.stderr)
        return 1
    except OSError as error:
        print(f"{error.filename}: {error.strerror}", file=sys.stderr)
        return 1
    return 0
