"""Signing with the key that Debian publishes for tests, which its firmware for tests trusts."""

import subprocess
from pathlib import Path

CODE = Path("/usr/share/OVMF/OVMF_CODE_4M.snakeoil.fd")
VARIABLES = Path("/usr/share/OVMF/OVMF_VARS_4M.snakeoil.fd")
_KEY = Path("/usr/share/ovmf/PkKek-1-snakeoil.key")
_CERTIFICATE = Path("/usr/share/ovmf/PkKek-1-snakeoil.pem")
_PASSWORD = "snakeoil"


def sign_all(programs: Path, folder: Path) -> Path:
    """Sign every program of a folder into another; returns that."""
    folder.mkdir(parents=True, exist_ok=True)
    key = _open_key(folder.parent / "snakeoil.key")
    for program_file in programs.glob("*.efi"):
        _sign(program_file, folder / program_file.name, key)
    return folder


def _open_key(target: Path) -> Path:
    """The key without its password, which the signing tool cannot be given."""
    command: list[str | Path] = [
        "openssl",
        "rsa",
        "-in",
        _KEY,
        "-passin",
        f"pass:{_PASSWORD}",
        "-out",
        target,
    ]
    subprocess.run(command, check=True, capture_output=True)
    return target


def _sign(plain: Path, signed: Path, key: Path) -> Path:
    command: list[str | Path] = [
        "sbsign",
        "--key",
        key,
        "--cert",
        _CERTIFICATE,
        "--output",
        signed,
        plain,
    ]
    done = subprocess.run(command, capture_output=True, text=True)
    assert done.returncode == 0 and signed.exists(), f"{plain.name}: {done.stderr}"
    return signed
