"""What a firmware image has to have room for: each part as it is, and packed as a firmware volume
packs it."""

import tempfile
from dataclasses import dataclass
from pathlib import Path

from support import firmware, paths
from support.running import run

APPLICATION_AIM = 900 * 1000  # bytes, without fonts and board
PACKED_AIM = 2400 * 1000  # bytes of both, with all of the driver's files
# It is the program that packs the volumes of a firmware image.
PACKER = Path("BaseTools/Source/C/bin/LzmaCompress")


@dataclass(frozen=True)
class Size:
    raw: int
    packed: int

    def __sub__(self, other: "Size") -> "Size":
        return Size(self.raw - other.raw, self.packed - other.packed)


def measure() -> None:
    """Prints the sizes of the application and the reference host that script/build has made."""
    release = paths.BUILD / "RELEASE"
    application, host = release / "Boardscope.efi", release / "ObvHost.efi"
    sizes = {application.name: _size([application]), host.name: _size([host])}
    rest = sizes[host.name]
    for title, file in firmware.embedded_files().items():
        sizes[f"  {title}"] = _size([file])
        rest -= sizes[f"  {title}"]
    sizes["  program"] = rest
    both = _size([application, host])
    print("\nImage, in kB" + f"{'as it is':>44}{'packed':>12}")
    for title, size in (*sizes.items(), ("both", both)):
        print(f"  {title:<44} {size.raw / 1000:>9.1f}   {size.packed / 1000:>9.1f}")
    for title, found, aim in (
        ("Boardscope.efi as it is", sizes[application.name].raw, APPLICATION_AIM),
        ("both, packed", both.packed, PACKED_AIM),
    ):
        print(
            f"  {title:<44} {found / 1000:>9.1f} kB   {'aim':<34} {aim / 1000:>9.1f} kB   "
            f"{found / aim:>8.2f}"
        )


def _size(files: list[Path]) -> Size:
    with tempfile.TemporaryDirectory() as folder:
        together, packed = Path(folder) / "files", Path(folder) / "packed"
        together.write_bytes(b"".join(file.read_bytes() for file in files))
        names = ", ".join(file.name for file in files)
        command: list[str | Path] = [paths.edk2_dir() / PACKER, "-e", "-o", packed, together]
        run(f"Packing {names}", command)
        return Size(together.stat().st_size, packed.stat().st_size)
