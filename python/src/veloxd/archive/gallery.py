"""Galleries: a folder of pages that show what files hold, for a browser and without a server."""

from __future__ import annotations

import hashlib
import html
import json
import os
import shutil
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path
from typing import Optional

import pandas as pd

from .. import file as oxd
from .._replacing import replacement
from .._show import picture
from ..channel import Channel
from ..errors import Error
from ..information import Information
from . import batch
from ._exporting import write_png
from .catalogue import Found, catalogue_paths
from .steps import corrected

__all__ = ["gallery"]

_PAGE_SIDE = 512  # pixels of the longer side of an image on the page of its file, at most
_MADE_BY_HAND = Path(__file__).with_name("pages")


def gallery(
    files: Found | Iterable[str | os.PathLike[str]],
    output: str | os.PathLike[str],
    *,
    operator: str | None = "line",
    resume: bool = False,
    scheduler: str | None = None,
    workers: int | None = None,
) -> pd.DataFrame:
    """Makes ``index.html`` in the folder ``output``: thumbnails that lead to a page for each file.

    Images are corrected line by line with ``operator``. The other parameters, and the folder, are those of
    :func:`veloxd.archive.map`.
    """
    paths = list(dict.fromkeys(os.path.realpath(path) for path in catalogue_paths(files)))
    folder = Path(os.path.realpath(output))
    root = os.path.commonpath([os.path.dirname(path) for path in paths]) if paths else ""
    step = _Page(str(folder), root, operator)
    done = batch.map(step, paths, folder, resume=resume, scheduler=scheduler, workers=workers)
    tiles = [json.loads(tile) for tile in done.get("tile", pd.Series(dtype=str)).dropna()]
    _write(folder / "files.js", "const files = " + json.dumps(tiles, ensure_ascii=False) + ";\n")
    for name in ("index.html", "gallery.css", "gallery.js"):
        with replacement(str(folder / name), overwrite=True) as temporary:
            shutil.copyfile(_MADE_BY_HAND / name, temporary)
    return done


@dataclass(frozen=True)
class _Page:
    """Makes the page and the thumbnail of a file, and what the list says of it."""

    folder: str
    root: str
    operator: Optional[str]  # noqa: UP045

    def __call__(self, path: str) -> dict[str, str]:
        name = os.path.relpath(path, self.root)
        digest = hashlib.sha256(os.fsencode(name)).hexdigest()[:20]
        place = f"{digest[:2]}/{digest[2:]}"
        target = Path(self.folder, "pages", place)
        target.parent.mkdir(parents=True, exist_ok=True)
        with oxd.open(path) as file:
            shown = [
                (group.name, channel, self._draw(target, f"{position}-{slot}", channel))
                for position, group in enumerate(file.groups)
                for slot, channel in enumerate(group.channels)
                if channel.size
            ]
            if not shown:
                raise Error("There is no channel to show.")
            info = _items(file.info)
            _write(target.with_suffix(".html"), _page(_readable(name), shown, info))
            shown.sort(key=lambda one: one[1].is_curves)  # images first; sorting keeps the order otherwise
            tile = {
                "name": _readable(name),
                "page": f"pages/{place}.html",
                "picture": f"pages/{place[:3]}{shown[0][2]}",
                "info": info,
            }
        return {"tile": json.dumps(tile, ensure_ascii=False)}

    def _draw(self, target: Path, place: str, channel: Channel) -> str:
        """Writes the picture of a channel; its name in the folder of the page."""
        suffix = "svg" if channel.is_curves else "png"
        output = f"{target}-{place}.{suffix}"
        if channel.is_curves:
            _write(Path(output), picture.curves(channel))
        else:
            step = max(1, -(-max(channel.shape) // _PAGE_SIDE))
            with replacement(output, overwrite=True) as temporary:
                write_png(temporary, corrected(channel, self.operator), channel, step)
        return os.path.basename(output)


def _readable(name: str) -> str:
    return name.encode("utf-8", "surrogateescape").decode("utf-8", "replace")


def _items(info: Information) -> dict[str, str]:
    """All items by their paths."""
    found = {key: value for key, value in info.items() if isinstance(value, str)}
    for key, group in info.items():
        if isinstance(group, Information):
            found.update({f"{key}/{name}": value for name, value in _items(group).items()})
    return found


def _page(name: str, shown: list[tuple[str, Channel, str]], info: dict[str, str]) -> str:
    figures = "".join(
        f'<figure><img src="{html.escape(source)}" alt=""><figcaption>{html.escape(_caption(group, channel))}'
        "</figcaption></figure>\n"
        for group, channel, source in shown
    )
    rows = "".join(
        f"<tr><th>{html.escape(key)}</th><td>{html.escape(value)}</td></tr>\n" for key, value in info.items()
    )
    title = html.escape(name)
    return (
        f'<!doctype html>\n<html lang="en"><meta charset="utf-8"><title>{title}</title>\n'
        '<link rel="stylesheet" href="../../gallery.css">\n'
        f'<p><a href="../../index.html">All files</a></p>\n<h1>{title}</h1>\n'
        f"{figures}<table>\n{rows}</table>\n</html>\n"
    )


def _caption(group: str, channel: Channel) -> str:
    lines, points = channel.shape
    return f"{group} / {channel.name} [{channel.unit}], {points} × {lines}"


def _write(path: Path, text: str) -> None:
    with replacement(str(path), overwrite=True) as temporary:
        Path(temporary).write_text(text, encoding="utf-8")
