"""Measurement information as attributes, which are flat and must not contain a slash in netCDF.

The item ``Image size`` of the group ``Scan`` is the attribute ``Scan::Image size``, with a group in a group the same
way. Where a name contains ``%``, ``/`` or two colons, they are written as in web addresses: ``Scan::Time%2FLine``.
"""

from __future__ import annotations

from collections.abc import Iterator, Mapping
from typing import Any

from ..information import Information
from .names import unused

_SEPARATOR = "::"
_ESCAPES = (("%", "%25"), ("/", "%2F"), (":", "%3A"))


def flatten(information: Information) -> dict[str, str]:
    """All items of the information as attributes. Of several with the same name, later ones get ``_2`` and so on."""
    attributes: dict[str, str] = {}
    _collect(information, (), attributes)
    return attributes


def _collect(group: Information, path: tuple[str, ...], attributes: dict[str, str]) -> None:
    for name, value in group.entries():
        if isinstance(value, Information):
            _collect(value, (*path, name), attributes)
        else:
            key = _SEPARATOR.join(map(_escape, (*path, name)))
            attributes[unused(key, attributes.__contains__)] = value


def _escape(name: str) -> str:
    special = _ESCAPES if _SEPARATOR in name or name[:1] == ":" or name[-1:] == ":" else _ESCAPES[:2]
    for character, escape in special:
        name = name.replace(character, escape)
    return name


def _unescape(name: str) -> str:
    for character, escape in reversed(_ESCAPES):
        name = name.replace(escape, character)
    return name


def nest(attributes: Mapping[Any, Any]) -> dict[str, Any]:
    """The information that attributes hold: those whose names have a separator. Line breaks become blanks.

    Items that have the name of a group get ``_2`` and so on, as in `flatten`.
    """
    content: dict[str, Any] = {}
    items = list(_items(attributes))
    groups = [_group_at(content, path) for path, _, _ in items]
    for group, (_, name, text) in zip(groups, items):
        group[unused(name, group.__contains__)] = text
    return content


def _items(attributes: Mapping[Any, Any]) -> Iterator[tuple[list[str], str, str]]:
    """The path of the group, the name and the text of each item."""
    for key, value in attributes.items():
        *path, name = (_unescape(part) for part in str(key).split(_SEPARATOR))
        text = " ".join(str(value).split("\n")).strip()
        if path and all(path) and name and text:
            yield path, name, text


def _group_at(content: dict[str, Any], path: list[str]) -> dict[str, Any]:
    """The group at a path, which is made if there is none."""
    for name in path:
        content = content.setdefault(name, {})
    return content
