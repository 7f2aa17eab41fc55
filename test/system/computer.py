"""The computer of the system tests, and one visit of its user to the board view."""

from collections.abc import Iterator, Mapping
from contextlib import contextmanager
from dataclasses import dataclass, field
from datetime import datetime
from functools import cached_property
from pathlib import Path
from typing import Any

from components import Component, read_components
from ending import Ending, read_ending
from pictures import Picture, setup_picture
from support.qemu_boot import (
    APPLICATION,
    HOST,
    driver_commands,
    end_status,
    make_boot_disk,
    set_language,
)
from support.qemu_machine import Machine, Options
from support.qemu_shell import Shell

END_OF_RUN = "User used APP for"
VIEW_IS_UP = "Preparation cost"
LATE_OUTPUT = "LateOutputDxe.efi"
# Screenshots are named by the clock.
POWER_ON = datetime(2031, 5, 17, 8, 30, 0)
# Long enough for a loaded machine without virtualisation.
PATIENCE = 120.0
# A key held shorter may fall between two polls of the keyboard.
KEY_GAP_MS = 100

_VISIT = [
    "@echo -off",
    "if %3 == fresh then",
    "  SystemProbe.efi forget",
    "endif",
    "SystemProbe.efi show %1 %2",
    "SystemProbe.efi wait",
    "if %4 == measured then",
    f"  SystemProbe.efi stack {APPLICATION}",
    "else",
    f"  {APPLICATION}",
    "endif",
    "set -v ended %lasterror%",
    "SystemProbe.efi wait",
    "echo boardscope ended with %ended%",
]


class Computer:
    """A machine at its shell's prompt, with drivers loaded and the host not yet."""

    def __init__(self, machine: Machine, shell: Shell) -> None:
        self.machine = machine
        self._shell = shell
        self._components: dict[tuple[int, int], list[Component]] = {}

    @property
    def outputs(self) -> range:
        return range(self.machine.options.outputs)

    def load(self, program: str) -> str:
        """Load a driver; returns what the shell said."""
        return self._shell.run(f"load {program}", PATIENCE)

    def load_host(self) -> None:
        said = self.load(HOST)
        assert "Success" in said, said
        self.machine.wait_for_log("[Host] Ready", PATIENCE)

    @cached_property
    def late_screen(self) -> int:
        """The address of the screen of the output that arrives later; loads its driver."""
        first = len(self.machine.log_lines())
        said = self._shell.run(f"load {LATE_OUTPUT}")
        assert "Success" in said, said
        return int(self.machine.wait_for_log("[Late] screen at", PATIENCE, first).split()[-1], 16)

    def speak(self, language: str) -> None:
        """Change the platform's language, as a setup utility does."""
        self._shell.run(set_language(language))

    def probe(self, *words: str | int) -> str:
        """Have the probe do something; returns what it printed."""
        return self.run("SystemProbe.efi", *words)

    def status_of(self, program: str) -> int:
        """Run a program that may be refused; returns the shell's status."""
        return self.run_and_tell(program)[1]

    def type(self, command: str) -> None:
        """Type a command whose end is not waited for."""
        self._shell.type(command)

    def run(self, program: str, *words: str | int) -> str:
        """Run a program that must succeed; returns what it printed."""
        said, status = self.run_and_tell(program, *words)
        assert status == 0, f"{program} refused {words}: {status:#x}"
        return said

    def run_and_tell(self, program: str, *words: str | int) -> tuple[str, int]:
        """Run a program; returns what it printed, and the shell's status."""
        said = self._shell.run(" ".join([program, *map(str, words)]), PATIENCE)
        return said, self._last_error()

    def _last_error(self) -> int:
        return int(self._shell.run("echo %lasterror%").split("\n")[1], 16)

    def components(self, size: tuple[int, int] = (1920, 1080)) -> list[Component]:
        """The host's components in a view of this size."""
        if size not in self._components:
            first = len(self.machine.log_lines())
            self.probe("components", *size)
            self._components[size] = read_components(self.machine.log_lines()[first:])
        return self._components[size]

    @contextmanager
    def visit(
        self, size: tuple[int, int] = (1920, 1080), fresh: bool = True, measured: bool = False
    ) -> Iterator["Visit"]:
        """Show a setup screen of this size, from which the application can be started.

        A fresh visit is the first of its power-on as far as host and application know. The end of
        a measured one logs how much of the stack it has used.
        """
        words = [
            *map(str, size),
            "fresh" if fresh else "again",
            "measured" if measured else "as-is",
        ]
        self._shell.type(" ".join(["visit.nsh", *words]))
        visit = Visit(self, size)
        visit.wait_for_setup()
        yield visit
        visit.status = self._finish()

    def _finish(self) -> int:
        self.machine.input.press("ret")
        status = end_status(self._shell.wait_for_prompt(PATIENCE))
        assert status is not None
        return status


@dataclass
class Visit:
    """The application, started from a setup screen and left to it."""

    computer: Computer
    size: tuple[int, int]
    status: int | None = None  # known after the visit
    _first_line: int = field(init=False)

    def __post_init__(self) -> None:
        self._first_line = len(self.machine.log_lines())

    @property
    def machine(self) -> Machine:
        return self.computer.machine

    def wait_for_setup(self) -> None:
        expected = setup_picture(self.size)
        self.machine.wait_for(
            lambda: all(self._shown(output) == expected for output in self.computer.outputs),
            "the setup screen to be painted",
            PATIENCE,
        )

    def _shown(self, output: int) -> Picture:
        return Picture(self.machine.picture(output))

    def start(self) -> None:
        """Start the application without waiting for its view."""
        self.machine.input.press("ret")

    def open(self) -> Picture:
        """Start the application, wait for its view, and return what it shows."""
        self.start()
        return self.wait_for_view()

    def wait_for_log(self, text: str) -> str:
        """Wait for a log line of this visit that contains `text`; return it."""
        return self.machine.wait_for_log(text, PATIENCE, self._first_line)

    def wait_for_view(self) -> Picture:
        self.wait_for_log(VIEW_IS_UP)
        return self.picture()

    def picture(self, output: int = 0) -> Picture:
        """What an output shows once it has come to rest."""
        return Picture(self.machine.still_picture(output, PATIENCE))

    def press(self, *keys: str) -> None:
        """Press keys one after the other, and wait for the view to come to rest."""
        for key in keys:
            self.machine.input.tap(key, KEY_GAP_MS)
        self.picture()

    def leave(self) -> Ending:
        """Leave the view with Esc, and return what the application handed over."""
        self.machine.input.tap("esc", KEY_GAP_MS)
        return self.wait_for_end()

    def wait_for_end(self) -> Ending:
        self.wait_for_log(END_OF_RUN)
        return read_ending(self.lines)

    @property
    def ended(self) -> bool:
        return any(END_OF_RUN in line for line in self.lines)

    @property
    def lines(self) -> list[str]:
        """The log lines of this visit so far."""
        return self.machine.log_lines()[self._first_line :]

    def assert_setup_is_back(self, *outputs: int) -> None:
        """Compare every pixel of the outputs with the setup screen that was there before."""
        expected = setup_picture(self.size)
        for output in outputs or self.computer.outputs:
            name = f"setup-back-{self.size[0]}x{self.size[1]}-output{output}"
            self.picture(output).assert_equal(expected, self.machine.options.folder / name)


@contextmanager
def boot(
    folder: Path,
    programs: Path,
    outputs: int = 1,
    firmware: Mapping[str, Any] | None = None,
    more: Mapping[str, Path | bytes] | None = None,
    hardware: list[str] | None = None,
) -> Iterator[Computer]:
    """Power a computer on, and wait for its shell's prompt.

    `firmware` are the machine's options of another firmware than the common one, `more` are files
    that its disk has besides, `hardware` are QEMU's options for more of it.
    """
    folder.mkdir(parents=True, exist_ok=True)
    disk = folder / "esp.img"
    script = "\r\n".join([*_VISIT, ""]).encode("ascii")
    make_boot_disk(disk, programs, driver_commands(), {"visit.nsh": script, **(more or {})})
    options = Options(
        esp=disk,
        folder=folder,
        outputs=outputs,
        pointers=("mouse", "tablet"),
        typing=True,
        extra=["-rtc", f"base={POWER_ON.isoformat()}", *(hardware or [])],
        **(firmware or {}),
    )
    with Machine(options) as machine, Shell(machine) as shell:
        machine.wait_for_shell()
        shell.wait_for_prompt(PATIENCE)
        yield Computer(machine, shell)
