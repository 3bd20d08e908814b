"""Reading samples: keys, arrays of the caller, corrections, and what was never acquired."""

from __future__ import annotations

import json
from pathlib import Path
from typing import Any

import hypothesis.extra.numpy as hnp
import numpy as np
import pytest
from hypothesis import given
from hypothesis import strategies as st
from samples import LINES, POINTS, ragged_file

import veloxd

basic_keys = hnp.basic_indices((LINES, POINTS), allow_newaxis=False)
lists = st.lists(st.integers(-LINES, LINES - 1), max_size=5)
masks = hnp.arrays(bool, (POINTS,))
keys = st.one_of(basic_keys, lists, masks.map(lambda mask: (slice(None), mask)), hnp.arrays(bool, (LINES, POINTS)))


@pytest.fixture(scope="module")
def samples() -> Any:
    with veloxd.create() as file:
        channel = file.create_group("G").create_channel("C", np.random.default_rng(1).normal(size=(LINES, POINTS)))
        yield channel, channel.values, channel.raw


def test_the_file_that_all_languages_know_reads_as_expected() -> None:
    folder = Path(__file__).parents[2] / "tests" / "expected"
    expected = json.loads((folder / "measurement.json").read_text(encoding="utf-8"))
    with veloxd.open(folder / "measurement.oxd") as file:
        assert [group.name for group in file.groups] == [group["name"] for group in expected["groups"]]
        for wanted in (channel for group in expected["groups"] for channel in group["channels"]):
            channel = next(group[wanted["name"]] for group in file.groups if wanted["name"] in group)
            raw = np.array(wanted["raw"], float)
            np.testing.assert_array_equal(np.where(channel.valid, channel.raw, np.nan), raw)
            limit = 1e-15 * wanted["signal"]["range"]
            np.testing.assert_allclose(channel.values, np.array(wanted["values"], float), rtol=0, atol=limit)
            for name in ("x", "y", "signal"):
                axis = getattr(channel, name)
                told = {"name": axis.name, "unit": axis.unit, "minimum": axis.minimum, "range": axis.range}
                assert told == wanted[name]
        for item in expected["information"]:
            node: Any = file.info
            for name in item["path"].split("/"):
                node = node[name]
            assert str(node) == item["value"]


@given(key=keys, raw=st.booleans())
def test_a_key_selects_what_it_selects_of_an_array(samples: Any, key: Any, raw: bool) -> None:
    channel, values, raws = samples
    expected = (raws if raw else values)[key]
    read = channel.read(key, raw=raw)
    assert read.shape == expected.shape
    assert read.dtype == expected.dtype
    np.testing.assert_array_equal(read, expected)
    room = np.full((*expected.shape, 3), 7, read.dtype)
    out = room[..., 1]  # neither aligned to lines nor contiguous
    if expected.ndim:
        assert channel.read(key, raw=raw, out=out) is out
        np.testing.assert_array_equal(out, expected)
        assert (room[..., [0, 2]] == 7).all()


def test_values_follow_from_raw_samples_and_the_signal_axis(samples: Any) -> None:
    channel, values, raws = samples
    signal = channel.signal
    expected = signal.minimum + signal.range * ((raws.astype(float) + 2**29) / (2**30 - 1))
    np.testing.assert_allclose(values, expected, rtol=1e-12, atol=1e-15)
    np.testing.assert_array_equal(np.asarray(channel), values)
    np.testing.assert_array_equal(np.stack(list(channel)), values)
    assert np.asarray(channel, dtype=np.float32).dtype == np.float32


def test_lines_go_to_where_they_belong_whatever_the_distance_between_them(samples: Any) -> None:
    channel, values, _ = samples
    for room in (np.zeros((LINES, POINTS + 3)), np.zeros((LINES, POINTS), np.float32), np.zeros((POINTS, LINES)).T):
        out = room[::-1, :POINTS]
        channel.level("mean", out=out)
        centred = values - values.mean(axis=1, keepdims=True) + (channel.signal.minimum + channel.signal.maximum) / 2
        np.testing.assert_allclose(out, centred, atol=1e-6)
        assert not room[:, POINTS:].any()


@pytest.mark.parametrize(("operator", "degree"), [("mean", 0), ("line", 1), ("parabola", 2), ("polynomial", 4)])
def test_levelling_subtracts_a_least_squares_fit(samples: Any, operator: str, degree: int) -> None:
    channel, values, _ = samples
    x = np.arange(POINTS)
    middle = (channel.signal.minimum + channel.signal.maximum) / 2
    for line, levelled in zip(values, channel.level(operator)):
        fit = np.polynomial.Polynomial.fit(x, line, degree)
        np.testing.assert_allclose(levelled, line - fit(x) + middle, atol=1e-7)


@pytest.mark.parametrize("bits", [8, 16, 32])
def test_points_that_were_never_acquired_are_nan_and_masked(tmp_path: Path, bits: int) -> None:
    valid = [6, 4, 0, 1]
    expected = ragged_file(tmp_path / "ragged.oxd", valid, bits=bits)
    mask = np.arange(6) < np.array(valid)[:, np.newaxis]
    with veloxd.open(tmp_path / "ragged.oxd") as file:
        channel = file["Curves"]["Force"]
        np.testing.assert_array_equal(channel.valid, mask)
        raw = channel.raw
        np.testing.assert_array_equal(raw[0], expected[0])
        np.testing.assert_array_equal(raw == veloxd.RAW_MISSING, ~mask)
        np.testing.assert_array_equal(np.isnan(channel.values), ~mask)
        np.testing.assert_array_equal(np.isnan(channel[1:, 2:5]), ~mask[1:, 2:5])
        assert not np.isnan(channel[channel.valid]).any()
        # A line fit takes four samples, so the line of one is left out.
        np.testing.assert_array_equal(np.isnan(channel.level("line")), ~mask | (np.array(valid) < 4)[:, np.newaxis])


def test_lines_of_any_number_come_to_their_rows(tmp_path: Path) -> None:
    valid = [line % 4 for line in range(4500)]
    expected = ragged_file(tmp_path / "ragged.oxd", valid, points=3, bits=32)
    expected[np.arange(3) >= np.array(valid)[:, np.newaxis]] = veloxd.RAW_MISSING
    with veloxd.open(tmp_path / "ragged.oxd") as file:
        channel = file[0][0]
        for key in (np.s_[:], np.s_[700:4400], np.s_[::-3], np.s_[:, 1:], [4499, 0, 1100], np.s_[4200:, ::2]):
            np.testing.assert_array_equal(channel.read(key, raw=True), expected[key])
        np.testing.assert_array_equal(channel.valid, expected != veloxd.RAW_MISSING)


def test_rows_may_lie_backwards_or_over_one_another(scan: Path) -> None:
    with veloxd.open(scan) as file:
        channel = file[0]["Topography"]
        values = channel.values
        room = np.full((LINES, POINTS + 3), 7.0)
        np.testing.assert_array_equal(channel.read(out=room[::-1, 1:-2]), values)
        assert (room[:, 0] == 7).all()
        assert (room[:, -2:] == 7).all()
        line = np.zeros(LINES - 1 + POINTS)
        channel.read(out=np.lib.stride_tricks.sliding_window_view(line, POINTS, writeable=True))
        np.testing.assert_array_equal(line, [*values[:-1, 0], *values[-1]])


def test_lines_may_have_point_axes_of_their_own(tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 6, 6])
    with veloxd.open(tmp_path / "ragged.oxd") as file:
        x = file[0][0].x
        assert x.varies
        assert x.of_line(-1) == (2.0, 1.0)
        np.testing.assert_allclose(x.grid[:, 0], [0, 1, 2])
        np.testing.assert_allclose(x.grid[:, -1], [1, 2, 3])
        np.testing.assert_allclose(x.values, np.linspace(0, 1, 6))
        assert file[0].channels[0] is file[0]["Force"], "an empty slot is no channel"


def test_a_line_that_claims_too_much_cannot_be_read_and_others_can(tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 6], claimed="LineDim1Points=7\r\n")
    with veloxd.open(tmp_path / "ragged.oxd") as file:
        assert np.isfinite(file[0][0][0]).all()
        with pytest.raises(veloxd.DamagedFileError, match="Line 1"):
            file[0][0].values


@pytest.mark.parametrize(
    ("header", "message"),
    [
        ("", "no header"),
        ("[DataSet]\r\nVersion=2\r\n", "no header"),
        ("[DataSet]\r\nVersion=7\r\n#!", "unknown version, 7"),
        ("[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=1\r\nGr0-Ch0=C\r\n[C]\r\nPoints=-1\r\n#!", "key Points"),
        (
            "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=1\r\nGr0-Ch0=C\r\n[C]\r\nVersion=4\r\n#!",
            "unknown version, 4",
        ),
        ("[]\r\nVersion=2\r\n#!", "damaged"),
    ],
)
def test_damaged_headers_are_told_in_one_sentence(tmp_path: Path, header: str, message: str) -> None:
    (tmp_path / "bad.oxd").write_bytes(header.encode())
    with pytest.raises(veloxd.DamagedFileError, match=message) as caught:
        veloxd.open("bad.oxd")
    assert str(caught.value).startswith("bad.oxd: ")
    assert "\n" not in str(caught.value)


def test_every_cut_of_a_file_fails_cleanly_and_salvages_what_is_there(scan: Path, tmp_path: Path) -> None:
    whole = scan.read_bytes()
    with veloxd.open(scan) as file:
        topography = file[0]["Topography"].values
    start = whole.index(b"#!") + 2
    for size in [*range(0, start, 97), *range(start, len(whole), 61)]:
        (tmp_path / "cut.oxd").write_bytes(whole[:size])
        with pytest.raises(veloxd.DamagedFileError, match=r"cut\.oxd") as caught:
            veloxd.open(tmp_path / "cut.oxd")
        assert caught.value.details
        with veloxd.open(tmp_path / "cut.oxd", salvage=True) as file:
            assert isinstance(file.damage, veloxd.DamagedFileError)
            if size >= start:
                complete = min((size - start) // (4 * POINTS), LINES)
                np.testing.assert_array_equal(file[0]["Topography"][:complete], topography[:complete])
                assert not file[0]["Topography"].valid[complete:].any()
