"""The coordinates of labelled arrays that tell where points are."""

from __future__ import annotations

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    import xarray as xr


def own_positions(along: str) -> str:
    """The coordinate that has the positions of the points of each line: ``x_grid_2`` for the dimension ``x_2``."""
    return along.replace("x", "x_grid", 1)


def positions_of(array: xr.DataArray) -> str:
    """The name of the coordinate along the last dimension: that of each line's own positions if there is one."""
    along = str(array.dims[-1])
    own = own_positions(along)
    return own if own in array.coords and along in array.coords[own].dims else along
