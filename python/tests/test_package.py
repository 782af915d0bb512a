# SPDX-License-Identifier: Apache-2.0
"""Documents, types, estimators, examples, the time of an import."""
import doctest
import importlib
import pathlib
import subprocess
import sys

import numpy as np
import pytest
from sklearn.utils.estimator_checks import check_estimator

import orvane
from orvane import learn

HERE = pathlib.Path(__file__).parent
MODULES = list(orvane._MODULES)


@pytest.mark.parametrize("name", MODULES)
def test_the_examples_in_the_docstrings_hold(name):
    module = importlib.import_module("orvane." + name)
    failed, tried = doctest.testmod(module, extraglobs={"np": np})
    assert failed == 0 and tried > 0


@pytest.mark.parametrize("estimator", [
    learn.SVMClassifier(), learn.TreeClassifier(), learn.TreeRegressor(), learn.NetworkRegressor(steps=1500),
    learn.NetworkClassifier(steps=1500), learn.FormulaRegressor(degree=1)], ids=lambda e: type(e).__name__)
def test_estimators_follow_the_rules_of_scikit_learn(estimator):
    check_estimator(estimator)


def test_types_are_complete():
    run = subprocess.run([sys.executable, "-m", "mypy", "--config-file", str(HERE.parent.parent / "pyproject.toml"),
                          "-p", "orvane"], capture_output=True, text=True, cwd="/")
    assert run.returncode == 0, run.stdout


@pytest.mark.parametrize("script", sorted((HERE.parent / "examples").glob("*.py")), ids=lambda path: path.stem)
def test_examples_run(script, tmp_path):
    run = subprocess.run([sys.executable, str(script)], capture_output=True, text=True, cwd=tmp_path, timeout=120)
    assert run.returncode == 0, run.stderr
    assert run.stdout.strip()


def test_an_import_is_quick_and_loads_nothing_that_is_not_used():
    words = ("import sys, time; start = time.process_time(); import orvane; from orvane import capi; "
             "assert 'numpy' not in sys.modules; print(time.process_time() - start)")
    seconds = [float(subprocess.run([sys.executable, "-c", words], capture_output=True, text=True, check=True).stdout)
               for _ in range(3)]
    assert min(seconds) < 0.05
