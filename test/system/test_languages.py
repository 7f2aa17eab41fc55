"""Each language on the screen, compared with pictures that people have looked at.

With BOARDSCOPE_UPDATE_REFERENCES=1 in the environment the pictures are written instead of
compared; look at them afterwards.
"""

import io
import os
import time
from pathlib import Path

import numpy as np
import pytest
from PIL import Image

from computer import Computer
from pictures import Picture
from sticks import SEEN_BY_THE_FIRMWARE, Stick, Volume, plugged_in
from test_screenshot import open_box

SIZE = (1024, 768)
REFERENCES = Path(__file__).parent / "reference"
LANGUAGES = ["en-US", "de-DE", "fr-FR", "es-ES", "zh-Hans", "ja-JP"]
UPDATE_REFERENCES = os.environ.get("BOARDSCOPE_UPDATE_REFERENCES") == "1"
# A box reaches over the whole width in the middle half of the height.
BOX = np.s_[SIZE[1] // 4 : SIZE[1] * 3 // 4]


@pytest.mark.parametrize("language", LANGUAGES)
def test_language(computer: Computer, language: str, tmp_path: Path) -> None:
    computer.speak(language)
    # One that can't be written: its failure is told without a wait for the encoder.
    stick = Stick(tmp_path / "stick.img", [Volume("HOLIDAY", 16)]).make()
    with plugged_in(computer.machine, stick, read_only=True), computer.visit(SIZE) as visit:
        started = time.monotonic()
        shown = visit.open()
        check(shown, f"{language}-view", computer)
        hint = shown  # of the close button, which has the focus at the start
        time.sleep(max(0.0, started + SEEN_BY_THE_FIRMWARE - time.monotonic()))
        choice = open_box(visit, hint)
        visit.press("ret")
        failure = visit.picture()
        visit.press("ret")
        visit.picture().assert_equal(hint, computer.machine.options.folder / "after-boxes")
        visit.leave()
    computer.speak("en-US")
    check(texts(hint, choice, failure), f"{language}-hint-and-boxes", computer)


def texts(hint: Picture, *boxes: Picture) -> Picture:
    """What is in the language alone: the hint's part of the screen, then the boxes."""
    rows = [hint.pixels[SIZE[1] // 8 : SIZE[1] // 4].copy()]
    rows[0][:, : SIZE[0] * 3 // 4] = 0  # the board
    rows += [box.pixels[BOX] for box in boxes]
    pixels = np.concatenate(rows)
    header = f"P6\n{SIZE[0]} {pixels.shape[0]}\n255\n".encode("ascii")
    return Picture(header + np.ascontiguousarray(pixels).tobytes())


def check(picture: Picture, name: str, computer: Computer) -> None:
    reference = REFERENCES / f"{name}.png"
    if UPDATE_REFERENCES:
        reference.parent.mkdir(exist_ok=True)
        Image.fromarray(picture.pixels).save(reference, optimize=True)
    with Image.open(reference) as image:
        expected = Picture(ppm(image.convert("RGB")))
    picture.assert_equal(expected, computer.machine.options.folder / name)


def ppm(image: Image.Image) -> bytes:
    stream = io.BytesIO()
    image.save(stream, "PPM")
    return stream.getvalue()
