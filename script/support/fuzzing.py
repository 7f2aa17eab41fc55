"""The fuzz targets: building them, letting one try inputs for a time, trying one input alone."""

import re
import subprocess
import threading
from dataclasses import dataclass
from pathlib import Path

from support import native, paths
from support.failure import Failure
from support.running import run_until, say

OPTIONS = (
    "-DBOARDSCOPE_FUZZ=ON",
    "-DCMAKE_C_COMPILER=clang",
    "-DCMAKE_CXX_COMPILER=clang++",
)
FOLDER = paths.BUILD / "fuzz"
SOURCES = paths.CLONE / "test" / "fuzz"
INPUT_SECONDS = 60  # An input that takes longer is a finding.
LIMITS = (f"-timeout={INPUT_SECONDS}", f"-report_slow_units={INPUT_SECONDS}")


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


def fuzz(target: str, seconds: int, stop: threading.Event) -> Outcome:
    """Fuzzes one target until the time is over, an input is found or `stop` is set. The inputs that
    it learns stay in the build folder for the next time."""
    learnt = FOLDER / "learnt" / target
    findings = FOLDER / "findings" / target
    for needed in (learnt, findings):
        needed.mkdir(parents=True, exist_ok=True)
    log = FOLDER / f"{target}.log"
    command: list[str | Path] = [_program(target), *LIMITS, f"-max_total_time={seconds}"]
    command += ["-print_final_stats=1", f"-artifact_prefix={findings}/"]
    command += [learnt, SOURCES / "corpus" / target]
    say(f"Fuzzing {target} for {seconds} s, its log is {log.relative_to(paths.CLONE)}")
    code = run_until(stop, command, log)
    text = log.read_text(errors="replace")
    found = [Path(name) for name in re.findall(r"Test unit written to (.+)", text)]
    if code != 0 and not found and not stop.is_set():
        raise Failure(f"{target} failed without an input to show for it; see {log}")
    runs = re.search(r"stat::number_of_executed_units: *(\d+)", text)
    return Outcome(int(runs.group(1)) if runs else 0, found, log)


def try_input(target: str, file: Path) -> bool:
    """Gives a target one input, with its words on the terminal; whether all promises held."""
    if not file.is_file():
        raise Failure(f"There is no file {file}.")
    return subprocess.run([_program(target), *LIMITS, file]).returncode == 0


def again(target: str, file: Path) -> str:
    """The command that gives a target one input."""
    return f"script/fuzz {target} --input {file.relative_to(paths.CLONE)}"


def _program(target: str) -> Path:
    return FOLDER / f"boardscope_fuzz_{target}"
