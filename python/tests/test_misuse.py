"""A table of bad use: what is refused, with which error, and that nothing is changed by it."""

from __future__ import annotations

from pathlib import Path
from typing import Any, Callable

import numpy as np
import pytest

import veloxd

# What is done to an open file, the error, and a part of its text.
MISUSE: list[tuple[Callable[[Any], Any], type[Exception], str]] = [
    (lambda file: file["forwardscan"], KeyError, "did you mean 'ForwardScan'"),
    (lambda file: file["Zzz"], veloxd.NameNotFoundError, "there are 'ForwardScan'"),
    (lambda file: file[0]["Topographie"], KeyError, "did you mean 'Topography'"),
    (lambda file: file[1], IndexError, "there are 1"),
    (lambda file: file[-2], IndexError, "group -2"),
    (lambda file: file[0][2], IndexError, "channel 2"),
    (lambda file: file[1.5], TypeError, ""),
    (lambda file: file.info["Scam"], KeyError, "did you mean 'Scan'"),
    (lambda file: file.info[0], TypeError, "entries"),
    (lambda file: file.info["Scan"].quantity("Image sise"), KeyError, "did you mean"),
    (lambda file: file.info.quantity("Scan"), ValueError, "group"),
    (lambda file: veloxd.Quantity.parse("Tube"), ValueError, "Tube"),
    (lambda file: veloxd.Quantity.parse("2026-11-22"), ValueError, "2026"),
    (lambda file: veloxd.Quantity.parse("-0x10"), ValueError, "0x10"),
    (lambda file: file[0][0][8], IndexError, "Line 8"),
    (lambda file: file[0][0][0, -17], IndexError, "Point -17"),
    (lambda file: file[0][0][0, 0, 0], IndexError, "two axes"),
    (lambda file: file[0][0][..., ...], IndexError, "two axes"),
    (lambda file: file[0][0][[0, 1], [0, 1]], IndexError, "one axis"),
    (lambda file: file[0][0][1.0], IndexError, "lines"),
    (lambda file: file[0][0][True], IndexError, "lines"),
    (lambda file: file[0][0][None], IndexError, "lines"),
    (lambda file: file[0][0][[True]], IndexError, "lines"),
    (lambda file: file[0][0].x.of_line(8), IndexError, "Line 8"),
    (lambda file: file[0][0].signal.values, TypeError, "signal axis"),
    (lambda file: file[0][0].level("cubic"), ValueError, "parabola"),
    (lambda file: file[0][0].read(out=[0]), TypeError, "NumPy array"),
    (lambda file: file[0][0].read(out=np.empty((8, 15))), ValueError, "(8, 16)"),
    (lambda file: file[0][0].read(out=np.empty((8, 16), int)), TypeError, "int64"),
    (lambda file: file[0][0].read(raw=True, out=np.empty((8, 16), "i2")), TypeError, "int16"),
    (lambda file: file[0][0].read(out=np.broadcast_to(0.0, (8, 16))), ValueError, "read-only"),
    (lambda file: file[0][0].read(out=np.empty((8, 16), "U9")), TypeError, "U9"),
    (lambda file: file[0][0].__array__(copy=False), ValueError, "copied"),
    (lambda file: file[0][0].write(np.zeros((9, 16))), ValueError, ""),
    (lambda file: file[0][0].write(1j), TypeError, "real numbers"),
    (lambda file: file[0][0].write("1"), TypeError, "real numbers"),
    (lambda file: file[0][0].write(1.5, raw=True), TypeError, "integers"),
    (lambda file: file[0][0].write([np.nan] * 16, 0), ValueError, "point 0 of line 0"),
    (lambda file: file[0][0].write(veloxd.RAW_MISSING, (3, 4), raw=True), ValueError, "point 4 of line 3"),
    (lambda file: file[0][0].write(0.0, [9]), IndexError, "Line 9"),
    (lambda file: setattr(file[0][0], "vaules", 0.0), AttributeError, "vaules"),
    (lambda file: setattr(file[0][0].x, "minium", 0.0), AttributeError, "minium"),
    (lambda file: setattr(file[0], "nane", "A"), AttributeError, "nane"),
    (lambda file: setattr(file, "infos", {}), AttributeError, "infos"),
    (lambda file: setattr(file.info, "Scan", {}), AttributeError, "Scan"),
    (lambda file: setattr(file[0][0].x, "minimum", np.inf), ValueError, "finite"),
    (lambda file: setattr(file[0][0].x, "range", "1"), TypeError, ""),
    (lambda file: setattr(file[0][0].x, "name", ""), ValueError, "empty"),
    (lambda file: setattr(file[0][0].x, "unit", b"m"), TypeError, "bytes"),
    (lambda file: file[0][0].x.update(name="New", minimum=np.nan), ValueError, "finite"),
    (lambda file: setattr(file[0][0], "y", {"name": "New", "unit": "bad\n"}), ValueError, "line break"),
    (lambda file: setattr(file[0][0], "y", {"minimum": 1.0, "range": "1"}), TypeError, ""),
    (lambda file: file.create_group("Big", slots=2**40), MemoryError, "memory"),
    (lambda file: setattr(file[0][0], "x", {"unknown": 1}), TypeError, "unknown"),
    (lambda file: setattr(file[0][0], "name", "a\nb"), ValueError, "line break"),
    (lambda file: setattr(file[0], "name", "a\0b"), ValueError, "zero byte"),
    (lambda file: setattr(file[0], "name", "a#!b"), ValueError, "#!"),
    (lambda file: setattr(file[0], "name", "a "), ValueError, "blank"),
    (lambda file: setattr(file[0], "name", "\ud800"), UnicodeEncodeError, ""),
    (lambda file: setattr(file[0], "logical_id", -1), ValueError, "logical id"),
    (lambda file: file.create_group(""), ValueError, "empty"),
    (lambda file: file.create_group("G", bits=12), ValueError, "12"),
    (lambda file: file.create_group("G", slots=-1), ValueError, "-1"),
    (lambda file: file[0].create_channel("C"), ValueError, "either"),
    (lambda file: file[0].create_channel("C", [1], shape=(1, 1)), ValueError, "either"),
    (lambda file: file[0].create_channel("C", np.zeros((1, 1, 1))), ValueError, "(1, 1, 1)"),
    (lambda file: file[0].create_channel("C", ["a"]), ValueError, "U1"),
    (lambda file: file[0].create_channel("C", shape=(-1, 4)), ValueError, "(-1, 4)"),
    (lambda file: file[0].create_channel("C", shape=(1, 2**40)), MemoryError, "memory"),
    (lambda file: file.info.update({"Scan": "1"}), TypeError, "mapping"),
    (lambda file: file.info["Scan"].update({"a=b": "1"}), ValueError, "="),
    (lambda file: file.info["Scan"].update({"[a": "1"}), ValueError, "["),
    (lambda file: file.info["Scan"].update({"a": ""}), ValueError, "empty"),
    (lambda file: file.info["Scan"].update({"a": {"b": {"c": "\n"}}}), ValueError, "line break"),
    (lambda file: setattr(file, "info", {"Scan": {"a": "1"}, "B": {"c": "\n"}}), ValueError, "line break"),
    (lambda file: file.info.__delitem__("Scam"), KeyError, "did you mean"),
    (lambda file: file.save(""), ValueError, "no name"),
    (lambda file: file.save("a\0b"), ValueError, ""),
    (lambda file: veloxd.open("scan.oxd", mode="a"), ValueError, "'r+'"),
    (lambda file: veloxd.open("."), OSError, "directory"),
    (lambda file: veloxd.open("scan.oxd/x"), FileNotFoundError, "directory"),
    (lambda file: veloxd.no_such_thing, AttributeError, "no_such_thing"),
]


@pytest.mark.parametrize("number", range(len(MISUSE)))
def test_bad_use_is_told_in_one_sentence_and_changes_nothing(scan: Path, number: int) -> None:
    use, kind, part = MISUSE[number]
    with veloxd.open(scan, mode="r+") as file:
        file.save("before.oxd")
        with pytest.raises(kind) as caught:
            use(file)
        assert part in str(caught.value)
        assert "\n" not in str(caught.value)
        file.save("after.oxd")
    assert Path("before.oxd").read_bytes() == Path("after.oxd").read_bytes()


WRITES: list[Callable[[Any], Any]] = [
    lambda file: setattr(file[0], "name", "N"),
    lambda file: setattr(file[0], "logical_id", 5),
    lambda file: setattr(file[0][0].signal, "unit", "V"),
    lambda file: setattr(file[0][0], "values", 0.0),
    lambda file: setattr(file[0][0], "raw", 0),
    lambda file: setattr(file, "info", {}),
    lambda file: file.info["Scan"].update({"a": "b"}),
    lambda file: file.info.__delitem__("Scan"),
    lambda file: file[0].__delitem__("Phase"),
    lambda file: file.__delitem__(0),
    lambda file: file.create_group("G"),
    lambda file: file[0].create_channel("C", [1.0]),
]


def test_a_file_for_reading_refuses_every_change(scan: Path) -> None:
    with veloxd.open(scan) as file:
        for write in WRITES:
            with pytest.raises(veloxd.ReadOnlyError, match=r"r\+"):
                write(file)
        file.save("after.oxd")
    assert Path("after.oxd").read_bytes() == scan.read_bytes()


def test_a_signal_axis_without_extent_takes_no_real_values(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        channel = file[0]["Phase"]
        channel.signal.range = 0
        with pytest.raises(ValueError, match="no extent"):
            channel[0] = 1.0
        channel.raw = 5
        assert (channel.raw == 5).all()
