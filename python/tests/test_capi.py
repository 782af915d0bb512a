# SPDX-License-Identifier: Apache-2.0
"""The raw layer: its names are the library's symbols, arrays go in without a copy, the lock is free during a call."""
import pathlib
import subprocess
import threading
import time

import numpy as np
import pytest

import orvane
from orvane import capi
from orvane._core import LIBRARY, lend


def test_every_symbol_is_a_function_and_the_reverse():
    listing = subprocess.run(["nm", "-D", "--defined-only", LIBRARY], capture_output=True, text=True, check=True).stdout
    symbols = {line.split()[2].split("@")[0] for line in listing.splitlines() if line.split()[1] == "T"}
    assert len(symbols) > 700
    assert symbols == set(capi.NAMES)
    for name in capi.NAMES:
        assert callable(getattr(capi, name)) and getattr(capi, name).__doc__.split("\n\n", 1)[1].strip(), name
    types = pathlib.Path(orvane.__file__).with_name("capi.pyi").read_text()
    assert all(f"def {name}(" in types for name in capi.NAMES)


def test_the_package_is_the_installed_one():
    assert "site-packages" in orvane.__file__ and orvane.__version__.count(".") == 2


def test_an_array_goes_in_without_a_copy():
    values = np.arange(5.0)
    assert int(capi.ffi.cast("intptr_t", lend(values, "double", "x"))) == values.ctypes.data
    out = np.empty(5)
    capi.api_copy(values, out, 5)
    assert (out == values).all()
    capi.api_copy([1, 2, 3], out, 3)  # converted once
    assert out[:3].tolist() == [1, 2, 3]
    capi.api_copy(np.arange(10.0)[::2], out, 5)  # other strides: copied, not misread
    assert out.tolist() == [0, 2, 4, 6, 8]


@pytest.mark.parametrize("argument, error, words", [
    (np.arange(3, dtype=np.complex128), TypeError, "api_copy: argument 'source'.*complex128"),
    (["a"], TypeError, "source"),
    ([[1.0], [1.0, 2.0]], TypeError, "source"),
])
def test_an_array_that_does_not_fit_is_refused(argument, error, words):
    with pytest.raises(error, match=words):
        capi.api_copy(argument, np.empty(3), 3)


@pytest.mark.parametrize("argument, error", [
    ([0.0] * 3, TypeError), (np.empty(3, np.float32), TypeError), (np.empty(6)[::2], ValueError)])
def test_a_result_is_never_written_into_a_copy(argument, error):
    with pytest.raises(error, match="destination"):
        capi.api_copy(np.arange(3.0), argument, 3)


def test_integers_that_do_not_fit_are_refused():
    with pytest.raises(OverflowError, match="orders"):
        capi.apiFun_calcPoly(np.ones(1), 1, [2**40], 1, np.empty(1), 161)


def test_text_is_a_str_or_bytes():
    law = capi.pdf_initPDFFunByName("Normal")
    assert capi.text(capi.pdf_getName(law)) == "Normal"
    capi.api_FreeHandle(law)
    with pytest.raises(TypeError, match="name"):
        capi.pdf_initPDFFunByName(3)


def test_the_lock_is_free_during_a_call():
    # The sort of 3e6 numbers takes some tenths of a second; the counter must go on meanwhile.
    values, count, done = np.random.default_rng(1).random(3_000_000), [0], threading.Event()

    def counting():
        while not done.is_set():
            count[0] += 1
            time.sleep(0.001)

    thread = threading.Thread(target=counting)
    thread.start()
    before = count[0]
    capi.apiFun_SortForValue(values, values.size, 0)
    during = count[0] - before
    done.set()
    thread.join()
    assert during >= 5 and (np.diff(values) >= 0).all()
