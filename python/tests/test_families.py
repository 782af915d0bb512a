# SPDX-License-Identifier: Apache-2.0
"""The idiomatic modules against NumPy, SciPy and closed forms."""
import pickle
from fractions import Fraction

import numpy as np
import pytest
import scipy.interpolate
import scipy.linalg
import scipy.ndimage
import scipy.optimize
import scipy.signal
import scipy.spatial
import scipy.stats

from orvane import (distributions, geo, highprecision, integrate, learn, linalg, mesh, optimize, signal, smoothing, spatial,
                    stats, stock, sym)
from orvane.distributions import Law


def test_expressions_have_the_values_of_their_formulas(rng):
    x, y = sym.symbols("x y")
    f = sym.exp(-x * y) * sym.sin(x) ** 2 / (1 + y**2) + 3 - sym.sqrt(abs(x))
    a, b = rng.random((2, 5)) + 0.5
    expected = np.exp(-a * b) * np.sin(a) ** 2 / (1 + b**2) + 3 - np.sqrt(a)
    np.testing.assert_allclose(f.evaluate(x=a, y=b), expected, rtol=1e-13)
    assert f.evaluate(x=a[:, None], y=b).shape == (5, 5) and f.variables == ["x", "y"]
    h = 1e-6
    slope = (f.evaluate(x=a + h, y=b) - f.evaluate(x=a - h, y=b)) / (2 * h)
    np.testing.assert_allclose(f.diff(x).evaluate({x: a, y: b}), slope, rtol=1e-7)
    again = pickle.loads(pickle.dumps(f.diff(y)))
    np.testing.assert_array_equal(again.evaluate(x=a, y=b), f.diff(y).evaluate(x=a, y=b))
    tiny = pickle.loads(pickle.dumps(1.5e-20 * sym.sin(x)))
    assert tiny.evaluate(x=1.0) == 1.5e-20 * np.sin(1.0)
    replaced = f.diff(x).subs(y=x + 1)
    np.testing.assert_allclose(replaced.evaluate(x=a), f.diff(x).evaluate(x=a, y=a + 1), rtol=1e-12)
    with pytest.raises(ValueError, match="no value for y"):
        f.evaluate(x=1.0)
    with pytest.raises(TypeError, match="sin: argument 1.*'a'"):
        sym.sin("a")
    with pytest.raises(TypeError, match="bessel_j takes 2 arguments, not 1"):
        sym.bessel_j(x)


def test_every_kind_of_function_can_be_built_and_evaluated():
    variables = sym.symbols("p q r s")
    for name, (fewest, most) in sym.functions().items():
        for count in range(fewest, most + 1):
            made = getattr(sym, name)(*variables[:count])
            value = made.evaluate(p=0.3, q=0.4, r=0.2, s=0.1)
            assert isinstance(value, float) and made.variables == ["p", "q", "r", "s"][:count], name


def test_polynomials_and_matrices_of_expressions():
    x, y = sym.symbols("x y")
    np.testing.assert_allclose(np.sort_complex((x**3 - 6 * x**2 + 11 * x - 6).roots()), [1, 2, 3], atol=1e-12)
    m = sym.Matrix([[x, 2], [y, x * y]])
    at = {"x": 3.0, "y": 5.0}
    np.testing.assert_allclose(m.evaluate(at), [[3, 2], [5, 15]])
    np.testing.assert_allclose(m.inv().evaluate(at), np.linalg.inv([[3, 2], [5, 15]]), rtol=1e-12)
    np.testing.assert_allclose((m @ m.T).evaluate(at), np.array([[3, 2], [5, 15]]) @ [[3, 5], [2, 15]])
    assert m.det().evaluate(at) == 35 and m[-1, 0].evaluate(y=2.0) == 2
    np.testing.assert_allclose(sym.Matrix([[x * y], [x + y]]).jacobian([x, y]).evaluate(at), [[5, 3], [1, 1]])
    assert (2 * (x - 3 * y) + 7).linear() == ({"x": 2, "y": -6}, 7) and (x * y + x).is_quadratic
    assert (x**3 + x).is_polynomial and not (x**3 + y).is_polynomial and not sym.sin(x).is_quadratic
    with pytest.raises(ValueError, match="is not linear"):
        (x * y).linear()
    left, right = sym.Matrix([[x, y, 1]]), sym.Matrix([[2, x, x + y]])
    np.testing.assert_allclose(left.cross(right).evaluate(at), [np.cross([3, 5, 1], [2, 3, 8])])
    for axis in range(3):
        turn = scipy.spatial.transform.Rotation.from_rotvec(0.4 * np.eye(3)[axis]).as_matrix()
        np.testing.assert_allclose(sym.rotation("t", axis + 1).evaluate(t=0.4), turn, atol=1e-15)
    with pytest.raises(ValueError, match=r"\(2, 2\) and \(1, 2\)"):
        m @ sym.Matrix([[x, y]])
    path = sym.solve_ode([y, -x], "t", [x, y], 0.0, [1.0, 0.0], [1.0, 2.0])
    np.testing.assert_allclose(path[:, 0], np.cos([1.0, 2.0]), atol=1e-8)


@pytest.mark.parametrize("law, reference", [
    (("Normal", 1.0, 2.0), scipy.stats.norm(1.0, 2.0)), (("Gibrat", 0.0, 1.0, 0.0), scipy.stats.lognorm(1.0)),
    (("Rayleigh", 0.0, 2.0), scipy.stats.rayleigh(0.0, 2.0)), (("Laplace", 0.5, 2.0), scipy.stats.laplace(0.5, 2.0)),
    (("Gumbel", 0.5, 2.0), scipy.stats.gumbel_l(0.5, 2.0))])
def test_laws_behave_like_those_of_scipy(law, reference):
    x, q = np.linspace(-3, 6, 19), np.array([1e-6, 0.02, 0.5, 0.9, 0.9999])
    mine = Law(*law)
    np.testing.assert_allclose(mine.pdf(x), reference.pdf(x), rtol=1e-12, atol=1e-300)
    np.testing.assert_allclose(mine.cdf(x), reference.cdf(x), rtol=1e-11, atol=1e-15)
    np.testing.assert_allclose(mine.ppf(q), reference.ppf(q), rtol=1e-9)
    np.testing.assert_allclose([mine.mean(), mine.std()], [reference.mean(), reference.std()], rtol=1e-5, atol=1e-6)
    np.testing.assert_allclose(mine.interval(0.9), reference.interval(0.9), rtol=1e-9)
    draws = mine.rvs(400, random_state=3)
    assert stats.kstest(draws, mine).pvalue > 0.01
    assert np.isnan(mine.ppf([-0.1, 1.1, np.nan])).all()
    assert pickle.loads(pickle.dumps(mine)).parameters == mine.parameters


def test_a_fit_ranks_the_law_of_the_sample_first():
    reference = scipy.stats.gumbel_l(3.0, 1.5)
    sample = reference.ppf((np.arange(300) + 0.5) / 300)
    with distributions.fit(sample, ["Normal", "Gumbel", "Uniform", "Poisson"], discrete=False, iterations=150) as found:
        assert found.best.name == "Gumbel" and found.message == "finished"
        np.testing.assert_allclose(found.best.parameters, [3.0, 1.5], rtol=5e-3)
        assert [line.error for line in found.ranking] == sorted(line.error for line in found.ranking)
        assert list(found.to_frame().columns) == ["name", "error", "parameters", "discrete"]
        assert found.plot().get_xlabel() == "x"
    with pytest.raises(ValueError, match="family: 'Nrmal' is no distribution"):
        distributions.fit(sample, ["Nrmal"])
    with pytest.raises(ValueError, match="solvers: 'best' is none of 'auto'"):
        distributions.fit(sample, ["Normal"], solvers=["best"])
    with pytest.raises(ValueError, match="sample: none of its 2 values is finite"):
        distributions.fit([np.nan, np.inf])


def test_samples_are_judged_as_by_scipy(rng):
    x = rng.normal(2.0, 3.0, 80)
    mine, reference = stats.shapiro(x), scipy.stats.shapiro(x)
    np.testing.assert_allclose([mine.statistic, mine.pvalue], reference, rtol=1e-4)
    found = stats.describe(x)
    np.testing.assert_allclose([found.mean, found.std, found.skewness, found.kurtosis], [
        x.mean(), x.std(ddof=1), scipy.stats.skew(x), scipy.stats.kurtosis(x, fisher=False)], rtol=1e-12)
    exact = scipy.stats.kstest(x, scipy.stats.norm(2.0, 3.0).cdf, mode="exact")
    np.testing.assert_allclose(stats.kstest(x, "norm", 2.0, 3.0), exact[:2], rtol=1e-9)
    found = stats.anderson(x, "norm", x.mean(), x.std(ddof=1))
    assert found.statistic == pytest.approx(scipy.stats.anderson(x, "norm", method="interpolate").statistic, rel=1e-9)
    assert found.pvalue == pytest.approx(stats.anderson_normal(x), rel=1e-9)
    assert stats.ks_2samp(x, x + 1).statistic == pytest.approx(scipy.stats.ks_2samp(x, x + 1).statistic)
    q = [0.01, 0.5, 0.99]
    np.testing.assert_allclose(stats.Family("gamma", 2.0, 3.0).ppf(q), scipy.stats.gamma(2.0, scale=1 / 3).ppf(q), rtol=1e-10)
    with pytest.raises(ValueError, match="parameters: norm has 2, not 1"):
        stats.Family("norm", 0.0)
    with pytest.raises(ValueError, match="x: must have at least 3 entries, not 2"):
        stats.shapiro([1.0, 2.0])


def test_matrices_are_taken_apart_as_by_scipy(rng):
    a, b = rng.normal(size=(5, 5)), rng.normal(size=(5, 2))
    np.testing.assert_allclose(linalg.det(a), np.linalg.det(a), rtol=1e-12)
    np.testing.assert_allclose(linalg.inv(a) @ a, np.eye(5), atol=1e-11)
    np.testing.assert_allclose(linalg.solve(a, b), np.linalg.solve(a, b), rtol=1e-9)
    for full in (True, False):
        u, s, vh = linalg.svd(a[:3], full)
        np.testing.assert_allclose(u @ np.diag(s) @ vh[:3], a[:3], atol=1e-12)
        assert vh.shape == ((5, 5) if full else (3, 5))
    values, vectors = linalg.eig(a)
    np.testing.assert_allclose(a @ vectors, vectors * values, atol=1e-11)
    t, z = linalg.schur(a)
    np.testing.assert_allclose(z @ t @ z.T, a, atol=1e-12)
    np.testing.assert_allclose(linalg.solve_sylvester(a, a[:2, :2], b), scipy.linalg.solve_sylvester(a, a[:2, :2], b), atol=1e-9)
    band = np.diag(a[0] + 5) + np.diag(a[1, :4], -1) + np.diag(a[2, :4], 1)
    np.testing.assert_allclose(linalg.solve_tridiagonal(a[1, :4], a[0] + 5, a[2, :4], b[:, 0]), np.linalg.solve(band, b[:, 0]))
    with pytest.raises(np.linalg.LinAlgError, match="singular"):
        linalg.inv([[1.0, 0.0], [0.0, 0.0]])
    with pytest.raises(ValueError, match=r"a: must be square, not of the shape \(2, 3\)"):
        linalg.det(np.ones((2, 3)))


def test_programmes_are_those_of_scipy(rng):
    a, b, c = rng.random((4, 3)), rng.random(4) + 1, rng.normal(size=3)
    bounds = [(-1, 2), (None, 5), (0.5, 4)]
    mine = optimize.linprog(c, a, b, bounds=[(-1, 2), (-3, 5), (0.5, 4)])
    reference = scipy.optimize.linprog(c, a, b, bounds=[(-1, 2), (-3, 5), (0.5, 4)])
    assert mine.success and mine.fun == pytest.approx(reference.fun, rel=1e-9)
    free = scipy.optimize.linprog(-np.ones(3), a, b, bounds=bounds)
    assert optimize.linprog(-np.ones(3), a, b, bounds=bounds).fun == pytest.approx(free.fun, rel=1e-9)
    assert optimize.linprog([-1.0], bounds=[(0, None)]).status == 3
    assert optimize.linprog([1.0], [[1.0]], [-1.0]).status == 2
    whole = scipy.optimize.milp(-np.array([5.0, 4.0, 3.0]), integrality=[1, 1, 0], constraints=scipy.optimize.LinearConstraint(
        a[:2, :], -np.inf, 7 * b[:2]))
    found = optimize.milp([-5.0, -4.0, -3.0], [1, 1, 0], a[:2], 7 * b[:2])
    assert found.fun == pytest.approx(whole.fun, rel=1e-9) and (found.x[:2] == np.round(found.x[:2])).all()
    p = a.T @ a + np.eye(3)
    best = scipy.optimize.minimize(lambda x: x @ p @ x / 2 + c @ x, np.ones(3), bounds=[(-1, 1)] * 3, tol=1e-12)
    got = optimize.quadprog(p, c, bounds=[(-1, 1)] * 3)
    np.testing.assert_allclose(got.x, best.x, atol=1e-4)
    assert got.fun == pytest.approx(best.fun, abs=1e-6)


@pytest.mark.parametrize("kind, formula", [
    ("huber", lambda r, k: np.where(r < k, r * r, 2 * k * (r - k / 2))), ("cauchy", lambda r, k: k * k / 2 * np.log1p((r / k) ** 2)),
    ("andrews", lambda r, k: np.where(r < k * np.pi, -k * k * (1 + np.cos(r / k)), 0)), ("l1", lambda r, k: r),
    ("bisquare", lambda r, k: np.where(r < k, k * k / 6 * (1 - (1 - (r / k) ** 2) ** 3), 0)),
    ("welsch", lambda r, k: k * k * (1 - np.exp(-((r / k) ** 2)))), ("logistic", lambda r, k: k * k * np.log(np.cosh(r / k)))])
def test_losses_are_their_formulas(rng, kind, formula):
    y, t = rng.normal(0, 5, (2, 50))
    assert optimize.loss(y, t, kind, 3.0) == pytest.approx(formula(np.abs(t - y), 3.0).sum(), rel=1e-12)


def test_paths_and_tours(rng):
    weights = np.where(rng.random((8, 8)) < 0.5, rng.random((8, 8)), np.inf)
    edges = [(i, j, weights[i, j]) for i in range(8) for j in range(8) if np.isfinite(weights[i, j])]
    distances = weights.copy()
    for k in range(8):
        distances = np.minimum(distances, distances[:, [k]] + distances[[k], :])
    for graph in (weights, edges, {(i, j): w for i, j, w in edges}):
        found = optimize.shortest_path(graph, 0, 7)
        assert found.fun == pytest.approx(distances[0, 7])
        assert sum(weights[i, j] for i, j in zip(found.x, found.x[1:])) == pytest.approx(found.fun)
    assert not optimize.shortest_path([(0, 1, 1.0)], 1, 0).success
    angles = rng.permutation(12) * np.pi / 6
    ring = np.column_stack([np.cos(angles), np.sin(angles)])
    assert optimize.tour(ring, points=True).fun == pytest.approx(24 * np.sin(np.pi / 12))


def test_signals_are_those_of_numpy_and_scipy(rng):
    x = rng.normal(size=101) + 1j * rng.normal(size=101)
    np.testing.assert_allclose(signal.fft(x), np.fft.fft(x), atol=1e-12)
    np.testing.assert_allclose(signal.ifft(signal.fft(x)), x, atol=1e-13)
    table = rng.normal(size=(6, 10))
    np.testing.assert_allclose(signal.fft2(table), np.fft.fft2(table), atol=1e-12)
    np.testing.assert_allclose(signal.hilbert(x.real), np.abs(scipy.signal.hilbert(x.real)), atol=1e-12)
    np.testing.assert_allclose(signal.detrend(x.real), scipy.signal.detrend(x.real), atol=1e-12)
    np.testing.assert_allclose(signal.medfilt(x.real, 5)[2:-2], scipy.signal.medfilt(x.real, 5)[2:-2])
    np.testing.assert_allclose(signal.savgol_filter(x.real, 7, 3)[3:-3], scipy.signal.savgol_filter(x.real, 7, 3)[3:-3], atol=1e-12)
    for btype, edge in (("lowpass", 0.2), ("highpass", 0.2), ("bandpass", (0.1, 0.3)), ("bandstop", (0.1, 0.3))):
        made = signal.iirdesign(4, edge, btype=btype)
        b, a = scipy.signal.butter(4, edge, btype, fs=1.0)
        np.testing.assert_allclose(made.b, b, atol=1e-11)
        np.testing.assert_allclose(made.a, a, atol=1e-10)
        np.testing.assert_allclose(made(x.real), scipy.signal.lfilter(b, a, x.real), atol=1e-9)
        np.testing.assert_allclose(signal.lfilter(3 * b, 2 * a, x.real), scipy.signal.lfilter(3 * b, 2 * a, x.real), atol=1e-9)
        window = signal.firwin(51, edge, btype=btype, window="hamming", parameters=[0.54])
        reference = scipy.signal.firwin(51, edge, pass_zero=btype in ("lowpass", "bandstop"), fs=1.0, scale=False)
        np.testing.assert_allclose(window.b / window.b.sum() if btype == "lowpass" else window.b,
                                   reference / reference.sum() if btype == "lowpass" else reference, atol=2e-3)
    kernel = rng.normal(size=5)
    made = signal.fit_fir(x.real, np.convolve(x.real, kernel, "same"), 5)
    np.testing.assert_allclose(made.b, kernel, atol=1e-9)
    np.testing.assert_allclose(made(x.imag), np.convolve(x.imag, kernel, "same"), atol=1e-9)
    even = signal.fit_fir(x.real, np.convolve(x.real, kernel, "same"), 5, symmetric=True).b
    np.testing.assert_allclose(even, even[::-1])
    with pytest.raises(ValueError, match="taps: must be odd, not 4"):
        signal.fit_fir(x.real, x.real, 4)
    with pytest.raises(ValueError, match="cutoff: must ascend between 0 and fs/2 = 0.5, not 0.7"):
        signal.iirdesign(2, 0.7)


def weighted(x, weights):
    return scipy.ndimage.correlate1d(x, np.asarray(weights) / np.sum(weights), mode="nearest")


X = np.random.default_rng(7).normal(size=40).cumsum()
AT = np.sort(np.random.default_rng(8).uniform(0, 5, 40))
DISTANCE = np.abs(np.arange(-3, 4)) / 4.0
D2 = np.diff(np.eye(40), 2, axis=0)


@pytest.mark.parametrize("got, expected, tolerance", [
    (smoothing.smooth(X, 7), weighted(X, np.sqrt(4 - 4 * DISTANCE)), 1e-12),
    (smoothing.smooth(X, 7, "squared"), weighted(X, (4 - 4 * DISTANCE) ** 2), 1e-12),
    (smoothing.smooth(X, 5, "rms"), np.sqrt(weighted((X - min(X.min(), 0.0)) ** 2, np.ones(5))), 1e-12),
    (smoothing.radial_smooth(X, 3), weighted(X, (1 - DISTANCE) ** 3 * (3 * DISTANCE + 1)), 1e-12),
    (smoothing.radial_smooth(X, 3, 5), weighted(X, (1 - DISTANCE) ** 4 * (4 * DISTANCE + 1)), 1e-12),
    (smoothing.correlate1d(X, [3.0, 1.0, -2.0]), scipy.ndimage.correlate1d(X, [3.0, 1.0, -2.0], mode="nearest"), 1e-12),
    (smoothing.weighted_mean(X, [3.0, 1.0, 2.0], reflect=True), scipy.ndimage.correlate1d(X, [0.5, 1 / 6, 1 / 3], mode="reflect"),
     1e-12),
    (smoothing.local_polynomial(X, 7, 2)[3:-3], scipy.signal.savgol_filter(X, 7, 2)[3:-3], 1e-11),
    (smoothing.whittaker2d(X.reshape(8, 5) * np.ones((1, 1)), 2.0, -1.0),
     np.linalg.solve(np.eye(8) + 2 * (d := np.diff(np.eye(8), 2, axis=0)).T @ d, X.reshape(8, 5)), 1e-11),
    (smoothing.gradient(AT**4 - AT, AT), 4 * AT**3 - 1, 1e-6),
    (smoothing.gradient(AT**3, AT, width=9, degree=3), 3 * AT**2, 1e-6),
    (smoothing.hermite_line(AT, (0.0, 1.0, -1.0), (5.0, 2.0, 3.0)),
     scipy.interpolate.CubicHermiteSpline([0, 5], [1, 2], [-1, 3])(AT), 1e-12),
    (signal.fftshift(X[:9]), np.fft.fftshift(X[:9]), 0), (signal.ifftshift(X[:9]), np.fft.ifftshift(X[:9]), 0),
    (smoothing.dead_zone(X, 2.0, 1.0), np.where(np.abs(X - 1) < 2, 1.0, X), 0),
], ids=lambda value: "")
def test_smoothers_are_those_of_scipy(got, expected, tolerance):
    np.testing.assert_allclose(got, expected, rtol=tolerance, atol=10 * tolerance)


def test_filters_of_jumps_and_noise_follow_their_formulas(rng):
    z, state, p, accepted, states = rng.normal(size=30), 0.0, 0.0, None, []
    jumps = smoothing.limit_jumps(z, 1.0)
    for value, jump in zip(z, jumps):
        state, p = 0.9 * state + 0.2 * value, 0.81 * p + 0.1
        gain = p * 1.5 / (2.25 * p + 0.5)
        state, p = state + gain * (value - 1.5 * state), p * (1 - 1.5 * gain)
        states.append(state)
        accepted = value if accepted is None or abs(value - accepted) <= 1.0 else accepted
        assert jump == accepted
    np.testing.assert_allclose(smoothing.kalman(z, a=0.9, b=0.2, h=1.5, q=0.1, r=0.5), states, rtol=1e-12)
    noise = np.sin(np.arange(200) / 20) + 0.01 * rng.normal(size=200)
    line = smoothing.smoothing_line(noise, 0.05)
    assert abs(line - noise).max() <= 0.05 and np.abs(np.diff(line, 2)).sum() < 0.5 * np.abs(np.diff(noise, 2)).sum()
    x = np.linspace(0, 20, 300)
    found = smoothing.fit_peaks(x, smoothing.Peaks(0.5, np.array([[2.0, 5.0, 0.8]]), np.array([[1.0, 12.0, 0.5]]), 0.0)(x), 2)
    np.testing.assert_allclose(np.vstack([found.gauss, found.lorentz]), [[2, 5, 0.8], [1, 12, 0.5]], rtol=1e-3)
    assert found.offset == pytest.approx(0.5, abs=1e-3)


def test_the_mesh_finds_what_a_tree_finds(rng, tmp_path):
    mesh.clear()
    points, ids = rng.random((60, 2)), rng.permutation(np.arange(-20, 40))
    mesh.add_nodes(ids, points)
    parts = {5: [int(i) for i in ids[:3]], 2: [int(i) for i in ids[3:6]]}
    for name, nodes in parts.items():
        mesh.add_element(name, nodes)
    mesh.build()
    order = np.argsort(ids)
    np.testing.assert_array_equal(mesh.nodes()[1], points[order])
    assert mesh.bounds() == (*np.sort(points[:, 0])[[0, -1]], *np.sort(points[:, 1])[[0, -1]]) and mesh.elements() == parts
    queries = rng.random((50, 2))
    far, places = scipy.spatial.cKDTree(points).query(queries)
    assert [mesh.nearest(*q)[0] for q in queries] == ids[places].tolist()
    np.testing.assert_allclose([mesh.nearest(*q)[1] for q in queries], far, rtol=1e-12)
    mesh.save(tmp_path / "n", tmp_path / "e")
    mesh.set_view(0.0, 0.5, 0.0, 1.0)
    inside = points[order][points[order][:, 0] <= 0.5]
    np.testing.assert_array_equal(mesh.in_view(), inside)
    assert mesh.places(ids[order][points[order][:, 0] <= 0.5][:3]).tolist() == [0, 1, 2]
    mesh.clear()
    assert mesh.nodes()[0].size == 0
    mesh.load(tmp_path / "n", tmp_path / "e")
    np.testing.assert_array_equal(mesh.nodes()[1], points[order])
    assert mesh.elements() == parts and mesh.view() == mesh.bounds()
    for call, error, words in ((lambda: mesh.add_nodes([ids[0]], [[0, 0]]), ValueError, "already"),
                               (lambda: mesh.add_nodes([1.5], [[0, 0]]), TypeError, "ids: must be integers"),
                               (lambda: mesh.positions([1000]), KeyError, "1000 is no node"),
                               (lambda: mesh.load(tmp_path / "none"), OSError, "cannot be read")):
        with pytest.raises(error, match=words):
            call()
    mesh.clear()


def test_stocks_keep_their_days(rng, tmp_path):
    one, days = stock.get(77, type=200), np.datetime64("1900-01-01") + np.arange(0, 113000, 11)
    days = np.union1d(days, [np.datetime64(f"{year}-02-25") + i for year in (1900, 2000, 2100, 2104) for i in range(7)])
    one.name = "Größe"
    table = rng.uniform(-300, 300, (days.size, 9)).round(2)
    table[:, 7:] = np.round(table[:, 7:]) * 10000
    for place in rng.permutation(days.size):
        one.set_day(days[place], table[place])
    np.testing.assert_array_equal(one.dates(), days)
    np.testing.assert_allclose([one.values(k) for k in range(9)], table.T, rtol=1e-12)
    span = (days >= np.datetime64("1999-02-28")) & (days <= np.datetime64("2101-03-01"))
    np.testing.assert_array_equal(one.dates("1999-02-28", "2101-03-01"), days[span])
    assert one.values(0, until="1899-12-31").size == 0 and days[3] in one and "2500-01-01" not in one
    one.add_attribute(3)
    stock.save(tmp_path / "s", [one])
    one.delete(0, 10)
    assert len(one) == days.size - 10 and stock.all(200) == [one] and stock.find("Größe") == one
    (again,) = stock.load(tmp_path / "s")
    assert len(again) == days.size and again.name == "Größe" and (again.type, again.code) == (200, 77)
    assert len(stock.attributes()) == 56 and all(stock.attributes().values())
    for call, error, words in ((lambda: one.set_day("yesterday", [1]), ValueError, "day: 'yesterday' is no date"),
                               (lambda: one.values(9), ValueError, "field"), (lambda: stock.get(1, 256), ValueError, "type"),
                               (lambda: stock.load(tmp_path / "none"), OSError, "none")):
        with pytest.raises(error, match=words):
            call()
    (tmp_path / "bad").write_bytes(b"x" * 100)
    with pytest.raises(OSError, match="no file of stocks"):
        stock.load(tmp_path / "bad")


def test_formulas_in_stages_and_the_text_of_a_tree(rng):
    x = np.sort(rng.uniform(0.1, 2.0, (80, 1)), axis=0)
    y = np.tanh(x[:, 0]) + 0.2 * np.sqrt(x[:, 0])
    one, more = (learn.FormulaRegressor(3, 2, stages=stages).fit(x, y) for stages in (1, 3))
    assert more.error_ < 0.5 * one.error_
    assert ((more.predict(x) - y) ** 2).sum() == pytest.approx(more.error_, rel=1e-6)
    tree = learn.TreeClassifier(max_depth=1).fit([[0.0, 1.0], [1.0, 0.0], [4.0, 0.5], [5.0, 0.2]], ["a", "a", "b", "b"])
    assert tree.export_text(["width", "height"]).splitlines() == [
        "width < 2.5", "|   a (2 samples)", "width >= 2.5", "|   b (2 samples)"]


def test_numbers_of_any_precision_mix_with_others():
    third = highprecision.Number(1, 60) / 3
    assert abs(third.as_fraction() - Fraction(1, 3)) < Fraction(1, 10**60)
    assert highprecision.Number("1e-30") == Fraction(1, 10**30) and highprecision.Number(0.1) == Fraction(0.1)
    assert 2 - highprecision.Number(5) == -3 and highprecision.Number(7) > 6.5 and 2**highprecision.Number(10) == 1024
    assert str(highprecision.Number(10) ** 60) == "1e+60" and int(highprecision.Number("-12.75")) == -12
    assert str(highprecision.pi(60)) == "3.14159265358979323846264338327950288419716939937510582097494"
    assert pickle.loads(pickle.dumps(third)) == third and hash(highprecision.Number(3)) == hash(3)
    with pytest.raises(ZeroDivisionError):
        third / 0
    with pytest.raises(ValueError, match="value: 'two' is no finite number"):
        highprecision.Number("two")


def test_coordinates_and_rotations(rng):
    points = np.column_stack([rng.uniform(-180, 180, 9), rng.uniform(-89, 89, 9), rng.uniform(0, 9000, 9)])
    np.testing.assert_allclose(geo.ecef_to_lla(geo.lla_to_ecef(points)), points, rtol=1e-9)
    origin = [10.0, 50.0, 100.0]
    np.testing.assert_allclose(geo.enu_to_lla(geo.lla_to_enu(points, origin), origin), points, rtol=1e-8)
    china = np.array([[116.4, 39.9, 50.0]])
    np.testing.assert_allclose(geo.gcj02_to_lla(geo.lla_to_gcj02(china)), china, rtol=1e-11)
    reference = scipy.spatial.transform.Rotation.from_rotvec([0.3, -0.5, 0.9])
    mine = spatial.Rotation.from_rotvec([0.3, -0.5, 0.9])
    np.testing.assert_allclose(mine.as_matrix(), reference.as_matrix(), atol=1e-14)
    np.testing.assert_allclose(np.roll(mine.as_quat(), -1), reference.as_quat(), atol=1e-14)
    np.testing.assert_allclose((mine * mine.inv()).as_rotvec(), 0, atol=1e-12)
    with pytest.raises(ValueError, match=r"points: the last dimension must be 3, not the shape \(2,\)"):
        geo.lla_to_ecef([1.0, 2.0])


def test_integrals_and_equations_of_python_functions():
    assert integrate.quad(np.cos, 0.0, np.pi / 2) == pytest.approx(1.0, abs=1e-12)
    y = np.sin(np.linspace(0, 1, 101))
    np.testing.assert_allclose(integrate.cumulative(y, 0.01), 1 - np.cos(np.linspace(0, 1, 101)), atol=1e-9)
    found = integrate.solve_ode(lambda t, y: [y[1], -y[0]], 0.0, [0.0, 1.0], [-1.0, 2.0])
    np.testing.assert_allclose(found.y[:, 0], np.sin([-1.0, 2.0]), atol=1e-7)
    x, t = sym.symbols("x t")
    at = np.linspace(-1, 1, 5)
    # y = x + m with m = (integral of y)/4 = (2 + 2m)/4
    np.testing.assert_allclose(integrate.fredholm(0.25, x, 0.0, 2.0, at), at + 1.0, atol=1e-12)
    np.testing.assert_allclose(integrate.volterra(t - x, x, 0.0, at), np.sin(at), atol=1e-9)  # y'' = -y
    with pytest.raises(ValueError, match="free: may have the variables x, not t"):
        integrate.fredholm(x, t, 0.0, 1.0, at)
    for call in (lambda f: integrate.quad(f, 0, 1), lambda f: integrate.solve_ode(f, 0.0, [1.0], [1.0])):
        with pytest.raises(KeyError, match="mine"):
            call(lambda *arguments: {}["mine"])
