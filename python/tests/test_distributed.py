# SPDX-License-Identifier: Apache-2.0
"""Jobs over local worker processes: the answers of one machine, also when a worker is ended in the middle."""
import os
import threading
import time

import numpy as np
import pytest

from orvane import capi
from orvane import distributed as jobs

distributed = pytest.importorskip("distributed")
X = (np.arange(60) + 0.5) / 60


@pytest.fixture(scope="module")
def client():
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None) as cluster:
        with distributed.Client(cluster, set_as_default=False) as made:
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


@pytest.mark.parametrize("budget", [1, 2, 3, 5, 7])
def test_formulas_are_those_that_the_library_lists(client, rng, budget):
    terms = rng.random((6, 80))
    y = (1 + 2 * terms[0]) / (1 + 0.5 * terms[1]) + 0.1 * np.sin(9 * terms[2])
    terms[5] *= 1e-12  # its coefficients are too large: formulas with it are dropped
    whole = jobs.search_formulas(terms, y, budget, fit_limit=-1.0, limit=10**6)
    limit = whole[min(300, len(whole) - 1)].error * (1 + 1e-9)
    search = capi.api_ES_Create()
    for term in terms:
        capi.api_ES_AddX(search, np.ascontiguousarray(term), y.size)
    capi.api_ES_SetY(search, y, y.size)
    capi.api_ES_SetLimitCondition(search, limit, -1.0, 0)
    capi.api_ES_Search(search, budget, capi.ES_KIND_RATIONAL, 0)
    assert len(whole) == capi.api_ES_GetSearchNum(search)
    listed, info = {}, np.empty(7)
    for place in range(capi.api_ES_GetResultNum(search)):
        result, lists = capi.api_ES_GetResultByIndex(search, place, info), np.zeros((2, budget), np.int32)
        below = capi.api_ES_GetResultForTwoIndex(result, np.empty(budget + 2), lists[0], np.empty(budget + 2), lists[1])
        sides = lists[0, : budget - 1 - below], lists[1, :below]
        listed[tuple(tuple(sorted(side.tolist())) for side in sides)] = info[5], info[6]
    capi.api_FreeHandle(search)
    found = {(tuple(i for _, i in f.above[1:]), tuple(i for _, i in f.below[1:])): (f.error, f.correlation)
             for f in jobs.search_formulas(terms, y, budget, error_limit=limit, fit_limit=-1.0, client=client)}
    assert found.keys() == listed.keys() and len(found) == min(301, len(whole))
    for name, figures in found.items():
        assert figures == pytest.approx(listed[name], rel=1e-8), name


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
