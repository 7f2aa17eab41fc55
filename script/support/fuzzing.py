"""The fuzz targets: building them, letting one try many inputs, trying one input alone."""

import re
import subprocess
import threading
from collections.abc import Sequence
from dataclasses import dataclass
from pathlib import Path

from support import native, paths, seeds
from support.failure import Failure
from support.running import run_until, say

OPTIONS = (
    "-DBOARDSCOPE_FUZZ=ON",
    "-DCMAKE_C_COMPILER=clang",
    "-DCMAKE_CXX_COMPILER=clang++",
)
FOLDER = paths.BUILD / "fuzz"
SOURCES = paths.CLONE / "test" / "fuzz"
SEEDS = FOLDER / "seeds"
# Of targets that have one; each is also for the format inside another.
DICTIONARIES = {
    "BoardBinaryFuzz": "BoardBinaryFuzz.dict",
    "BoardViewFuzz": "BoardBinaryFuzz.dict",
    "FontFuzz": "FontFuzz.dict",
    "PngFuzz": "PngFuzz.dict",
    "TextFuzz": "TextFuzz.dict",
}
LARGEST = 4096  # An input may be as large as the largest seed, and at least this large.
INPUT_SECONDS = 60  # An input that takes longer is a finding.

# What decides over a change tries the same inputs each time, and no clock has a say in it: the
# limit is there for an input that hangs.
FIXED_SEED = 1
FIXED_INPUT_SECONDS = 1200
FIXED_LARGEST = 16 * 1024  # Larger seeds are tried as they are.
FIXED_RUNS = 20_000
FIXED_RUNS_OF = {
    "BoardBinaryFuzz": 10_000,
    "BoardViewFuzz": 300,
    "ComponentFuzz": 200,
    "DeviceFuzz": 2_000,
    "FaultFuzz": 200,
    "FontFuzz": 500,
    "InputFuzz": 200,
    "LanguageFuzz": 4_000,
    "PngFuzz": 4_000,
    "SelectionFuzz": 150,
    "VolumeFuzz": 80,
}


@dataclass(frozen=True)
class Outcome:
    """What one target did."""

    runs: int
    findings: list[Path]
    log: Path


def targets() -> list[str]:
    return sorted(source.stem for source in SOURCES.glob("*.cpp"))


def build() -> None:
    native.build("fuzz", OPTIONS)
    seeds.make(FOLDER, SEEDS)


def fuzz(target: str, seconds: int, stop: threading.Event) -> Outcome:
    """Fuzzes one target until the time is over, an input is found or `stop` is set. The inputs that
    it learns stay in the build folder for the next time."""
    learnt = FOLDER / "learnt" / target
    learnt.mkdir(parents=True, exist_ok=True)
    largest = max(LARGEST, *(file.stat().st_size for file in _inputs(target)))
    options: list[str | Path] = [*_limits(INPUT_SECONDS), *_dictionary(target)]
    options += [f"-max_total_time={seconds}", f"-max_len={largest}"]
    folders = [SOURCES / "corpus" / target, SEEDS / target]
    say(f"Fuzzing {target} for {seconds} s, its log is {_log(target).relative_to(paths.CLONE)}")
    return _run(
        target, [*options, learnt, *(folder for folder in folders if folder.is_dir())], stop
    )


def fuzz_fixed(target: str, stop: threading.Event) -> Outcome:
    """Gives a target the same inputs each time: what it starts from, then a number of inputs made
    of the smaller ones from a fixed seed. It learns nothing for another time."""
    small = [file for file in _inputs(target) if file.stat().st_size <= FIXED_LARGEST]
    large = [file for file in _inputs(target) if file not in small]
    limits = _limits(FIXED_INPUT_SECONDS)
    if large:
        outcome = _run(target, [*limits, *large], stop)
        if outcome.findings:
            return outcome
    runs = FIXED_RUNS_OF.get(target, FIXED_RUNS)
    # A file, because a folder lists its files in an order of its own.
    chosen = FOLDER / f"{target}.inputs"
    chosen.write_text(",".join(str(file) for file in small))
    options: list[str | Path] = [*limits, f"-seed={FIXED_SEED}", f"-runs={runs}"]
    # What is compared or searched may be an address.
    options += [f"-max_len={FIXED_LARGEST}", "-use_cmp=0", "-use_memmem=0"]
    options += [f"-seed_inputs=@{chosen}", *_dictionary(target)]
    return _run(target, options, stop, _same_addresses())


def try_input(target: str, file: Path) -> bool:
    """Gives a target one input, with its words on the terminal; whether all promises held."""
    if not file.is_file():
        raise Failure(f"There is no file {file}.")
    return subprocess.run([_program(target), *_limits(INPUT_SECONDS), file]).returncode == 0


def again(target: str, file: Path) -> str:
    """The command that gives a target one input."""
    return f"script/fuzz {target} --input {file.relative_to(paths.CLONE)}"


def _same_addresses() -> list[str]:
    """What to put in front of a command so that its addresses, and by them the branches that it
    takes, are the same each time."""
    prefix = ["setarch", "--addr-no-randomize"]
    if subprocess.run([*prefix, "true"], capture_output=True).returncode == 0:
        return prefix
    say("Addresses cannot be fixed here, so that a few inputs may differ from time to time")
    return []


def _run(
    target: str, options: list[str | Path], stop: threading.Event, prefix: Sequence[str] = ()
) -> Outcome:
    findings = FOLDER / "findings" / target
    findings.mkdir(parents=True, exist_ok=True)
    log = _log(target)
    command: list[str | Path] = [*prefix, _program(target), "-print_final_stats=1"]
    # Runs reach so much that weighing how rare each of it is would take a fifth of the time.
    command += ["-entropic=0", f"-artifact_prefix={findings}/", *options]
    code = run_until(stop, command, log)
    text = log.read_text(errors="replace")
    found = [Path(name) for name in re.findall(r"Test unit written to (.+)", text)]
    # An input that is tried as it is gets written nowhere else.
    tried = re.findall(r"^Running: (.+)", text, re.MULTILINE)
    if code != 0 and not found and tried and not stop.is_set():
        found = [_kept(Path(tried[-1]), findings)]
    if code != 0 and not found and not stop.is_set():
        raise Failure(f"{target} failed without an input to show for it; see {log}")
    runs = re.search(r"stat::number_of_executed_units: *(\d+)", text)
    return Outcome(int(runs.group(1)) if runs else 0, found, log)


def _kept(file: Path, folder: Path) -> Path:
    copy = folder / file.name
    copy.write_bytes(file.read_bytes())
    return copy


def _inputs(target: str) -> list[Path]:
    """What a target starts from, in the order of the names."""
    folders = [SOURCES / "corpus" / target, SEEDS / target]
    return [file for folder in folders if folder.is_dir() for file in sorted(folder.iterdir())]


def _limits(seconds: int) -> list[str]:
    return [f"-timeout={seconds}", f"-report_slow_units={seconds}"]


def _dictionary(target: str) -> list[str]:
    name = DICTIONARIES.get(target)
    return [f"-dict={SOURCES / 'dictionary' / name}"] if name else []


def _log(target: str) -> Path:
    return FOLDER / f"{target}.log"


def _program(target: str) -> Path:
    return FOLDER / f"boardscope_fuzz_{target}"
