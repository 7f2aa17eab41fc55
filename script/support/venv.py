"""The Python environment of the tests and checks."""

import os
import sys
from pathlib import Path

from support import packages, paths
from support.running import run, say
from support.storing import checksum, locked


def ensure_venv() -> None:
    """Goes on in the environment: makes it when needed, then starts the calling script again."""
    folder = paths.venv_dir()
    if Path(sys.prefix).resolve() == folder.resolve():
        return
    make_venv()
    python = folder / "bin" / "python"
    os.execv(python, [str(python), *sys.argv])


def make_venv() -> None:
    """Makes the environment from the pinned requirements, unless it is there."""
    if _is_current():
        return
    with locked():
        if _is_current():  # The run that we waited for has made it.
            return
        packages.install(["python"])
        _fill()


def _fill() -> None:
    # Made in place, as its scripts carry their path; the stamp comes last.
    folder = paths.venv_dir()
    run("Making the Python environment", [sys.executable, "-m", "venv", "--clear", folder])
    pip: list[str | Path] = [folder / "bin" / "python", "-m", "pip", "install"]
    run(
        "Installing the Python packages of tests and checks",
        [*pip, "--require-hashes", "--only-binary", ":all:", "-r", paths.REQUIREMENTS],
        environment={"PIP_DISABLE_PIP_VERSION_CHECK": "1"},
        hint="Is the network up? Then run this again.",
    )
    _stamp().write_text(checksum(paths.REQUIREMENTS))
    say("The Python environment is ready")


def _stamp() -> Path:
    return paths.venv_dir() / ".boardscope-stamp"


def _is_current() -> bool:
    # A removed or updated base Python leaves a link that leads nowhere.
    if not (paths.venv_dir() / "bin" / "python").exists():
        return False
    try:
        return _stamp().read_text() == checksum(paths.REQUIREMENTS)
    except OSError:
        return False
