"""The host that makers begin with: it shows a view, and stands alone."""

from collections.abc import Iterator

import numpy as np
import pytest

from computer import END_OF_RUN, Computer, boot
from conftest import FOLDER, programs
from pictures import Picture
from support.qemu_boot import HOST
from test_pointer import tablet_to

MINIMAL_HOST = "MinimalHost.efi"
ALREADY_STARTED = "Already started"
SIZE = (1920, 1080)
# The middle of its processor, a place inside its outline, and one beside it.
PROCESSOR = (602, 496)
INSIDE = (700, 590)
BESIDE = (760, 650)


@pytest.fixture(scope="module")
def maker() -> Iterator[Computer]:
    """A computer whose firmware has the minimal host in place of the reference host."""
    with boot(FOLDER / "minimal", programs()) as computer:
        said = computer.load(MINIMAL_HOST)
        assert "Success" in said, said
        yield computer


def at(picture: Picture, place: tuple[int, int]) -> np.ndarray:
    x, y = place
    return picture.pixels[y, x]


def test_the_minimal_host_shows_a_view_and_gets_its_screen_back(maker: Computer) -> None:
    with maker.visit(SIZE) as visit:
        usual = visit.open()
        tablet_to(visit, PROCESSOR)
        lit = visit.picture()
        assert (at(lit, INSIDE) != at(usual, INSIDE)).any()
        assert (at(lit, BESIDE) == at(usual, BESIDE)).all()
        visit.press("esc")
        visit.wait_for_log(END_OF_RUN)
        visit.assert_setup_is_back()
    assert visit.status == 0
    complaints = [line for line in visit.lines if "rror" in line or "annot" in line]
    assert complaints == []


def test_the_host_check_has_nothing_to_say(maker: Computer) -> None:
    said = maker.run("BoardscopeHostCheck.efi")
    assert "0 mistakes, 0 warnings" in said, said


def test_two_hosts_are_refused(maker: Computer) -> None:
    for second in (HOST, MINIMAL_HOST):
        said = maker.load(second)
        assert ALREADY_STARTED.lower() in said.lower(), said
