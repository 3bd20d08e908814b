"""Files that the tests read: a small scan, and curves that stop early."""

from __future__ import annotations

from pathlib import Path
from typing import Any

import numpy as np

import veloxd

LINES, POINTS = 8, 16


def make_scan(path: Path) -> None:
    """A tilted plane with its phase, and some information."""
    x, y = np.meshgrid(np.linspace(0, 1, POINTS), np.linspace(0, 1, LINES))
    axes: dict[str, Any] = {
        "x": {"name": "X", "unit": "m", "range": 1e-6},
        "y": {"name": "Y", "unit": "m", "range": 1e-6},
    }
    with veloxd.create(path) as file:
        group = file.create_group("ForwardScan", slots=2)
        group.create_channel("Topography", 5e-9 * x + 2e-9 * y, unit="m", limits=(-1e-8, 1e-8), **axes)
        group.create_channel("Phase", 90 * y, unit="°", **axes)
        file.info = {"Scan": {"Image size": "1 µm", "Time/Line": "0.5 s"}}
        file.save()


def ragged_file(path: Path, valid: list[int], points: int = 6, bits: int = 16, claimed: str = "") -> np.ndarray:
    """Writes a file whose lines have point axes of their own and stop after so many points; returns its raw samples."""
    lines = [f"LineDim{k}Range=1\r\nLineDim{k}Min={k}\r\nLineDim{k}Points={count}\r\n" for k, count in enumerate(valid)]
    header = (
        "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=Curves\r\nGr0-Count=2\r\nGr0-Ch1=C\r\n"
        f"[C]\r\nVersion=3\r\nPoints={points}\r\nLines={len(valid)}\r\nDim0Unit=m\r\nDim0Range=1\r\nDim0Min=0\r\n"
        f"Dim2Name=Force\r\nDim2Unit=N\r\nDim2Range=2\r\nDim2Min=-1\r\nSaveBits={bits}\r\n{''.join(lines)}{claimed}\r\n#!"
    )
    stored = 4 * np.arange(-2, len(valid) * points - 2, dtype=f"<i{bits // 8}").reshape(len(valid), points)
    rows = [row.tobytes() for row, count in zip(stored, valid) if count]
    path.write_bytes(header.encode() + b"".join(rows))
    return stored.astype(np.int32) << (30 - bits) if bits < 30 else stored >> 2
