"""The colour maps of the program's pictures, which are named as matplotlib's."""

from __future__ import annotations

from pathlib import Path

import numpy as np
import pytest
from tool import run_tool

import veloxd

plt = pytest.importorskip("matplotlib.pyplot")


@pytest.mark.parametrize("name", ["gray", "viridis", "magma", "inferno", "cividis"])
def test_maps_have_the_colours_of_matplotlib(tmp_path: Path, name: str) -> None:
    with veloxd.create(tmp_path / "ramp.oxd") as file:
        channel = file.create_group("Group").create_channel("Height", shape=(1, 256))
        channel.raw = np.linspace(-(2**29), 2**29 - 1, 256).astype(np.int32)[np.newaxis]
        file.save()
    for suffix in ("", "_r"):
        options = ["-g", "Group", "-c", "0", "--as", "image", "--no-axes", "--range", "full", "--map", name + suffix]
        run_tool("export", tmp_path / "ramp.oxd", *options, "-o", tmp_path / "ramp.png")
        picture = plt.imread(tmp_path / "ramp.png")[0, :, :3]
        drawn = picture[:: len(picture) // 256]
        wanted = plt.get_cmap(name + suffix)(np.arange(256))[:, :3]
        assert np.abs(drawn - wanted).max() < 0.05
