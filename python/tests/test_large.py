"""A large file is read without needing memory for more than what is asked for."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

import numpy as np
import pytest

MEBIBYTES = 512

PROGRAM = """
import sys
import numpy as np
import veloxd

lines, path = int(sys.argv[1]), sys.argv[2]
veloxd.open(sys.argv[3])[0][0].level("line", np.s_[:2])  # whatever is loaded once


def resident(which):
    with open("/proc/self/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith(which)) / 1024


file = veloxd.open(path)
channel = file[0][0]
opened = resident("VmRSS")
with open("/proc/self/clear_refs", "w") as peak:
    peak.write("5")  # the peak begins anew
total = 0.0
for start in range(0, lines, 16):
    total += channel[start : start + 16].sum() + channel[start, ::7].sum()
column, row = channel[:, 5], np.empty(8192)
channel.level("parabola", lines - 1, out=row)
repr(channel), channel._repr_html_()
assert abs(column[-1] - column[0] - (lines - 1)) < 1, (column[0], column[-1])
print(resident("VmHWM") - opened)
"""


@pytest.mark.skipif(not os.path.exists("/proc/self/clear_refs"), reason="needs to measure memory")
def test_slices_of_a_large_file_take_below_20_mib_beside_the_library(scan: Path, tmp_path: Path) -> None:
    points = 8192
    lines = (MEBIBYTES << 20) // (4 * points)
    header = (
        "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=G\r\nGr0-Count=1\r\nGr0-Ch0=C\r\n[C]\r\nVersion=2\r\n"
        f"Points={points}\r\nLines={lines}\r\nDim0Unit=m\r\nDim1Unit=m\r\nSaveBits=32\r\n"
        "Dim2Range=1.07374e+09\r\nDim2Min=-5.36871e+08\r\n\r\n#!"
    )
    large = tmp_path / "large.oxd"
    with large.open("wb") as file:
        file.write(header.encode())
        # The lines between the first and the last are holes, which take no room on the disk and are read as zeros.
        for line, offset in ((0, 0), (lines - 1, 4 * points * (lines - 2))):
            file.seek(offset, os.SEEK_CUR)
            file.write((np.arange(line, line + points, dtype="<i4") << 2).tobytes())
    done = subprocess.run(
        [sys.executable, "-c", PROGRAM, str(lines), large, scan], capture_output=True, text=True, check=False
    )
    assert done.returncode == 0, done.stderr
    assert float(done.stdout) < 20
