"""From a description to the binary that the host reads."""

from boardtool.binary import write_board
from boardtool.model import Board
from boardtool.picture import picture_for_firmware

DESCRIPTION = "board.yaml"


def build_board(board: Board) -> bytes:
    """The binary of a board that was read; raises PictureError when its picture is gone since."""
    return write_board(board, picture_for_firmware(board.picture))
