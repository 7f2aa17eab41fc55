"""clang-tidy over our sources, in parallel, remembering what was found clean."""

import concurrent.futures
import hashlib
import json
import os
import subprocess
from pathlib import Path

from support import paths
from support.failure import Failure
from support.running import say

# Firmware runs no constructors of static objects, so code that goes there must not have any.
FREESTANDING = ("app", "capture", "host", "platform", "resources", "view")
NO_STATIC_OBJECTS = (
    "--extra-arg=-Wglobal-constructors",
    "--checks=clang-diagnostic-global-constructors",
)


def lint(build: Path, sources: list[Path], headers: list[Path]) -> None:
    """Checks the sources that CMake compiles. A change of any of `headers` makes all look new."""
    database = json.loads((build / "compile_commands.json").read_text())
    compiled = {Path(entry["file"]) for entry in database}
    shared = hashlib.sha256()
    settings = [paths.CLONE / ".clang-tidy", Path(__file__), paths.CLONE / "CMakeLists.txt"]
    for path in [*headers, *settings, *sorted((paths.CLONE / "cmake").glob("*.cmake"))]:
        shared.update(path.read_bytes())
    remembered = paths.cache() / "tidy"
    remembered.mkdir(exist_ok=True)
    chosen = [source for source in sources if source in compiled]
    fresh = []
    for source in chosen:
        name = str(source.relative_to(paths.CLONE))
        key = hashlib.sha256(shared.digest() + name.encode() + source.read_bytes())
        stamp = remembered / key.hexdigest()
        if not stamp.exists():
            fresh.append((source, stamp))
    say(f"clang-tidy: {len(fresh)} of {len(chosen)} files to look at")
    _run_all(build, fresh)


def _run_all(build: Path, fresh: list[tuple[Path, Path]]) -> None:
    complaints = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {pool.submit(_run, build, source): (source, stamp) for source, stamp in fresh}
        for count, job in enumerate(concurrent.futures.as_completed(jobs), 1):
            source, stamp = jobs[job]
            output = job.result()
            if output:
                complaints += 1
                print(output, flush=True)
            else:
                stamp.touch()
            if count % 20 == 0:
                say(f"clang-tidy: {count} of {len(jobs)} done")
    if complaints:
        raise Failure(f"clang-tidy complains about {complaints} files, see above.")


def _run(build: Path, source: Path) -> str:
    """What clang-tidy has to say about one file; empty when it is clean."""
    command = ["clang-tidy", "-p", str(build), "--quiet"]
    runs = [[*command, str(source)]]
    if source.relative_to(paths.CLONE).parts[0] in FREESTANDING:
        runs.append([*command, *NO_STATIC_OBJECTS, str(source)])
    output = ""
    for arguments in runs:
        result = subprocess.run(arguments, capture_output=True, text=True, check=False)
        if result.returncode != 0 or "warning:" in result.stdout:
            output += result.stdout or result.stderr
    return output
