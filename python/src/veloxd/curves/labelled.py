"""Makes xarray's data sets of results."""

from __future__ import annotations

from dataclasses import fields
from typing import Any

import xarray as xr

from ..xarray.names import unused
from .inputs import Curves
from .reason import Reason
from .results import Result
from .units import combined


def dataset(result: Result, curves: Curves) -> xr.Dataset:
    """A result of labelled curves, with the coordinates that these have, and with units and names in words."""
    assert curves.origin is not None
    origin = _renamed(curves.origin, result)
    points = str(origin.dims[-1])
    variables = {one.name: _variable(one.metadata, getattr(result, one.name), curves, origin) for one in fields(result)}
    used = {dim for variable in variables.values() for dim in variable.dims}
    coordinates = {name: each for name, each in origin.coords.items() if points in used or points not in each.dims}
    return xr.Dataset(variables, coordinates)


def _renamed(origin: xr.DataArray, result: Result) -> xr.DataArray:
    """The curves with ``_2`` behind those names of dimensions and coordinates that the result has itself."""
    placeholder = {"points"}  # stands for the last dimension of the curves
    dims = {dim for one in fields(result) for dim in one.metadata["dims"]}
    own = {one.name for one in fields(result)} | (dims - placeholder)
    names = [str(name) for name in {**dict.fromkeys(origin.dims), **dict.fromkeys(origin.coords)}]
    taken = own.union(names)
    return origin.rename({name: unused(name, taken.__contains__) for name in names if name in own})


def _variable(metadata: Any, values: Any, curves: Curves, origin: xr.DataArray) -> xr.Variable:
    dims = (*origin.dims[:-1], *(origin.dims[-1] if dim == "points" else dim for dim in metadata["dims"]))
    attributes: dict[str, Any] = {"long_name": metadata["long_name"]}
    if metadata["member"] == "reason":
        attributes["flag_values"] = [int(reason) for reason in Reason]
        attributes["flag_meanings"] = " ".join(reason.name.lower() for reason in Reason)
    else:
        attributes["units"] = combined(metadata["unit"], curves.signal_unit, curves.axis_unit)
    return xr.Variable(dims, values, attributes)
