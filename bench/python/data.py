"""Files with the same samples for each contender: .oxd written byte by byte, and HDF5."""

from __future__ import annotations

from pathlib import Path

import h5py
import numpy as np
import numpy.typing as npt

NAMES = ("Topography", "Phase", "Amplitude", "Deflection", "Friction", "Current", "Potential", "Height")
_MINIMUM, _RANGE = -1e-6, 2e-6  # of the signal axis, in metres


def samples(lines: int, points: int, bits: int) -> npt.NDArray[np.signedinteger]:
    """Samples as files store them, none of which the widening to 30 bits changes."""
    kind = np.dtype(f"<i{bits // 8}")
    steps = np.arange(lines * points, dtype=np.int64) * 7919
    return ((steps % 2 ** (bits - 3)) << (2 if bits == 32 else 0)).astype(kind).reshape(lines, points)


def write_oxd(path: Path, stored: npt.NDArray[np.signedinteger], channels: int) -> None:
    lines, points = stored.shape
    section = (
        f"Version=3\r\nPoints={points}\r\nLines={lines}\r\nDim0Name=X\r\nDim0Unit=m\r\nDim0Range=1e-06\r\nDim0Min=0\r\n"
        f"Dim1Name=Y\r\nDim1Unit=m\r\nDim1Range=1e-06\r\nDim1Min=0\r\n"
        f"Dim2Unit=m\r\nDim2Range={_RANGE:g}\r\nDim2Min={_MINIMUM:g}\r\nSaveBits={8 * stored.itemsize}\r\n"
    )
    names = "".join(f"Gr0-Ch{number}=C{number}\r\n" for number in range(channels))
    sections = "".join(f"[C{number}]\r\nDim2Name={NAMES[number]}\r\n{section}\r\n" for number in range(channels))
    head = f"[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=ForwardScan\r\nGr0-Count={channels}\r\n{names}\r\n"
    with path.open("wb") as file:
        file.write((head + sections + "#!").encode())
        for _ in range(channels):
            stored.tofile(file)


def write_hdf5(path: Path, stored: npt.NDArray[np.signedinteger], channels: int) -> None:
    """The samples as they are, with what makes them real values."""
    step = _RANGE / (2**30 - 1) * (0.25 if stored.itemsize == 4 else 2 ** (30 - 8 * stored.itemsize))
    attributes = {"unit": "m", "scale": step, "offset": _MINIMUM + 2**29 * _RANGE / (2**30 - 1)}
    with h5py.File(path, "w") as file:
        group = file.create_group("ForwardScan")
        for name in NAMES[:channels]:
            group.create_dataset(name, data=stored).attrs.update(attributes)
