"""How files show themselves: in a terminal, in a notebook, and drawn."""

from __future__ import annotations

import base64
import io
import re
import xml.dom.minidom
from html.parser import HTMLParser
from pathlib import Path
from typing import Any

import matplotlib as mpl
import matplotlib.pyplot as plt
import numpy as np
import pytest
from samples import ragged_file

import veloxd
from veloxd._show.picture import colours

mpl.use("Agg")


def images_of(page: str) -> list[Any]:
    """The pictures of a page, which must be whole: as arrays of shape (height, width, 4)."""
    found = re.findall(r"data:image/png;base64,([^\"]*)", page)
    return [plt.imread(io.BytesIO(base64.b64decode(one))) for one in found]


class Balanced(HTMLParser):
    """Notes which elements are open."""

    def __init__(self) -> None:
        super().__init__()
        self.open: list[str] = []

    def handle_starttag(self, tag: str, attributes: Any) -> None:
        if tag != "img":
            self.open.append(tag)

    def handle_endtag(self, tag: str) -> None:
        assert self.open.pop() == tag

    def handle_startendtag(self, tag: str, attributes: Any) -> None:
        pass


def test_texts_show_what_there_is(scan: Path) -> None:
    with veloxd.open(scan) as file:
        assert repr(file) == "<veloxd.File 'scan.oxd' (r)>\n  0 ForwardScan: Topography, Phase"
        assert repr(file[0]).splitlines()[1] == "  0 'Topography': 8 x 16 in m, Y 1 µm x X 1 µm"
        assert repr(file[0]["Phase"]) == "<veloxd.Channel 'Phase': 8 x 16 in °, Y 1 µm x X 1 µm>"
        assert repr(file.info) == "<veloxd.Information: Scan>"
        assert file._ipython_key_completions_() == ["ForwardScan"]
    assert repr(file) == "<veloxd.File 'scan.oxd': closed>"
    assert "closed" in file._repr_html_()


def test_pages_are_whole_whatever_the_names(scan: Path, tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 4], claimed="LineDim0Points=7\r\n")
    with veloxd.open(scan, mode="r+") as file, veloxd.open(tmp_path / "ragged.oxd") as ragged:
        file[0]["Phase"].name = "<b>&"
        file[0].create_channel("Empty", shape=(0, 4))
        things = [file, file[0], file[0]["Topography"], file.info, ragged]
        pages = [thing._repr_html_() for thing in things]
    for page in pages:
        parser = Balanced()
        parser.feed(page)
        assert parser.open == []
        assert "<b>&" not in page
    assert [len(images_of(page)) for page in pages] == [2, 2, 1, 0, 0]
    assert "Line 0 cannot be read" in pages[-1]
    assert "-10 .. 10 nm" in pages[0]


def test_thumbnails_show_the_values(tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 3, 0])
    with veloxd.create() as file, veloxd.open(tmp_path / "ragged.oxd") as ragged:
        values = np.add.outer(np.arange(300.0), np.zeros(500))
        channel = file.create_group("G").create_channel("C", values)
        (image,) = images_of(channel._repr_html_())
        assert max(image.shape[:2]) <= 128
        lightness = image[:, :, :3].sum(axis=2).mean(axis=1)
        assert (np.diff(lightness) <= 0).all(), "line 0, which is darkest, is at the bottom"
        svg = re.search("<svg.*</svg>", ragged[0]._repr_html_())
    curves = xml.dom.minidom.parseString(svg.group()).getElementsByTagName("polyline") if svg else []
    assert [len(curve.getAttribute("points").split()) for curve in curves] == [6, 3, 0]


def test_lightness_of_colours_grows_evenly() -> None:
    light = colours(np.linspace(0, 1, 50)) @ [0.30, 0.59, 0.11]
    assert (np.diff(light) > 0).all()
    assert np.ptp(np.diff(light)) < 2


def test_an_image_is_true_to_scale_and_has_labels_in_suitable_units(scan: Path) -> None:
    with veloxd.open(scan) as file:
        ax = file[0]["Topography"].plot(level="line")
        image = ax.get_images()[0]
        assert (ax.get_xlabel(), ax.get_ylabel(), ax.get_title()) == (
            "X (µm)",
            "Y (µm)",
            "ForwardScan, line subtracted",
        )
        assert image.colorbar is not None
        assert image.colorbar.ax.get_ylabel().startswith("Topography (")
        assert ax.get_aspect() == 1.0
        assert image.get_extent() == pytest.approx([-0.5 / 15, 15.5 / 15, -0.5 / 7, 7.5 / 7])
        assert image.origin == "lower"
        own = plt.subplots()[1]
        assert file[0]["Phase"].plot(level="derive", ax=own) is own
        assert own.get_title() == "ForwardScan, derived"
    plt.close("all")


def test_what_is_beyond_the_colours_shows_at_their_bar() -> None:
    with veloxd.create() as file:
        group = file.create_group("G", slots=2)
        axes = {"x": {"unit": "m"}, "y": {"unit": "m"}}
        values = np.zeros((20, 20))
        values[0, 0] = 1
        for spikes, beyond in (
            (values, "max"),
            (-values, "min"),
            (values - values.T[::-1], "both"),
            (0 * values, "neither"),
        ):
            channel = group.create_channel("C", spikes, **axes)
            colorbar = channel.plot().get_images()[0].colorbar
            assert colorbar is not None
            assert colorbar.extend == beyond
    plt.close("all")


def test_many_curves_are_coloured_from_dark_to_light() -> None:
    with veloxd.create() as file:
        lines = file.create_group("G").create_channel("C", np.eye(12), y={"unit": "s"}).plot().get_lines()
    assert (np.diff([sum(mpl.colors.to_rgb(line.get_color())) for line in lines]) > 0).all()
    plt.close("all")


def test_curves_are_drawn_over_their_own_axes(tmp_path: Path) -> None:
    ragged_file(tmp_path / "ragged.oxd", [6, 6, 6])
    with veloxd.open(tmp_path / "ragged.oxd") as file:
        ax = file[0][0].plot()
    assert [line.get_xdata()[0] for line in ax.get_lines()] == pytest.approx([0, 1, 2])
    assert ax.get_ylabel() == "Force (mN)"
    plt.close("all")
