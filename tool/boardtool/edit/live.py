"""The real view of what is being edited."""

import dataclasses
import threading
from collections.abc import Callable
from contextlib import ExitStack
from pathlib import Path
from typing import Any, TypeVar

from boardtool.binary import write_board
from boardtool.edit import nodes
from boardtool.edit.checks import problems_of
from boardtool.edit.lists import without_origins
from boardtool.edit.nodes import Plain
from boardtool.live import LiveView, ViewError, ViewOptions
from boardtool.measured import build_plain
from boardtool.model import Board
from boardtool.picture import picture_for_firmware
from boardtool.problems import Problems
from boardtool.reading import read_node
from support.failure import Failure

T = TypeVar("T")

OPTIONS = ("resolution", "hover", "filter")


class NoView(Exception):
    """There is no picture of the view; the text says why."""


class View:
    """The application on the page's documents; any thread may ask. Its program starts with the
    first question, as it may have to be built first."""

    def __init__(self) -> None:
        self._lock = threading.Lock()
        self._stack = ExitStack()
        self._live: LiveView | None = None

    def picture(self, folder: Path, document: Plain, options: Plain) -> bytes:
        """The screen as a PNG file. Raises NoView."""
        board = _board(folder, document)
        binary = write_board(board, picture_for_firmware(board.picture))
        return self._ask(lambda live: live.picture(binary, _options(options)))

    def measures(self, folder: Path, document: Plain, options: Plain) -> dict[str, Any]:
        """Where everything stands on the screen. Raises NoView."""
        binary = build_plain(_board(folder, document))
        return self._ask(lambda live: dataclasses.asdict(live.measure(binary, _options(options))))

    def problems(self, folder: Path, text: str) -> list[dict[str, Any]]:
        """Everything that the tool has to say, what has to be measured as well. Raises NoView."""
        return self._ask(lambda live: problems_of(folder, text, live))

    def _ask(self, question: Callable[[LiveView], T]) -> T:
        try:
            return question(self._program())
        except (ViewError, Failure) as error:
            raise NoView(self._ended(error)) from None

    def _program(self) -> LiveView:
        with self._lock:
            if self._live is None:
                self._live = self._stack.enter_context(LiveView())
            return self._live

    def _ended(self, error: Exception) -> str:
        """The next question starts it again, should it have ended."""
        with self._lock:
            self._live = None
            self._stack.close()
        return str(error)

    def close(self) -> None:
        with self._lock:
            self._live = None
            self._stack.close()


def _board(folder: Path, document: Plain) -> Board:
    # Not by way of the text: to parse it would take longer than everything else.
    board = read_node(Problems(""), folder, nodes.compose(without_origins(document)))
    if board is None:
        raise NoView("The view waits until the description has no more errors.")
    return board


def _options(options: Plain) -> ViewOptions:
    chosen = options if isinstance(options, dict) else {}
    return ViewOptions(
        **{name: chosen[name] for name in OPTIONS if isinstance(chosen.get(name), str)}
    )
