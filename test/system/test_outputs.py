"""Two graphics adapters: which shows the view, and which gets the setup screen back."""

import numpy as np

from computer import Computer
from pictures import Picture


def is_black(picture: Picture) -> bool:
    return not np.any(picture.pixels)


def test_the_view_is_on_one_output_and_the_other_is_black(double_computer: Computer) -> None:
    double_computer.probe("restore-all", 0)
    with double_computer.visit() as visit:
        visit.open()
        other = Picture(visit.machine.picture(1))
        visit.leave()
        # The host did not ask for more than the output in use.
        visit.assert_setup_is_back(0)
        after = Picture(visit.machine.picture(1))
    assert is_black(other)
    assert is_black(after)
    assert after.size == visit.size


def test_both_outputs_get_the_setup_screen_back_when_the_host_wants_it(
    double_computer: Computer,
) -> None:
    double_computer.probe("restore-all", 1)
    # A mode that the view leaves, so that both outputs have to come back to it.
    with double_computer.visit((1280, 1024)) as visit:
        visit.open()
        visit.leave()
        visit.assert_setup_is_back(0, 1)
