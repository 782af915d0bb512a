#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/classify: trees.csv by a brute-force tree, kernels.csv by mpmath.

trees.csv: isClass, minCount, gap, score, depth, flags, rows, then values row by row, labels and predictions.
kernels.csv: kernel code, p0, p1, p2, two points of the plane, value, ulps.
"""
import pathlib
import random

import mpmath as mp

OUT = pathlib.Path(__file__).resolve().parents[1] / "classify"
hexes = lambda values: ",".join(float(v).hex() for v in values)


def grow(rows, labels, is_class, limits, depth, class_list, real_list):
    """The node of these samples: a leaf's value, or (kind, index, threshold, left, right)."""
    min_count, gap, least, _ = limits
    if is_class:
        leaf = 1.0 if 2 * sum(labels) > len(labels) else -1.0
    else:
        leaf = sum(labels) / len(labels)
    if len(rows) < min_count or depth == 0:
        return leaf

    def side(part):
        if not part:
            return 0.0
        if is_class:
            p = sum(part) / len(part)
            q = (len(part) - sum(part)) / len(part)
            return (1 - (q * q + p * p)) * (len(part) / len(rows))
        mean = sum(part) / len(part)
        return sum((v - mean) * (v - mean) for v in part)

    best = None
    tests = []
    for place, (index, values) in enumerate(class_list):
        for value in values[:1] if len(values) == 2 else values:
            tests.append((1, place, index, value))
    for place, index in enumerate(real_list):
        column = sorted(row[index] for row in rows)
        i = 0
        for j in range(1, len(column)):
            if not column[i] + gap > column[j]:
                tests.append((2, place, index, (column[i] + column[j]) * 0.5))
                i = j
    for kind, place, index, value in tests:
        goes_right = [row[index] == value if kind == 1 else not value > row[index] for row in rows]
        score = side([l for l, r in zip(labels, goes_right) if not r]) + side([l for l, r in zip(labels, goes_right) if r])
        if best is None or score < best[0]:
            best = (score, kind, place, index, value, goes_right)
    if best is None or least > best[0]:
        return leaf
    _, kind, place, index, value, goes_right = best
    if kind == 1:
        rest = [v for v in class_list[place][1] if v != value] if len(class_list[place][1]) > 2 else []
        class_list = [c if k != place else (index, rest) for k, c in enumerate(class_list)]
        class_list = [c for c in class_list if c[1]]
    else:
        real_list = [r for k, r in enumerate(real_list) if k != place]
    children = []
    for want in (False, True):
        part = [k for k, r in enumerate(goes_right) if r == want]
        children.append(grow([rows[k] for k in part], [labels[k] for k in part], is_class, limits, depth - 1, class_list,
                             real_list) if part else None)
    return (kind, index, value, *children)


def predict(node, row):
    while isinstance(node, tuple):
        kind, index, value, left, right = node
        if left is None or right is None:
            node = right if left is None else left
        elif kind == 1:
            node = right if row[index] == value else left
        else:
            node = left if value > row[index] else right
    return node


def trees():
    rng = random.Random(7)
    for case in range(120):
        is_class = case % 2 == 0
        columns, count = rng.randint(1, 4), rng.randint(1, 14)
        flags = [rng.random() < 0.4 for _ in range(columns)]
        step = rng.choice([0.25, 1])  # coarse values make ties
        rows = [[rng.randint(0, 4) if f else step * rng.randint(-4, 6) for f in flags] for _ in range(count)]
        labels = [rng.randint(0, 1) if is_class else rng.randint(-5, 5) * 0.5 for _ in rows]
        limits = (rng.randint(0, 4), rng.choice([0.0, 0.5, 1.5]), rng.choice([0.0, 0.0, 0.16]), rng.randint(0, 5))
        classes = [(k, sorted({row[k] for row in rows})) for k in range(columns) if flags[k]]
        reals = [k for k in range(columns) if not flags[k]]
        root = grow(rows, labels, is_class, limits, limits[3], classes, reals)
        yield (f"{int(is_class)},{limits[0]},{limits[1]},{limits[2]},{limits[3]},{''.join(str(int(f)) for f in flags)},{count},"
               + ",".join(hexes(part) for part in (sum(rows, []), labels, [predict(root, row) for row in rows])))


def kernels():
    mp.mp.dps = 30
    circular = lambda d, p: 0 if d >= abs(p) else 2 / mp.pi * (mp.acos(-d / p) - mp.sqrt(1 - (d / p) ** 2))
    spherical = lambda d, p: 0 if d >= abs(p) else 1 - mp.mpf(3) / 2 * (d / p) + (d / p) ** 3 / 2
    table = [lambda s, d, p, q, r: s, lambda s, d, p, q, r: mp.exp(-d**2 / (2 * p**2)),
             lambda s, d, p, q, r: (p * s + q) ** r, lambda s, d, p, q, r: mp.exp(-p**2 * d),
             lambda s, d, p, q, r: mp.tanh(p * s + q), lambda s, d, p, q, r: 1 - d**2 / (d**2 + p),
             lambda s, d, p, q, r: mp.sqrt(d**2 + p**2), lambda s, d, p, q, r: 1 / mp.sqrt(d**2 + p**2),
             lambda s, d, p, q, r: circular(d, p), lambda s, d, p, q, r: spherical(d, p),
             lambda s, d, p, q, r: 1 / (1 + d**2 / p**2)]
    for code, kernel in enumerate(table):
        for params in ((1, 0, 2), (1.75, 0.5, 3)):
            for x, y in (((0.5, -1), (0.25, 0.5)), ((1, 2), (1, 2)), ((3, -1), (0, 1.5)), ((0.125, 0.25), (0, 0))):
                s = mp.mpf(x[0]) * y[0] + mp.mpf(x[1]) * y[1]
                d = mp.sqrt((mp.mpf(x[0]) - y[0]) ** 2 + (mp.mpf(x[1]) - y[1]) ** 2)
                yield f"kernel,{code},{hexes([*params, *x, *y])},{mp.nstr(kernel(s, d, *map(mp.mpf, params)), 20)},64"


def write(name, rows):
    head = f"# make/classify.py, mpmath {mp.__version__}\n"
    (OUT / name).write_text(head + "\n".join(rows) + "\n")


write("trees.csv", trees())
write("kernels.csv", kernels())
