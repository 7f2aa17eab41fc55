#!/usr/bin/env python3
"""Writes what the setup's driver is made of beside its sources: its pages in VFR, their texts in
six languages, and the driver's tables, from the board's description and texts.yaml.

Files are rewritten only when their content changes, so that builds stay incremental.
"""

import argparse
import re
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "tool")]

from boardtool.building import DESCRIPTION
from boardtool.problems import BoardError
from boardtool.reading import read_board
from formset import files, glyphs, vfr
from formset.building import build
from formset.model import Formset, FormsetError
from formset.texts import Texts

HEADER = HERE.parent / "include" / "Protocol" / "ObvSetup.h"
FORMS = "ObvSetupForms.vfr"
STRINGS = "ObvSetupStrings.uni"
TABLE = "SetupTable.h"


def read_guids(header: Path = HEADER) -> dict[str, str]:
    """The GUIDs of the formset and the variable, from the one place that states them."""
    found = {}
    pattern = r"#define OBV_SETUP_(\w+)_GUID((?:.*\\\n)*.*)\n"
    for name, lines in re.findall(pattern, header.read_text()):
        found[name] = " ".join(lines.replace("\\", " ").split())
    return found


def read_formset(board_dir: Path) -> tuple[Formset, Texts]:
    """The formset of the board in this folder, and the texts that it was made with."""
    texts = Texts(HERE / "texts.yaml")
    return build(read_board(board_dir / DESCRIPTION).components, texts), texts


def write_if_changed(path: Path, content: str) -> None:
    if not path.exists() or path.read_text(encoding="utf-8") != content:
        path.write_text(content, encoding="utf-8")


def generate(board_dir: Path, font: Path, out: Path) -> None:
    formset, _ = read_formset(board_dir)
    out.mkdir(parents=True, exist_ok=True)
    write_if_changed(out / FORMS, vfr.write(formset, read_guids()))
    write_if_changed(out / STRINGS, files.strings(formset))
    write_if_changed(out / TABLE, files.table(formset, glyphs.package(formset, font)))


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--board-dir", type=Path, required=True, help="folder with a board.yaml")
    parser.add_argument(
        "--font", type=Path, required=True, help="font file with the East Asian characters"
    )
    parser.add_argument("--out", type=Path, required=True, help="folder to write to")
    arguments = parser.parse_args()
    try:
        generate(arguments.board_dir, arguments.font, arguments.out)
    except (BoardError, FormsetError) as error:
        print(error, file=sys.stderr)
        return 1
    except OSError as error:
        print(f"{error.filename}: {error.strerror}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
