"""Measurement information: names, numbers with units, and groups in groups."""

from __future__ import annotations

from pathlib import Path

import pint
import pytest

import veloxd


def test_information_is_edited_as_nested_mappings(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        settings = file.info["Scan"]
        settings["Image size"] = veloxd.Quantity(2.5, "µm")
        settings["Lines"] = 8
        settings["Tip"] = {"Radius": "7 nm", "Coating": {"Metal": "Pt"}}
        tip = settings["Tip"]
        settings["Tip"] = {"Radius": "8 nm"}
        assert tip["Radius"] == "8 nm", "a group is filled anew, not replaced"
        settings["Tip"].update(settings["Tip"].to_dict(), Length="4 µm")
        del settings["Time/Line"]
        file.info["Notes"] = {"Operator": "A"}
        file.info["Notes"]["Operator"] = {"Name": "A"}
        file.save()
    with veloxd.open(scan) as file:
        assert file.info.to_dict() == {
            "Scan": {"Tip": {"Radius": "8 nm", "Length": "4 µm"}, "Image size": "2.5 µm", "Lines": "8"},
            "Notes": {"Operator": {"Name": "A"}},
        }
        assert "Tip" in file.info["Scan"]
        assert file.info["Scan"].get("Tilt", "none") == "none"
        assert len(file.info["Scan"]) == 3
        assert file.info._ipython_key_completions_() == list(file.info)
        assert veloxd.Quantity.parse(file.info["Scan"]["Lines"]) == (8, "")


def test_texts_of_any_length_are_read_whole(scan: Path) -> None:
    text = "µ" * 5000
    with veloxd.open(scan, mode="r+") as file:
        file.info["Scan"][text] = text
        file[0].name = file[0][0].x.unit = text
        file.save()
    with veloxd.open(scan) as file:
        assert (file[0].name, file[0][0].x.unit, file.info["Scan"][text]) == (text, text, text)


def test_names_that_occur_more_than_once_are_all_reachable() -> None:
    with veloxd.create() as file:
        for value in ("1", "3"):
            file.info["A"] = {"x": value}
            file._handle.change("SetInfoGroupName", len(file.info.entries()) - 1, b"B")
        file.info["A"] = {}
        assert [name for name, _ in file.info.entries()] == ["B", "B", "A"]
        assert [group["x"] for _, group in file.info.entries()[:2]] == ["1", "3"]
        assert file.info["B"]["x"] == file.info.to_dict()["B"]["x"] == "1"
        assert list(file.info) == ["B", "A"]


@pytest.mark.parametrize(
    ("text", "value", "unit", "base", "base_unit"),
    [
        ("5 µm", 5.0, "µm", 5e-6, "m"),
        ("5 μm", 5.0, "μm", 5e-6, "m"),
        ("-3.7nm/V", -3.7, "nm/V", -3.7e-9, "m/V"),
        ("1.5e3 kHz", 1500.0, "kHz", 1.5e6, "Hz"),
        ("24 bit", 24.0, "bit", 24.0, "bit"),
        ("90.2 °", 90.2, "°", 90.2, "°"),
        ("1 m", 1.0, "m", 1.0, "m"),
        ("5 nm^2", 5.0, "nm^2", 5.0, "nm^2"),
        ("5 mm2/nm", 5.0, "mm2/nm", 5.0, "mm2/nm"),
        ("5 nm ** 2", 5.0, "nm ** 2", 5.0, "nm ** 2"),
        ("0bar", 0.0, "bar", 0.0, "bar"),
        ("2 Pa", 2.0, "Pa", 2.0, "Pa"),
        ("0042", 42.0, "", 42.0, ""),
        (" .5 s ", 0.5, "s", 0.5, "s"),
    ],
)
def test_texts_are_read_as_numbers_with_units(text: str, value: float, unit: str, base: float, base_unit: str) -> None:
    quantity = veloxd.Quantity.parse(text)
    assert quantity == (value, unit)
    assert quantity.base == (base, base_unit)
    assert veloxd.Quantity.parse(str(quantity)) == quantity


def test_quantities_become_those_of_pint() -> None:
    assert veloxd.Quantity(18.31, "nm/V").to_pint().to("m/V").magnitude == pytest.approx(1.831e-8)
    registry = pint.UnitRegistry()
    assert veloxd.Quantity(2, "MΩ").to_pint(registry) == registry.Quantity(2e6, "ohm")
