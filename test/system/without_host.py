"""Starting the application on a computer that has no host."""

import time
from dataclasses import dataclass

from computer import Computer
from pictures import Picture

# The application draws nothing and logs nothing here, so that its end can't be waited for.
_LONG_ENOUGH = 2.0  # seconds to load and start an image


@dataclass(frozen=True)
class Refusal:
    status: int
    log: list[str]
    before: Picture
    after: Picture


def start_without_host(computer: Computer) -> Refusal:
    with computer.visit() as visit:
        before = visit.picture()
        visit.start()
        time.sleep(_LONG_ENOUGH)
        after = visit.picture()
    assert visit.status is not None
    return Refusal(visit.status, visit.lines, before, after)
