"""Building the application and its tests for this machine, against the fake firmware."""

import os
from pathlib import Path

from support import paths
from support.running import run, say


def build(kind: str = "native", options: tuple[str, ...] = ()) -> Path:
    """Configures and builds everything that CMake knows; returns the build folder."""
    folder = paths.BUILD / kind
    if not (folder / "build.ninja").exists():
        configure = ["cmake", "-S", paths.CLONE, "-B", folder, "-G", "Ninja", *options]
        run(f"Configuring the native build in build/{kind}", configure)
    jobs = str(os.cpu_count() or 1)
    run(f"Building in build/{kind}", ["cmake", "--build", folder, "--parallel", jobs])
    say(f"build/{kind} is up to date")
    return folder
