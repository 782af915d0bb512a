# SPDX-License-Identifier: Apache-2.0
"""Special functions against SciPy, and arrays against single values."""
import itertools

import numpy as np
import pytest
import scipy.special

from orvane import special

X = np.array([-2.5, -0.7, 0.05, 0.3, 0.5, 0.9, 1.0, 1.7, 3.2, 6.5])
UNIT, POSITIVE, ORDERS = X[(X > 0) & (X < 1)], X[X > 0], np.array([0.0, 1.0, 2.5, 4.0])

# name, arguments, relative tolerance: same name and order of arguments in both.
ROWS = [
    ("gamma", (X,), 1e-13), ("gammaln", (X,), 1e-13), ("digamma", (X,), 1e-12), ("erf", (X,), 1e-14), ("erfc", (X,), 1e-13),
    ("erfi", (X,), 1e-13), ("erfinv", (UNIT,), 1e-12), ("dawsn", (X,), 1e-13), ("expi", (X,), 1e-12), ("exp1", (POSITIVE,), 1e-12),
    ("zeta", (POSITIVE + 1,), 1e-12), ("ellipk", (np.append(UNIT, -3.0),), 1e-13), ("ellipe", (UNIT,), 1e-13),
    ("ellipkm1", (UNIT,), 1e-13), ("spence", (POSITIVE,), 1e-12), ("lambertw", (POSITIVE,), 1e-13),
    ("wrightomega", (X,), 1e-13), ("beta", (POSITIVE, 2.5), 1e-13), ("gammainc", (ORDERS[1:, None], POSITIVE), 1e-12),
    ("gammaincc", (ORDERS[1:, None], POSITIVE), 1e-11), ("betainc", (2.0, 3.5, UNIT), 1e-12),
    ("jv", (ORDERS[:, None], POSITIVE), 1e-11), ("yv", (ORDERS[:, None], POSITIVE), 1e-11),
    ("iv", (ORDERS[:, None], POSITIVE), 1e-12), ("kv", (ORDERS[:, None], POSITIVE), 1e-12),
    ("struve", (ORDERS[:, None], POSITIVE), 1e-11), ("modstruve", (ORDERS[:, None], POSITIVE), 1e-11),
    ("ellipkinc", (X[:, None], UNIT), 1e-12), ("ellipeinc", (X[:, None], UNIT), 1e-12),
    ("elliprf", (POSITIVE, 2.0, 0.5), 1e-13), ("elliprj", (POSITIVE, 2.0, 0.5, 1.5), 1e-12), ("elliprc", (POSITIVE, 2.0), 1e-13),
    ("hyp0f1", (2.5, X), 1e-12), ("hyp1f1", (1.5, 2.5, X), 1e-12), ("hyp2f1", (0.5, 1.5, 2.5, UNIT), 1e-12),
    ("polygamma", (np.array([0, 1, 3])[:, None], POSITIVE), 1e-12), ("voigt_profile", (POSITIVE, 1.2, 0.7), 1e-8),
    ("agm", (POSITIVE, 2.0), 1e-14), ("expn", (np.array([1, 2, 5])[:, None], POSITIVE), 1e-11),
    ("eval_legendre", (np.arange(4)[:, None], X), 1e-13), ("eval_laguerre", (np.arange(4)[:, None], X), 1e-12),
    ("eval_hermite", (np.arange(4)[:, None], X), 1e-13), ("wright_bessel", (1.0, 2.0, POSITIVE), 1e-12),
]


@pytest.mark.parametrize("name, arguments, tolerance", ROWS, ids=[row[0] for row in ROWS])
def test_values_are_those_of_scipy(name, arguments, tolerance):
    expected = getattr(scipy.special, name)(*arguments)
    if name == "lambertw":
        expected = expected.real
    got = getattr(special, name)(*arguments)
    assert got.shape == expected.shape
    np.testing.assert_allclose(got, expected, rtol=tolerance, atol=1e-15)


@pytest.mark.parametrize("name, arguments", [
    ("airy", (X,)), ("ellipj", (X[:, None], UNIT)), ("sici", (POSITIVE,)), ("shichi", (POSITIVE,)), ("fresnel", (X,))])
def test_tuples_are_those_of_scipy(name, arguments):
    for got, expected in zip(getattr(special, name)(*arguments), getattr(scipy.special, name)(*arguments)):
        np.testing.assert_allclose(got, expected, rtol=2e-10, atol=1e-14)


def test_arrays_have_the_bits_of_single_values():
    functions = [f for f in vars(special).values() if isinstance(f, special.Function)]
    assert len(functions) > 90
    for function in functions:
        count = len(function.arguments)
        if function.__name__.startswith("eval_"):
            continue  # their orders are integers; compared with SciPy above
        grid = np.array(list(itertools.islice(itertools.product([1.0, 0.25, 2.0], repeat=count), 12))).T
        single = [function(*point) for point in grid.T.tolist()]
        np.testing.assert_array_equal(function(*grid), single, err_msg=function.__name__)


def test_broadcast_out_and_errors():
    out = np.empty((4, 7))
    assert special.jv(ORDERS[:, None], POSITIVE[:7], out=out) is out
    assert special.gamma(np.float64(5)) == 24.0 and isinstance(special.gamma(5), float)
    assert special.gamma([]).shape == (0,)
    with pytest.raises(ValueError, match=r"jv: shapes.*v \(2,\), x \(3,\)"):
        special.jv([1, 2], [1, 2, 3])
    with pytest.raises(TypeError, match="gamma: x: must be real numbers, not 'a'"):
        special.gamma("a")
    with pytest.raises(ValueError, match="out: must be a float64 array"):
        special.gamma([1.0], out=np.empty(2))
    np.testing.assert_allclose(special.bernoulli(8), scipy.special.bernoulli(8), atol=1e-15)
