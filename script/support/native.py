"""Building the application and its tests for this machine, against the fake firmware."""

import os
from pathlib import Path

from support import paths
from support.running import run, say
from support.storing import exclusive


def jobs() -> str:
    """How many processes may run side by side."""
    return str(os.cpu_count() or 1)


def configure(kind: str, options: tuple[str, ...] = ()) -> Path:
    """Makes the build folder, unless it is there; returns it."""
    folder = paths.BUILD / kind
    if not (folder / "build.ninja").exists():
        cmake: list[str | Path] = ["cmake", "-S", paths.CLONE, "-B", folder, "-G", "Ninja"]
        run(f"Configuring the native build in build/{kind}", [*cmake, *options])
    return folder


def build(kind: str = "native", options: tuple[str, ...] = (), target: str = "all") -> Path:
    """Builds everything that CMake knows, or one target of it; returns the build folder."""
    with exclusive(paths.BUILD / kind, f"is building in build/{kind}"):
        folder = configure(kind, options)
        command: list[str | Path] = ["cmake", "--build", folder, "--target", target]
        run(f"Building in build/{kind}", [*command, "--parallel", jobs()])
    say(f"build/{kind} is up to date")
    return folder
