"""Packed records whose fields are told apart by name."""

import struct


class Record:
    """Little-endian fields, one behind the other, each a name and its format for struct."""

    def __init__(self, **formats: str) -> None:
        self._names = tuple(formats)
        self._struct = struct.Struct("<" + "".join(formats.values()))
        self.size = self._struct.size

    def pack(self, **values: int | bytes) -> bytes:
        """Takes each field exactly once. Bytes that are too few are filled up with zeros."""
        if values.keys() != set(self._names):
            odd = ", ".join(sorted(values.keys() ^ set(self._names)))
            raise TypeError(f"missing or unknown fields of a record: {odd}")
        return self._struct.pack(*(values[name] for name in self._names))
