# SPDX-License-Identifier: Apache-2.0
"""Plans a production, a portfolio and a tour."""
import csv
import pathlib

import numpy as np

from orvane import optimize

DATA = pathlib.Path(__file__).resolve().parents[2] / "examples" / "data" / "european_capitals.csv"


def production() -> None:
    profit = np.array([45.0, 80.0, 62.0, 30.0])
    needs = np.array([[2.0, 4.0, 3.0, 1.0], [3.0, 5.0, 2.0, 2.0], [1.0, 2.0, 4.0, 1.0]])
    stock = np.array([120.0, 150.0, 100.0])
    plan = optimize.linprog(-profit, needs, stock)
    whole = optimize.milp(-profit, 1, needs, stock)
    print(f"production: {np.round(plan.x, 3).tolist()} brings {-plan.fun:.2f}; in whole pieces {whole.x.tolist()} {-whole.fun:.2f}")
    for place, name in enumerate(("wood", "hours", "steel")):
        more = stock + np.eye(3)[place]
        print(f"  one more unit of {name} is worth {plan.fun - optimize.linprog(-profit, needs, more).fun:.3f}")


def portfolio() -> None:
    expected = np.array([3.0, 6.0, 9.0, 11.0])
    deviation = np.array([2.0, 9.0, 15.0, 22.0])
    correlation = 0.3 + 0.7 * np.eye(4)
    covariance = correlation * np.outer(deviation, deviation)
    for wanted in (4.0, 6.0, 8.0):
        found = optimize.quadprog(2 * covariance, np.zeros(4), -expected[None, :], [-wanted], np.ones((1, 4)), [1.0])
        print(f"portfolio: {wanted:.0f} % a year with deviation {np.sqrt(found.fun):.2f} %: shares {np.round(found.x, 3).tolist()}")


def tour() -> None:
    with open(DATA, newline="") as file:
        rows = list(csv.DictReader(file))
    places = np.radians([[float(row["latitude"]), float(row["longitude"])] for row in rows])
    vectors = np.column_stack([np.cos(places[:, 0]) * np.cos(places[:, 1]), np.cos(places[:, 0]) * np.sin(places[:, 1]),
                               np.sin(places[:, 0])])
    distances = 6371.0 * np.arccos(np.clip(vectors @ vectors.T, -1, 1))
    found = optimize.tour(distances)
    names = [rows[place]["city"] for place in found.x]
    print(f"tour: {len(names)} cities, {found.fun:.0f} km: {', '.join(names[:6])}, ...")


production()
portfolio()
tour()
