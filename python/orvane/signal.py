# SPDX-License-Identifier: Apache-2.0
"""Fourier transforms, windows, filter design and filtering, smoothing.

>>> from orvane import signal
>>> signal.fft([1.0, 0.0, 0.0, 0.0])
array([1.+0.j, 1.+0.j, 1.+0.j, 1.+0.j])
"""
from __future__ import annotations

from typing import Any, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import capi
from ._check import Floats, choice, integer, matrix, real, vector
from ._core import ffi, lib
from ._handle import ConvergenceError, Handle

Complex = NDArray[np.complex128]
_TYPES = {"lowpass": 0, "highpass": 1, "bandpass": 2, "bandstop": 3}
_DESIGNS = {"butterworth": 0, "bessel": 1, "chebyshev1": 2, "chebyshev2": 3}
_HILBERT = {"envelope": 0, "phase": 1, "phase_step": 2}
WINDOWS = {
    "bartlett_hann": 0, "blackman": 1, "blackman_harris": 2, "blackman_nuttall": 3, "confined_gaussian": 4,
    "cosine_sum": 5, "dolph_chebyshev": 6, "flattop": 7, "gaussian": 8, "gpa": 9, "hamming": 10, "hann": 11,
    "hann_poisson": 12, "kaiser": 13, "lanczos": 14, "nuttall": 15, "parzen": 16, "planck_taper": 17, "power_sine": 18,
    "rectangular": 19, "sine": 20, "triangular": 21, "tukey": 22, "ultraspherical": 23, "welch": 24,
}


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array.reshape(-1))


def _parts(x: ArrayLike, dimensions: int) -> tuple[Floats, Floats]:
    array = np.asarray(x)
    if array.ndim != dimensions:
        raise ValueError(f"x: must have {dimensions} dimension{'s' * (dimensions > 1)}, not the shape {array.shape}")
    if array.dtype.kind not in "biufc":
        raise TypeError(f"x: must be numbers, not of type {array.dtype}")
    return np.ascontiguousarray(array.real, np.float64), np.ascontiguousarray(array.imag, np.float64)


def _joined(re: Floats, im: Floats) -> Complex:
    out = np.empty(re.shape, np.complex128)
    out.real, out.imag = re, im
    return out


def _transform(call: Any, x: ArrayLike) -> Complex:
    re, im = _parts(x, 1)
    outs = np.empty(re.size), np.empty(re.size)
    call(_double(re), re.size, _double(im), im.size, _double(outs[0]), _double(outs[1]))
    return _joined(*outs)


def fft(x: ArrayLike) -> Complex:
    """Forward transform of any length, not scaled."""
    return _transform(lib.data_FFT, x)


def ifft(x: ArrayLike) -> Complex:
    """Inverse transform, with the factor 1/n.

    Examples
    --------
    >>> from orvane import signal
    >>> signal.ifft(signal.fft([1.0, 2.0, 3.0])).real.round(12)
    array([1., 2., 3.])
    """
    return _transform(lib.data_InvFFT, x)


def _transform2(call: Any, x: ArrayLike, threads: int) -> Complex:
    re, im = _parts(x, 2)
    outs = np.empty(re.shape), np.empty(re.shape)
    call(_double(re), _double(im), *re.shape, True, _double(outs[0]), _double(outs[1]), integer(threads, "threads", 1, 256))
    return _joined(*outs)


def fft2(x: ArrayLike, threads: int = 1) -> Complex:
    """Forward transform of a matrix."""
    return _transform2(lib.data_FFT2D, x, threads)


def ifft2(x: ArrayLike, threads: int = 1) -> Complex:
    """Inverse transform of a matrix."""
    return _transform2(lib.data_InvFFT2D, x, threads)


def spectrum(x: ArrayLike, fs: float = 1.0) -> tuple[Floats, Floats]:
    """Frequencies below fs/2 and amplitudes of real samples, not scaled."""
    values = vector(x, "x")
    freq, amp = np.empty(values.size // 2), np.empty(values.size // 2)
    lib.data_plotFFT(_double(values), values.size, real(fs, "fs", 0.0), _double(freq), _double(amp))
    return freq, amp


def bandpass_fft(x: ArrayLike, low: float, high: float, fs: float = 1.0) -> Floats:
    """The part of a signal between two frequencies, by zeroing all other bins."""
    values = vector(x, "x")
    out = np.empty(values.size)
    lib.data_FilterByFFT(_double(values), _double(out), real(low, "low"), real(high, "high"), 0.0, real(fs, "fs", 0.0), out.size)
    return out


def hilbert(x: ArrayLike, what: str = "envelope") -> Floats:
    """Envelope, phase or step of phase of the analytic signal.

    Examples
    --------
    >>> from orvane import signal
    >>> signal.hilbert(np.cos(np.arange(8) * np.pi / 2)).round(9)
    array([1., 1., 1., 1., 1., 1., 1., 1.])
    """
    values, mode = vector(x, "x"), choice(what, "what", _HILBERT)
    out = np.empty(values.size)
    lib.data_getHilbertInfo(_double(values), values.size, _double(out), mode)
    return out


def detrend(x: ArrayLike, order: int = 1) -> Floats:
    """Takes a least-squares polynomial off evenly spaced samples.

    Examples
    --------
    >>> from orvane import signal
    >>> signal.detrend([1.0, 2.0, 3.0, 4.0]).round(9) + 0.0
    array([0., 0., 0., 0.])
    """
    values = vector(x, "x")
    out = np.empty(values.size)
    lib.data_Detrend(_double(values), _double(out), values.size, integer(order, "order", 0, 1000))
    return out


class Filter(Handle):
    """A filter with its coefficients; made by :func:`firwin` or :func:`iirdesign`.

    Attributes
    ----------
    b, a : ndarray
        Numerator and denominator; a is [1] for a finite impulse response.
    """

    __slots__ = ("b", "a")
    b: Floats
    a: Floats

    def __init__(self, taps: int, btype: str, cutoff: Union[float, tuple[float, float]], fs: float) -> None:
        code = choice(btype, "btype", _TYPES)
        edges = vector(np.asarray(cutoff, np.float64), "cutoff", length=2 if code > 1 else 1, finite=True)
        rate = real(fs, "fs", 0.0)
        if not (0 < edges[0] and edges[-1] < rate / 2 and (edges[0] < edges[-1] or edges.size == 1)):
            raise ValueError(f"cutoff: must ascend between 0 and fs/2 = {rate / 2}, not {cutoff}")
        super().__init__(lib.fir_Create())
        pointer = self.pointer
        lib.fir_setType(pointer, code)
        lib.fir_setSamplingFrequency(pointer, rate)
        if edges.size == 1:
            lib.fir_setLimitFrequency(pointer, edges[0])
        else:
            lib.fir_setLowLimitFrequency(pointer, edges[0])
            lib.fir_setHighLimitFrequency(pointer, edges[1])
        lib.fir_setFilterOrder(pointer, taps)

    def __call__(self, x: ArrayLike) -> Floats:
        """Runs the filter over samples, with zeros before them."""
        values = vector(x, "x")
        out = np.empty(values.size)
        if not lib.fir_filter(self.pointer, _double(values), _double(out), values.size):
            raise FloatingPointError("the filtered values pass 1e100, or are NaN")
        return out

    def response(self, f: ArrayLike, fs: float = 1.0) -> Complex:
        """Frequency response at frequencies f."""
        z = np.exp(-2j * np.pi * np.asarray(f, np.float64) / fs)
        found: Complex = np.polynomial.polynomial.polyval(z, self.b) / np.polynomial.polynomial.polyval(z, self.a)
        return found


def firwin(taps: int, cutoff: Union[float, tuple[float, float]], *, btype: str = "lowpass", window: str = "hamming",
           parameters: ArrayLike | None = None, fs: float = 1.0) -> Filter:
    """Finite impulse response by a window.

    Parameters
    ----------
    taps : int
        Number of coefficients.
    cutoff : float or (float, float)
        Edge, or edges of a band.
    btype : {"lowpass", "highpass", "bandpass", "bandstop"}, optional
    window : str, optional
        One of `WINDOWS`.
    parameters : array_like, optional
        Parameters of the window.
    fs : float, optional
        Sampling frequency.

    Returns
    -------
    Filter

    Examples
    --------
    >>> from orvane import signal
    >>> low = signal.firwin(31, 0.1)
    >>> abs(low.response([0.0, 0.3])).round(2)
    array([1., 0.])
    """
    made = Filter(integer(taps, "taps", 1, 10**7), btype, cutoff, fs)
    pointer = made.pointer
    lib.fir_setWindow(pointer, choice(window, "window", WINDOWS))
    if parameters is not None:
        values = vector(parameters, "parameters", least=1, finite=True)
        lib.fir_setWindowParam2(pointer, _double(values), values.size)
    lib.fir_norm(pointer, 1.0 if btype in ("lowpass", "bandstop") else 1e300)
    lib.fir_solveByWindow(pointer)
    lib.fir_setMethod(pointer, 0)
    made.b, made.a = np.empty(taps), np.ones(1)
    lib.fir_getCoefficient(pointer, _double(made.b))
    return made


def iirdesign(order: int, cutoff: Union[float, tuple[float, float]], *, btype: str = "lowpass",
              design: str = "butterworth", fs: float = 1.0) -> Filter:
    """Recursive filter by an analog prototype.

    Parameters
    ----------
    order : int
        1 to 200; high orders lose their poles to rounding, see orvane/filter.h.
    cutoff : float or (float, float)
    btype : {"lowpass", "highpass", "bandpass", "bandstop"}, optional
    design : {"butterworth", "bessel", "chebyshev1", "chebyshev2"}, optional
        Chebyshev I with 0.5 dB ripple, Chebyshev II with 40 dB in the stop band.
    fs : float, optional

    Returns
    -------
    Filter

    Examples
    --------
    >>> from orvane import signal
    >>> signal.iirdesign(1, 0.25).b.round(6)
    array([0.5, 0.5])
    """
    made = Filter(integer(order, "order", 1, 200), btype, cutoff, fs)
    pointer = made.pointer
    if not lib.fir_solveByIIR(pointer, 1.0, choice(design, "design", _DESIGNS)):
        raise ValueError(f"iirdesign: no filter of order {order} with the edges {cutoff} at {fs}")
    counts = ffi.new("int32_t[2]")
    lib.fir_getIIRCoefficient(pointer, ffi.NULL, ffi.NULL, counts, counts + 1)
    made.b, made.a = np.empty(counts[0]), np.empty(counts[1])
    lib.fir_getIIRCoefficient(pointer, _double(made.b), _double(made.a), counts, counts + 1)
    return made


def lfilter(b: ArrayLike, a: ArrayLike, x: ArrayLike) -> Floats:
    """Runs the recursive filter of coefficients b over a along samples, with zeros before them.

    Examples
    --------
    >>> from orvane import signal
    >>> signal.lfilter([1.0], [1.0, -0.5], [1.0, 0.0, 0.0])
    array([1.  , 0.5 , 0.25])
    """
    above, below, values = vector(b, "b", least=1), vector(a, "a", least=1), vector(x, "x")
    if below[0] == 0.0:
        raise ValueError("a: must not begin with 0")
    out = np.empty(values.size)
    with Handle(lib.fir_Create()) as made:
        lib.fir_createIIR(made.pointer)
        lib.fir_setIIRCoefficient(made.pointer, _double(above), _double(below), above.size, below.size)
        if values.size and not lib.fir_filter(made.pointer, _double(values), _double(out), values.size):
            raise FloatingPointError("the filtered values pass 1e100, or are NaN")
    return out


def fit_fir(x: ArrayLike, y: ArrayLike, taps: int, *, symmetric: bool = False) -> Filter:
    """The convolution, centred on its window, that brings samples x closest to samples y in the least-squares sense.

    Parameters
    ----------
    x, y : array_like
        What goes in, and what shall come out.
    taps : int
        Number of coefficients, odd.
    symmetric : bool, optional
        Holds the coefficients to be symmetric about their centre.

    Returns
    -------
    Filter
        Calling it convolves with ``b``, centred.

    Examples
    --------
    >>> from orvane import signal
    >>> x = np.cos(np.arange(40.0) ** 2)
    >>> signal.fit_fir(x, np.convolve(x, [0.5, 1.0, -0.5], "same"), 3).b.round(9)
    array([ 0.5,  1. , -0.5])
    """
    source, target = vector(x, "x", least=1), vector(y, "y")
    if target.size != source.size:
        raise ValueError(f"y: must have {source.size} entries, as x, not {target.size}")
    if integer(taps, "taps", 1, 10**6) % 2 == 0:
        raise ValueError(f"taps: must be odd, not {taps}")
    made = Filter(taps, "lowpass", 0.25 * taps, float(taps))
    pointer = made.pointer
    lib.fir_addSample(pointer, _double(source), _double(target), source.size)
    deviation = lib.fir_solveByLineFIRSolver(pointer, capi.ORVANE_FIR_SYMMETRIC if symmetric else capi.ORVANE_FIR_FREE)
    lib.fir_lineSolverClear(pointer)
    if deviation >= 1e300:
        raise ConvergenceError(f"fit_fir: {source.size} samples are too few for {taps} taps")
    made.b, made.a = np.empty(lib.fir_getCoefficientSize(pointer)), np.ones(1)
    lib.fir_getCoefficient(pointer, _double(made.b))
    made.b = made.b[::-1].copy()  # the library's coefficients run along the window, these along the delay
    return made


def _smooth(call: Any, x: ArrayLike, width: int) -> Floats:
    values = vector(x, "x")
    out = np.empty(values.size)
    call(_double(values), _double(out), values.size, integer(width, "width", 1, 2**31 - 1))
    return out


def medfilt(x: ArrayLike, width: int = 3) -> Floats:
    """Median of the window around each sample.

    Examples
    --------
    >>> from orvane import signal
    >>> signal.medfilt([1.0, 9.0, 2.0, 3.0, 4.0])[1:4]
    array([2., 3., 3.])
    """
    return _smooth(lib.filterByMedianFilter, x, width)


def mean_filter(x: ArrayLike, width: int = 3) -> Floats:
    """Mean of the window around each sample."""
    return _smooth(lib.filterByMeanFilter, x, width)


def maximum_filter(x: ArrayLike, width: int = 3) -> Floats:
    """Maximum of the window around each sample."""
    return _smooth(lib.filterByMaxFilter, x, width)


def minimum_filter(x: ArrayLike, width: int = 3) -> Floats:
    """Minimum of the window around each sample."""
    return _smooth(lib.filterByMinFilter, x, width)


def savgol_filter(x: ArrayLike, width: int, degree: int) -> Floats:
    """Savitzky-Golay smoothing: the value at its middle of the least-squares polynomial of each window."""
    values = vector(x, "x")
    out = np.empty(values.size)
    size, power = integer(width, "width", 1), integer(degree, "degree", 0)
    lib.filterBySavitzkyGolay(_double(values), _double(out), values.size, 1.0, power, size)
    return out


def whittaker(x: ArrayLike, strength: float) -> Floats:
    """Whittaker's smoothing: least squares with a penalty on second differences.

    Examples
    --------
    >>> from orvane import signal
    >>> signal.whittaker([1.0, 2.0, 3.0, 4.0, 5.0], 10.0).round(9)
    array([1., 2., 3., 4., 5.])
    """
    values = vector(x, "x")
    out = np.empty(values.size)
    lib.data_SmoothWhittaker1D(_double(values), values.size, real(strength, "strength"), _double(out))
    return out


def convolve2d(x: ArrayLike, kernel: ArrayLike, threads: int = 1) -> Floats:
    """Weighted sum of each value's neighbourhood; indices outside read the nearest row or column."""
    table, weights = matrix(x, "x"), matrix(kernel, "kernel")
    out = np.empty(table.shape)
    record = ffi.new("Filter2DKernel*", {"values": _double(weights), "rows": len(weights), "cols": weights.shape[1]})
    lib.data_Filter2D(_double(table), _double(out), record, *table.shape, integer(threads, "threads", 1, 256))
    return out


def derivative(y: ArrayLike, dx: float = 1.0) -> Floats:
    """Derivative of evenly spaced samples, of fourth order.

    Examples
    --------
    >>> from orvane import signal
    >>> signal.derivative(np.arange(6.0) ** 2).round(9)
    array([ 0.,  2.,  4.,  6.,  8., 10.])
    """
    values = vector(y, "y")
    out = np.empty(values.size)
    lib.data_calcDataDiffBySameDh(_double(values), values.size, real(dx, "dx"), _double(out))
    return out


def fftshift(x: ArrayLike) -> Floats:
    """Moves the frequency 0 of a real spectrum to the middle."""
    return _shifted(lib.data_Shift, x)


def ifftshift(x: ArrayLike) -> Floats:
    """Takes :func:`fftshift` back."""
    return _shifted(lib.data_InvShift, x)


def _shifted(call: Any, x: ArrayLike) -> Floats:
    values = vector(x, "x")
    out = np.empty(values.size)
    call(_double(values), _double(out), values.size)
    return out
