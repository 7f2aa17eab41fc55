"""Which lines and branches of the code that ships the native tests reach: their build counts."""

import subprocess
from pathlib import Path

from support import paths
from support.running import run

ROOMS = ("app", "platform", "resources", "view", "capture", "host", "hostcheck", "setup")
# Percent; raise them with what the tests reach.
LEAST_LINES = 98.0
LEAST_BRANCHES = 94.0


def count_anew() -> None:
    """Forgets what earlier runs have reached."""
    for counts in _folder().rglob("*.gcda"):
        counts.unlink()


def collect() -> list[str]:
    """Reads the counts; the command that shows them."""
    tracefile = str(_folder() / "coverage.json")
    command = ["gcovr", "--root", str(paths.CLONE), "--object-directory", str(_folder())]
    command += [part for room in ROOMS for part in ("--filter", f"{paths.CLONE / room}/")]
    command += ["--exclude-unreachable-branches", "--exclude-throw-branches"]
    run("Collecting what the tests have reached", [*command, "--json", tracefile])
    return ["gcovr", "--root", str(paths.CLONE), "--add-tracefile", tracefile]


def enough(show: list[str]) -> bool:
    """Prints two lines with what is reached of lines and branches; False when it is too little."""
    floors = ["--fail-under-line", str(LEAST_LINES), "--fail-under-branch", str(LEAST_BRANCHES)]
    done = subprocess.run(
        [*show, "--print-summary", *floors, "--output", str(_folder() / "coverage.txt")]
    )
    return done.returncode == 0


def _folder() -> Path:
    return paths.BUILD / "native"
