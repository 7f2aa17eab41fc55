"""Renders the default board and writes its picture and its description.

Needs POV-Ray (Debian: povray), Pillow, numpy and the DejaVu fonts (Debian: fonts-dejavu-core).
"""

import argparse
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from PIL import Image

import picture
from camera import PICTURE_HEIGHT, PICTURE_WIDTH
from copper import draw_artwork
from describe import write_description
from layout import build_board
from scene import FONT_BOLD, Scene

HERE = Path(__file__).resolve().parent


def render(scene: Scene, work: Path, width: int, quality: str) -> Image.Image:
    """Ray-traces the board with a transparent background."""
    draw_artwork(scene).save(work / "artwork.png")
    (work / "board.pov").write_text(picture.scene_text(scene, work, quality), encoding="utf-8")
    height = width * PICTURE_HEIGHT // PICTURE_WIDTH
    options = [f"+W{width}", f"+H{height}", "+UA", "+FN8", "-D", "+Oboard-raw.png", "+Iboard.pov"]
    options += picture.QUALITY_OPTIONS[quality]
    # POV-Ray only reads and writes below folders that it was told of; it runs in the work folder.
    result = subprocess.run(["nice", "povray", *options], cwd=work, capture_output=True, text=True)
    if result.returncode != 0:
        raise SystemExit(f"POV-Ray failed:\n{result.stderr[-3000:]}")
    with Image.open(work / "board-raw.png") as raw:
        return raw.convert("RGBA")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--quality", choices=sorted(picture.QUALITY_OPTIONS), default="final")
    parser.add_argument("--width", type=int, default=PICTURE_WIDTH, help="pixels; for drafts")
    parser.add_argument("--description-only", action="store_true", help="leave the picture alone")
    parser.add_argument("--out", type=Path, default=HERE, help="folder for the results")
    parser.add_argument("--work", type=Path, help="keep the scene and the artwork in this folder")
    arguments = parser.parse_args()
    if not shutil.which("povray") or not FONT_BOLD.exists():
        print("Install POV-Ray and the fonts first: povray, fonts-dejavu-core.", file=sys.stderr)
        return 1
    scene = build_board()
    write_description(scene, arguments.out / "board.yaml")
    if arguments.description_only:
        return 0
    with tempfile.TemporaryDirectory() as scratch:
        work = arguments.work or Path(scratch)
        work.mkdir(parents=True, exist_ok=True)
        traced = render(scene, work, arguments.width, arguments.quality)
    picture.finish(traced).save(arguments.out / "board.png", optimize=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
