"""The firmware's shell on the machine's serial port: commands are typed, answers are read."""

from __future__ import annotations

import re
import socket
import threading
import time
from collections.abc import Callable
from types import TracebackType

from support.qemu_machine import Machine, MachineError

_TERMINAL_CODES = re.compile(rb"\x1b\[[0-9;=?]*[A-Za-z]")
_PROMPT = re.compile(rb"(FS\d+:\\|Shell)> $")


class Shell:
    """The shell's prompt; a context manager, as it holds the machine's serial port."""

    def __init__(self, machine: Machine) -> None:
        self._machine = machine
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.connect(str(machine.console_socket))
        self._output = b""
        # Read at once, always: each unread byte takes a whole packet of the socket's buffer, and
        # the machine stands still when that is full.
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def __enter__(self) -> Shell:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self._socket.shutdown(socket.SHUT_RDWR)
        self._reader.join()
        self._socket.close()

    def run(self, command: str, timeout: float = 60.0) -> str:
        """Type a command, wait for the next prompt, and return what was printed between."""
        self.type(command)
        return self.wait_for_prompt(timeout)

    def type(self, command: str) -> None:
        """Type a command and Enter without waiting for its end."""
        self._output = b""
        self._socket.sendall(command.encode("ascii") + b"\r")

    def wait_for_prompt(self, timeout: float = 60.0) -> str:
        """Wait until the last command has ended; return what was printed since it was typed."""
        return self._wait(lambda text: _PROMPT.search(text) is not None, "prompt", timeout)

    def wait_for_text(self, text: str, timeout: float = 60.0) -> str:
        """Wait until the running command has printed `text`."""
        return self._wait(lambda output: text.encode() in output, f'"{text}"', timeout)

    def _wait(self, done: Callable[[bytes], bool], what: str, timeout: float) -> str:
        deadline = time.monotonic() + timeout
        while True:
            text = _TERMINAL_CODES.sub(b"", self._output)
            if done(text):
                return text.decode(errors="replace").replace("\r", "")
            if time.monotonic() > deadline or not self._machine.running:
                shown = text[-400:].decode(errors="replace")
                raise MachineError(f"The shell did not show its {what}. It showed: {shown}")
            time.sleep(0.02)

    def _read(self) -> None:
        while block := self._socket.recv(65536):
            self._output += block
