"""`tool/board view`: the application itself shows the board, in a window or as one picture."""

import argparse
import json
import subprocess
import sys
import tempfile
import threading
from pathlib import Path
from typing import IO

from boardtool import live
from boardtool.building import build_quickly
from boardtool.model import Board
from boardtool.picture import PictureError
from boardtool.problems import BoardError
from boardtool.reading import read_board

HELP = "show the board in the application itself, in a window that follows each change"
ABOUT = """
A board in the application itself, in a window. Mouse and keyboard are yours as on a PC; F12 saves a
screenshot to the folder that --stick names. Each time that the description, the picture or a font
is saved, the window shows it anew, or over the last view what is wrong with it.

F2, F3 and F4 change the resolution, the language and the appearance, F5 the status of the component
that has the focus. What a component names as its hardware is not there; it counts as present, with
the lines of the description. With --shot there is no window, but one picture.
"""

# Options that are texts of a view's options; the last ones are for a picture alone.
TEXTS = {
    "resolution": ("WxH", "1024x768, or 1920x1080 (default) to 3840x2160"),
    "language": ("CODE", 'as in "de-DE" (default: en-US)'),
    "appearance": ("NAME", "standard (default), high-contrast or large-text"),
}
PICTURE_TEXTS = {
    "hover": ("NAME", "the component that the pointer stands on"),
    "pointer": ("X,Y", "where the pointer stands"),
    "filter": ("NAME", "all, usb, sata, m2, pcie or fan"),
}

STEP = 10  # milliseconds without a further change
LONGEST = 50  # milliseconds that changes are collected


def add_command(commands: "argparse._SubParsersAction[argparse.ArgumentParser]") -> None:
    parser = commands.add_parser(
        "view", help=HELP, description=ABOUT, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("board", type=Path, help="the description, or its folder")
    for name, (form, text) in TEXTS.items():
        parser.add_argument(f"--{name}", metavar=form, help=text)
    parser.add_argument(
        "--status",
        metavar="NAME=STATUS",
        type=_status,
        action="append",
        default=[],
        help="available, device-error, not-ready, no-mapping or absent; any number of times",
    )
    parser.add_argument(
        "--font",
        metavar="FILE",
        type=Path,
        action="append",
        default=[],
        help="in place of the host's font; up to three times: regular, East Asian, bold",
    )
    parser.add_argument(
        "--stick",
        metavar="FOLDER",
        type=Path,
        help="for screenshots (default: screenshots beside the description)",
    )
    picture = parser.add_argument_group("a picture instead of a window")
    picture.add_argument("--shot", metavar="FILE", type=Path, help="write the picture, a PNG")
    for name, (form, text) in PICTURE_TEXTS.items():
        picture.add_argument(f"--{name}", metavar=form, help=text)
    parser.set_defaults(parser=parser)


def _status(text: str) -> tuple[str, str]:
    name, equals, status = text.rpartition("=")
    if not equals:
        raise argparse.ArgumentTypeError(f'"{text}" is no status; write it like SATA_1=absent')
    return name, status


def view(path: Path, arguments: argparse.Namespace) -> int:
    """Runs the command on a description; returns its exit code."""
    if arguments.shot is None:
        extra = [name for name in PICTURE_TEXTS if getattr(arguments, name) is not None]
        if extra:
            arguments.parser.error(f"--{extra[0]} goes with --shot; a window has a hand")
    board = read_board(path)
    options = _options(arguments)
    if arguments.shot is not None:
        return _shoot(board, options, arguments.shot)
    return _show(path, board, options, arguments.stick or path.parent / "screenshots")


def _options(arguments: argparse.Namespace) -> live.ViewOptions:
    texts = {name: getattr(arguments, name) for name in (*TEXTS, *PICTURE_TEXTS)}
    return live.ViewOptions(
        statuses=dict(arguments.status),
        fonts=tuple(arguments.font),
        **{name: text for name, text in texts.items() if text is not None},
    )


def _shoot(board: Board, options: live.ViewOptions, shot: Path) -> int:
    with live.LiveView() as opened:
        shot.write_bytes(opened.picture(build_quickly(board), options))
    print(f"{shot}: {len(board.components)} components at {options.resolution}")
    return 0


def _show(path: Path, board: Board, options: live.ViewOptions, stick: Path) -> int:
    program = live.program()
    with tempfile.TemporaryDirectory(prefix="board-view-") as folder:
        binary = Path(folder) / "board.bin"
        binary.write_bytes(build_quickly(board))
        window = subprocess.Popen(
            [program, binary, "--window", "--stick", stick.absolute(), *_flags(options)],
            stdin=subprocess.PIPE,
            text=True,
        )
        assert window.stdin
        follower = Follower(path, board, options.fonts, binary, window.stdin)
        follower.start()
        try:
            return window.wait()
        except KeyboardInterrupt:
            return window.wait()
        finally:
            follower.stop()


def _flags(options: live.ViewOptions) -> list[str]:
    """The options as the program's own."""
    flags = [f"--{name}={getattr(options, name)}" for name in TEXTS]
    flags += [f"--status={name}={status}" for name, status in options.statuses.items()]
    return flags + [f"--font={font}" for font in options.fonts]


class Follower(threading.Thread):
    """Watches the files that a view is made of, and tells the window of each change."""

    def __init__(
        self, path: Path, board: Board, fonts: tuple[Path, ...], binary: Path, window: IO[str]
    ) -> None:
        super().__init__(daemon=True)
        self._path = path
        self._fonts = fonts
        self._binary = binary
        self._window = window
        self._files = self._files_of(board)
        self._over = threading.Event()

    def _files_of(self, board: Board) -> set[Path]:
        return {file.resolve() for file in (self._path, board.picture, *self._fonts)}

    def stop(self) -> None:
        self._over.set()
        self.join()

    def run(self) -> None:
        # Here, as only this command needs it.
        import watchfiles

        while not self._over.is_set():
            # Folders, as editors put a new file in the place of the old one.
            folders = {file.parent for file in self._files}
            changes = watchfiles.watch(
                *folders,
                watch_filter=lambda _, name: Path(name) in self._files,
                recursive=False,
                step=STEP,
                debounce=LONGEST,
                stop_event=self._over,
                raise_interrupt=False,
            )
            for _ in changes:
                self._tell()
                if {file.parent for file in self._files} != folders:
                    break

    def _tell(self) -> None:
        try:
            board = read_board(self._path)
            binary = build_quickly(board)
        except (BoardError, PictureError, OSError) as error:
            print(error, file=sys.stderr, flush=True)
            self._send({"complaint": str(error)})
            return
        self._files = self._files_of(board)
        # In one piece: a view may be reading it.
        made = self._binary.with_suffix(".new")
        made.write_bytes(binary)
        made.replace(self._binary)
        print(f"{self._path}: {len(board.components)} components", flush=True)
        self._send({"board": str(self._binary)})

    def _send(self, line: dict[str, str]) -> None:
        try:
            self._window.write(json.dumps(line) + "\n")
            self._window.flush()
        except BrokenPipeError:
            self._over.set()
