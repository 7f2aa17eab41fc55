"""A synchronous client of QEMU's machine protocol (QMP) over a Unix socket."""

from __future__ import annotations

import json
import socket
import time
from pathlib import Path
from typing import Any


class QmpError(Exception):
    """QEMU refused a command, or does not answer any more."""


class Qmp:
    """One connection; commands are answered in the order in which they are sent."""

    def __init__(self, path: Path, timeout: float = 20.0) -> None:
        """Connect, waiting up to `timeout` seconds for QEMU to open its socket."""
        self._socket = _connect(path, timeout)
        self._stream = self._socket.makefile("rwb")
        self._receive()
        self.command("qmp_capabilities")

    def command(self, name: str, **arguments: Any) -> Any:
        """Run one command and return its result; events that arrive meanwhile are dropped."""
        request: dict[str, Any] = {"execute": name}
        if arguments:
            # Python spells QMP's hyphens as underscores.
            request["arguments"] = {key.replace("_", "-"): arguments[key] for key in arguments}
        try:
            self._stream.write(json.dumps(request).encode() + b"\n")
            self._stream.flush()
            while True:
                answer = self._receive()
                if "error" in answer:
                    raise QmpError(f"QEMU refused {name}: {answer['error'].get('desc')}")
                if "return" in answer:
                    return answer["return"]
        except OSError as error:
            raise QmpError(f"QEMU does not answer {name}: {error}") from error

    def close(self) -> None:
        self._socket.close()

    def _receive(self) -> dict[str, Any]:
        line = self._stream.readline()
        if not line:
            raise QmpError("QEMU closed its control connection.")
        answer: dict[str, Any] = json.loads(line)
        return answer


def _connect(path: Path, timeout: float) -> socket.socket:
    deadline = time.monotonic() + timeout
    while True:
        connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        connection.settimeout(60.0)
        try:
            connection.connect(str(path))
            return connection
        except OSError as error:
            connection.close()
            if time.monotonic() > deadline:
                raise QmpError("QEMU did not open its control connection.") from error
            time.sleep(0.05)
