"""The commands check, build, view and edit."""

import argparse
import sys
from dataclasses import dataclass
from pathlib import Path

from boardtool import viewing
from boardtool.building import DESCRIPTION, build_board
from boardtool.live import LiveView, ViewError
from boardtool.picture import PictureError
from boardtool.problems import BoardError, has_errors
from boardtool.reading import read_board
from support.failure import Failure


@dataclass(frozen=True, kw_only=True)
class Command:
    name: str
    help: str
    output: str | None = None
    """The file that it writes beside the description when it is told no other."""


COMMANDS = (
    Command(name="check", help="say what is wrong with a board description"),
    Command(
        name="build",
        help="turn a description into the binary that the host reads",
        output="board.bin",
    ),
)


def parse_arguments(arguments: list[str] | None) -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="board", description=__doc__)
    commands = parser.add_subparsers(dest="command", required=True, metavar="COMMAND")
    for command in COMMANDS:
        subparser = commands.add_parser(command.name, help=command.help, description=command.help)
        subparser.add_argument(
            "board", type=Path, help=f"the description, or its folder with a {DESCRIPTION}"
        )
        if command.output is not None:
            subparser.add_argument(
                "-o",
                "--output",
                type=Path,
                help=f"default: {command.output} beside the description",
            )
            subparser.set_defaults(default_output=command.output)
        if command.name == "build":
            subparser.add_argument(
                "--picture-width",
                type=int,
                metavar="PIXELS",
                help="make the picture narrower, and move all points with it",
            )
        if command.name == "check":
            subparser.add_argument(
                "--strict", action="store_true", help="fail when there are warnings, too"
            )
    viewing.add_command(commands)
    _add_edit(commands)
    return parser.parse_args(arguments)


def _add_edit(commands: "argparse._SubParsersAction[argparse.ArgumentParser]") -> None:
    text = "show a page in the browser on which the board is drawn and described"
    subparser = commands.add_parser("edit", help=text, description=text)
    what = f"the folder with the {DESCRIPTION}, or with nothing but a picture"
    subparser.add_argument("board", metavar="FOLDER", type=Path, help=what)
    subparser.add_argument("--port", type=int, default=0, help="default: one that is free")
    subparser.add_argument("--no-browser", action="store_true", help="only print the address")


def run_check(path: Path, strict: bool) -> int:
    # Here, as what it checks with takes longest to load.
    from boardtool.checking import check

    problems = check(path)
    try:
        if not has_errors(problems):
            # Only now, as the view may have to be built first.
            with LiveView() as view:
                problems = check(path, view=view)
    finally:
        for problem in problems:
            print(problem, file=sys.stderr)
    if not problems:
        print(f"{path}: nothing to complain about")
    return int(has_errors(problems) or (strict and bool(problems)))


def run_edit(folder: Path, port: int, browser: bool) -> int:
    # Here, as the other commands need no server.
    from boardtool.edit.server import edit

    folder = folder.parent if folder.name == DESCRIPTION else folder
    if not folder.is_dir():
        print(f"{folder} is not a folder; the page needs one with a picture", file=sys.stderr)
        return 1
    return edit(folder, port, browser)


def run(arguments: argparse.Namespace) -> int:
    if arguments.command == "edit":
        return run_edit(arguments.board, arguments.port, not arguments.no_browser)
    path: Path = arguments.board / DESCRIPTION if arguments.board.is_dir() else arguments.board
    if arguments.command == "check":
        return run_check(path, arguments.strict)
    if arguments.command == "view":
        return viewing.view(path, arguments)
    board = read_board(path)
    output: Path = arguments.output or path.parent / arguments.default_output
    binary = build_board(board, arguments.picture_width)
    output.write_bytes(binary)
    print(f"{output}: {len(board.components)} components, {len(binary)} bytes")
    return 0


def main(arguments: list[str] | None = None) -> int:
    parsed = parse_arguments(arguments)
    try:
        return run(parsed)
    except (BoardError, PictureError, ViewError, Failure) as error:
        print(error, file=sys.stderr)
        return 1
    except OSError as error:
        print(f"{error.filename}: {error.strerror}", file=sys.stderr)
        return 1
