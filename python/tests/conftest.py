# SPDX-License-Identifier: Apache-2.0
import numpy as np
import pytest


@pytest.fixture
def rng():
    return np.random.default_rng(20)


@pytest.fixture(autouse=True)
def numpy_in_doctests(doctest_namespace):
    doctest_namespace["np"] = np
