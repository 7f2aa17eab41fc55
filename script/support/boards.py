"""Boards that a user names on the command line."""

from pathlib import Path

from support import paths
from support.failure import Failure
from support.running import run

DEFAULT = paths.CLONE / "assets" / "board"


def find_board(board: Path) -> Path:
    """The description or the binary that somebody names, itself or by its folder."""
    if board.is_file():
        return board
    if not board.is_dir():
        raise Failure(f"There is no {board}.")
    for name in ("board.yaml", "board.bin"):
        if (board / name).is_file():
            return board / name
    raise Failure(f"{board} holds neither board.yaml nor board.bin.")


def binary_of(board: Path, folder: Path) -> Path:
    """The board as the host reads it, made in the folder when it is a description."""
    if board.suffix == ".bin":
        return board
    made = folder / "board.bin"
    made.parent.mkdir(parents=True, exist_ok=True)
    tool = paths.CLONE / "tool" / "board"
    run("Reading the board's description", [tool, "build", board.resolve(), "-o", made])
    return made
