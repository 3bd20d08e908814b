"""Contact models, and fits of them to curves of known modulus."""

from __future__ import annotations

import os
import signal
from typing import Any

import numpy as np
import pytest
import xarray as xr
from force_curves import CALIBRATED, CONTACT, SPRING, Z, approach, elastic

from veloxd.curves import Reason, dmt, fit_modulus, fitting, hertz_cone, hertz_sphere

MODULUS = 2e6
TIPS: dict[str, dict[str, Any]] = {
    "sphere": {"radius": 1e-6},
    "cone": {"half_angle": 0.4},
    "dmt": {"radius": 1e-6},
}


def fit(curves: Any, model: Any, **options: Any) -> Any:
    return fit_modulus(curves, model, **{"x": Z, "poisson": 0.5, **TIPS[model], **CALIBRATED, **options})


def test_models_give_forces_worked_out_by_hand() -> None:
    # 4/3 / (1 - 1/4) = 16/9; the root of 1 µm is 1 mm; (0.09 µm)^(3/2) = 2.7e-11 m^(3/2).
    assert hertz_sphere(0.09e-6, 9e6, 0.5, 1e-6) == pytest.approx(16e6 * 1e-3 * 2.7e-11)
    assert hertz_cone(1e-7, np.pi * 3e6, 0.5, np.pi / 4) == pytest.approx(8e6 * 1e-14)
    np.testing.assert_allclose(dmt([-1e-9, 0, 0.09e-6], 9e6, 0.5, 1e-6, 1e-9), [np.nan, -1e-9, 4.32e-7 - 1e-9])
    assert hertz_sphere([-1e-9], 9e6, 0.5, 1e-6) == 0


@pytest.mark.parametrize("model", TIPS)
def test_the_modulus_is_found_within_its_error(model: str) -> None:
    found = fit(elastic(model, MODULUS, 200), model)
    assert found.ok.all()
    pulls = (found.modulus - MODULUS) / found.error
    assert abs(pulls.mean()) < 0.5
    # The samples miss the same part of each adhesion, which counts as a part of its error.
    assert (0.7 if model == "dmt" else 0.8) < pulls.std() < 1.25
    assert found.error.max() < 0.01 * MODULUS
    assert found.contact == pytest.approx(np.full(200, CONTACT), abs=1e-9)
    np.testing.assert_allclose(found.covariance[:, 0, 0], found.error**2)
    if model == "dmt":
        assert found.adhesion == pytest.approx(np.full(200, 2e-9), rel=0.05)


@pytest.mark.parametrize("model", TIPS)
def test_directions_do_not_matter(model: str) -> None:
    curves = elastic(model, MODULUS, 3)
    expected = fit(curves, model).modulus
    np.testing.assert_allclose(fit(curves[:, ::-1], model, x=Z[::-1]).modulus, expected, rtol=1e-6)
    np.testing.assert_allclose(fit(curves, model, x=-Z).modulus, expected, rtol=1e-6)
    np.testing.assert_allclose(fit(-curves / 2, model, sensitivity=2, repulsion="lowers").modulus, expected, rtol=1e-6)


def test_errors_of_what_was_given_become_the_scale_error() -> None:
    curves = elastic("sphere", MODULUS, 2)
    # The modulus goes with the spring constant, and with the inverse root of the radius.
    relative = {"spring_constant": (0.1 * SPRING, 0.1), "radius": (0.21e-6, 1 - 1 / 1.1), "poisson": (0.0, 0.0)}
    for name, (error, expected) in relative.items():
        found = fit(curves, "sphere", errors={name: error})
        np.testing.assert_allclose(found.scale_error / found.modulus, expected, atol=1e-6)
    both = fit(curves, "sphere", errors={name: error for name, (error, _) in relative.items()})
    np.testing.assert_allclose(both.scale_error / both.modulus, np.hypot(0.1, 1 - 1 / 1.1), rtol=1e-5)
    np.testing.assert_array_equal(both.error, found.error)
    newtons = xr.DataArray(SPRING * curves, {"z": Z}, ("line", "z"), attrs={"units": "N"})
    in_newtons = fit_modulus(
        newtons, "sphere", poisson=0.5, radius=1e-6, spring_constant=SPRING, errors={"spring_constant": 0.01}
    )
    np.testing.assert_allclose(in_newtons["modulus"], both.modulus, rtol=1e-6)
    assert (in_newtons["scale_error"] > 0).all()


def test_part_of_a_curve_can_be_fitted() -> None:
    whole, part = (fit(elastic("sphere", MODULUS)[0], "sphere", fit_range=(0.0, end)) for end in (1.0, 0.5))
    assert part.points < 0.6 * whole.points
    assert part.modulus == pytest.approx(MODULUS, abs=4 * part.error)


def test_curves_without_a_modulus_are_left_out() -> None:
    curves = np.vstack([elastic("sphere", MODULUS), approach(), np.full((1, Z.size), np.nan)])
    found = fit(curves, "sphere")
    assert found.reason.tolist() == [Reason.OK, Reason.NO_FIT, Reason.NOTHING_ACQUIRED]
    assert np.isnan(found.modulus).tolist() == [False, True, True]
    assert fit(elastic("sphere", MODULUS), "dmt").reason.tolist() == [Reason.NO_ADHESION]


@pytest.mark.filterwarnings("ignore:.*fork:DeprecationWarning")
@pytest.mark.skipif(not hasattr(os, "fork"), reason="there is no fork here")
def test_a_child_can_fit_though_a_thread_of_its_parent_was_fitting() -> None:
    with fitting._filters:
        child = os.fork()
        if child == 0:
            status = 1
            try:
                signal.alarm(20)
                status = int(not fit(elastic("sphere", MODULUS), "sphere").ok.all())
            finally:
                os._exit(status)
    assert os.waitpid(child, 0)[1] == 0


def test_wrong_tips_are_refused() -> None:
    for message, arguments in (
        ("'sphere', 'cone', 'dmt'", {"model": "plane", "poisson": 0.5}),
        ("Poisson", {"model": "sphere", "poisson": 0.6, "radius": 1e-6}),
        ("radius", {"model": "dmt", "poisson": 0.5}),
        ("half_angle", {"model": "cone", "poisson": 0.5, "half_angle": 2.0}),
        ("fit_range", {"model": "sphere", "poisson": 0.5, "radius": 1e-6, "fit_range": (0.5, 0.5)}),
    ):
        with pytest.raises(ValueError, match=message):
            fit_modulus(approach(), x=Z, **arguments)
    with pytest.raises(TypeError, match="'temperature'"):
        fit(approach(), "sphere", errors={"temperature": 1.0})
