#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Coordinates beside PROJ (pyproj), the stores' files beside the plain disk, nearest nodes beside SciPy's k-d tree.

usage: bench/space_peers.py <liborvane.so>

Writes one Markdown table. Times are the process's CPU time, the least of five runs. Those of the stock file are of the
wall clock, the least of three, from and to the disk: the page cache is emptied of the file before it is read, and what
is written is synchronised.
"""
import ctypes as C
import os
import sys
import tempfile
import time

import numpy as np
import pyproj
from scipy.spatial import cKDTree

lib = C.CDLL(sys.argv[1])
D, P = C.c_double, C.c_void_p
A, E = 6378137.0, 0.081819190842621494
KA, KE = 6378245.0, 0.00669342162296594 ** 0.5
POINTS, NODES, STOCKS, DAYS = 200_000, 1_000_000, 5000, 2500


def least(run, times=5, clock=time.process_time):
    best = 1e300
    for _ in range(times):
        start = clock()
        run()
        best = min(best, clock() - start)
    return best


def row(what, ours, peer, name, unit, scale):
    ratio = f'{ours / peer:.2f}' if peer else ''
    print(f'| {what} | {ours * scale:.4g} {unit} | {name} | {peer * scale:.4g} {unit} | {ratio} |' if peer else
          f'| {what} | {ours * scale:.4g} {unit} | | | |')


def coordinates():
    rng = np.random.default_rng(1)
    lla = np.c_[rng.uniform(-180, 180, POINTS), rng.uniform(-90, 90, POINTS), rng.uniform(-5e3, 36e6, POINTS)]
    ecef, back = np.empty_like(lla), np.empty_like(lla)

    def ours(name, source, out, *more):
        call = getattr(lib, name)
        return lambda: call(P(source.ctypes.data), P(out.ctypes.data), POINTS, *map(D, more))
    proj = pyproj.Transformer.from_pipeline('+proj=cart +ellps=WGS84')
    x, y, z = (np.radians(lla[:, 0]), np.radians(lla[:, 1]), lla[:, 2].copy())
    there = [None]

    def forward():
        there[0] = proj.transform(x, y, z, radians=True)

    def backward():
        proj.transform(*there[0], radians=True, direction='INVERSE')
    row('LLA to ECEF, a point', least(ours('slam_coorLLAtoECEF', lla, ecef, A, E)) / POINTS, least(forward) / POINTS, 'PROJ', 'ns', 1e9)
    row('ECEF to LLA, a point', least(ours('slam_coorECEFtoLLA', ecef, back, A, E)) / POINTS, least(backward) / POINTS, 'PROJ', 'ns', 1e9)
    east = np.c_[rng.uniform(73, 135, POINTS), rng.uniform(18, 53, POINTS), np.zeros(POINTS)]
    gcj, home = np.empty_like(east), np.empty_like(east)
    f = least(ours('slam_coorLLAtoGCJ02', east, gcj, 105, 35, KA, KE)) / POINTS
    b = least(ours('slam_coorGCJ02toLLA', gcj, home, 105, 35, KA, KE)) / POINTS
    row('LLA to GCJ-02, a point', f, None, '', 'ns', 1e9)
    row('GCJ-02 to LLA, a point', b, f, 'forward step', 'ns', 1e9)
    assert np.abs(home - east).max() < 1e-12


def stocks(folder):
    lib.stock_getStock.restype = P
    path, plain = os.path.join(folder, 'a.stock'), os.path.join(folder, 'plain')
    head = np.array([(13,)], '<i4').tobytes() + b'\x14\x18\x08\x0cOrvanedat'
    dates = np.zeros(DAYS, [('y', '<u2'), ('m', 'u1'), ('d', 'u1')])
    dates['y'], dates['m'], dates['d'] = 2000 + np.arange(DAYS) // 336, 1 + np.arange(DAYS) // 28 % 12, 1 + np.arange(DAYS) % 28
    day = np.zeros(DAYS, [('date', '<u4'), ('v', '<i4', 4), ('r', '<i2', 3), ('w', '<i4', 2)])
    day['date'], day['v'] = np.arange(DAYS), 1234
    with open(path, 'wb') as file:
        file.write(head + np.int32(DAYS).tobytes() + dates.tobytes() + np.int32(STOCKS).tobytes())
        for code in range(STOCKS):
            file.write(b'\x01' + np.int32(code).tobytes() + bytes(4) + np.int32(DAYS).tobytes() + day.tobytes() + bytes(4))
    size = os.path.getsize(path)
    content = open(path, 'rb').read()

    def synchronised(name):
        handle = os.open(name, os.O_RDWR)
        os.fsync(handle)
        os.posix_fadvise(handle, 0, 0, os.POSIX_FADV_DONTNEED)
        os.close(handle)

    def write():
        with open(plain, 'wb') as file:
            file.write(content)
        synchronised(plain)

    def read():
        synchronised(path)
        with open(path, 'rb') as file:
            while file.read(1 << 20):
                pass

    def load():
        synchronised(path)
        assert lib.stock_loadStock(path.encode(), None) == STOCKS

    def save():
        assert lib.stock_saveStock(None, 0, (path + '2').encode()) == 1
        synchronised(path + '2')
    before = int(open('/proc/self/statm').read().split()[1]) * 4096
    t = least(load, 1, time.perf_counter)
    resident = (int(open('/proc/self/statm').read().split()[1]) * 4096 - before) / (STOCKS * DAYS)
    row(f'stock file of {size >> 20} MiB, load', min(t, least(load, 2, time.perf_counter)), least(read, 3, time.perf_counter), 'plain read', 'ms', 1e3)
    row(f'stock file of {size >> 20} MiB, save', least(save, 3, time.perf_counter), least(write, 3, time.perf_counter), 'plain write', 'ms', 1e3)
    assert open(path + '2', 'rb').read() == content
    print(f'| memory of a day in the store | {resident:.1f} bytes | | | |')


def mesh(folder):
    rng = np.random.default_rng(2)
    xy = rng.random((NODES, 2))
    path = os.path.join(folder, 'nodes')
    with open(path, 'w') as file:
        file.write(f'NodeSize: {NODES}\n')
        file.writelines(f'{i + 1}, {x!r}, {y!r}\n' for i, (x, y) in enumerate(xy.tolist()))
    size = os.path.getsize(path)
    start = time.process_time()
    assert lib.mesh2D_loadNode(path.encode(), 1, NODES) and lib.mesh2D_getNodeSize() == NODES
    loaded = time.process_time() - start
    print(f'| mesh of a million nodes, {size >> 20} MiB, load | {size / loaded / 1e6:.0f} MB/s | | | |')
    build, tree = least(lib.mesh2D_initBuild, 2), [None]

    def grow():
        tree[0] = cKDTree(xy)
    row('build for the nearest node', build, least(grow, 2), 'cKDTree', 'ms', 1e3)
    count = 100_000
    asked = rng.random((count, 2))
    find, out = lib.mesh2D_findNearestNodeID, D()
    find.argtypes, find.restype = [D, D, P], C.c_int32
    places = asked.tolist()
    address = C.byref(out)
    empty = least(lambda: [lib.mesh2D_getNodeSize() for _ in places])

    def search():
        for x, y in places:
            find(x, y, address)
    row('nearest node, calls of Python included', least(search) / count, least(lambda: tree[0].query(asked)) / count, 'cKDTree, one array', 'us', 1e6)
    print(f'| of it an empty call of Python | {empty / count * 1e6:.2f} us | | | |')
    ids = np.array([find(x, y, address) for x, y in places[:2000]])
    assert (ids == tree[0].query(asked[:2000])[1] + 1).all()


print('| case | Orvane | peer | peer\'s | ratio |\n|---|---|---|---|---|')
coordinates()
with tempfile.TemporaryDirectory() as folder:
    stocks(folder)
    mesh(folder)
