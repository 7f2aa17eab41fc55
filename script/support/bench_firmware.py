"""Counts the instructions that the release image takes in QEMU, whose clock counts them there.

Two runs of one commit give the same figures on any machine. They are not time: an instruction that
waits for memory counts like any other, and a string instruction once for each of its steps.
"""

from __future__ import annotations

from dataclasses import dataclass
from pathlib import Path

from support import against, paths
from support.failure import Failure
from support.qemu_boot import APPLICATION, HOST, PROBE, make_boot_disk
from support.qemu_disk import make_image
from support.qemu_machine import Machine, Options
from support.running import say
from support.storing import exclusive

BENCH = "FirmwareBench.efi"
SIZES = ((1024, 768), (1920, 1080), (3840, 2160))
# Far more than a quiet machine needs.
PATIENCE = 600.0

# Eight nanoseconds an instruction, which the processor's time-stamp counter counts. The fewer, the
# longer the firmware's waits for devices that are not there.
_SHIFT = 3
_TICKS_PER_INSTRUCTION = 1 << _SHIFT
_FOLDER = paths.BUILD / "firmware-bench"
_PREFIX = "[Bench] "
_ENDED = f"{_PREFIX}ended"
_FAILED = f"{_PREFIX}failed: "
_ALL_DONE = "the bench is done"

Size = tuple[int, int]
Figures = dict[str, int]


@dataclass(frozen=True)
class Row:
    """One line of the report: its text, and the figures that it adds up."""

    text: str
    names: tuple[str, ...]
    pixels: bool = False

    def value(self, figures: Figures) -> float:
        total = sum(figures[name] for name in self.names)
        return total if self.pixels else total / _TICKS_PER_INSTRUCTION

    def shown(self, figures: Figures) -> str:
        value = self.value(figures)
        if self.pixels:
            return f"{value / 1e6:.3f} Mpx"
        return f"{value / 1e6:.3f} M" if value >= 1e6 else f"{value:.0f}"


_START = (
    Row("intake", ("intake",)),
    Row("decode", ("decode",)),
    Row("resample", ("resample",)),
    Row("fonts", ("fonts",)),
    Row("hotspots and widgets", ("widgets",)),
    Row("start of LVGL and all the rest", ("rest",)),
    Row("first frame", ("frame",)),
    Row("all of it", ("intake", "decode", "resample", "fonts", "widgets", "rest", "frame")),
    Row("all but decode and fonts", ("intake", "resample", "widgets", "rest", "frame")),
)
_USE = (
    Row("idle turn, a millisecond after the last", ("idle",)),
    Row("idle turn, at once after the last", ("idleAtOnce",)),
    Row("pointer moves onto another component", ("crossing",)),
    Row("what that transfers to the screen", ("crossingPixels",), pixels=True),
    Row("filter click, one category", ("filterOne",)),
    Row("what that transfers to the screen", ("filterOnePixels",), pixels=True),
    Row("filter click, all components", ("filterAll",)),
    Row("F12 to the choice of volumes", ("volumeBox",)),
    Row("volume chosen to the outcome, file written", ("outcome",)),
    Row("F12 to the outcome", ("volumeBox", "outcome")),
)


def measure(programs: Path, revision: str | None) -> None:
    """Measures the images in `programs`, beside those of a revision if there is one."""
    with exclusive(_FOLDER, "counts instructions"):
        images = {"this tree": programs}
        if revision is not None:
            images[revision] = against.build(revision)
        runs = {name: _run(name, programs, folder) for name, folder in images.items()}
    for size in SIZES:
        label = f"{size[0]}x{size[1]}, instructions, without the transfer"
        figures = {name: run[size] for name, run in runs.items()}
        _print_group(f"Start-up in firmware at {label}", _START, figures)
        _print_group(f"Main loop in firmware at {label}", _USE, figures)


def _print_group(title: str, rows: tuple[Row, ...], figures: dict[str, Figures]) -> None:
    ours, *others = figures.items()
    print(f"\n{title}")
    for row in rows:
        line = f"  {row.text:<44} {row.shown(ours[1]):>12}"
        for name, theirs in others:
            line += f"   {name:<34} {row.shown(theirs):>12}   {_ratio(row, ours[1], theirs):>8}"
        print(line, flush=True)


def _ratio(row: Row, ours: Figures, theirs: Figures) -> str:
    # There are none for what one of the two does elsewhere.
    return f"{row.value(ours) / row.value(theirs):.3f}" if row.value(theirs) > 0 else "-"


def _run(name: str, tools: Path, programs: Path) -> dict[Size, Figures]:
    """Boots once, and measures application and host of `programs` on a screen of each size."""
    disk, stick = _FOLDER / "esp.img", _FOLDER / "stick.img"
    images: dict[str, Path | bytes] = {image: programs / image for image in (APPLICATION, HOST)}
    make_boot_disk(disk, tools, _commands(), images)
    make_image(stick, {})
    say(f"Counting the instructions of {name} in QEMU")
    with Machine(_options(disk, stick)) as machine:
        machine.wait_for_shell(PATIENCE)
        return {size: _figures(machine, number) for number, size in enumerate(SIZES)}


def _options(disk: Path, stick: Path) -> Options:
    path = str(stick).replace(",", ",,")
    return Options(
        esp=disk,
        folder=_FOLDER,
        # The bench itself moves what the application takes for the pointer.
        pointers=(),
        extra=[
            *("-icount", f"shift={_SHIFT}"),
            *("-drive", f"if=none,id=stick,format=raw,file={path}"),
            *("-device", "usb-storage,bus=usb.0,drive=stick"),
        ],
    )


def _commands() -> list[str]:
    commands = ["@echo -off", "fs0:", "connect -r", f"load {HOST}"]
    for width, height in SIZES:
        commands += [f"{PROBE} forget", f"{PROBE} show {width} {height}", BENCH]
    return [*commands, f"echo {_ALL_DONE}"]


def _figures(machine: Machine, number: int) -> Figures:
    """Waits for the end of a run, by its number, and reads what it logged."""
    width, height = SIZES[number]
    ends: list[int] = []

    def over() -> bool:
        lines = machine.log_lines()
        ends[:] = [i for i, line in enumerate(lines) if line.startswith((_ENDED, _FAILED))]
        return len(ends) > number or _ALL_DONE in machine.console_text()

    machine.wait_for(over, f"the run at {width}x{height}; its log is {machine.log_path}", PATIENCE)
    lines = machine.log_lines()
    if len(ends) <= number:
        raise Failure(f"{BENCH} did not run. The console is {machine.console_path}.")
    last = lines[ends[number]]
    if last != _ENDED:
        reason = last.removeprefix(_FAILED)
        raise Failure(f"At {width}x{height}, {reason}. The log is {machine.log_path}.")
    say(f"{width}x{height} is done")
    first = ends[number - 1] + 1 if number > 0 else 0
    return _read(lines[first : ends[number]])


def _read(lines: list[str]) -> Figures:
    """Figures by name."""
    logged = (line.removeprefix(_PREFIX).split() for line in lines if line.startswith(_PREFIX))
    figures = {name: int(value) for name, value in logged}
    if abs(figures["million"] / _TICKS_PER_INSTRUCTION / 1e6 - 1) > 0.001:
        raise Failure(f"QEMU's clock does not count instructions: {figures['million']}.")
    return figures
