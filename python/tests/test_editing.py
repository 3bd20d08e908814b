"""Random data sets and random edits, compared with models in plain NumPy and dicts."""

from __future__ import annotations

import tempfile
from pathlib import Path
from typing import Any

import hypothesis.extra.numpy as hnp
import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from hypothesis.stateful import RuleBasedStateMachine, initialize, invariant, rule
from samples import ragged_file

import veloxd

RAW = st.integers(-(2**29), 2**29 - 1)
SHAPES = hnp.array_shapes(min_dims=2, max_dims=2, max_side=7)
# What files keep as it is: no control characters, no halves of characters, no blank at the end.
TEXTS = st.text(st.characters(codec="utf-8", exclude_categories=("Cc", "Zs", "Zl", "Zp")), max_size=12).filter(
    lambda text: "#!" not in text
)
NAMES = TEXTS.filter(bool)
NUMBERS = st.floats(-1e12, 1e12).map(lambda number: float(f"{number:.6g}"))
AXES = st.fixed_dictionaries({"name": NAMES, "unit": TEXTS, "minimum": NUMBERS, "range": NUMBERS})
CHANNELS = st.tuples(AXES, AXES, AXES, SHAPES.flatmap(lambda shape: hnp.arrays(np.int32, shape, elements=RAW)))
GROUPS = st.lists(st.tuples(NAMES, st.sampled_from([16, 32]), st.lists(CHANNELS, max_size=3)), max_size=3)
# Names that differ only in case are told apart by trees, and flat lists replace some old names.
KEYS = st.integers(0, 9).map(lambda number: f"item {number} é/:")
INFORMATION = st.dictionaries(
    KEYS, st.recursive(st.dictionaries(KEYS, NAMES), lambda deeper: st.dictionaries(KEYS, NAMES | deeper), max_leaves=9)
)


@settings(max_examples=30)
@given(groups=GROUPS, information=INFORMATION)
def test_what_is_saved_is_what_is_opened(groups: Any, information: Any) -> None:
    with tempfile.TemporaryDirectory() as folder, veloxd.create(Path(folder) / "a.oxd") as file:
        for name, bits, channels in groups:
            group = file.create_group(name, bits)
            for signal, x, y, raw in channels:
                channel = group.create_channel("?", shape=raw.shape, x=x, y=y)
                channel.signal = signal
                channel.raw = raw
        file.info = information
        report = file.save()
        low_bits = sum(np.count_nonzero(c[3] & 0x3FFF) for _, bits, channels in groups for c in channels if bits == 16)
        assert (report.clipped, report.inexact) == (0, low_bits)
        with veloxd.open(report.path) as saved:
            assert saved.info.to_dict() == information
            assert [group.name for group in saved.groups] == [name for name, _, _ in groups]
            for group, (_, bits, channels) in zip(saved.groups, groups):
                assert len(group.channels) == len(channels)
                for channel, (signal, x, y, raw) in zip(group.channels, channels):
                    assert [axis.as_dict() for axis in (channel.signal, channel.x, channel.y)] == [signal, x, y]
                    np.testing.assert_array_equal(channel.raw, raw & ~0x3FFF if bits == 16 else raw)


class Edits(RuleBasedStateMachine):
    """A file that is edited, and what it should hold: groups by id, channels by slot."""

    @initialize()
    def begin(self) -> None:
        self.folder = tempfile.TemporaryDirectory()
        self.file = veloxd.create(Path(self.folder.name) / "edited.oxd", overwrite=True)
        self.model: list[tuple[str, list[tuple[str, np.ndarray]]]] = []
        self.ended: list[Any] = []

    def pick(self, data: Any, needs_channel: bool = False) -> Any:
        choices = [n for n, (_, channels) in enumerate(self.model) if channels or not needs_channel]
        return data.draw(st.sampled_from(choices)) if choices else None

    @rule(name=NAMES)
    def add_group(self, name: str) -> None:
        # Ids are given out again, so a new group stands where a deleted one was.
        group = self.file.create_group(name)
        position = self.file.groups.index(group)
        self.model.insert(position, (name, []))

    @rule(data=st.data(), name=NAMES, raw=SHAPES.flatmap(lambda shape: hnp.arrays(np.int32, shape, elements=RAW)))
    def add_channel(self, data: Any, name: str, raw: Any) -> None:
        number = self.pick(data)
        if number is not None:
            group = self.file.groups[number]
            channel = group.create_channel(name, shape=raw.shape)
            channel.raw = raw
            self.model[number][1].insert(group.channels.index(channel), (name, raw.copy()))

    @rule(data=st.data(), value=RAW)
    def assign(self, data: Any, value: int) -> None:
        number = self.pick(data, needs_channel=True)
        if number is not None:
            slot = data.draw(st.integers(0, len(self.model[number][1]) - 1))
            raw = self.model[number][1][slot][1]
            key = data.draw(hnp.basic_indices(raw.shape, allow_newaxis=False) | hnp.arrays(bool, raw.shape))
            raw[key] = value
            self.file.groups[number].channels[slot].write(value, key, raw=True)

    @rule(data=st.data())
    def delete_channel(self, data: Any) -> None:
        number = self.pick(data, needs_channel=True)
        if number is not None:
            slot = data.draw(st.integers(0, len(self.model[number][1]) - 1))
            group = self.file.groups[number]
            self.ended.append(group.channels[slot])
            del group[slot]
            del self.model[number][1][slot]

    @rule(data=st.data())
    def delete_group(self, data: Any) -> None:
        number = self.pick(data)
        if number is not None:
            group = self.file.groups[number]
            self.ended.extend([group, *group.channels])
            del self.file[number]
            del self.model[number]

    @rule()
    def save_and_open(self) -> None:
        self.file.save()
        self.ended.append(self.file)
        self.file.close()
        self.file = veloxd.open(self.file.path, mode="r+")

    @invariant()
    def holds_what_the_model_holds(self) -> None:
        if not hasattr(self, "file"):
            return
        assert [group.name for group in self.file.groups] == [name for name, _ in self.model]
        for group, (_, channels) in zip(self.file.groups, self.model):
            assert [channel.name for channel in group.channels] == [name for name, _ in channels]
            for channel, (_, raw) in zip(group.channels, channels):
                np.testing.assert_array_equal(channel.raw, raw)
        for ended in self.ended:
            with pytest.raises((veloxd.ClosedError, veloxd.DeletedError)):
                ended.name if not isinstance(ended, veloxd.File) else ended.groups

    def teardown(self) -> None:
        if hasattr(self, "folder"):
            self.file.close()
            self.folder.cleanup()


Edits.TestCase.settings = settings(max_examples=25, stateful_step_count=20)
test_edits = Edits.TestCase


@settings(max_examples=50)
@given(values=hnp.arrays(float, SHAPES, elements=st.floats(-1e9, 1e9)), scale=st.sampled_from([1e-15, 1e-9, 1.0, 1e6]))
def test_a_new_channel_holds_its_values_closely(values: Any, scale: float) -> None:
    values = values * scale
    with veloxd.create() as file:
        channel = file.create_group("G").create_channel("C", values)
        span = float(np.ptp(values)) or abs(float(values.flat[0])) or 1.0
        np.testing.assert_allclose(channel.values, values, rtol=0, atol=span * 2.1 / 2**29)
        raw = channel.raw
        assert (np.abs(raw) < 2**29 - 1).all(), "no sample marks saturation"
        ends = (channel.signal.minimum, channel.signal.range)
        assert ends == tuple(float(f"{end:.6g}") for end in ends)


def test_samples_are_assigned_by_mask_in_any_order_and_through_numpy(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        phase = file[0]["Phase"]
        values = phase.values
        high = values > 50
        phase[high] = values[high] / 2
        phase[:, ::-1] = phase[:]
        phase[[1, 0]] = phase[:2]
        phase.values += 1
        expected = np.where(high, values / 2, values)[:, ::-1] + 1
        expected[[1, 0]] = expected[:2].copy()
        np.testing.assert_allclose(phase.values, expected, atol=1e-6)


def test_values_beyond_the_signal_axis_are_clipped_and_counted(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        channel = file[0]["Topography"]
        channel[0, :3] = [1.0, -np.inf, 1e-8]
        channel[1] = 5.0
        assert channel[0, 0] == pytest.approx(1e-8)
        assert channel[0, 1] == pytest.approx(-1e-8)
        assert file.save().clipped == 2 + 16
        channel[1] = 0.0
        assert file.save().clipped == 2, "the line was assigned anew"
        channel[:, [1, 0]] = 5.0
        assert file.save().clipped == 2 * len(channel)
        channel[1:, :2] = 0.0
        channel[0, [0, 1, 0]] = [0.0, 0.0, 5.0]
        assert file.save().clipped == 1, "points were assigned anew, one of them twice"
        channel[0, [0, 1, 0]] = [5.0, 5.0, 0.0]
        assert file.save().clipped == 1
        channel[0, :2] = 5.0
        del file[0]["Topography"]
        assert file.save().clipped == 0


def test_gaps_stay_where_they_were_and_cannot_be_made(tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 3, 0], bits=32)
    with veloxd.open(tmp_path / "ragged.oxd", mode="r+") as file:
        channel = file[0][0]
        before = channel.values
        channel.values = before * 0.5
        np.testing.assert_allclose(channel.values, before * 0.5, atol=1e-8)
        raw = channel.raw
        channel.raw = raw
        np.testing.assert_array_equal(channel.raw, raw)
        for key, value in (((0, 2), np.nan), ((1, slice(2, None)), [np.nan] * 4), ((2, slice(None)), [np.nan, 0] * 3)):
            with pytest.raises(ValueError, match="line"):
                channel[key] = value
        np.testing.assert_array_equal(channel.raw, raw)
        channel[1, 4] = 0.25
        assert channel.valid[1].sum() == 5, "points up to a written one count as acquired"
        with pytest.raises(veloxd.Error, match="would lose"):
            file[0].create_channel("A", [1.0])
            file[0].create_channel("B", [1.0])
        assert channel.valid[1].sum() == 5


def test_masked_values_count_as_missing(tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 3], bits=32)
    with veloxd.open(tmp_path / "ragged.oxd", mode="r+") as file:
        channel = file[0][0]
        values, raw = channel.values, channel.raw
        hidden = np.ma.array(np.where(channel.valid, values * 0.5, 9.0), mask=~channel.valid)
        for lines in (hidden, list(hidden)):
            channel.values = lines
            np.testing.assert_allclose(channel.values, values * 0.5, atol=1e-8)
        channel.raw = np.ma.array(np.where(channel.valid, raw, 7), mask=~channel.valid, dtype=np.int16)
        np.testing.assert_array_equal(channel.raw, raw)
        for value in (np.ma.masked, np.ma.array(5, mask=True)):
            with pytest.raises(ValueError, match="point 2 of line 0"):
                channel[0, 2] = value
        with pytest.raises(ValueError, match="point 1 of line 0"):
            file.create_group("New").create_channel("Masked", np.ma.array([1, 999], mask=[False, True]))
        with pytest.raises(TypeError, match="masked"):
            channel.read(out=np.ma.masked_all(channel.shape))


def test_adding_a_channel_keeps_those_that_there_are(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        group = file["ForwardScan"]
        topography = group["Topography"]
        before = topography.raw, topography.x.as_dict(), topography.y.as_dict(), topography.signal.as_dict()
        topography[0, 0] = 1.0
        added = group.create_channel("Adhesion", np.ones((2, 3), int), unit="N", x=topography.x)
        assert group.channels[-1] is added
        assert added.x.as_dict() == before[1]
        assert (before[1], before[2], before[3]) == (
            topography.x.as_dict(), topography.y.as_dict(), topography.signal.as_dict(),
        )  # fmt: skip
        np.testing.assert_array_equal(topography.raw[1:], before[0][1:])
        assert file.save().clipped == 1


def test_a_refused_channel_leaves_its_group_as_it_was(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        for arguments in (
            {"values": [np.nan]},
            {"values": [1.0], "x": {"unit": "m\n"}},
            {"values": [1.0], "x": {"n": 1}},
        ):
            with pytest.raises((ValueError, TypeError)):
                file[0].create_channel("Refused", **arguments)
            assert list(file[0]) == ["Topography", "Phase"]
