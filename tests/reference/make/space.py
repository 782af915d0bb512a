#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/slam: rotations.csv by SciPy, coordinates.csv by pyproj and mpmath.

rotations.csv: rotation vector, the matrix, w x y z of the quaternion.
coordinates.csv: ecef (LLA, ECEF), enu (origin LLA, LLA, ENU) on WGS 84 by pyproj; gcj (LLA, datum) by mpmath with the
centre (105, 35) on the ellipsoid of Krasovsky, bd (datum, datum) by mpmath.
"""
import math
import pathlib

import mpmath as mp
import numpy as np
import pyproj
import scipy
from scipy.spatial.transform import Rotation

OUT = pathlib.Path(__file__).resolve().parents[1] / "slam"
hexes = lambda values: ",".join(float(v).hex() for v in values)
mp.mp.dps = 40


def rotations():
    rng = np.random.default_rng(3)
    vectors = [[0, 0, 0], [1e-9, 0, 0], [0, 1e-4, 1e-4], [math.pi - 1e-12, 0, 0], [0, 0, math.pi], [0, 3, 0.1], [2, 2, -1],
               [7, 0, 0], [0, -9, 4], *rng.normal(size=(30, 3)) * 2]
    for v in vectors:
        r = Rotation.from_rotvec(v)
        x, y, z, w = r.as_quat()
        yield hexes([*v, *r.as_matrix().ravel(), w, x, y, z])


def gcj(lon, lat):
    a, e2 = mp.mpf(6378245), mp.mpf("0.00669342162296594")
    x, y = mp.mpf(lon) - 105, mp.mpf(lat) - 35
    rad = mp.pi / 180
    both = 20 * (mp.sin(2 * mp.pi * x) + mp.sin(6 * mp.pi * x))
    waves = lambda v, p, q: mp.mpf(2) / 3 * (both + 20 * mp.sin(mp.pi * v) + 40 * mp.sin(mp.pi * v / 3) +
                                             p * mp.sin(mp.pi * v / 12) + q * mp.sin(mp.pi * v / 30))
    s = mp.sqrt(1 - e2 * mp.sin(lat * rad) ** 2)
    east = waves(x, 150, 300) + 300 + x + 2 * y + x * (x + y) / 10 + mp.sqrt(abs(x)) / 10
    north = waves(y, 160, 320) - 100 + 2 * x + 3 * y + y * y / 5 + x * y / 10 + mp.sqrt(abs(x)) / 5
    return lon + east * s / (rad * a * mp.cos(lat * rad)), lat + north * s**3 / (rad * a * (1 - e2))


def bd(x, y):
    k = mp.pi * 3000 / 180
    z = mp.sqrt(x * x + y * y) + mp.mpf("2e-5") * mp.sin(y * k)
    t = mp.atan2(y, x) + mp.mpf("3e-6") * mp.cos(x * k)
    return z * mp.cos(t) + mp.mpf("0.0065"), z * mp.sin(t) + mp.mpf("0.006")


def coordinates():
    rng = np.random.default_rng(4)
    ecef = pyproj.Transformer.from_pipeline("+proj=pipeline +step +proj=unitconvert +xy_in=deg +xy_out=rad +step +proj=cart +ellps=WGS84")
    points = [[0, 0, 0], [180, 0, 0], [-90, 90, 100], [12, -90, -5000], [30, 78.75, 9], [-77, -79, 36e6], [1, 89.999999, 5]]
    points += [[rng.uniform(-180, 180), rng.uniform(-90, 90), rng.choice([-5000, 0, 8848, 36e6])] for _ in range(30)]
    for p in points:
        yield "ecef," + hexes([*p, *ecef.transform(*p)])
    for p in points[7:17]:
        origin = [p[0] + rng.normal() * 0.1, max(-90, min(90, p[1] + rng.normal() * 0.1)), rng.uniform(0, 3000)]
        enu = pyproj.Transformer.from_pipeline(
            "+proj=pipeline +step +proj=unitconvert +xy_in=deg +xy_out=rad +step +proj=cart +ellps=WGS84 "
            f"+step +proj=topocentric +ellps=WGS84 +lon_0={origin[0]!r} +lat_0={origin[1]!r} +h_0={origin[2]!r}")
        yield "enu," + hexes([*origin, *p, *enu.transform(*p)])
    for _ in range(25):
        lon, lat = rng.uniform(73, 135), rng.uniform(18, 54)
        yield "gcj," + hexes([lon, lat, 5, *gcj(lon, lat), 5])
        yield "bd," + hexes([lon, lat, 5, *bd(mp.mpf(lon), mp.mpf(lat)), 5])


def write(name, rows):
    head = f"# make/space.py, SciPy {scipy.__version__}, pyproj {pyproj.__version__}, mpmath {mp.__version__}\n"
    (OUT / name).write_text(head + "\n".join(rows) + "\n")


write("rotations.csv", rotations())
write("coordinates.csv", coordinates())
