"""Makes xarray's objects of channels, groups and files."""

from __future__ import annotations

from typing import Any, Callable

import numpy as np
import xarray as xr

from .._calibration import ATTRIBUTES, calibration
from .._native.library import LOCK
from .._positions import own_positions
from .._resolution import signal_step
from ..axis import Axis
from ..channel import Channel
from ..file import File
from ..group import Group
from ..information import root_of
from .attributes import flatten
from .names import safe, unused

# What gives the values of a channel: an array in memory, or one that reads when it is indexed.
Values = Callable[[Channel], Any]


def channel_to_xarray(channel: Channel) -> xr.DataArray:
    """A channel as a ``DataArray`` with the dimensions ``y`` and ``x``, in memory."""
    with LOCK:
        dims = ("y", "x")
        return xr.DataArray(_variable(channel, dims, in_memory), coords=_coordinates(channel, dims), name=channel.name)


def group_to_xarray(group: Group) -> xr.Dataset:
    """The channels of a group as a ``Dataset``, in memory, with the information of the file as attributes."""
    with LOCK:
        dataset = group_dataset(group, in_memory)
        dataset.attrs.update(flatten(root_of(group._handle)))
    return dataset


def file_to_xarray(file: File) -> xr.DataTree:
    """The groups of a file as a ``DataTree``, in memory, with its information as attributes of the root."""
    with LOCK:
        tree: xr.DataTree = xr.DataTree.from_dict(file_datasets(file, in_memory))
    return tree


def in_memory(channel: Channel) -> Any:
    """The values of a channel as an array in memory."""
    return channel.values


def file_datasets(file: File, values: Values) -> dict[str, xr.Dataset]:
    """The data sets of a tree by their paths."""
    datasets = {"/": xr.Dataset(attrs=flatten(file.info))}
    for group in file.groups:
        name = unused(safe(group.name), lambda candidate: f"/{candidate}" in datasets)
        datasets[f"/{name}"] = group_dataset(group, values)
    return datasets


def group_dataset(group: Group, values: Values) -> xr.Dataset:
    """The channels of a group. Those whose shape and axes are those of the first have the dimensions y and x.

    Others have ``y_2`` and ``x_2``, and so on, of which those are left out that a channel has the name of.
    """
    variables: dict[str, xr.Variable] = {}
    coordinates: dict[str, xr.Variable] = {}
    known: list[tuple[Any, tuple[str, str]]] = []
    channels = group.channels
    names = {safe(channel.name) for channel in channels}
    for channel in channels:
        dims = _dimensions(channel, known, {*names, *variables, *coordinates})
        coordinates.update(_coordinates(channel, dims))
        taken = {*variables, *coordinates}
        variables[unused(safe(channel.name), taken.__contains__)] = _variable(channel, dims, values)
    attributes = {"group": group.name, "logical_id": group.logical_id}
    return xr.Dataset(variables, coordinates, attributes)


def _dimensions(channel: Channel, known: list[tuple[Any, tuple[str, str]]], taken: set[str]) -> tuple[str, str]:
    """The dimensions of a channel: those of ``known`` with the same axes, or new ones that are not taken."""
    axes = (channel.shape, channel.x.as_dict(), channel.y.as_dict(), _grid_key(channel))
    for other, dims in known:
        if other == axes:
            return dims
    number = len(known) + 1
    while known and not taken.isdisjoint(f"{name}_{number}" for name in ("y", "x", "x_grid")):
        number += 1
    suffix = f"_{number}" if known else ""
    known.append((axes, (f"y{suffix}", f"x{suffix}")))
    return known[-1][1]


def _grid_key(channel: Channel) -> Any:
    return channel.x.grid.tobytes() if channel.x.varies else None


def _variable(channel: Channel, dims: tuple[str, str], values: Values) -> xr.Variable:
    attributes = {
        "long_name": channel.name,
        "units": channel.unit,
        "signal_minimum": channel.signal.minimum,
        "signal_range": channel.signal.range,
        "signal_step": signal_step(channel),
        "channel": channel._numbers()[-1],
        **{ATTRIBUTES[option]: text for option, text in calibration(root_of(channel._handle)).items()},
    }
    return xr.Variable(dims, values(channel), attributes)


def _coordinates(channel: Channel, dims: tuple[str, str]) -> dict[str, xr.Variable]:
    """The positions of lines and points. Where lines have point axes of their own, ``x_grid`` has those of each."""
    y, x = dims
    coordinates = {y: _coordinate(channel.y, (y,)), x: _coordinate(channel.x, (x,))}
    if channel.x.varies:
        coordinates[own_positions(x)] = xr.Variable(dims, channel.x.grid, coordinates[x].attrs)
    return coordinates


def _coordinate(axis: Axis, dims: tuple[str, ...]) -> xr.Variable:
    attributes = {"long_name": axis.name, "units": axis.unit, "axis_minimum": axis.minimum, "axis_range": axis.range}
    return xr.Variable(dims, np.asarray(axis.values), attributes)
