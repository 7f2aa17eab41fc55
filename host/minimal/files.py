#!/usr/bin/env python3
"""Writes what the minimal host embeds: a picture of a board, and an assembler file with picture and
font. A host of your own has a photograph in place of the drawing, and, where it lies elsewhere, the
folder of Boardscope in place of ROOT.
"""

import argparse
import sys
from pathlib import Path

from PIL import Image, ImageDraw

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tool"), str(ROOT / "host")]

from boardtool.picture import encode_for_firmware
from embed import NASM_FILE, NASM_HEAD, assembler, write_if_changed

SIZE = (960, 540)
BOARD = (26, 70, 52)
PART = (24, 26, 30)
# Left, top, right, bottom, as Components.c names them.
PARTS = ((320, 160, 480, 320), (540, 150, 570, 390), (760, 430, 820, 470))


def draw_board() -> Image.Image:
    picture = Image.new("RGBA", SIZE)
    draw = ImageDraw.Draw(picture)
    draw.rectangle((200, 40, 900, 500), fill=BOARD)
    for part in PARTS:
        draw.rectangle(part, fill=PART, outline=(170, 174, 180))
    return picture


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--font", type=Path, required=True, help="TrueType or OpenType file")
    parser.add_argument("--out", type=Path, required=True, help="folder to write to")
    arguments = parser.parse_args()
    arguments.out.mkdir(parents=True, exist_ok=True)
    picture = arguments.out.resolve() / "picture.png"
    write_if_changed(picture, encode_for_firmware(draw_board()))
    files = {"MinimalHostPicture": picture, "MinimalHostFont": arguments.font.resolve()}
    write_if_changed(arguments.out / "MinimalFiles.nasm", assembler(NASM_HEAD, NASM_FILE, files))
    return 0


if __name__ == "__main__":
    sys.exit(main())
