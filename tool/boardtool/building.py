"""From a description to the binary that the host reads."""

from boardtool.binary import write_board
from boardtool.model import Board
from boardtool.picture import encode_for_firmware, load_picture

DESCRIPTION = "board.yaml"


def build_board(board: Board) -> bytes:
    """The binary of a board that was read; raises PictureError when its picture is gone since."""
    return write_board(board, encode_for_firmware(load_picture(board.picture)))
