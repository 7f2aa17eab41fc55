"""The firmware's shell on the machine's serial port: commands are typed, answers are read."""

from __future__ import annotations

import os
import re
import select
import threading
import time
from collections.abc import Callable
from types import TracebackType

from support.qemu_machine import Machine, MachineError

_TERMINAL_CODES = re.compile(rb"\x1b\[[0-9;=?]*[A-Za-z]")
_ATTEMPTS = 3
_ECHO_PATIENCE = 3.0  # seconds, from one character to the next
_PROMPT = re.compile(rb"(FS\d+:\\|Shell)> $")


class Shell:
    """The shell's prompt; a context manager, as it holds the machine's serial port."""

    def __init__(self, machine: Machine) -> None:
        """Connect to a machine that was started for typing."""
        self._machine = machine
        to_console, from_console = machine.console_pipes
        self._typing = os.open(to_console, os.O_RDWR)
        self._reading = os.open(from_console, os.O_RDONLY | os.O_NONBLOCK)
        self._output = b""
        self._closed = threading.Event()
        # Read at once, always: the machine loses what no longer fits into the pipe.
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
        self._closed.set()
        self._reader.join()
        os.close(self._typing)
        os.close(self._reading)

    def run(self, command: str, timeout: float = 60.0) -> str:
        """Type a command, wait for the next prompt, and return what was printed between."""
        self.type(command)
        return self.wait_for_prompt(timeout)

    def type(self, command: str) -> None:
        """Type a command and Enter without waiting for its end."""
        for _ in range(_ATTEMPTS):
            self._output = b""
            self._send(command)
            if self._echoes(command):
                self._send("\r")
                return
            # Now and then the firmware drops what is typed while it deals with a device.
            self._send("\b" * len(command))
            time.sleep(_ECHO_PATIENCE)
        raise MachineError(f"The shell does not take the command {command}.")

    def _send(self, text: str) -> None:
        os.write(self._typing, text.encode("ascii"))

    def _echoes(self, command: str) -> bool:
        shown = -1
        deadline = 0.0
        while len(self._output) != shown or time.monotonic() < deadline:
            if len(self._output) != shown:
                # A slow screen shows one character after the other.
                shown = len(self._output)
                deadline = time.monotonic() + _ECHO_PATIENCE
            if _TERMINAL_CODES.sub(b"", self._output).endswith(command.encode("ascii")):
                return True
            time.sleep(0.02)
        return False

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
        while not self._closed.is_set():
            ready, _, _ = select.select([self._reading], [], [], 0.2)
            if ready:
                self._output += os.read(self._reading, 65536)
