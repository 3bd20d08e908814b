"""How files, groups, channels and information show themselves in a terminal and in a notebook."""

from __future__ import annotations

import base64
import html
import os
from collections.abc import Iterable
from typing import TYPE_CHECKING

from .._native.library import LOCK
from .._prefixes import suitable
from ..errors import Error
from ..information import Information
from . import picture

if TYPE_CHECKING:
    from ..axis import Axis
    from ..channel import Channel
    from ..file import File
    from ..group import Group

_MOST_PICTURES = 12


def file_repr(file: File) -> str:
    name = os.path.basename(file.path) or "not saved"
    if file.closed:
        return f"<veloxd.File {name!r}: closed>"
    return _alive(file, lambda: "\n".join([f"<veloxd.File {name!r} ({file.mode})>", *_group_lines(file)]))


def _group_lines(file: File) -> Iterable[str]:
    for position, group in enumerate(file.groups):
        yield f"  {position} {group.name}: {', '.join(channel.name for channel in group.channels) or 'no channels'}"


def group_repr(group: Group) -> str:
    def lines() -> str:
        first = f"<veloxd.Group {group.name!r}>"
        return "\n".join([first, *(f"  {number} {_brief(one)}" for number, one in enumerate(group.channels))])

    return _alive(group, lines)


def channel_repr(channel: Channel) -> str:
    return _alive(channel, lambda: f"<veloxd.Channel {_brief(channel)}>")


def _alive(thing: object, show: object) -> str:
    """What ``show`` gives, or why the object cannot be used: showing it must not fail."""
    try:
        with LOCK:
            return str(show())  # type: ignore[operator]
    except Error as failure:
        return f"<veloxd.{type(thing).__name__}: {failure}>"


def _brief(channel: Channel) -> str:
    lines, points = channel.shape
    unit = f" in {channel.unit}" if channel.unit else ""
    return f"{channel.name!r}: {lines} x {points}{unit}, {_span(channel.y)} x {_span(channel.x)}"


def _span(axis: Axis) -> str:
    factor, unit = suitable(axis.range, axis.unit)
    return f"{axis.name} {axis.range * factor:g} {unit}".rstrip()


def _ends(axis: Axis) -> str:
    factor, unit = suitable(max(abs(axis.minimum), abs(axis.maximum)), axis.unit)
    return f"{axis.minimum * factor:g} .. {axis.maximum * factor:g} {unit}".rstrip()


def file_html(file: File) -> str:
    if file.closed:
        return f"<pre>{html.escape(file_repr(file))}</pre>"
    with LOCK:
        groups = file.groups
        left = _MOST_PICTURES
        parts = [f"<b>{html.escape(os.path.basename(file.path) or 'not saved')}</b>"]
        for group in groups:
            parts.append(_group_table(group, left))
            left = max(0, left - len(group.channels))
        if len(file.info):
            parts.append(f"<details><summary>Information</summary>{information_html(file.info)}</details>")
    return "".join(parts)


def group_html(group: Group) -> str:
    with LOCK:
        return _group_table(group, _MOST_PICTURES)


def _group_table(group: Group, pictures: int) -> str:
    heads = ("", "Channel", "Lines x points", "Signal axis", "x", "y")
    rows = [
        (
            _thumbnail(channel) if position < pictures else "",
            html.escape(channel.name),
            "{} x {}".format(*channel.shape),
            *(html.escape(_ends(axis)) for axis in (channel.signal, channel.x, channel.y)),
        )
        for position, channel in enumerate(group.channels)
    ]
    return f"<table><caption>{html.escape(group.name)}</caption>{_row('th', heads)}{_rows(rows)}</table>"


def channel_html(channel: Channel) -> str:
    with LOCK:
        axes = [("Signal", channel.signal), ("x", channel.x), ("y", channel.y)]
        rows = [(which, html.escape(axis.name), html.escape(_ends(axis))) for which, axis in axes]
        rows.append(("Shape", "{} x {}".format(*channel.shape), "lines x points"))
        return f"<b>{html.escape(channel.name)}</b><table>{_rows(rows)}</table>{_thumbnail(channel)}"


def information_html(information: Information) -> str:
    with LOCK:
        rows = []
        for name, value in information.entries():
            shown = information_html(value) if isinstance(value, Information) else html.escape(value)
            rows.append((html.escape(name), shown))
    return f"<table>{_rows(rows)}</table>"


def _rows(rows: Iterable[Iterable[str]]) -> str:
    return "".join(_row("td", row) for row in rows)


def _row(tag: str, cells: Iterable[str]) -> str:
    return "<tr>" + "".join(f'<{tag} style="text-align:left">{cell}</{tag}>' for cell in cells) + "</tr>"


def _thumbnail(channel: Channel) -> str:
    try:
        if not channel.size:
            return ""
        if channel.is_curves:
            return picture.curves(channel)
        return f'<img alt="" src="data:image/png;base64,{base64.b64encode(picture.image(channel)).decode()}">'
    except Error as failure:  # a line that cannot be read
        return html.escape(str(failure))
