"""Labelled arrays: files as xarray's data sets and trees, and back.

xarray opens files by itself, lazily, as ``xarray.open_dataset(path, engine="veloxd", group="ForwardScan")`` and
``xarray.open_datatree(path, engine="veloxd")``. Importing this module, or opening a file so, gives every
``xarray.DataArray`` the accessor ``oxd``.
"""

from .accessor import OxdAccessor
from .backend import VeloxdBackend
from .reading import channel_to_xarray, file_to_xarray, group_to_xarray
from .writing import from_xarray

__all__ = [
    "OxdAccessor",
    "VeloxdBackend",
    "channel_to_xarray",
    "file_to_xarray",
    "from_xarray",
    "group_to_xarray",
]
