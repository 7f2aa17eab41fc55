"""The real view of what is being edited."""

import dataclasses
import threading
from contextlib import ExitStack
from pathlib import Path
from typing import Any

from boardtool.binary import write_board
from boardtool.edit import nodes
from boardtool.edit.lists import without_origins
from boardtool.edit.nodes import Plain
from boardtool.live import LiveView, ViewError, ViewOptions
from boardtool.picture import QUICK, picture_for_firmware
from boardtool.problems import Problems
from boardtool.reading import read_node

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
        binary = _binary(folder, document)
        try:
            return self._program().picture(binary, _options(options))
        except ViewError as error:
            raise NoView(self._ended(error)) from None

    def measures(self, folder: Path, document: Plain, options: Plain) -> dict[str, Any]:
        """Where everything stands on the screen. Raises NoView."""
        binary = _binary(folder, document)
        try:
            return dataclasses.asdict(self._program().measure(binary, _options(options)))
        except ViewError as error:
            raise NoView(self._ended(error)) from None

    def _program(self) -> LiveView:
        with self._lock:
            if self._live is None:
                self._live = self._stack.enter_context(LiveView())
            return self._live

    def _ended(self, error: ViewError) -> str:
        """The next question starts it again, should it have ended."""
        with self._lock:
            self._live = None
            self._stack.close()
        return str(error)

    def close(self) -> None:
        with self._lock:
            self._live = None
            self._stack.close()


def _binary(folder: Path, document: Plain) -> bytes:
    # Not by way of the text: to parse it would take longer than everything else.
    board = read_node(Problems(""), folder, nodes.compose(without_origins(document)))
    if board is None:
        raise NoView("The view waits until the description has no more errors.")
    return write_board(board, picture_for_firmware(board.picture, QUICK))


def _options(options: Plain) -> ViewOptions:
    chosen = options if isinstance(options, dict) else {}
    return ViewOptions(
        **{name: chosen[name] for name in OPTIONS if isinstance(chosen.get(name), str)}
    )
