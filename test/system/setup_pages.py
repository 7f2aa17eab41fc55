"""The firmware's setup, as its user walks through it by keys."""

import re
import time
from collections.abc import Iterator, Mapping
from contextlib import contextmanager
from pathlib import Path

from support.qemu_boot import (
    PROBE,
    SETUP,
    driver_commands,
    host_commands,
    make_boot_disk,
    setup_commands,
)
from support.qemu_machine import Machine, MachineError, Options
from terminal import Terminal

PATIENCE = 120.0
KEY_GAP_MS = 100
VIEW_IS_UP = "Preparation cost"
END_OF_RUN = "User used APP for"
MOST_STEPS = 60
# At the end, what may not be a whole code yet.
_OPEN_CODE = re.compile(r"\x1b(\[[0-9;?]*)?$")
# An entry's row: an arrow before a page's, the name, and behind a bracket or a wide gap its value
# and its help.
_NAME = re.compile(r"(?:> +)?(.*?) *(?:[<\[]| {3}|$)")
PATIENCE_FOR_A_STEP = 2.0
REST = 0.35  # seconds without a new character; the page stands then


class Setup:
    """A machine that was left for its firmware's setup, with host and setup loaded."""

    def __init__(self, machine: Machine) -> None:
        self.machine = machine
        self._terminal = Terminal()
        self._seen = 0  # characters of the console that the terminal has got

    def shown(self) -> Terminal:
        """What the console shows now."""
        text = self.machine.console_text()
        open_code = _OPEN_CODE.search(text, self._seen)
        end = open_code.start() if open_code else len(text)
        self._terminal.feed(text[self._seen : end])
        self._seen = end
        return self._terminal

    def screen(self) -> Terminal:
        """What the console shows once it has come to rest."""
        shown = -1
        deadline = time.monotonic() + PATIENCE
        rest = time.monotonic() + REST
        while time.monotonic() < rest:
            text = self.machine.console_text()
            if len(text) != shown:
                shown = len(text)
                rest = time.monotonic() + REST
            if time.monotonic() > deadline:
                raise MachineError("The setup's screen does not come to rest.")
            time.sleep(0.05)
        return self.shown()

    def wait_for(self, text: str) -> Terminal:
        self.machine.wait_for(lambda: text in self.screen().text(), f'"{text}"', PATIENCE)
        return self.screen()

    def press(self, *keys: str) -> Terminal:
        for key in keys:
            self.machine.input.tap(key, KEY_GAP_MS)
        return self.screen()

    def is_at(self, text: str) -> bool:
        """Whether the bar of the form browser is on the entry of this name, whatever its value."""
        return self._names(self.screen().standing_out(), text)

    @staticmethod
    def _names(rows: list[str], text: str) -> bool:
        return any((name := _NAME.match(row)) and name[1] == text for row in rows)

    def go_to(self, text: str) -> None:
        """Move the bar to an entry."""
        at = self.screen().standing_out()
        for _ in range(MOST_STEPS):
            if self._names(at, text):
                return
            at = self._step_from(at)
        raise MachineError(f'There is no entry "{text}": {self.screen().standing_out()}')

    def _step_from(self, rows: list[str]) -> list[str]:
        """One entry down; returns where the bar is then, or still is."""
        self.machine.input.tap("down", KEY_GAP_MS)
        deadline = time.monotonic() + PATIENCE_FOR_A_STEP
        while time.monotonic() < deadline:
            now = self.shown().standing_out()
            if len(now) == 1 and now != rows:
                return now
            time.sleep(0.03)
        return self.screen().standing_out()

    def choose(self, text: str) -> Terminal:
        self.go_to(text)
        return self.press("ret")

    def open_pages(self) -> None:
        """From the firmware's first page to the setup's."""
        self.choose("Device Manager")
        self.choose("Boardscope setup")
        self.wait_for("Board view")

    def open_view(self, entry: str = "Board view") -> int:
        """Start the view from an entry; returns the number of the visit's first log line."""
        self.go_to(entry)
        first = len(self.machine.log_lines())
        self.machine.input.tap("ret", KEY_GAP_MS)
        self.machine.wait_for_log(VIEW_IS_UP, PATIENCE, first)
        self.machine.still_picture(timeout=PATIENCE)
        return first

    def leave_view(self, first: int, *keys: str) -> list[str]:
        """Press the keys that end the view; returns the visit's log lines."""
        for key in keys:
            self.machine.input.tap(key, KEY_GAP_MS)
        self.machine.wait_for_log("[Host] Application ended", PATIENCE, first)
        self.screen()
        return self.machine.log_lines()[first:]


@contextmanager
def setup(
    folder: Path,
    programs: Path,
    resolution: tuple[int, int] = (1024, 768),
    more: Mapping[str, Path | bytes] | None = None,
) -> Iterator[Setup]:
    """Power a computer on that goes to its firmware's setup; `more` are files on its disk."""
    with _started(folder, programs, resolution, setup_commands("en-US"), more) as at:
        at.wait_for("Device Manager")
        yield at


@contextmanager
def pages_at(folder: Path, programs: Path, resolution: tuple[int, int]) -> Iterator[Setup]:
    """Power a computer on that opens the setup's pages on a screen of this size, and opens them
    again when they are left."""
    commands = [*host_commands("en-US"), f"load {SETUP}"]
    commands += [":again", "cls", f"{PROBE} pages", "goto again"]
    with _started(folder, programs, resolution, commands) as at:
        at.wait_for("Board view")
        yield at


@contextmanager
def _started(
    folder: Path,
    programs: Path,
    resolution: tuple[int, int],
    commands: list[str],
    more: Mapping[str, Path | bytes] | None = None,
) -> Iterator[Setup]:
    folder.mkdir(parents=True, exist_ok=True)
    disk = folder / "esp.img"
    make_boot_disk(disk, programs, [*driver_commands(), *commands], more)
    options = Options(esp=disk, folder=folder, resolution=resolution, pointers=("tablet",))
    with Machine(options) as machine:
        machine.wait_for_shell()
        yield Setup(machine)
