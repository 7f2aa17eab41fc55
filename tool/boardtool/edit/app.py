"""What the page asks its server."""

import secrets
from collections.abc import Callable
from pathlib import Path
from typing import Any, TypeVar

from starlette.applications import Starlette
from starlette.concurrency import run_in_threadpool
from starlette.requests import Request
from starlette.responses import FileResponse, HTMLResponse, JSONResponse, Response
from starlette.routing import Route

from boardtool import limits
from boardtool.edit import description, files, folder
from boardtool.edit.checks import problems_of
from boardtool.edit.description import Changed, Description, Unfit
from boardtool.edit.guard import Guard, Refused
from boardtool.edit.inventory import InventoryError, read_inventory
from boardtool.edit.live import NoView, View
from boardtool.picture import PictureError

T = TypeVar("T")

MOST_GIVEN = 8
"""Texts that are remembered: one for each page that is open, and a few that were saved before."""

LIMITS = {name: value for name, value in vars(limits).items() if name.isupper()}


class Editor:
    """The server's side of the page: one folder, and the texts that the page has been given."""

    def __init__(self, where: Path, view: View) -> None:
        self._folder = where
        self._view = view
        self._given: dict[str, Description] = {}
        self._seen: dict[str, str | None] = {}
        self._files = files.own_files() | files.library_files()

    def application(self, token: str, port: int) -> Guard:
        routes = [
            Route("/", self.index),
            Route("/board", self.board),
            Route("/first", self.first, methods=["POST"]),
            Route("/check", self.check, methods=["POST"]),
            Route("/view", self.view, methods=["POST"]),
            Route("/measures", self.measures, methods=["POST"]),
            Route("/save", self.save, methods=["POST"]),
            Route("/inventory", self.inventory, methods=["POST"]),
            Route("/pictures/{name:path}", self.picture),
            Route("/pictures/{name:path}", self.put_picture, methods=["PUT"]),
            Route("/{name:path}", self.file),
        ]
        app = Starlette(routes=routes, exception_handlers={kind: answer for kind in STATUSES})
        return Guard(app, token, port, [files.import_map_hash()])

    async def index(self, request: Request) -> Response:
        return HTMLResponse(files.index())

    async def file(self, request: Request) -> Response:
        name = request.path_params["name"]
        if name not in self._files:
            raise Refused(404, f"there is nothing at {name!r}")
        file = self._files[name]
        return FileResponse(file.path, media_type=file.kind)

    async def board(self, request: Request) -> Response:
        """The description, or why there is none, and all that the page needs to know once."""
        answer: dict[str, Any] = {
            "folder": self._folder.name,
            "limits": LIMITS,
        }
        named = ""
        try:
            loaded = description.load(self._folder)
            if loaded is not None:
                answer |= self._give(loaded)
                named = str(loaded.document.get("picture"))
        except Unfit as unfit:
            answer |= {"unfit": str(unfit), "problems": problems_of(self._folder)}
        pictures = await run_in_threadpool(folder.pictures, self._folder, named)
        return JSONResponse(answer | {"pictures": pictures})

    def _give(self, loaded: Description) -> dict[str, Any]:
        self._given.pop(loaded.key, None)
        self._given[loaded.key] = loaded
        while len(self._given) > MOST_GIVEN:
            del self._given[next(iter(self._given))]
        return {"key": loaded.key, "document": loaded.document}

    async def first(self, request: Request) -> Response:
        name = (await _fields(request, picture=str))["picture"]
        folder.inside(self._folder, name)
        return JSONResponse(self._give(description.first(name)))

    async def _asked(self, request: Request) -> tuple[Description, dict[str, Any]]:
        """The description that the page was given, and what it asks about it."""
        fields = await _fields(request, key=str, document=dict)
        given = self._given.get(fields["key"])
        if given is None:
            raise Refused(
                409, "the tool does not know what this page was loaded from any more; load it again"
            )
        picture = fields["document"].get("picture")
        if isinstance(picture, str):
            folder.inside(self._folder, picture)
        return given, fields

    async def check(self, request: Request) -> Response:
        given, fields = await self._asked(request)
        text = await _in_thread(given.changed, fields["document"])
        find = self._view.problems if fields.get("measured") is True else problems_of
        return JSONResponse({"problems": await _in_thread(find, self._folder, text)})

    async def view(self, request: Request) -> Response:
        return Response(await self._seen_as(request, self._view.picture), media_type="image/png")

    async def measures(self, request: Request) -> Response:
        return JSONResponse(await self._seen_as(request, self._view.measures))

    async def _seen_as(self, request: Request, ask: Callable[..., T]) -> T:
        _, fields = await self._asked(request)
        return await _in_thread(ask, self._folder, fields["document"], fields.get("options"))

    async def save(self, request: Request) -> Response:
        given, fields = await self._asked(request)
        text = await _in_thread(given.changed, fields["document"])
        expected = given.text if given.on_disk else None
        if fields.get("instead") in self._seen:
            # The person has seen what is there, and wants it overwritten.
            expected = self._seen[fields["instead"]]
        try:
            saved = await _in_thread(description.save, self._folder, expected, text)
        except Changed as changed:
            return JSONResponse(self._conflict(changed, text), 409)
        return JSONResponse(self._give(saved))

    def _conflict(self, changed: Changed, mine: str) -> dict[str, Any]:
        seen = secrets.token_hex(8)
        self._seen[seen] = changed.text
        return {"error": str(changed), "disk": changed.text or "", "mine": mine, "seen": seen}

    async def inventory(self, request: Request) -> Response:
        text = (await request.body()).decode("utf-8", errors="replace")
        return JSONResponse({"hardware": read_inventory(text)})

    async def picture(self, request: Request) -> Response:
        path = folder.inside(self._folder, request.path_params["name"])
        if path.suffix.lower() != ".png" or not path.is_file():
            raise Refused(404, f"there is no picture {request.path_params['name']!r}")
        return FileResponse(path, media_type="image/png")

    async def put_picture(self, request: Request) -> Response:
        folder.put_picture(self._folder, request.path_params["name"], await request.body())
        return JSONResponse({"pictures": folder.pictures(self._folder)})


async def _in_thread(work: Callable[..., T], *arguments: Any) -> T:
    """What a page may ask for any document it likes."""
    try:
        return await run_in_threadpool(work, *arguments)
    except (AttributeError, IndexError, KeyError, TypeError, ValueError, RecursionError):
        raise Refused(400, "that is not a description") from None


async def _fields(request: Request, **needed: type) -> dict[str, Any]:
    try:
        fields = await request.json()
    except (ValueError, RecursionError):
        raise Refused(400, "that is not JSON") from None
    for name, kind in needed.items():
        if not isinstance(fields, dict) or not isinstance(fields.get(name), kind):
            raise Refused(400, f"the field {name!r} is missing")
    return dict(fields)


STATUSES: dict[type[Exception], int] = {
    Refused: 0,
    folder.Outside: 403,
    InventoryError: 422,
    NoView: 503,
    PictureError: 422,
    Unfit: 422,
    OSError: 500,
}
"""What goes wrong in a way that a person can be told of."""


async def answer(request: Request, error: Exception) -> Response:
    if isinstance(error, Refused):
        return error.response()
    status = next(status for kind, status in STATUSES.items() if isinstance(error, kind))
    text = f"{error.filename}: {error.strerror}" if isinstance(error, OSError) else str(error)
    return JSONResponse({"error": text}, status)
