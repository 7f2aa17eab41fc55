"""Everything that has to be on the machine before something is built, run or tested."""

from collections.abc import Sequence

from support import crates, edk2, npm, packages
from support.linking import copy_dependencies, link_dependencies
from support.storing import locked
from support.venv import make_venv

SOURCE_PURPOSES = {"build", "clang", "native", "view", "bench", "fuzz", "check"}
VENV_PURPOSES = SOURCE_PURPOSES | {"system", "page"}


def ensure(purposes: Sequence[str]) -> None:
    """Installs and fetches what the purposes need; quick and without network when all is there."""
    with locked():
        packages.install(purposes)
        if "sources" in purposes:
            crates.fetch(installing=False)
            copy_dependencies()
        if SOURCE_PURPOSES & set(purposes):
            edk2.fetch()
            crates.fetch(installing=True)
            link_dependencies()
        if "page" in purposes:
            npm.fetch()
    if VENV_PURPOSES & set(purposes):
        make_venv()
