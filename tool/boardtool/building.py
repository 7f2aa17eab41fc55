"""From a description to the binary that the host reads."""

from PIL import Image

from boardtool.binary import write_board
from boardtool.model import Board
from boardtool.picture import QUICK, encode_for_firmware, load_picture, picture_for_firmware
from boardtool.scaling import scale_board

DESCRIPTION = "board.yaml"


def build_board(board: Board, picture_width: int | None = None) -> bytes:
    """The binary of a board that was read, with its picture made narrower if a width is given;
    raises PictureError when the picture is gone since, or less wide than that."""
    if picture_width is None:
        return write_board(board, picture_for_firmware(board.picture))
    small = scale_board(board, picture_width)
    picture = load_picture(board.picture).resize(small.picture_size, Image.Resampling.LANCZOS)
    return write_board(small, encode_for_firmware(picture))


def build_quickly(board: Board) -> bytes:
    """The same for a view, whose picture is not kept: larger, and made in a tenth of the time."""
    return write_board(board, picture_for_firmware(board.picture, QUICK))
