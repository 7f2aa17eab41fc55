"""The computers of the system tests: each is powered on once and used by many tests."""

import os
import sys
from collections.abc import Iterator
from contextlib import ExitStack
from pathlib import Path

import pytest

CLONE = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CLONE / "script"), str(CLONE / "test" / "system")]

# The one that the native tests are built with.
os.environ.setdefault("BOARDSCOPE_VIEW_PROGRAM", str(CLONE / "build" / "native" / "board-view"))

from computer import Computer, boot
from without_host import Refusal, start_without_host

FOLDER = CLONE / "build" / "system"


class Room:
    """Keeps one computer running; a failed test's computer is replaced by a fresh one."""

    def __init__(self, name: str, outputs: int) -> None:
        self._name = name
        self._outputs = outputs
        self._boots = 0
        self._stack = ExitStack()
        self._computer: Computer | None = None
        self.refusal: Refusal | None = None

    def computer(self) -> Computer:
        if self._computer is None:
            self._power_on()
        assert self._computer is not None
        return self._computer

    def _power_on(self) -> None:
        self._boots += 1
        # Two halves of the tests may run side by side.
        half = os.environ.get("BOARDSCOPE_HALF", "")
        folder = FOLDER / f"{self._name}{half}-{self._boots}"
        with ExitStack() as stack:
            computer = stack.enter_context(boot(folder, programs(), self._outputs))
            # Free of charge here: the host is not loaded yet.
            self.refusal = start_without_host(computer)
            computer.load_host()
            self._stack = stack.pop_all()
        self._computer = computer

    def power_off(self) -> None:
        self._computer = None
        self._stack.close()


def programs() -> Path:
    """The EFI files under test: the build to ship, or what BOARDSCOPE_EFI names."""
    return Path(os.environ.get("BOARDSCOPE_EFI", CLONE / "build" / "RELEASE"))


def _room(name: str, outputs: int) -> Iterator[Room]:
    room = Room(name, outputs)
    try:
        yield room
    finally:
        room.power_off()


@pytest.fixture(scope="session")
def single_room() -> Iterator[Room]:
    yield from _room("single", 1)


@pytest.fixture(scope="session")
def double_room() -> Iterator[Room]:
    yield from _room("double", 2)


def _in_room(room: Room, request: pytest.FixtureRequest) -> Iterator[Computer]:
    failed = request.session.testsfailed
    yield room.computer()
    if request.session.testsfailed > failed:
        room.power_off()


@pytest.fixture
def computer(single_room: Room, request: pytest.FixtureRequest) -> Iterator[Computer]:
    """A computer with one screen, a mouse and a tablet."""
    yield from _in_room(single_room, request)


@pytest.fixture
def double_computer(double_room: Room, request: pytest.FixtureRequest) -> Iterator[Computer]:
    """A computer with two graphics adapters."""
    yield from _in_room(double_room, request)


@pytest.fixture
def passing_double_computer(double_room: Room) -> Iterator[Computer]:
    """The same, for a test that leaves it unlike it was: it is powered off afterwards."""
    try:
        yield double_room.computer()
    finally:
        double_room.power_off()
