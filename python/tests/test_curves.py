"""Quantities of force curves, against truth that is known and plain NumPy."""

from __future__ import annotations

import os
import re
import subprocess
import sys
import tracemalloc
from concurrent.futures import ThreadPoolExecutor
from dataclasses import fields
from pathlib import Path
from typing import Any

import numpy as np
import pytest
import xarray as xr
from force_curves import ADHESION, CALIBRATED, CONTACT, NOISE, SENSITIVITY, SPRING, Z, approach, retract, write_curves
from hypothesis import given
from hypothesis import strategies as st
from hypothesis.extra.numpy import array_shapes, arrays

import veloxd
from veloxd._native import curve_declarations
from veloxd.curves import Reason, adhesion, baseline, contact_point, fit_modulus, force, indentation, slope

QUANTITIES = [slope, baseline, contact_point, adhesion, indentation, force]


def assert_same(one: Any, other: Any, key: Any = ..., rtol: float = 0.0) -> None:
    for field in fields(one):
        expected = np.asarray(getattr(one, field.name))[key]
        atol = rtol * np.nan_to_num(np.abs(expected)).max(initial=0)
        np.testing.assert_allclose(np.asarray(getattr(other, field.name)), expected, rtol, atol, err_msg=field.name)


@given(
    arrays(np.float64, array_shapes(min_dims=1, max_dims=3, min_side=4, max_side=9), elements=st.floats(-1e3, 1e3)),
    st.floats(-5, 5),
    st.sampled_from([-2.5, 0.1, 3.0]),
)
def test_a_slope_is_that_of_a_polynomial(signal: np.ndarray, start: float, step: float) -> None:
    x = start + step * np.arange(signal.shape[-1])
    found = slope(signal, x=x)
    for index in np.ndindex(signal.shape[:-1]):
        (tilt, offset), residuals, *_ = np.polyfit(x, signal[index], 1, full=True)
        spread = np.sqrt((residuals[0] if residuals.size else 0.0) / (len(x) - 2))
        scale = 1e-9 * (1 + np.abs(signal).max())
        assert np.asarray(found.value)[index] == pytest.approx(tilt, abs=scale)
        assert np.asarray(found.intercept)[index] == pytest.approx(offset, abs=30 * scale)
        assert np.asarray(found.residual)[index] == pytest.approx(spread, abs=scale)
        assert np.asarray(found.error)[index] == pytest.approx(spread / np.sqrt(len(x)) / np.std(x), abs=scale)


def test_what_curves_were_made_with_is_found() -> None:
    line = baseline(approach(50), x=Z)
    assert line.tilt == pytest.approx(np.full(50, 0.005), abs=5e-4)
    assert line.noise.mean() == pytest.approx(NOISE, rel=0.05)
    assert line.at(Z).shape == (50, Z.size)
    assert np.abs(line.at(Z) - 0.005 * Z).max() < 2 * NOISE

    point = contact_point(approach(50), x=Z)
    assert np.abs((point.position - CONTACT) / point.error).mean() < 2
    assert point.slope == pytest.approx(np.ones(50), abs=0.01)

    pull = adhesion(retract(50), x=Z, **CALIBRATED)
    assert pull.value == pytest.approx(np.full(50, ADHESION), abs=10 * NOISE)
    np.testing.assert_array_equal(pull.force, SPRING * pull.deflection)
    assert pull.position == pytest.approx(np.full(50, CONTACT - ADHESION), abs=2 * Z[1])

    depth = indentation(approach(50) / 2, x=Z, **CALIBRATED)
    assert depth.value == pytest.approx(np.full(50, (Z[-1] - CONTACT) / 2), abs=10 * NOISE)
    assert depth.curve.shape == (50, Z.size)
    assert (np.isnan(depth.curve) == (depth.contact[:, np.newaxis] > Z)).mean() > 0.99

    push = force(approach(50), x=Z, **CALIBRATED)
    np.testing.assert_allclose(push.curve, SPRING * (approach(50) - line.at(Z)), atol=1e-20)


def test_the_example_that_is_worked_out_by_hand_comes_out() -> None:
    page = (Path(__file__).parents[2] / "docs" / "processors.md").read_text(encoding="utf-8")
    table = np.loadtxt(page.partition("```csv")[2].partition("```")[0].split()[1:], delimiter=",")
    expected = dict(re.findall(r"^\| ([\w ]+?) +\| ([\d.]+) +\| \w+ +\|$", page, re.MULTILINE))
    x, there, back = 1e-9 * table.T
    known: Any = {**CALIBRATED, "x": x, "baseline_share": 0.67}
    line, point, depth = baseline(there, **known), contact_point(there, **known), indentation(there, **known)
    pull = adhesion(back, **known)
    found = {
        "slope": slope(there, slope_range=(230e-9, 160e-9), **known).value,
        "baseline at 0": 1e9 * line.offset,
        "noise": 1e9 * line.noise,
        "contact point": 1e9 * point.position,
        "its error": 1e9 * point.error,
        "largest indentation": 1e9 * depth.value,
        "force there": 1e9 * depth.force,
        "adhesion": 1e9 * pull.value,
        "error of adhesion": 1e9 * pull.error,
        "adhesion force": 1e9 * pull.force,
        "at": 1e9 * pull.position,
    }
    assert found == pytest.approx({name: float(value) for name, value in expected.items()}, rel=1e-6)


def test_one_curve_gives_scalars_and_a_block_gives_arrays_of_its_shape() -> None:
    block = approach(6).reshape(2, 3, -1)
    for quantity in [*QUANTITIES, _fit]:
        found = quantity(block, x=Z, **CALIBRATED)
        one = quantity(block[1, 2], x=Z, **CALIBRATED)
        assert found.reason.shape == (2, 3)
        assert isinstance(one.reason, Reason)
        assert_same(found, one, (1, 2))
        assert {type(value) for value in vars(one).values()} <= {Reason, float, int, np.ndarray}
        assert repr(one).startswith(f"{type(one).__name__}(reason=")
        assert "of 6 curves" in repr(found)
        assert quantity(block[:, :0], x=Z, **CALIBRATED).reason.shape == (2, 0)


def _fit(curves: Any, **options: Any) -> Any:
    return fit_modulus(curves, "sphere", poisson=0.3, radius=1e-8, **options)


FORMS: dict[str, Any] = {
    "a list": lambda block: block.tolist(),
    "other byte order": lambda block: block.astype(">f8"),
    "column by column": np.asfortranarray,
    "every other row": lambda block: np.repeat(block, 2, axis=0)[::2],
    "rows in reverse": lambda block: block[::-1].copy()[::-1],
    "points in reverse": lambda block: block[:, ::-1].copy()[:, ::-1],
    "longer rows": lambda block: np.pad(block, ((0, 0), (0, 3)))[:, :-3],
    "between two numbers": lambda block: (
        np.frombuffer(b"\0" + block.tobytes(), np.uint8)[1:].view(float).reshape(block.shape)
    ),
    "repeated": lambda block: np.broadcast_to(block[0], block.shape),
    "masked": lambda block: np.ma.masked_array(np.nan_to_num(block), np.isnan(block)),
}


@pytest.mark.parametrize("form", FORMS)
def test_an_array_may_lie_in_memory_in_any_way(form: str) -> None:
    block = approach(3)
    block[1, 7:9] = np.nan
    given = FORMS[form](block)
    before = np.array(given, copy=True)
    expected = indentation(np.array(np.ma.filled(given, np.nan), float), x=Z, **CALIBRATED)
    assert_same(expected, indentation(given, x=Z, **CALIBRATED))
    np.testing.assert_array_equal(given, before)


def test_rows_with_gaps_between_them_are_not_copied() -> None:
    block = np.zeros((500, 4096))
    tracemalloc.start()
    slope(block[::2, :4000], x=np.arange(4000))
    peak = tracemalloc.get_traced_memory()[1]
    tracemalloc.stop()
    assert peak < block.nbytes / 20


def test_other_types_of_numbers_are_converted() -> None:
    counts = np.round(1e12 * approach(2)).astype(np.int32)
    expected = contact_point(counts.astype(float), x=Z)
    assert_same(expected, contact_point(counts, x=Z))
    assert_same(expected, contact_point(counts.astype(np.float32), x=Z.astype(np.float64)))


def test_curves_with_positions_of_their_own_are_looked_at_one_by_one() -> None:
    starts = np.array([0.0, 0.0, 5e-9, -5e-9])
    found = contact_point(approach(4), x=Z + starts[:, np.newaxis])
    same = contact_point(approach(4), x=Z)
    np.testing.assert_allclose(found.position, same.position + starts, rtol=1e-12)
    mirrored = contact_point(approach(4), x=-Z)
    np.testing.assert_allclose(mirrored.position, -same.position, rtol=1e-12)


def test_every_reason_is_reached_and_leaves_no_number() -> None:
    flat = noise = approach()[0].copy()
    flat = np.where(Z < CONTACT, noise, noise[0])
    nothing = np.full(Z.size, np.nan)
    limited = {"limits": (-1.0, 1e-9)}
    cases: list[tuple[Any, Any, dict[str, Any], Reason]] = [
        (slope, noise, {"x": np.full(Z.size, 1.0)}, Reason.BAD_AXIS),
        (slope, noise, {"x": np.full(Z.size, np.inf)}, Reason.BAD_AXIS),
        (slope, nothing, {}, Reason.NOTHING_ACQUIRED),
        (slope, noise[:0], {"x": Z[:0]}, Reason.NOTHING_ACQUIRED),
        (slope, noise[:3], {"x": Z[:3]}, Reason.TOO_FEW_POINTS),
        (slope, noise[:1], {"x": Z[:1]}, Reason.TOO_FEW_POINTS),
        (slope, noise, {"slope_range": (1.0, 2.0)}, Reason.RANGE_OUTSIDE),
        (slope, noise, limited, Reason.SATURATED),
        (baseline, np.where(np.arange(Z.size) % 128 < 64, 0, 1.0), {}, Reason.NO_BASELINE),
        (contact_point, flat, {"surface": "high"}, Reason.NO_CONTACT),
        (adhesion, noise, {}, Reason.NO_ADHESION),
        (indentation, noise, {}, Reason.NOT_CALIBRATED),
        (force, noise, {"sensitivity": 1}, Reason.NOT_CALIBRATED),
        (_fit, noise, {"sensitivity": 1}, Reason.NOT_CALIBRATED),
        (_fit, nothing, CALIBRATED, Reason.NOTHING_ACQUIRED),
        (_fit, noise, {**CALIBRATED, "fit_range": (0.0, 0.01)}, Reason.TOO_FEW_POINTS),
        (_fit, noise, CALIBRATED, Reason.NO_FIT),
        (_fit, noise, {**CALIBRATED, "sensitivity": 1.5, "law": "line"}, Reason.NO_FIT),
    ]
    for quantity, curve, options, reason in cases:
        found = quantity(curve, **{"x": Z, **options})
        assert (found.reason, found.ok) == (reason, False)
        assert found.reason_text == reason.text
        numbers = [value for name, value in vars(found).items() if name not in ("reason", "points", "index")]
        assert np.isnan(np.hstack([np.ravel(number) for number in numbers])).all(), quantity.__name__
    texts = slope(np.stack([noise, nothing]), x=Z).reason_text
    assert texts.tolist() == [Reason.OK.text, Reason.NOTHING_ACQUIRED.text]


def test_reasons_are_those_of_the_library() -> None:
    declared = {name[10:]: value for name, value in vars(curve_declarations).items() if name.startswith("VEL_CURVE_")}
    assert declared.pop("BAD_CALL") not in list(Reason)
    assert declared == {reason.name: reason.value for reason in Reason if reason is not Reason.NO_FIT}
    assert len({reason.text for reason in Reason}) == len(Reason)


@pytest.mark.parametrize("bits", [8, 16, 32])
def test_a_channel_brings_its_calibration_units_and_limits(tmp_path: Path, bits: int) -> None:
    write_curves(tmp_path / "curves.oxd", np.vstack([approach(3), np.full((1, Z.size), 1.0)]), bits)
    with veloxd.open(tmp_path / "curves.oxd") as file:
        channel = file["Curves"]["Deflection"]
        step = 8 / 2 ** min(bits, 30)  # V
        options = {**CALIBRATED, "sensitivity": SENSITIVITY, "signal_step": step, "limits": (-4, 4 - 1.1 * step)}
        for quantity in QUANTITIES:
            assert_same(quantity(channel.values / 1e3, x=Z, **options), quantity(channel), rtol=1e-6)
        array = channel.to_xarray()
        levelled = array.oxd.level("mean")
        for labelled in (array, xr.open_dataset(tmp_path / "curves.oxd")["Deflection"]):
            for quantity in QUANTITIES:
                assert_same(quantity(channel), quantity(labelled), rtol=1e-6)
        assert slope(levelled).reason.values.tolist() == slope(array - 5000.0).reason.values.tolist() == [Reason.OK] * 4
        found = indentation(channel)
        assert found.reason.tolist() == [0, 0, 0, Reason.SATURATED] or bits == 8
        assert slope(channel).reason[3] == Reason.SATURATED
        assert slope(channel, limits=(-np.inf, np.inf)).reason[3] == Reason.OK
        assert force(channel, spring_constant=1.0).curve[0] == pytest.approx(force(channel).curve[0] / SPRING)
        assert indentation(channel, x=2 * Z).contact[0] == pytest.approx(2 * found.contact[0], rel=1e-3) or bits == 8


def test_a_signal_in_metres_or_newtons_needs_no_sensitivity() -> None:
    with veloxd.create() as file:
        group = file.create_group("Curves")
        x = {"unit": "m", "range": float(Z[-1])}
        for name, factor, unit in (("Deflection", 1e9, "nm"), ("Force", 1e9 * SPRING, "nN"), ("Error", 1.0, "V")):
            group.create_channel(name, factor * approach(2), unit=unit, x=x)
        group.create_channel("Slow", approach(2), unit="m", x={"unit": "s", "range": 1.0})
        expected = indentation(approach(2), x=Z, **CALIBRATED)
        for name in ("Deflection", "Force"):
            assert_same(expected, indentation(group[name], spring_constant=SPRING), rtol=1e-5)
        file.info = {"Tool": {"Spring constant": "soft", "Deflection sensitivity": "3 nm/mA"}}
        assert indentation(group["Error"]).reason.tolist() == [Reason.NOT_CALIBRATED] * 2
        assert contact_point(group["Slow"]).ok.all()
        for refused in (indentation, _fit):
            with pytest.raises(ValueError, match="'s'"):
                refused(group["Slow"], spring_constant=1)


def test_lines_of_a_channel_may_begin_elsewhere(tmp_path: Path) -> None:
    lines = "".join(f"LineDim{k}Range=1\r\nLineDim{k}Min={k}\r\nLineDim{k}Points=6\r\n" for k in range(2))
    header = (
        "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=Curves\r\nGr0-Count=2\r\nGr0-Ch1=C\r\n[C]\r\nVersion=3\r\n"
        "Points=6\r\nLines=2\r\nDim0Unit=m\r\nDim0Range=1\r\nDim2Unit=N\r\nDim2Range=2\r\nDim2Min=-1\r\nSaveBits=16\r\n"
    )
    samples = 100 * np.arange(12, dtype="<i2").reshape(2, 6) % 1100
    (tmp_path / "own.oxd").write_bytes(f"{header}{lines}\r\n#!".encode() + samples.tobytes())
    with veloxd.open(tmp_path / "own.oxd") as file:
        channel = file[0][0]
        expected = slope(channel.values, x=channel.x.grid)
        assert_same(expected, slope(channel), rtol=1e-9)
        array = channel.to_xarray()
        assert_same(expected, slope(array), rtol=1e-9)
        for stacked in (
            array.expand_dims("t"),
            xr.concat([array, array], "t", coords="minimal").transpose("y", "t", "x"),
        ):
            for index in range(2):
                assert_same(expected, slope(stacked).isel(y=index, t=-1), index, rtol=1e-9)
        with pytest.raises(ValueError, match="x_grid"):
            veloxd.from_xarray(array)


def test_labelled_arrays_give_data_sets(tmp_path: Path) -> None:
    coords = {"z": ("z", 1e9 * Z, {"units": "nm"}), "row": [3, 4], "depth": ("z", -Z)}
    volume = xr.DataArray(
        1e9 * approach(6).reshape(2, 3, -1), coords, ("row", "column", "z"), attrs={"units": "nm", "long_name": "D"}
    )
    for quantity in [*QUANTITIES, _fit]:
        expected = quantity(approach(6).reshape(2, 3, -1), x=Z, **CALIBRATED)
        found = quantity(volume, spring_constant=SPRING)
        assert_same(expected, found, rtol=1e-6)
        assert found["reason"].dims == ("row", "column")
        assert found["row"].values.tolist() == [3, 4]
        assert ("depth" in found.coords) == ("z" in found.dims)
        assert all(variable.attrs["long_name"] for variable in found.data_vars.values())
        found.to_netcdf(tmp_path / f"{quantity.__name__}.nc")
    assert slope(volume)["value"].attrs["units"] == "1"
    assert slope(volume.assign_attrs(units="mV"))["value"].attrs["units"] == "V/m"
    assert slope(volume.assign_attrs(units=""))["value"].attrs["units"] == ""
    assert "no_contact" in slope(volume)["reason"].attrs["flag_meanings"].split()
    assert int(slope(volume[0, 0])["reason"]) == Reason.OK
    limited = volume.clip(max=1.0, keep_attrs=True).assign_attrs(signal_minimum=-100.0, signal_range=101.0)
    assert (slope(limited)["reason"] == Reason.SATURATED).all()
    np.testing.assert_allclose(slope(volume, x=2 * Z)["value"], slope(volume)["value"] / 2)


def test_no_curves_give_no_results() -> None:
    for x in (Z, np.empty((0, Z.size))):
        found = contact_point(np.empty((0, Z.size)), x=x)
        assert found.position.shape == found.reason_text.shape == (0,)
    with veloxd.create() as file:
        channel = file.create_group("Curves").create_channel("Force", np.empty((0, 8)), x={"range": 1.0})
        assert force(channel).curve.shape == (0, 8)
        assert slope(channel.to_xarray())["value"].shape == (0,)


def test_positions_are_taken_in_their_units_and_type_in_place_of_those_of_the_array() -> None:
    curve = approach()[0]
    expected = contact_point(curve, x=Z)
    nanometres = xr.DataArray(1e9 * Z, dims="z", attrs={"units": "nm"})
    for labelled in (xr.DataArray(curve, dims="z"), xr.DataArray(curve, {"z": Z**2}, ("z",))):
        assert_same(expected, contact_point(labelled, x=Z))
        assert_same(expected, contact_point(labelled, x=nanometres), rtol=1e-9)
    with pytest.raises(ValueError, match="'s'"):
        indentation(curve, x=nanometres.assign_attrs(units="s"), sensitivity=1)
    single = (1e-3 + Z).astype(np.float32)  # far from 0, so that spacing differs by rounding
    assert contact_point(curve, x=single).position == pytest.approx(1e-3 + expected.position, abs=2e-9)
    assert_same(expected, contact_point(xr.DataArray(curve, {"z": Z.astype(np.float32)}, ("z",))), rtol=1e-5)


def test_names_of_the_results_are_left_to_them() -> None:
    coords = {"z": Z, "index": [3, 4], "points": ("index", [5, 6]), "index_2": 7.0, "position": 8.0}
    curves = xr.DataArray(retract(2), coords, ("index", "z"))
    pulls = adhesion(curves)
    assert pulls["index"].dims == pulls["value"].dims == ("index_3",)
    assert (pulls["index_3"].values.tolist(), float(pulls["index_2"]), float(pulls["position_2"])) == ([3, 4], 7.0, 8.0)
    assert slope(curves)["points_2"].values.tolist() == [5, 6]
    assert force(curves, spring_constant=1, sensitivity=1).sizes == {"index": 2, "z": Z.size}


def test_wrong_arguments_are_refused_in_plain_words() -> None:
    curve = approach()[0]
    for message, kind, arguments in (
        ("pass them as x", TypeError, {}),
        ("did you mean 'threshold'", TypeError, {"x": Z, "treshold": 3}),
        ("no option 'colour'.", TypeError, {"x": Z, "colour": 3}),
        ("outside of its bounds: threshold=-1", ValueError, {"x": Z, "threshold": -1}),
        ("one of 'line', 'sphere', 'cone'", ValueError, {"x": Z, "law": "cube"}),
        ("not evenly spaced", ValueError, {"x": Z**2}),
        ("do not fit", ValueError, {"x": Z[1:]}),
    ):
        with pytest.raises(kind, match=message):
            contact_point(curve, **arguments)
    for values in (np.array(1.0), curve.astype(complex), ["a"]):
        with pytest.raises(TypeError, match="real numbers"):
            slope(values, x=Z)
    for array in (xr.DataArray(1.0), xr.DataArray(curve, dims="z")):
        with pytest.raises(TypeError, match="points"):
            slope(array)


@pytest.mark.parametrize("quantity", [indentation, _fit])
def test_threads_give_what_one_gives(quantity: Any) -> None:
    blocks = [approach(20, seed) / 2 for seed in range(8)]
    expected = [quantity(block, x=Z, **CALIBRATED) for block in blocks]
    with ThreadPoolExecutor(8) as pool:
        found = list(pool.map(lambda number: quantity(blocks[number % 8], x=Z, **CALIBRATED), range(32)))
    for number, one in enumerate(found):
        assert_same(expected[number % 8], one)


def test_only_this_module_loads_the_second_library(tmp_path: Path) -> None:
    main = Path(veloxd._native.library.library()._name)
    (tmp_path / main.name).symlink_to(main)
    program = (
        "import veloxd, veloxd.xarray; veloxd.create().close()\n"
        "try: import veloxd.curves\nexcept ImportError as error: print(error)"
    )
    for chosen in (tmp_path, tmp_path / main.name):
        environment = {**os.environ, "VELOXD_LIBRARY": str(chosen)}
        shown = subprocess.run([sys.executable, "-c", program], env=environment, capture_output=True, text=True).stdout
        assert "VELOxdCurves" in shown
        assert "VELOXD_LIBRARY" in shown
