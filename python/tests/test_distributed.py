# SPDX-License-Identifier: Apache-2.0
"""Jobs over local worker processes: the answers of one machine, also when a worker is ended in the middle."""
import os
import threading
import time

import numpy as np
import pytest

from orvane import distributed as jobs

distributed = pytest.importorskip("distributed")
X = (np.arange(60) + 0.5) / 60


@pytest.fixture(scope="module")
def client():
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None) as cluster:
        with distributed.Client(cluster) as made:
            made.wait_for_workers(2, timeout=60)
            yield made


def bowl(x):
    return float((x - 0.5) @ (x - 0.5))


def slow_bowl(x):
    time.sleep(0.002)
    return bowl(x)


def test_formulas_are_the_same_on_any_number_of_machines(client):
    terms, y = np.array([X, X**2, np.sin(5 * X), np.exp(X), 1 / (1 + X)]), (1 + 2 * X) / (1 + 3 * X**2)
    alone = jobs.search_formulas(terms, y, 3, limit=20, client=None)
    spread = jobs.search_formulas(terms, y, 3, limit=20, client=client)
    assert alone == spread and len(alone) == 20 and alone[0].error < 1e-20
    assert [round(c, 9) for c, _ in alone[0].above + alone[0].below] == [1, 2, 1, 3]
    strict = jobs.search_formulas(terms, y, 3, error_limit=alone[4].error, client=client)
    assert strict == alone[:5]


def test_many_fits_have_the_laws_of_single_ones(client):
    samples = {f"s{i}": -np.log(X) * (i + 1) for i in range(6)}
    found = jobs.fit_many(samples, ["Exponential", "Normal"], client=client, iterations=100)
    assert list(found) == list(samples)
    assert all(summary.best[0] == "Exponential" for summary in found.values())
    pandas = pytest.importorskip("pandas")
    frame = pandas.DataFrame({"g": ["a", "b"] * 30, "x": -np.log(X)})
    assert list(jobs.fit_many(frame.groupby("g")["x"], ["Exponential"], client=client)) == ["a", "b"]
    with pytest.raises(ValueError, match=r"samples\['s'\]: must have at least 1 entries"):
        jobs.fit_many({"s": []}, client=client)


def test_islands_and_many_minima(client):
    found = jobs.minimize_many([(bowl, [(-1, 1)] * 2)] * 3, client=client, tol=1e-6)
    assert all(result.fun < 1e-6 for result in found)
    result = jobs.minimize_islands(bowl, [(-1, 1)] * 2, islands=2, exchanges=3, client=client, maxiter=20)
    assert result.rounds == sorted(result.rounds, reverse=True) and result.fun == result.rounds[-1] < 0.1


def test_a_worker_that_ends_in_the_middle_is_replaced(client):
    before = client.run(os.getpid)
    victim = next(iter(before.values()))

    def end_one():
        time.sleep(0.6)
        os.kill(victim, 9)

    threading.Thread(target=end_one, daemon=True).start()
    found = jobs.minimize_many([(slow_bowl, [(-1, 1)] * 2)] * 6, client=client, maxiter=10**6, time=1.5)
    assert len(found) == 6 and all(result.fun < 0.5 for result in found)
    assert victim not in client.run(os.getpid).values()
