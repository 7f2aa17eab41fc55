"""The same sources through another compiler: the view is the same to the pixel."""

import shutil
from pathlib import Path

from computer import boot
from conftest import FOLDER, programs
from support import firmware
from test_languages import SIZE, check


def test_the_view_is_the_one_that_gcc_makes(tmp_path: Path) -> None:
    for folder in (programs(), firmware.images_folder("RELEASE", firmware.CLANG)):
        for program in folder.glob("*.efi"):
            shutil.copy(program, tmp_path)
    with boot(FOLDER / "clang", tmp_path) as computer:
        computer.load_host()
        with computer.visit(SIZE) as visit:
            check(visit.open(), "en-US-view", computer)
            visit.press("tab", "insert", "insert")
            visit.leave()
            visit.assert_setup_is_back()
        assert visit.status == 0
