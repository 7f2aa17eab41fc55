"""Errors that end a script with a plain sentence instead of a stack trace."""

import sys
from collections.abc import Callable


class Failure(Exception):
    """Something a person can act on; the text says what happened and what to do next."""


def run_script(main: Callable[[], int]) -> None:
    """Runs a script's main function and turns a Failure into one sentence and exit code 1."""
    try:
        code = main()
    except Failure as failure:
        print(f"{sys.argv[0]}: {failure}", file=sys.stderr)
        code = 1
    except KeyboardInterrupt:
        print(f"{sys.argv[0]}: interrupted; run it again to go on.", file=sys.stderr)
        code = 130
    sys.exit(code)
