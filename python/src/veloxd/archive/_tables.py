"""The three tables of a catalogue, and how a record of ``oxd scan`` becomes their rows."""

from __future__ import annotations

import datetime
from typing import Any

import pyarrow as pa

from ..curves.units import base
from ..quantity import Quantity

_AXES = (("signal", "signalAxis"), ("x", "pointAxis"), ("y", "lineAxis"))

FILES = pa.schema(
    [
        ("file", pa.int64()),
        ("path", pa.string()),
        ("size", pa.int64()),
        ("modified", pa.timestamp("us")),  # UTC
        ("modified_ns", pa.int64()),
        ("id", pa.string()),
        ("version", pa.int32()),
        ("errors", pa.int32()),
        ("warnings", pa.int32()),
        ("notes", pa.int32()),
        ("error", pa.string()),
    ]
)
CHANNELS = pa.schema(
    [
        ("file", pa.int64()),
        ("group_id", pa.int64()),
        ("group", pa.string()),
        ("slot", pa.int64()),
        ("channel", pa.string()),
        ("points", pa.int64()),
        ("lines", pa.int64()),
        ("bits", pa.int32()),
        ("certain", pa.bool_()),
        *((f"{axis}_{key}", pa.string()) for axis, _ in _AXES for key in ("name", "unit")),
        *((f"{axis}_{key}", pa.float64()) for axis, _ in _AXES for key in ("min", "range")),
    ]
)
ITEMS = pa.schema(
    [
        ("file", pa.int64()),
        ("path", pa.string()),  # names joined by slashes
        ("name", pa.string()),  # the last of them
        ("value", pa.string()),
        ("number", pa.float64()),  # in the unit without prefixes; null if the value is no number with a unit
        ("unit", pa.string()),
    ]
)
SCHEMAS = {"files": FILES, "channels": CHANNELS, "items": ITEMS}


def stored_path(path: str) -> str:
    """The path as a text that every program can read: bytes that are not UTF-8 become U+FFFD."""
    return path.encode("utf-8", "surrogateescape").decode("utf-8", "replace")


def file_row(number: int, path: str, size: int, modified_ns: int, record: dict[str, Any]) -> dict[str, Any]:
    """The row of a file. Size and time are those by which a change is noticed later."""
    time = datetime.datetime(1970, 1, 1) + datetime.timedelta(microseconds=modified_ns // 1000)
    row = {key: record.get(key) for key in ("id", "version", "errors", "warnings", "notes", "error")}
    return {
        "file": number,
        "path": stored_path(path),
        "size": size,
        "modified": time if modified_ns >= 0 else None,
        "modified_ns": modified_ns,
        **row,
    }


def channel_rows(number: int, record: dict[str, Any]) -> list[dict[str, Any]]:
    """A row for each channel."""
    return [_channel_row(number, group, channel) for group in record.get("groups", ()) for channel in group["channels"]]


def _channel_row(number: int, group: dict[str, Any], channel: dict[str, Any]) -> dict[str, Any]:
    row = {key: channel[key] for key in ("slot", "points", "lines", "bits", "certain")}
    for axis, name in _AXES:
        row.update({f"{axis}_{key}": value for key, value in channel[name].items()})
    return {"file": number, "group_id": group["id"], "group": group["name"], "channel": channel["name"], **row}


def item_rows(number: int, record: dict[str, Any]) -> list[dict[str, Any]]:
    """A row for each item of information."""
    return [_item_row(number, item["path"], item["value"]) for item in record.get("info", ())]


def _item_row(number: int, path: list[str], value: str) -> dict[str, Any]:
    quantity = quantity_in_base(value)
    return {
        "file": number,
        "path": "/".join(path),
        "name": path[-1],
        "value": value,
        "number": quantity.value if quantity else None,
        "unit": quantity.unit if quantity else None,
    }


def quantity_in_base(text: str) -> Quantity | None:
    """The number of a text in its unit without prefixes; nothing for any other text."""
    try:
        given = Quantity.parse(text)
    except ValueError:
        return None
    factor, unit = base(given.unit)
    # Division by a power of ten is exact where multiplication by its inverse is not.
    return Quantity(given.value * factor if factor >= 1 else given.value / round(1 / factor), unit)
