# SPDX-License-Identifier: Apache-2.0
"""Coordinates on and around the earth, in batches of points.

A point is a row of three: LLA is longitude and latitude in degrees and altitude in metres, in this order; ECEF is metres
from the earth's centre; ENU is metres east, north and up of an origin.

>>> from orvane import geo
>>> geo.lla_to_ecef([0.0, 0.0, 0.0]).round(3)
array([6378137.,       0.,       0.])
"""
from __future__ import annotations

from typing import Any, NamedTuple

import numpy as np
from numpy.typing import ArrayLike

from ._check import Floats, floats, vector
from ._core import ffi, lib


class Ellipsoid(NamedTuple):
    """Semi-major axis in metres and first eccentricity, not its square."""

    a: float
    e: float


WGS84 = Ellipsoid(6378137.0, 0.081819190842621494)
KRASOVSKY = Ellipsoid(6378245.0, 0.081813333333334)


def _convert(call: Any, points: ArrayLike, *rest: Any, before: tuple[Any, ...] = ()) -> Floats:
    array = floats(points, "points")
    if array.ndim == 0 or array.shape[-1] != 3:
        raise ValueError(f"points: the last dimension must be 3, not the shape {array.shape}")
    out = np.empty(array.shape)
    source, target = (ffi.from_buffer("double[]", part.reshape(-1)) for part in (array, out))
    call(*before, source, target, array.size // 3, *rest)
    return out


def _origin(origin: ArrayLike) -> tuple[Any]:
    return (ffi.from_buffer("double[]", vector(origin, "origin", length=3, finite=True)),)


def lla_to_ecef(points: ArrayLike, ellipsoid: Ellipsoid = WGS84) -> Floats:
    """LLA to ECEF."""
    return _convert(lib.slam_coorLLAtoECEF, points, *ellipsoid)


def ecef_to_lla(points: ArrayLike, ellipsoid: Ellipsoid = WGS84) -> Floats:
    """ECEF to LLA.

    Examples
    --------
    >>> from orvane import geo
    >>> geo.ecef_to_lla(geo.lla_to_ecef([10.0, 50.0, 300.0])).round(9)
    array([ 10.,  50., 300.])
    """
    return _convert(lib.slam_coorECEFtoLLA, points, *ellipsoid)


def ecef_to_enu(points: ArrayLike, origin: ArrayLike, ellipsoid: Ellipsoid = WGS84) -> Floats:
    """ECEF to ENU about an origin in LLA."""
    return _convert(lib.slam_coorECEFtoENU, points, *ellipsoid, before=_origin(origin))


def enu_to_ecef(points: ArrayLike, origin: ArrayLike, ellipsoid: Ellipsoid = WGS84) -> Floats:
    """ENU about an origin in LLA to ECEF."""
    return _convert(lib.slam_coorENUtoECEF, points, *ellipsoid, before=_origin(origin))


def lla_to_enu(points: ArrayLike, origin: ArrayLike, ellipsoid: Ellipsoid = WGS84) -> Floats:
    """LLA to ENU about an origin in LLA.

    Examples
    --------
    >>> from orvane import geo
    >>> geo.lla_to_enu([10.0, 50.0, 305.0], [10.0, 50.0, 300.0]).round(6) + 0.0
    array([0., 0., 5.])
    """
    return _convert(lib.slam_coorLLAtoENU, points, *ellipsoid, before=_origin(origin))


def enu_to_lla(points: ArrayLike, origin: ArrayLike, ellipsoid: Ellipsoid = WGS84) -> Floats:
    """ENU about an origin in LLA to LLA."""
    return _convert(lib.slam_coorENUtoLLA, points, *ellipsoid, before=_origin(origin))


def lla_to_gcj02(points: ArrayLike, centre: tuple[float, float] = (105.0, 35.0),
                 ellipsoid: Ellipsoid = KRASOVSKY) -> Floats:
    """LLA to the map datum GCJ-02."""
    return _convert(lib.slam_coorLLAtoGCJ02, points, float(centre[0]), float(centre[1]), *ellipsoid)


def gcj02_to_lla(points: ArrayLike, centre: tuple[float, float] = (105.0, 35.0),
                 ellipsoid: Ellipsoid = KRASOVSKY) -> Floats:
    """The map datum GCJ-02 to LLA."""
    return _convert(lib.slam_coorGCJ02toLLA, points, float(centre[0]), float(centre[1]), *ellipsoid)


def gcj02_to_bd09(points: ArrayLike) -> Floats:
    """Map datum GCJ-02 to BD-09."""
    return _convert(lib.slam_coorGCJ02ToBD09, points)


def bd09_to_gcj02(points: ArrayLike) -> Floats:
    """Map datum BD-09 to GCJ-02."""
    return _convert(lib.slam_coorBD09ToGCJ02, points)


def distance(p: ArrayLike, q: ArrayLike, ellipsoid: Ellipsoid = WGS84) -> float:
    """Length of the path between two points in LLA that runs straight in longitude, latitude and altitude.

    Examples
    --------
    >>> from orvane import geo
    >>> round(geo.distance([0.0, 0.0, 0.0], [1.0, 0.0, 0.0]) / 1000, 2)
    111.32
    """
    ends = (vector(p, "p", length=3), vector(q, "q", length=3))
    return float(lib.slam_coorDistByLLA(*(ffi.from_buffer("double[]", end) for end in ends), *ellipsoid))
