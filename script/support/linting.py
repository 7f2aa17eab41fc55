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

# What goes into firmware. Nothing there runs the constructors of static objects, so there must not
# be any.
FIRMWARE = ("app", "capture", "host", "hostcheck", "platform", "resources", "setup", "view")
COMMAND = (
    "clang-tidy",
    "--quiet",
    "--extra-arg=-Wglobal-constructors",
)
CHECKS = "clang-diagnostic-global-constructors"

# clang-tidy 14 takes the empty half of a partly initialised array of structures for all of it.
MISUNDERSTOOD = {
    "resources/Resampler.cpp": ",-clang-analyzer-core.NullDereference"
    ",-clang-analyzer-unix.cstring.NullArg",
}


def lint(build: Path, sources: list[Path], headers: list[Path]) -> None:
    """Checks the firmware's sources. A change of any of `headers` makes all of them look new."""
    database = json.loads((build / "compile_commands.json").read_text())
    compiled = {Path(entry["file"]) for entry in database}
    shared = hashlib.sha256()
    settings = [paths.CLONE / ".clang-tidy", Path(__file__), paths.CLONE / "CMakeLists.txt"]
    for path in [*headers, *settings, *sorted((paths.CLONE / "cmake").glob("*.cmake"))]:
        shared.update(path.read_bytes())
    remembered = paths.cache() / "tidy"
    remembered.mkdir(exist_ok=True)
    chosen = [source for source in sources if source in compiled and _is_firmware(source)]
    fresh = []
    for source in chosen:
        name = str(source.relative_to(paths.CLONE))
        key = hashlib.sha256(shared.digest() + name.encode() + source.read_bytes())
        stamp = remembered / key.hexdigest()
        if not stamp.exists():
            fresh.append((source, stamp))
    say(f"clang-tidy: {len(fresh)} of {len(chosen)} files to look at")
    _run_all(build, fresh)


def _is_firmware(source: Path) -> bool:
    return source.relative_to(paths.CLONE).parts[0] in FIRMWARE


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
    checks = CHECKS + MISUNDERSTOOD.get(source.relative_to(paths.CLONE).as_posix(), "")
    command = [*COMMAND, f"--checks={checks}", "-p", str(build), str(source)]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    clean = result.returncode == 0 and "warning:" not in result.stdout
    return "" if clean else result.stdout or result.stderr
