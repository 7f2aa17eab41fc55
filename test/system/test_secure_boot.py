"""Firmware that starts signed programs alone.

The shell of Debian's OVMF does not run there, signed or not: the firmware starts the probe itself.
"""

import re
from pathlib import Path

import signing
from computer import END_OF_RUN, PATIENCE, VIEW_IS_UP
from conftest import FOLDER, programs
from ending import NO_FOCUS, read_ending
from pictures import Picture, setup_picture
from support.qemu_boot import APPLICATION, HOST, PROBE
from support.qemu_disk import make_image
from support.qemu_machine import Machine, Options

SIZE = (1024, 768)
REFUSED = "Access Denied"
_TERMINAL_CODES = re.compile(r"\x1b\[[0-9;=?]*[A-Za-z]")


def disk(folder: Path) -> Path:
    signed = signing.sign_all(programs(), folder / "signed")
    files: dict[str, Path | bytes] = {
        "EFI/BOOT/BOOTX64.EFI": signed / PROBE,
        HOST: signed / HOST,
        APPLICATION: signed / APPLICATION,
        f"unsigned/{HOST}": programs() / HOST,
        f"unsigned/{APPLICATION}": programs() / APPLICATION,
    }
    image = folder / "esp.img"
    make_image(image, files)
    return image


def said(machine: Machine) -> str:
    return _TERMINAL_CODES.sub("", machine.console_text())


def test_signed_programs_run_and_unsigned_ones_do_not() -> None:
    folder = FOLDER / "secured"
    options = Options(
        esp=disk(folder),
        folder=folder,
        code=signing.CODE,
        variables=signing.VARIABLES,
        secure=True,
    )
    with Machine(options) as machine:
        setup = setup_picture(SIZE)
        machine.wait_for(
            lambda: Picture(machine.picture()) == setup, "the setup screen to be painted", PATIENCE
        )
        assert f"unsigned\\{HOST}: {REFUSED}" in said(machine)
        assert said(machine).count(f"unsigned\\{APPLICATION}: {REFUSED}") == 2
        assert f"{HOST}: Success" in said(machine)

        machine.input.tap("ret")
        machine.wait_for_log(VIEW_IS_UP, PATIENCE)
        shown = Picture(machine.still_picture())
        machine.input.tap("pgup")
        machine.wait_for(lambda: Picture(machine.picture()) != shown, "the focus to move", PATIENCE)
        machine.input.tap("esc")
        machine.wait_for_log(END_OF_RUN, PATIENCE)
        assert read_ending(machine.log_lines()).focus != NO_FOCUS
        Picture(machine.still_picture()).assert_equal(setup, folder / "setup-back")
        machine.input.tap("ret")
        machine.wait_for(
            lambda: f"{APPLICATION}: Success" in said(machine), "the application's status", PATIENCE
        )
