# SPDX-License-Identifier: Apache-2.0
"""Finds a formula for measurements, beside a network and a tree; learns two classes; minimises a function."""
import numpy as np

from orvane import optimize


def main() -> None:
    try:
        from orvane import learn
    except ImportError as missing:
        print(missing)
        return
    generator = np.random.default_rng(4)
    x = generator.uniform(0.2, 4.0, (120, 2))
    y = 3 * x[:, 0] / (1 + x[:, 1] ** 2) + generator.normal(0, 0.01, 120)
    train, test = slice(0, 80), slice(80, None)
    formula = learn.FormulaRegressor(max_terms=3, degree=2).fit(x[train], y[train])
    print(f"formula  R2 {formula.score(x[test], y[test]):.5f}  y = {formula.formula_}  ({formula.searched_} tried)")
    for model in (learn.NetworkRegressor(steps=3000), learn.TreeRegressor(max_depth=8)):
        print(f"{type(model).__name__:17s} R2 {model.fit(x[train], y[train]).score(x[test], y[test]):.5f}")

    points = generator.normal(size=(160, 2))
    inside = (points**2).sum(axis=1) < 1.2
    machine = learn.SVMClassifier(kernel="gauss", C=100.0).fit(points[:120], inside[:120])
    print(f"machine  {machine.score(points[120:], inside[120:]):.3f} right, {len(machine.support_)} support vectors")

    def rosenbrock(v: np.ndarray) -> float:
        return float((1 - v[0]) ** 2 + 100 * (v[1] - v[0] ** 2) ** 2)

    found = optimize.minimize(rosenbrock, [(-3, 3), (-3, 3)], tol=1e-8, maxiter=3000, time=20)
    print(f"minimum  {found.fun:.2e} at {np.round(found.x, 4).tolist()} after {found.nfev} values")


main()
