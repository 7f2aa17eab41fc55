"""A firmware image built by the lines of docs/firmware.md starts the view from its volume."""

import numpy as np
from PIL import Image

from computer import END_OF_RUN, KEY_GAP_MS, PATIENCE, VIEW_IS_UP
from conftest import FOLDER
from pictures import Picture
from support import platform_image
from support.qemu_disk import make_image
from support.qemu_machine import Machine, Options
from test_languages import REFERENCES, SIZE

HOST_IS_READY = "[Host] Ready"
# The image's board has a narrower picture than the one that the reference shows: edges differ a
# little. Another component, dot or text would be more.
FEW = 0.01  # of all samples
LITTLE = 64
MOVEMENT = (-60, -30)  # from the middle of the screen to the processor


def test_the_image_starts_the_view_from_its_volume() -> None:
    folder = FOLDER / "firmware-image"
    folder.mkdir(parents=True, exist_ok=True)
    disk = folder / "empty.img"
    make_image(disk, {})
    images = platform_image.folder()
    options = Options(
        esp=disk,
        folder=folder,
        resolution=SIZE,
        pointers=("mouse",),
        code=images / platform_image.CODE,
        variables=images / platform_image.VARIABLES,
    )
    with Machine(options) as machine:
        machine.wait_for_log(HOST_IS_READY, PATIENCE)
        machine.wait_for_log(VIEW_IS_UP, PATIENCE)
        shown = Picture(machine.still_picture(timeout=PATIENCE))
        Image.fromarray(shown.pixels).save(folder / "view.png")
        with Image.open(REFERENCES / "en-US-view.png") as reference:
            expected = np.asarray(reference.convert("RGB"), dtype=int)
        differ = abs(shown.pixels.astype(int) - expected) > LITTLE
        assert differ.mean() < FEW
        machine.input.move(*MOVEMENT)
        machine.wait_for(
            lambda: Picture(machine.picture()) != shown, "the pointer to be seen", PATIENCE
        )
        machine.input.tap("esc", KEY_GAP_MS)
        machine.wait_for_log(END_OF_RUN, PATIENCE)
