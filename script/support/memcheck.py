"""One whole visit to the view under Valgrind's memcheck, in a build without sanitizers."""

import subprocess

from support import native, paths
from support.running import say
from support.testing import Count

KIND = "plain"
OPTIONS = ("-DBOARDSCOPE_SANITIZE=OFF",)
PROGRAM = paths.BUILD / KIND / "boardscope_visit"
ERRORS = 99  # How memcheck ends a program in which it has found errors.
MEMCHECK = ("valgrind", "--quiet", "--leak-check=full", f"--error-exitcode={ERRORS}")


def build() -> None:
    native.build(KIND, OPTIONS, "boardscope_visit")


def visit() -> Count:
    """The visit by itself, on a stack of the promised size, and under memcheck."""
    count = Count()
    for what, tool in (("by itself", ()), ("under memcheck", MEMCHECK)):
        say(f"Visiting the view {what}")
        code = subprocess.run([*tool, PROGRAM], cwd=paths.CLONE).returncode
        count += Count(failed=1) if code else Count(passed=1)
    return count
