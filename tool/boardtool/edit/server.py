"""`tool/board edit`: serves the page on the loopback address until it is stopped."""

import secrets
import socket
import webbrowser
from pathlib import Path

import uvicorn

from boardtool.edit.app import Editor
from boardtool.edit.live import View
from support import fetching

ADDRESS = "127.0.0.1"
SECONDS_TO_END = 2


def edit(folder: Path, port: int, browser: bool) -> int:
    """Serves the folder's page, and shows it in the person's browser."""
    fetching.ensure(["page"])
    token = secrets.token_urlsafe(24)
    with socket.create_server((ADDRESS, port)) as listener:
        port = listener.getsockname()[1]
        address = f"http://{ADDRESS}:{port}/{token}/"
        print(f"{folder}: {address}\nCtrl+C ends it.", flush=True)
        if browser:
            webbrowser.open(address)
        view = View()
        config = uvicorn.Config(
            Editor(folder, view).application(token, port),
            log_level="error",
            access_log=False,
            server_header=False,
            timeout_graceful_shutdown=SECONDS_TO_END,
        )
        try:
            uvicorn.Server(config).run(sockets=[listener])
        finally:
            view.close()
    return 0
