"""The files that the page is made of: its own, and the libraries that script/fetch has brought."""

import base64
import hashlib
import json
from dataclasses import dataclass
from pathlib import Path

from support import npm

PAGE = Path(__file__).resolve().parents[2] / "edit"

KINDS = {
    ".css": "text/css",
    ".html": "text/html",
    ".js": "text/javascript",
    ".mjs": "text/javascript",
    ".svg": "image/svg+xml",
}


@dataclass(frozen=True)
class File:
    path: Path

    @property
    def kind(self) -> str:
        return KINDS[self.path.suffix]


def own_files() -> dict[str, File]:
    """What may be asked for, by its address: a table, so that no address is ever a path."""
    found = sorted(path for path in PAGE.rglob("*") if path.suffix in KINDS)
    return {path.relative_to(PAGE).as_posix(): File(path) for path in found}


def library_files() -> dict[str, File]:
    return {f"library/{module.address}": File(module.path) for module in npm.modules()}


def import_map() -> str:
    """Tells the browser where the libraries are that modules import by their names."""
    addresses = {module.name: f"./library/{module.address}" for module in npm.modules()}
    return json.dumps({"imports": addresses})


def import_map_hash() -> str:
    """By which the page's policy lets the one script pass that stands in the page itself."""
    digest = hashlib.sha256(import_map().encode()).digest()
    return f"sha256-{base64.b64encode(digest).decode()}"


def index() -> str:
    """The page."""
    return (PAGE / "index.html").read_text(encoding="utf-8").replace("{import map}", import_map())
