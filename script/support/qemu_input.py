"""The emulated machine's keyboard, mouse and tablet."""

import time

from support.failure import Failure
from support.qemu_qmp import Qmp


class Input:
    """What a user's hands do."""

    def __init__(self, qmp: Qmp) -> None:
        self._qmp = qmp
        self._pointer = ""

    def press(self, *keys: str, hold_ms: int = 60) -> None:
        """Press the keys (QEMU's names: "esc", "tab", "pgdn", "ret") together, then release."""
        values = [{"type": "qcode", "data": key} for key in keys]
        self._qmp.command("send-key", keys=values, hold_time=hold_ms)

    def tap(self, key: str, hold_ms: int = 60) -> None:
        """Press a key and wait until it is released, so that the next one is a key of its own."""
        self.press(key, hold_ms=hold_ms)
        time.sleep(2 * hold_ms / 1000)

    def move(self, dx: int, dy: int) -> None:
        """Move the mouse by so many of its units."""
        self._choose("Mouse")
        self._send(("rel", {"axis": "x", "value": dx}), ("rel", {"axis": "y", "value": dy}))

    def point(self, x: int, y: int) -> None:
        """Put the tablet's pen at (x, y), each 0 to 32767 over the whole screen."""
        self._choose("Tablet")
        self._send(("abs", {"axis": "x", "value": x}), ("abs", {"axis": "y", "value": y}))

    def button(self, down: bool) -> None:
        """Press or release the left button of the device that moved last."""
        self._send(("btn", {"button": "left", "down": down}))

    def _choose(self, pointer: str) -> None:
        """Make a pointer the one that button events go to."""
        if pointer == self._pointer:
            return
        for device in self._qmp.command("query-mice"):
            if device["name"] == f"QEMU HID {pointer}":
                choice = f"mouse_set {device['index']}"
                self._qmp.command("human-monitor-command", command_line=choice)
                self._pointer = pointer
                return
        raise Failure(f"The machine has no {pointer.lower()}.")

    def _send(self, *events: tuple[str, dict[str, object]]) -> None:
        self._qmp.command(
            "input-send-event", events=[{"type": kind, "data": data} for kind, data in events]
        )
