"""What the build demands of an EFI image is found missing where it is missing."""

import struct
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "script"))

from support import hardening
from support.failure import Failure

CODE = 0x60000020
DATA = 0xC0000040
WRITABLE_CODE = CODE | 0x80000000
HEADER = 0x80
OPTIONAL_SIZE = 240
CHECKSUM = HEADER + 24 + 64
FLAGS = HEADER + 24 + 70


def write_image(
    folder: Path,
    alignment: int = 0x1000,
    flags: int = 0x0100,
    text: tuple[int, int] = (0x1000, CODE),
) -> Path:
    """A small image with code and data; `text` is the code's address and characteristics."""
    content = bytearray(0x400)
    content[0:2] = b"MZ"
    struct.pack_into("<I", content, 0x3C, HEADER)
    struct.pack_into("<4sHH12xH", content, HEADER, b"PE\0\0", 0x8664, 2, OPTIONAL_SIZE)
    struct.pack_into("<H30xI", content, HEADER + 24, 0x20B, alignment)
    struct.pack_into("<I", content, CHECKSUM, 0)
    struct.pack_into("<H", content, FLAGS, flags)
    table = HEADER + 24 + OPTIONAL_SIZE
    struct.pack_into("<8sIIII12xI", content, table, b".text", 16, text[0], 16, 0, text[1])
    struct.pack_into("<8sIIII12xI", content, table + 40, b".data", 16, 0x2000, 16, 0, DATA)
    file = folder / "Sample.efi"
    file.write_bytes(content)
    return file


def complaint(file: Path) -> str:
    with pytest.raises(Failure) as caught:
        hardening.check(file)
    return str(caught.value)


def test_sound_image_passes(tmp_path: Path) -> None:
    hardening.check(write_image(tmp_path))


@pytest.mark.parametrize("alignment", [0, 0x40, 0x800, 0x1800])
def test_alignment_below_a_page(tmp_path: Path, alignment: int) -> None:
    text = complaint(write_image(tmp_path, alignment=alignment))
    assert text.startswith(f"Sample.efi says that its sections are at {alignment:#x},")
    assert "DLINK_FLAGS in Boardscope.dsc" in text


def test_section_off_its_page(tmp_path: Path) -> None:
    text = complaint(write_image(tmp_path, text=(0x1040, CODE)))
    assert text.startswith("Sample.efi has its section .text at 0x1040,")


def test_writable_code(tmp_path: Path) -> None:
    text = complaint(write_image(tmp_path, text=(0x1000, WRITABLE_CODE)))
    assert text.startswith("Sample.efi: its section .text is writable and executable.")


def test_missing_mark(tmp_path: Path) -> None:
    # Every flag but the one that counts.
    text = complaint(write_image(tmp_path, flags=0xFEFF))
    assert text.startswith("Sample.efi does not say that it is NX compatible")


def test_mark_changes_one_bit(tmp_path: Path) -> None:
    file = write_image(tmp_path, flags=0x0040)
    expected = bytearray(file.read_bytes())
    struct.pack_into("<H", expected, FLAGS, 0x0140)
    hardening.mark(file)
    assert file.read_bytes() == expected
    hardening.check(file)


@pytest.mark.parametrize("offset", [0, HEADER, HEADER + 24])
def test_no_image(tmp_path: Path, offset: int) -> None:
    file = write_image(tmp_path)
    content = bytearray(file.read_bytes())
    content[offset] ^= 1
    file.write_bytes(content)
    assert complaint(file).startswith("Sample.efi is no PE32+ image.")


@pytest.mark.parametrize("size", [0, 2, 0x100, 0x180])
def test_cut_image(tmp_path: Path, size: int) -> None:
    file = write_image(tmp_path)
    file.write_bytes(file.read_bytes()[:size])
    assert complaint(file).startswith("Sample.efi is no PE32+ image.")
