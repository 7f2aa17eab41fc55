"""Running other programs: quiet while they succeed, with their last words when they fail."""

import os
import signal
import subprocess
import sys
import tempfile
import threading
import time
from collections.abc import Mapping, Sequence
from pathlib import Path

from support.failure import Failure

HEARTBEAT_SECONDS = 10.0
STOP_SECONDS = 0.3  # After which a stop is noticed.
TERM_SECONDS = 10.0  # For a command to end itself.
LAST_LINES = 30


def say(text: str) -> None:
    """Prints one progress line at once."""
    print(f"-- {text}", flush=True)


def run(
    what: str,
    command: Sequence[str | Path],
    cwd: Path | None = None,
    environment: Mapping[str, str] | None = None,
    hint: str = "",
) -> str:
    """Runs a command, with a sign of life every few seconds; returns what it printed."""
    say(what)
    with tempfile.NamedTemporaryFile() as output:
        try:
            process = subprocess.Popen(
                [str(part) for part in command],
                cwd=cwd,
                env={**os.environ, **(environment or {})},
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=subprocess.STDOUT,
            )
        except FileNotFoundError as error:
            raise Failure(f"{what}: there is no program {command[0]}. {hint}".strip()) from error
        _wait(process, what, Path(output.name))
        output.seek(0)
        text = output.read().decode("utf-8", errors="replace")
    if process.returncode != 0:
        print("\n".join(text.splitlines()[-LAST_LINES:]), file=sys.stderr)
        raise Failure(f"{what}: failed with exit code {process.returncode}. {hint}".strip())
    return text


def run_until(
    stop: threading.Event,
    command: Sequence[str | Path],
    log: Path,
    environment: Mapping[str, str] | None = None,
) -> int:
    """Runs a command whose output goes to a file, and ends it when `stop` is set; returns its
    exit code, negative for a signal."""
    with log.open("wb") as output:
        process = subprocess.Popen(
            command,
            env={**os.environ, **(environment or {})},
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=subprocess.STDOUT,
            # What it forks must end with it.
            start_new_session=True,
        )
        try:
            while process.poll() is None and not stop.wait(STOP_SECONDS):
                pass
        finally:
            _end_group(process)
    return process.returncode


def _end_group(process: subprocess.Popen[bytes]) -> None:
    """Ends a process that leads a group, unless it has ended, and what it has forked."""
    if process.poll() is None:
        os.killpg(process.pid, signal.SIGTERM)
        try:
            process.wait(TERM_SECONDS)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()


def _last_line(output: Path) -> str:
    """Where a command is; most build tools say so in their latest line."""
    lines = output.read_text(errors="replace").split("\n")[-4:]
    said = [line.strip() for line in lines if line.strip()]
    return f": {said[-1][-70:]}" if said else ""


def _wait(process: subprocess.Popen[bytes], what: str, output: Path) -> None:
    start = time.monotonic()
    while True:
        try:
            process.wait(HEARTBEAT_SECONDS)
            return
        except subprocess.TimeoutExpired:
            say(f"{what} ({time.monotonic() - start:.0f} s so far){_last_line(output)}")
        except BaseException:
            process.terminate()
            process.wait()
            raise
