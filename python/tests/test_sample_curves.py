"""The force curves of the sample: what they were made with, and that the program and this package find the same."""

from __future__ import annotations

import csv
import io
import math
from collections import defaultdict
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from tool import make_sample, run_tool

import veloxd
from veloxd import curves

LINES = np.arange(16)
SPRING, MODULUS, POISSON, TANGENT = 0.2, 30e6, 0.5, 0.364
CONTACTS = (272 + LINES) * 1e-9


@pytest.fixture(scope="module")
def sample(tmp_path_factory: pytest.TempPathFactory) -> Path:
    path = tmp_path_factory.mktemp("sample") / "sample.oxd"
    make_sample(path)
    return path


def indentation_at(z: Any) -> Any:
    """The indentation of a cone, by the formula of docs/oxd.md."""
    ratio = 2 / math.pi * MODULUS / (1 - POISSON**2) * TANGENT / SPRING
    return (np.sqrt(1 + 4 * ratio * (z - CONTACTS)) - 1) / (2 * ratio)


def test_the_program_prints_what_the_package_finds(sample: Path) -> None:
    printed: dict[str, dict[int, tuple[str, str]]] = defaultdict(dict)
    for row in csv.DictReader(io.StringIO(run_tool("process", sample, "--csv"))):
        printed[row["quantity"]][int(row["line"])] = (row["value"], row["reason"])
    with veloxd.open(sample) as file:
        approach, retract = file["Spectroscopy"].channels
        slope = curves.slope(approach, slope_range=(310e-9, 390e-9))
        adhesion = curves.adhesion(retract, baseline_range=(10e-9, 200e-9))
        indentation = curves.indentation(approach, law="cone")
        contact = curves.contact_point(approach, law="cone")
    found = {
        "Contact slope": slope.value,
        "Contact slope error": slope.error,
        "Adhesion": adhesion.force,
        "Adhesion error": adhesion.error * SPRING,
        "Adhesion position": adhesion.position,
        "Indentation maximum": indentation.value,
        "Indentation maximum error": indentation.error,
        "Indentation contact point": contact.position,
        "Indentation contact point error": contact.error,
    }
    assert set(printed) == set(found)
    for name, values in found.items():
        assert [reason for _, reason in printed[name].values()] == [""] * 16, name
        told = [float(printed[name][line][0]) for line in LINES]
        np.testing.assert_allclose(told, values, rtol=1e-15, err_msg=name)


def test_the_sample_has_the_values_that_it_was_made_with(sample: Path) -> None:
    with veloxd.open(sample) as file:
        approach, retract = file["Spectroscopy"].channels
        contact = curves.contact_point(approach, law="cone")
        indentation = curves.indentation(approach, law="cone")
        adhesion = curves.adhesion(retract)
        fit = curves.fit_modulus(approach, "cone", poisson=POISSON, half_angle=math.atan(TANGENT))
    for name, deviation, error in (
        ("contact point", contact.position - CONTACTS, contact.error),
        ("indentation", indentation.value - indentation_at(400e-9), indentation.error),
        ("adhesion", adhesion.value - (30 - 0.5 * LINES) * 1e-9, adhesion.error),
        ("modulus", fit.modulus - MODULUS, fit.error),
    ):
        assert np.abs(deviation / error).max() < 4, name
    assert fit.modulus.mean() == pytest.approx(MODULUS, rel=0.01)
