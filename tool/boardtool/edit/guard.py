"""Who may talk to the page's server: the page itself, with the token in its address."""

import secrets
from collections.abc import Iterable

from starlette.datastructures import Headers
from starlette.responses import JSONResponse
from starlette.types import ASGIApp, Message, Receive, Scope, Send

MOST_BYTES = 32 * 1000 * 1000
"""Of a request's body: a picture."""

HEADERS = {
    "Cache-Control": "no-store",
    "Cross-Origin-Opener-Policy": "same-origin",
    "Cross-Origin-Resource-Policy": "same-origin",
    "Referrer-Policy": "no-referrer",
    "X-Content-Type-Options": "nosniff",
}
POLICY = (
    "default-src 'none'; script-src 'self' {scripts}; style-src 'self'; img-src 'self' blob:; "
    "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"
)


class Refused(Exception):
    """A request that is answered with a status and a sentence."""

    def __init__(self, status: int, text: str) -> None:
        super().__init__(text)
        self.status = status

    def response(self) -> JSONResponse:
        return JSONResponse({"error": str(self)}, self.status)


class Guard:
    """Looks at each request before the application sees it, and at the path's first part, which
    has to be the token; the application sees the rest."""

    def __init__(self, app: ASGIApp, token: str, port: int, scripts: Iterable[str] = ()) -> None:
        self._app = app
        self._token = token
        self._hosts = {f"127.0.0.1:{port}", f"localhost:{port}"}
        policy = POLICY.format(scripts=" ".join(f"'{script}'" for script in scripts))
        self._headers = HEADERS | {"Content-Security-Policy": policy}

    async def __call__(self, scope: Scope, receive: Receive, send: Send) -> None:
        if scope["type"] != "http":
            return

        async def send_with_headers(message: Message) -> None:
            if message["type"] == "http.response.start":
                message["headers"] += [
                    (name.lower().encode(), value.encode()) for name, value in self._headers.items()
                ]
            await send(message)

        try:
            rest = self._examine(scope)
            limited = Limited(receive, Headers(scope=scope))
            inner = {**scope, "path": rest, "raw_path": rest.encode()}
            await self._app(inner, limited, send_with_headers)
        except Refused as refused:
            await refused.response()(scope, receive, send_with_headers)

    def _examine(self, scope: Scope) -> str:
        headers = Headers(scope=scope)
        host = headers.get("host", "")
        if host not in self._hosts:
            raise Refused(403, f"this server is not called {host!r}")
        origin = headers.get("origin", f"http://{host}")
        if origin != f"http://{host}":
            raise Refused(403, "another page may not talk to this one")
        token, _, rest = scope["path"].removeprefix("/").partition("/")
        if not secrets.compare_digest(token.encode(), self._token.encode()):
            raise Refused(403, "wrong token: open the address that 'tool/board edit' has printed")
        return f"/{rest}"


class Limited:
    """Hands a request's body on as long as it is not too large; raises Refused."""

    def __init__(self, receive: Receive, headers: Headers) -> None:
        self._receive = receive
        self._bytes = 0
        length = headers.get("content-length", "0")
        if not length.isdecimal() or int(length) > MOST_BYTES:
            raise self._too_large()

    async def __call__(self) -> Message:
        message = await self._receive()
        self._bytes += len(message.get("body", b""))
        if self._bytes > MOST_BYTES:
            raise self._too_large()
        return message

    @staticmethod
    def _too_large() -> Refused:
        return Refused(413, f"that is too large: at most {MOST_BYTES // 1000000} MB are taken")
