"""Labelled arrays: opened lazily, computed on by dask, kept in other formats, and written back."""

from __future__ import annotations

import pickle
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any

import dask
import matplotlib.pyplot as plt
import numpy as np
import pytest
import xarray as xr
from samples import LINES, POINTS, make_scan, ragged_file

import veloxd
from veloxd._native import handle

WRITERS = [
    ("netcdf4", lambda data, path: data.to_netcdf(path, engine="netcdf4")),
    ("h5netcdf", lambda data, path: data.to_netcdf(path, engine="h5netcdf")),
    ("zarr", lambda data, path: data.to_zarr(path, zarr_format=2, consolidated=True)),
]

needs_trees = pytest.mark.skipif(not hasattr(xr, "DataTree"), reason="trees need xarray 2024.10")


def mean_of(array: xr.DataArray) -> float:
    return float(array.mean())


def test_a_group_opens_with_coordinates_units_and_information(scan: Path) -> None:
    with xr.open_dataset(scan) as dataset, veloxd.open(scan) as file:
        channel = file[0]["Topography"]
        topography = dataset["Topography"]
        assert dict(dataset.sizes) == {"y": LINES, "x": POINTS}
        assert (topography.attrs["units"], topography.attrs["long_name"]) == ("m", "Topography")
        assert (topography.x.attrs["units"], topography.x.attrs["long_name"]) == ("m", "X")
        np.testing.assert_allclose(topography.x, np.linspace(0, 1e-6, POINTS))
        assert dataset.attrs["Scan::Image size"] == "1 µm"
        assert dataset.attrs["Scan::Time%2FLine"] == "0.5 s"
        np.testing.assert_array_equal(topography.isel(y=slice(2, 5), x=3), channel[2:5, 3])
        np.testing.assert_array_equal(topography[::-2, [3, 1]], channel.values[::-2, [3, 1]])
        xr.testing.assert_identical(dataset.load(), file[0].to_xarray())
        xr.testing.assert_identical(dataset["Phase"], file[0]["Phase"].to_xarray())


@needs_trees
def test_a_file_opens_as_a_tree(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        file.create_group("ForwardScan")
        file.create_group("Back/ward").create_channel("a/b", [[1.0, 2.0]])
        file[2].create_channel("a/b", [[1.0, 2.0]])
        file[2].create_channel("other", [[1.0, 2.0, 3.0]])
        file.save()
        with xr.open_datatree(scan, engine="veloxd") as tree:
            assert list(tree) == ["ForwardScan", "ForwardScan_2", "Back_ward"]
            assert list(tree["Back_ward"].data_vars) == ["a_b", "a_b_2", "other"]
            assert tree["Back_ward"]["other"].dims == ("y_2", "x_2")
            assert tree.attrs["Scan::Image size"] == "1 µm"
            assert tree["ForwardScan"].attrs["group"] == "ForwardScan"
            xr.testing.assert_identical(tree.load(), file.to_xarray())
    for group, expected in (("Back/ward", 3), (-1, 3), (0, 2)):
        with xr.open_dataset(scan, engine="veloxd", group=group, drop_variables="no such") as dataset:
            assert len(dataset.data_vars) == expected
    with xr.open_dataset(scan, group=0, drop_variables=["Phase"]) as dataset:
        assert list(dataset) == ["Topography"]
    with pytest.raises(ValueError, match="'Back/ward'"):
        xr.open_dataset(scan)
    with pytest.raises(FileNotFoundError):
        xr.open_dataset("missing.oxd", engine="veloxd")


def test_lines_with_axes_of_their_own_have_a_coordinate_for_each_point(tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 4])
    with xr.open_dataset(tmp_path / "ragged.oxd") as dataset:
        np.testing.assert_allclose(dataset["x_grid"][:, 0], [0, 1])
        assert dataset["Force"].isnull().values.tolist() == [[False] * 6, [False] * 4 + [True] * 2]
        with pytest.raises(ValueError, match=r"gaps.*dropna\('y'\)"):
            veloxd.from_xarray(dataset)
        whole = dataset.dropna("y").drop_vars("x_grid")
        with veloxd.from_xarray(whole) as file:
            np.testing.assert_allclose(file[0][0].values, dataset["Force"][:1], atol=1e-8)


def test_lines_stay_lines_in_whatever_order_the_dimensions_are(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        file[0].create_channel("Other", np.arange(6.0).reshape(2, 3))
        dataset = file[0].to_xarray()
        expected = {channel.name: channel.values for channel in file[0].channels}
    turned = dataset.transpose()
    assert (turned["Phase"].dims, turned["Other"].dims) == (("x", "y"), ("x_2", "y_2"))
    with veloxd.from_xarray(turned[sorted(turned.data_vars, reverse=True)]) as file:
        assert list(file[0]) == list(expected)
        for channel in file[0].channels:
            np.testing.assert_allclose(
                channel.values, expected[channel.name], rtol=0, atol=channel.signal.range / 2**29
            )
        assert (file[0][0].x.name, file[0][0].y.name) == ("X", "Y")
    others = xr.DataArray(np.zeros((2, 3)), dims=("x", "y_2"))
    with veloxd.from_xarray(others) as file:
        assert file[0][0].shape == (2, 3)


def test_positions_may_be_rounded_by_their_type_as_long_as_they_are_told_apart() -> None:
    for kind, offset, is_even in (("f4", 0.0, True), ("f4", 1.0, True), ("f4", 64.0, False), ("f8", 64.0, True)):
        positions = (offset + np.arange(50) * 1e-6).astype(kind)
        array = xr.DataArray(np.zeros(50), dims="x", coords={"x": positions}, name="A")
        if is_even:
            with veloxd.from_xarray(array) as file:
                assert file[0][0].x.range == pytest.approx(49e-6, rel=1e-2)
        else:
            with pytest.raises(ValueError, match="evenly"):
                veloxd.from_xarray(array)


def test_channels_may_have_the_names_of_dimensions() -> None:
    names = ["x", "x_2", "y_3", "x_grid_4", "x", "last"]
    with veloxd.create() as file:
        group = file.create_group("G")
        for count, name in enumerate(names, 1):
            group.create_channel(name, np.full((1, count), float(count)))
        dataset = group.to_xarray()
    assert len(dataset.data_vars) == len(names)
    assert [(array.attrs["long_name"], array.size) for array in dataset.data_vars.values()] == [
        (name, count) for count, name in enumerate(names, 1)
    ]
    with veloxd.from_xarray(dataset) as again:
        assert [channel.name for channel in again[0].channels] == names


def test_arrays_are_pickled_as_a_path_and_read_in_threads_and_processes(scan: Path) -> None:
    with xr.open_dataset(scan) as dataset:
        topography = dataset["Topography"]
        pickled = pickle.dumps(topography)
        assert len(pickled) < 20_000
        np.testing.assert_array_equal(pickle.loads(pickled), topography)
        chunked = dataset.chunk({"y": 3})["Topography"]
        with dask.config.set(scheduler="threads"):
            np.testing.assert_array_equal((2 * chunked).compute(), 2 * topography.values)
        program = "import pickle, sys; print(float(pickle.load(sys.stdin.buffer).mean()))"
        mean = subprocess.run([sys.executable, "-c", program], input=pickled, capture_output=True, check=True).stdout
        assert float(mean) == pytest.approx(mean_of(topography))


def test_a_child_opens_a_file_of_its_own(scan: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    dataset = xr.open_dataset(scan)
    expected = dataset["Phase"].values
    with monkeypatch.context() as child:
        child.setattr(handle, "_generation", handle._generation + 1)
        np.testing.assert_array_equal(dataset["Phase"][2:4], expected[2:4])
        dataset.close()
        np.testing.assert_array_equal(dataset["Topography"].shape, expected.shape)


def test_many_files_open_in_parallel_with_few_of_them_kept_open(tmp_path: Path) -> None:
    paths = [tmp_path / f"{number}.oxd" for number in range(12)]
    for path in paths:
        make_scan(path)
    with xr.set_options(file_cache_maxsize=2):
        with xr.open_mfdataset(paths, parallel=True, combine="nested", concat_dim="scan", engine="veloxd") as many:
            assert many["Topography"].shape == (12, LINES, POINTS)
            assert float(many["Topography"].std("scan").max()) == 0
        datasets = [xr.open_dataset(path) for path in paths]
        with ThreadPoolExecutor(6) as pool:
            means = list(pool.map(lambda number: mean_of(datasets[number % 12]["Phase"]), range(120)))
        assert np.ptp(means) == 0


@needs_trees
@pytest.mark.parametrize(("engine", "write"), WRITERS, ids=[name for name, _ in WRITERS])
def test_other_formats_keep_everything_and_lead_back(scan: Path, tmp_path: Path, engine: str, write: Any) -> None:
    with xr.open_datatree(scan, engine="veloxd") as tree:
        write(tree, tmp_path / "kept")
        expected = tree.load()
    with xr.open_datatree(tmp_path / "kept", engine=engine) as kept:
        xr.testing.assert_identical(kept.load(), expected)
        with veloxd.from_xarray(kept) as file:
            assert file.save("again.oxd") == veloxd.SaveReport("again.oxd", clipped=0, inexact=0)
            assert list(file[0]) == ["Topography", "Phase"]  # whatever order the format has
    with veloxd.open("again.oxd") as again, veloxd.open(scan) as original:
        assert again.info.to_dict() == original.info.to_dict()
        assert [group.logical_id for group in again.groups] == [group.logical_id for group in original.groups]
        for old in original[0].channels:
            new = again[0][old.name]  # zarr sorts variables by name
            assert [axis.as_dict() for axis in (new.signal, new.x, new.y)] == [
                axis.as_dict() for axis in (old.signal, old.x, old.y)
            ]
            assert np.abs(new.raw - old.raw).max() <= 1


@needs_trees
def test_arrays_of_any_origin_become_files() -> None:
    lines = xr.DataArray([1.0, 2.0, 4.0], dims="z", coords={"z": [0.0, 0.5, 1.0]}, name="Force")
    with veloxd.from_xarray(lines, bits=16) as file:
        force = file["Data"]["Force"]
        assert force.shape == (1, 3)
        assert (force.x.name, force.x.minimum, force.x.range, force.y.name) == ("z", 0.0, 1.0, "Line")
        assert file.save("force.oxd").inexact > 0
    bad = {
        "3 dimensions": xr.DataArray(np.zeros((1, 1, 1))),
        "evenly": xr.DataArray([1.0, 2.0, 3.0], dims="x", coords={"x": [0, 1, 3]}),
        "gaps": xr.DataArray([1.0, np.nan]),
        "datetime64": xr.DataArray([1.0, 2.0], {"t": np.array([0, 1], "datetime64[ns]")}, ("t",)),
        "real numbers": xr.DataArray(["a"]),
    }
    for part, array in bad.items():
        with pytest.raises(ValueError, match=part):
            veloxd.from_xarray(array.to_dataset(name="variable"))
    nested = xr.Dataset(attrs={"A::B%2FC::d%3A%3Ae": "1\n2", "history": "left out", "A::": "", "::": "x"})
    with veloxd.from_xarray(nested) as file:
        assert file.info.to_dict() == {"A": {"B/C": {"d::e": "1 2"}}}
        assert file.to_xarray().attrs == {"A::B%2FC::d%3A%3Ae": "1 2"}


def test_items_with_the_names_of_groups_are_kept() -> None:
    attributes = {"A::Tip": "first", "A::Tip::Radius": "7 nm", "A::Tip_2": "second", "A::Tip_2::x": "1"}
    for order in (attributes, dict(reversed(attributes.items()))):
        with veloxd.from_xarray(xr.Dataset(attrs=order)) as file:
            kept = file.info.to_dict()["A"]
        assert (kept["Tip"], kept["Tip_2"]) == ({"Radius": "7 nm"}, {"x": "1"})
        assert {kept[name] for name in kept.keys() - {"Tip", "Tip_2"}} == {"first", "second"}


@pytest.mark.parametrize("operator", ["mean", "line", "parabola", "polynomial", "derive"])
def test_the_accessor_levels_as_channels_do(scan: Path, operator: str) -> None:
    with veloxd.open(scan) as file:
        expected = file[0]["Topography"].level(operator)
        topography = file[0]["Topography"].to_xarray()
    levelled = topography.oxd.level(operator)
    np.testing.assert_allclose(levelled, expected, atol=1e-15)
    assert topography.attrs.keys() - levelled.attrs.keys() == {"signal_minimum", "signal_range"}
    other = (topography + 1.0).assign_attrs({})
    lazy = other.chunk({"y": 3, "x": 5}).oxd.level(operator)
    assert lazy.chunks is not None
    np.testing.assert_allclose(lazy.values, expected, atol=1e-7)
    stack = xr.concat([other, 2 * other], "scan").oxd.level(operator)
    np.testing.assert_allclose(stack[0], expected, atol=1e-7)
    mixed = topography.values
    mixed[0] *= 1e12
    alone = xr.DataArray(mixed).oxd.level(operator)
    np.testing.assert_allclose(alone[1:], expected[1:], atol=1e-15)
    np.testing.assert_allclose(alone[0], expected[0] * 1e12, atol=1e-3)


def test_lines_that_end_early_are_levelled_and_others_with_gaps_are_not() -> None:
    flat = xr.DataArray(np.full((2, 5), 7.0)).oxd.level("line")
    np.testing.assert_allclose(flat, 0, atol=1e-8)
    array = xr.DataArray([[1.0, 2.0, 3.0, 4.0, 5.0, np.nan], [np.nan] * 6], dims=("y", "x"))
    levelled = array.oxd.level("line").values
    np.testing.assert_allclose(levelled[0, :5], 0, atol=1e-7)
    assert np.isnan(levelled[0, 5])
    assert np.isnan(levelled[1]).all()
    array[0, 2] = np.nan
    for wrong in (array, array.fillna(np.inf)):
        with pytest.raises(ValueError, match="gaps or infinite"):
            wrong.oxd.level("line")
    with pytest.raises(ValueError, match="parabola"):
        array.oxd.level("cubic")
    assert array[:, :0].oxd.level("mean").shape == (2, 0)


def test_the_accessor_draws_images_and_curves(scan: Path) -> None:
    with veloxd.open(scan) as file:
        topography = file[0]["Topography"].to_xarray()
    ax = topography.oxd.plot(cmap="gray")
    assert ax.get_images()[0].get_cmap().name == "gray"
    assert (ax.get_xlabel(), ax.get_aspect()) == ("X (µm)", 1.0)
    assert topography[0].oxd.plot().get_ylabel() == "Topography (nm)"
    del topography["y"]
    curves = topography[:5].oxd.plot()
    assert len(curves.get_lines()) == 5
    assert curves.get_legend() is not None
    with pytest.raises(ValueError, match="3 dimensions"):
        topography.expand_dims("scan").oxd.plot()
    plt.close("all")
