"""Uses what an installed Python package has beside plots: blocks of lines, force curves, and xarray's engine.

    python_package.py FILE"""

import sys

import numpy as np
import xarray as xr

import veloxd
import veloxd.curves

path = sys.argv[1]
with veloxd.open(path, mode="r+") as file:
    channel = file["ForwardScan"]["Topography"]
    values = channel.values
    channel[::-2] = values[::-2]
    np.testing.assert_allclose(channel.values, values, rtol=0, atol=abs(channel.signal.range) / 2**29)

slope = veloxd.curves.slope(2.0 * np.arange(64.0), x=0.5 * np.arange(64.0))
np.testing.assert_allclose(slope.value, 4.0)

with xr.open_dataset(path, group="ForwardScan") as scan:
    np.testing.assert_array_equal(scan["Topography"][3], values[3])
    assert scan["Topography"].attrs["units"] == "m"
    levelled = scan["Topography"].oxd.level("line")
assert 0 < levelled.std() < values.std()
print(f"veloxd {veloxd.__version__} with NumPy {np.__version__} and xarray {xr.__version__}")
