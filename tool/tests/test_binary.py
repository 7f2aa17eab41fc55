"""The bytes of the binary."""

import io
import struct
import zlib
from pathlib import Path

import pytest
from PIL import Image

from boardtool.binary import COMPONENT, HEADER_SIZE, INFO, LOOK, write_board
from boardtool.picture import encode_for_firmware, load_picture
from boardtool.reading import read_board
from boardtool.record import Record
from conftest import MakeBoard

TEST_BOARD = Path(__file__).resolve().parents[2] / "test" / "data" / "board"


def split_picture(binary: bytes) -> tuple[bytes, bytes]:
    """Records and picture; the picture comes last."""
    (size,) = struct.unpack_from("<I", binary, 28)
    return binary[:-size], binary[-size:]


def test_record_sizes_are_those_of_the_reader() -> None:
    assert HEADER_SIZE == 1952
    assert LOOK.size == 82
    assert COMPONENT.size == 228
    assert INFO.size == 580


def test_a_record_takes_each_field_once_whatever_the_order() -> None:
    record = Record(first="B", text="4s", last="H")
    assert record.size == 7
    assert record.pack(last=0x0201, first=9, text=b"ab") == b"\x09ab\0\0\x01\x02"
    with pytest.raises(TypeError, match="fields of a record: text"):
        record.pack(last=1, first=9)
    with pytest.raises(TypeError, match="fields of a record: other"):
        record.pack(last=1, first=9, text=b"", other=1)


def test_header(make_board: MakeBoard) -> None:
    binary = write_board(read_board(make_board()), b"picture")
    assert binary[:8] == b"OBVBOARD"
    version, header_size, checksum, total = struct.unpack_from("<HHII", binary, 8)
    assert (version, header_size, total) == (3, 1952, len(binary))
    assert checksum == zlib.crc32(binary[16:])
    assert struct.unpack_from("<HHIIHHBB", binary, 20) == (1, 1, 1, 7, 64, 48, 0, 0)
    assert len(binary) == 1952 + 164 + 228 + 580 + 7
    assert binary.endswith(b"picture")


def test_component_record(make_board: MakeBoard) -> None:
    path = make_board(
        ("name: FAN 1", "name: FAN 1\n    selectable: false\n    special_group: true")
    )
    binary = write_board(read_board(path), b"")
    record = binary[1952 + 164 :][:228]
    assert record[:40] == "FAN 1".encode("utf-16-le").ljust(40, b"\0")
    assert record[40:44] == bytes([8, 5, 1, 3])
    assert struct.unpack_from("<HHHH", record, 44) == (0x1001, 0, 11, 11)
    assert record[52:56] == bytes([4, 2, 1, 0])
    assert record[56:68] == bytes(12)
    assert struct.unpack_from("<8H", record, 68) == (10, 10, 20, 10, 20, 20, 10, 20)
    assert struct.unpack_from("<4H", record, 148) == (15, 15, 30, 30)
    assert record[156:] == bytes(72)


def test_lines_of_all_components_stand_one_behind_the_other(make_board: MakeBoard) -> None:
    path = make_board()
    text = path.read_text()
    block = text[text.index("  - name") :]
    path.write_text(text + block.replace("FAN 1", "FAN 2"))
    binary = write_board(read_board(path), b"")
    second = binary[1952 + 164 + 228 :][:228]
    assert struct.unpack_from("<I", second, 64) == (1,)


def test_picture_is_stored_blue_first() -> None:
    image = Image.new("RGBA", (2, 1))
    image.putpixel((0, 0), (10, 20, 30, 40))
    stored = Image.open(io.BytesIO(encode_for_firmware(image)))
    assert stored.mode == "RGBA"
    assert stored.getpixel((0, 0)) == (30, 20, 10, 40)


def test_every_kind_of_png_becomes_eight_bit_rgba(tmp_path: Path) -> None:
    for mode in ("1", "L", "LA", "P", "RGB", "RGBA", "I;16"):
        path = tmp_path / "picture.png"
        Image.new(mode, (5, 3)).save(path)
        stored = encode_for_firmware(load_picture(path))
        # Bit depth 8, colour type 6, not interlaced.
        assert stored[24:29] == bytes([8, 6, 0, 0, 0]), mode


def test_committed_binary_is_what_the_tool_makes() -> None:
    """The reader of the host is tested on the committed file. Encoders differ in the picture."""
    board = read_board(TEST_BOARD / "board.yaml")
    made, picture = split_picture(
        write_board(board, encode_for_firmware(load_picture(board.picture)))
    )
    committed, committed_picture = split_picture((TEST_BOARD / "board.bin").read_bytes())
    # The checksum, the total size and the picture's size depend on the picture.
    for start, end in ((0, 12), (20, 28), (32, len(made))):
        assert made[start:end] == committed[start:end]
    pixels = Image.open(io.BytesIO(picture)).tobytes()
    assert pixels == Image.open(io.BytesIO(committed_picture)).tobytes()


def test_building_twice_gives_the_same_bytes() -> None:
    board = read_board(TEST_BOARD / "board.yaml")
    first, second = (
        write_board(board, encode_for_firmware(load_picture(board.picture))) for _ in range(2)
    )
    assert first == second
