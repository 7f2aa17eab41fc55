"""Running the suites and counting their tests."""

import os
import re
import subprocess
import tempfile
import xml.etree.ElementTree as ElementTree
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path
from typing import IO

from support import native, paths
from support.failure import Failure
from support.running import say

# An emulated machine keeps one processor busy.
HALVES = 2


@dataclass(frozen=True)
class Count:
    """How many tests ran, and how they ended. A skipped test counts as failed."""

    passed: int = 0
    failed: int = 0

    def __add__(self, other: "Count") -> "Count":
        return Count(self.passed + other.passed, self.failed + other.failed)


def run_ctest(label: str, pattern: str | None, kind: str = "native") -> Count:
    """The native tests of a label, in a process each; pattern is a regular expression."""
    folder = paths.BUILD / kind
    command: list[str | Path] = ["ctest", "--test-dir", folder, "-L", f"^{label}$"]
    command += ["--output-on-failure", "--progress", "--parallel", native.jobs()]
    command += ["-R", pattern] if pattern else []
    return _run(f"Running the {label} tests", command, "--output-junit")


def run_pytest(what: str, folder: Path, pattern: str | None) -> Count:
    """Tests in Python; pattern is a regular expression, as for the native tests."""
    command: list[str | Path] = [paths.venv_dir() / "bin" / "python", "-m", "pytest", "-q"]
    if pattern is None:
        return _run(f"Running the {what} tests", [*command, folder], "--junitxml")
    chosen = [name for name in _collect([*command, folder]) if re.search(pattern, name)]
    if not chosen:
        return Count()
    return _run(f"Running the {what} tests", [*command, *chosen], "--junitxml")


def run_pytest_in_halves(what: str, folder: Path) -> Count:
    """All tests of a folder, one half of its files beside the other: which file is in which half
    does not change with the time they take."""
    files = sorted(folder.glob("test_*.py"))
    command: list[str | Path] = [paths.venv_dir() / "bin" / "python", "-m", "pytest", "-q"]
    with ThreadPoolExecutor() as pool:
        halves = [
            pool.submit(
                _run_half, f"{what} tests, half {half + 1}", command, files[half::HALVES], half
            )
            for half in range(HALVES)
        ]
        return sum((half.result() for half in halves), Count())


def _run_half(what: str, command: list[str | Path], files: list[Path], half: int) -> Count:
    # Its output comes in one piece, at its end.
    with tempfile.TemporaryFile() as output:
        environment = {**os.environ, "BOARDSCOPE_HALF": str(half + 1)}
        count = _run(f"Running the {what}", [*command, *files], "--junitxml", environment, output)
        output.seek(0)
        print(output.read().decode(errors="replace"), flush=True)
    return count


def _collect(command: list[str | Path]) -> list[str]:
    """The names under which pytest takes single tests."""
    listing = subprocess.run(
        [*command, "--collect-only"], cwd=paths.CLONE, capture_output=True, text=True
    )
    if listing.returncode != 0:
        raise Failure(f"pytest cannot list its tests:\n{listing.stdout}{listing.stderr}")
    return [line for line in listing.stdout.splitlines() if "::" in line]


def _run(
    what: str,
    command: list[str | Path],
    report_option: str,
    environment: dict[str, str] | None = None,
    output: IO[bytes] | None = None,
) -> Count:
    say(what)
    with tempfile.TemporaryDirectory() as folder:
        report = Path(folder) / "report.xml"
        code = subprocess.run(
            [*command, report_option, report],
            cwd=paths.CLONE,
            env=environment,
            stdout=output,
            stderr=output and subprocess.STDOUT,
        ).returncode
        count = _count(report)
    # A runner that fails without a failed test has not run what it should.
    no_tests = count == Count() and code in (0, 5, 8)
    if code != 0 and count.failed == 0 and not no_tests:
        return count + Count(failed=1)
    return count


def _count(report: Path) -> Count:
    if not report.exists():
        return Count()
    total = Count()
    for case in ElementTree.parse(report).iter("testcase"):
        bad = {child.tag for child in case} & {"failure", "error", "skipped"}
        total += Count(failed=1) if bad else Count(passed=1)
    return total
