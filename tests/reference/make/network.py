#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Every kind of layer but the random one: values, and gradients by all inputs and variables, from formulas in mpmath.

A line: code;name;case;n;numbers of the window;inputs;variables;cotangent;values;gradient by inputs;by variables. Lists
are blank-separated; several inputs or variables are separated by "/", a variable begins with its shape. A result is
value~tolerance. The gradient is that of the cotangent's product with the values, by a one-sided difference of 1e-30 at
70 digits, 900 for numbers of unlike size; `side` says from which side at a kink, 0 is the central one. The tolerance is 8 ulps of the value and of what
a relative error of one ulp in each number that goes in makes of it, by differences of 1e-10; `slope` adds ulps of the
cotangent where the derivative is a function of the rounded value.
"""
import random

import mpmath as mp

mp.mp.dps = 70
M = mp.mpf
EPS = M(2) ** -52
rng = random.Random(5)
PI32 = M(0.09817477042468103)


def draws(n, low=-3.0, high=3.0):
    return [round(rng.uniform(low, high), 4) for _ in range(n)]


def sign(x):
    return -1 if x < 0 else 1


def mean(x):
    return mp.fsum(x) / len(x)


def norm(x):
    return mp.sqrt(mp.fsum(v * v for v in x))


def power(x, a):
    return M(1) if a == 0 else mp.power(x, a)


def arch(x, a, b):
    return (x + 16) * a - 1 if x < -16 else (x - 16) * b + 1 if x > 16 else mp.sin(x * PI32)


def sqnl(x, c, p):
    v = abs(x) / c if c else M(0)
    return M(1) if x >= c else M(-1) if x <= -c else sign(x) * power(v, p) * (2 - v) if x else M(0)


def weibull(x, a, b):
    z = abs(x) * a
    return sign(x) * b * a * power(z, b - 1) * mp.exp(-z * power(z, b - 1)) if x else M(0)


def softplus(x, limit):
    return x if x > limit else mp.log1p(mp.exp(x))


ALL, TRIG = [1e200, -1e200, 40.0, -40.0, 800.0, -800.0, 1e-300, -1e-300], [1e22, -1e22, 1e6, 1e-300]
EDGE = [0.0, 1.0, -1.0, 1e-8, -1e-8, 0.3, -0.3]
# code: name, formula of an entry, then what differs from ordinary, edge and far points everywhere.
ELEMENT = {
    61: ("Sin", mp.sin, dict(far=TRIG)),
    62: ("Cos", mp.cos, dict(far=TRIG)),
    63: ("Tan", mp.tan, dict(far=[1e6, 1.57, 1e-300], slope=4)),
    64: ("Sinh", mp.sinh, {}),
    65: ("Cosh", mp.cosh, {}),
    66: ("Tanh", mp.tanh, dict(slope=4)),
    67: ("aSin", mp.asin, dict(range=(-1, 1), edge=[0.0, 0.999999, -0.999999, 1e-8], far=[1e-300])),
    68: ("aCos", mp.acos, dict(range=(-1, 1), edge=[0.0, 0.999999, -0.999999, 1e-8], far=[1e-300])),
    69: ("aTan", mp.atan, {}),
    70: ("Log", mp.log, dict(range=(0.1, 9), edge=[1.0, 1.0000001], far=[1e200, 1e-300])),
    71: ("Exp", mp.exp, dict(far=[700.0, -700.0, -800.0, 800.0, 1e-300])),
    72: ("Sqrt", mp.sqrt, dict(range=(0.1, 9), edge=[1.0], far=[1e200, 1e-300])),
    73: ("Abs", abs, dict(side=0)),
    74: ("Sign", lambda x: M(sign(x)), {}),
    77: ("Sigmod", lambda x: 1 / (mp.exp(-x) + 1), dict(slope=2)),
    78: ("ReLU", lambda x: max(M(0), x), dict(side=-1)),
    79: ("SoftSign", lambda x: x / (abs(x) + 1), {}),
    80: ("SoftPlus", lambda x: softplus(x, 20), dict(edge=[20.0, -20.0, -20.5, 0.0], side=-1, far=[20.000001] + ALL)),
    82: ("Gauss", lambda x: mp.exp(-x * x), {}),
    83: ("Copy", lambda x: x, {}),
    84: ("UnitSetp", lambda x: M(0) if x < 0 else M(1), {}),
    85: ("Negate", lambda x: -x, {}),
    86: ("SELU", lambda x: M(1.0507009873554805) * (x if x >= 0 else M(1.6732632423543772) * mp.expm1(x)), {}),
    87: ("GELU", lambda x: x * (mp.tanh(M(0.797884560802866) * x * (1 + M(0.044715) * x * x)) + 1), {}),
    90: ("Erf", lambda x: mp.erf(x * M(0.168)), {}),
    91: ("Mish", lambda x: x * mp.tanh(softplus(x, 17)), dict(edge=[0.0, 16.99, 17.0, -1e-8, 1.0], side=-1, far=[17.5] + ALL)),
    94: ("LLine", lambda x: x if x >= 0 else M(0.01) * x, {}),
    98: ("LiSHT", lambda x: x * mp.tanh(x), {}),
    99: ("AntiSym", lambda x: 16 * x / (x * x + 64), dict(edge=[0.0, 7.5, -8.5])),
    101: ("XTanhExp", lambda x: x if x > 2.9 else x * mp.tanh(mp.exp(x)), dict(edge=[2.9, 0.0, -1.0], side=-1, far=[2.91] + ALL)),
    102: ("LogSign", lambda x: sign(x) * mp.log1p(abs(x)), {}),
    103: ("ExpSign", lambda x: sign(x) * mp.expm1(abs(x)), {}),
    104: ("StepFun", lambda x: M(sign(x)), {}),
}
# Two operands; `a` is the range of the second one, (x, a) pairs of edges.
PAIR = {
    41: ("add_x2", lambda x, a: x + a, {}),
    42: ("sub_x2", lambda x, a: x - a, {}),
    43: ("mul_x2", lambda x, a: x * a, {}),
    44: ("div_x2", lambda x, a: x / a, dict(edge=[(0, 2), (1e200, 1e-50), (1e-200, 1e50)])),
    45: ("pow_x2", power, dict(range=(0.1, 3), edge=[(0, 2), (0, 3), (2, 0), (1, 1e6)])),
    46: ("Max_x1_x2", max, {}),
    47: ("Min_x1_x2", min, {}),
}
WITH_A = {
    11: ("x_add_a", lambda x, a: x + a, {}),
    12: ("x_sub_a", lambda x, a: x - a, {}),
    13: ("x_sub_a_squared", lambda x, a: (x - a) ** 2, {}),
    14: ("a_sub_x", lambda x, a: a - x, {}),
    15: ("x_mul_a", lambda x, a: x * a, {}),
    16: ("x_div_a", lambda x, a: x / a, dict(edge=[(0, 2), (1e200, 1e-50), (1e-200, 1e50)])),
    17: ("a_div_x", lambda x, a: a / x, dict(edge=[(2, 0), (1e-50, 1e200)])),
    18: ("x_pow_a", power, dict(range=(0.1, 3), edge=[(0, 2), (2, 0), (0.5, -2), (1e-100, 2.5)])),
    19: ("a_pow_x", lambda x, a: power(a, x), dict(range=(0.1, 3), edge=[(2, 0), (0, 2), (-2, 0.5)])),
    20: ("Swish", lambda x, a: x / (mp.exp(-x * a) + 1), {}),
    21: ("ELU", lambda x, a: x if x >= 0 else a * mp.expm1(x), {}),
    22: ("ISRLU", lambda x, a: x if x >= 0 else x / mp.sqrt((x * a) ** 2 + 1), {}),
    23: ("PReLu", lambda x, a: x if x >= 0 else x * a, {}),
    92: ("SQNL", lambda x, a: sqnl(x, abs(a), 1), dict(edge=[(0, 2), (2, 2), (-1.5, 2), (1.999999, -2), (3, 0), (-3, 0)])),
    93: ("SLine", lambda x, a: sign(x) * x * x / (abs(x * a) + 1), {}),
}
WITH_AB = {
    100: ("SQNL2", lambda x, a, b: sqnl(x, abs(a), abs(b)), dict(edge=[(0, 2, 3), (2.5, 2, 1.5), (-1.5, 2, -0.5), (-3, 0, 1)])),
    140: ("MPELU", lambda x, a, b: mp.expm1(abs(b) * x) * a if x < 0 else x, dict(edge=[(0, 2, 1), (-1e-8, 2, -1), (-1e200, 2, 1)])),
    141: ("XSin", lambda x, a, b: (a * mp.sin(x) + b) * x, dict(edge=[(0, 2, 1), (1e10, 2, 1)])),
    142: ("XCos", lambda x, a, b: (a * mp.cos(x) + b) * x, dict(edge=[(0, 2, 1), (1e10, 2, 1)])),
    143: ("Weibull", weibull, dict(range=(0.2, 3), edge=[(-0.5, 1, 2), (0, 1, 3), (1e200, 1, 3), (-1e-5, 0.7, 1)])),
    144: ("AMulXB", lambda x, a, b: a * power(x, b), dict(range=(0.2, 3), edge=[(0, 2, 2), (0.5, 1.5, 0), (1e100, 1, 2)])),
    145: ("XSin2", lambda x, a, b: (a * mp.sin(x) ** 2 + b) * x, dict(edge=[(0, 2, 1), (1e10, 2, 1)])),
    146: ("XCos2", lambda x, a, b: (a * mp.cos(x) ** 2 + b) * x, dict(edge=[(0, 2, 1), (1e10, 2, 1)])),
    147: ("XSin3", arch, dict(edge=[(-16, 2, 1), (-16.5, 2, 1), (16.5, 2, 1), (0, 2, 1), (1e200, 2, 3)])),
    148: ("XSin4", lambda x, a, b: abs(x) * arch(x, a, b), dict(edge=[(-16, 2, 1), (-16.5, 2, 1), (16.5, 2, 1), (0, 2, 1)])),
}


def quadratic(x, a):
    return mp.fsum(x[i] * a[i * len(x) + j] * x[j] for i in range(len(x)) for j in range(len(x)))


def distance(a, x, i):
    return mp.fsum((a[i * len(x) + j] - v) ** 2 for j, v in enumerate(x))


def standard(x, least, offset):
    c = mean(x)
    sd = mp.sqrt(mean([(v - c) ** 2 for v in x]) + offset)
    return [(v - c) / (sd if sd >= least else 1) for v in x]


def line(x):
    span = max(x) - min(x)
    return [(v - min(x)) / (span if span >= 1e-16 else 1) for v in x]


def softmax(x):
    e = [mp.exp(v - max(x)) for v in x]
    return [v / mp.fsum(e) for v in e]


def rotation(x, a):
    t = norm(a)
    if t == 0:  # the derivative needs the first order
        a, t = [v + M(10) ** -200 for v in a], norm([M(10) ** -200] * 3)
    k = [v / t for v in a]
    cross = [k[1] * x[2] - k[2] * x[1], k[2] * x[0] - k[0] * x[2], k[0] * x[1] - k[1] * x[0]]
    along = mp.fsum(p * q for p, q in zip(k, x)) * (1 - mp.cos(t))
    return [x[i] * mp.cos(t) + cross[i] * mp.sin(t) + k[i] * along for i in range(3)]


def zoom(x, a, n):
    rows = int(mp.nint(a[2])) if len(a) == 4 else int(mp.sqrt(len(x)))
    new = int(mp.nint(a[3])) if len(a) == 4 else int(mp.sqrt(n))
    cols, wide = len(x) // rows, n // new

    def place(i, count, size, z):
        return min(max((i - M(count - 1) / 2) / z + M(size - 1) / 2, M(0)), M(size - 1))

    y = []
    for r in range(new):
        for c in range(wide):
            u, v = place(r, new, rows, a[0]), place(c, wide, cols, a[min(1, len(a) - 1)])
            y.append(mp.fsum(x[i * cols + j] * max(M(0), 1 - abs(u - i)) * max(M(0), 1 - abs(v - j))
                             for i in range(rows) for j in range(cols)))
    return y


def windows(x, w):
    start, rows, cols, high, wide, down, across = w
    return [[x[start + (r + i) * cols + c + j] for i in range(high) for j in range(wide)]
            for r in range(0, rows - high + 1, down) for c in range(0, cols - wide + 1, across)]


def variance(x):
    return mean([(v - mean(x)) ** 2 for v in x])


def shrink(v, count):
    return norm(v) / count


out = open("../network/layers.csv", "w")
out.write(f"# tests/reference/make/network.py, mpmath {mp.__version__}, {mp.mp.dps} digits\n")


def emit(code, name, case, f, n, inputs, variables=(), window=(), side=1, slope=0):
    """f(lists of the inputs and variables, in that order) gives the n values; variables are (rows, cols, numbers)."""
    lists = [list(map(float, v)) for v in inputs] + [list(map(float, v[2])) for v in variables]
    wide = any(v and not 1e-12 < abs(v) < 1e12 for numbers in lists for v in numbers)
    mp.mp.dps = 900 if wide else 70  # a difference by one number must show beside all others
    cotangent = [M(float(v)) for v in draws(n, 0.5, 2)]
    places = [(i, j) for i, numbers in enumerate(lists) for j in range(len(numbers))]
    base = [[M(v) for v in numbers] for numbers in lists]

    def moved(u, place, by):
        changed = [list(numbers) for numbers in u]
        changed[place[0]][place[1]] += by
        return changed

    def gradient(u):
        start = f(*u)
        grad = []
        for p in places:
            v = u[p[0]][p[1]]
            h = M(10) ** -30 * (abs(v) if v else 1)
            low, high = (f(*moved(u, p, -h)) if side < 1 else start), (f(*moved(u, p, h)) if side > -1 else start)
            g = mp.fsum(c * (b - a) for c, a, b in zip(cotangent, low, high)) / (h if side else 2 * h)
            grad.append(g if v or abs(g) > M(10) ** -25 else M(0))
        return grad

    values, grads = f(*base), gradient(base)
    error, gradError = [abs(v) for v in values], [abs(g) + slope * max(cotangent) for g in grads]
    for p in places:
        v = base[p[0]][p[1]]
        if v == 0:
            continue
        u = moved(base, p, (side or 1) * abs(v) * M(10) ** -10)
        error = [e + abs(a - b) * M(10) ** 10 for e, a, b in zip(error, f(*u), values)]
        gradError = [e + abs(a - b) * M(10) ** 10 for e, a, b in zip(gradError, gradient(u), grads)]

    def numbers(v, e):
        return " ".join(f"{mp.nstr(a, 20)}~{mp.nstr(8 * EPS * b + M(10) ** -300, 3)}" for a, b in zip(v, e))

    def split(v, e, low, high):
        cut = [k for k, p in enumerate(places) if low <= p[0] < high]
        return "/".join(numbers([v[k] for k in cut if places[k][0] == i], [e[k] for k in cut if places[k][0] == i])
                        for i in range(low, high))

    hexes = lambda v: " ".join(float(a).hex() for a in v)
    out.write(";".join([
        str(code), name, case, str(n), " ".join(map(str, window)), "/".join(hexes(v) for v in inputs),
        "/".join(f"{v[0]} {v[1]} {hexes(v[2])}" for v in variables), hexes(cotangent), numbers(values, error),
        split(grads, gradError, 0, len(inputs)), split(grads, gradError, len(inputs), len(lists))]) + "\n")


def row(numbers):
    return (1, len(numbers), numbers)


def entrywise(f):
    """Operands of one entry are stretched."""
    def all(*lists):
        n = max(len(v) for v in lists)
        return [f(*(v[i] if len(v) == n else v[0] for v in lists)) for i in range(n)]
    return all


def twoOperands(code, name, f, o, wrap):
    low, high = o.get("range", (-3, 3))
    x, a = draws(9, low, high), draws(9, 0.2, 3) if o.get("range") else [v + (0.2 if v >= 0 else -0.2) for v in draws(9)]
    edge = o.get("edge", [(0, 2), (1, -1), (-1, 1), (1e-8, 3), (-1e-8, 3), (1e200, 2), (-1e200, 2), (-800, 0.5)])
    for case, u, v in (("ordinary", x, a), ("one_a", x, a[:1]), ("one_x", x[:1], a), ("single", x[:1], a[:1]),
                       ("edge", [p[0] for p in edge], [p[1] for p in edge])):
        emit(code, name, case, entrywise(f), max(len(u), len(v)), *wrap(u, v))


for code, (name, f, o) in ELEMENT.items():
    low, high = o.get("range", (-4, 4))
    side, slope = o.get("side", 1), o.get("slope", 0)
    for case, x in (("ordinary", draws(9, low, high)), ("edge", o.get("edge", EDGE)), ("far", o.get("far", ALL))):
        emit(code, name, case, entrywise(f), len(x), [x], side=side, slope=slope)
for code, (name, f, o) in PAIR.items():
    twoOperands(code, name if code > 45 else "x1_" + name, f, o, lambda u, v: ([u, v],))
for code, (name, f, o) in WITH_A.items():
    twoOperands(code, name, f, o, lambda u, v: ([u], [row(v)]))
for code, (name, f, o) in WITH_AB.items():
    low, high = o.get("range", (-3, 3))
    emit(code, name, "ordinary", entrywise(f), 9, [draws(9, low, high)], [row(draws(9, 1, 3)), row(draws(9, 0.3, 2.5))])
    emit(code, name, "edge", entrywise(f), len(o["edge"]), [[p[0] for p in o["edge"]]],
         [row([p[1] for p in o["edge"]]), row([p[2] for p in o["edge"]])])

for case, m, n in (("ordinary", 5, 3), ("blocks", 9, 17), ("one_x", 1, 5), ("one_y", 6, 1)):
    x, a, b = draws(m), (n, m, draws(n * m)), row(draws(n, 0.1, 0.5))
    emit(1, "W_dot_x", case, lambda x, a: [mp.fsum(a[i * len(x) + j] * v for j, v in enumerate(x)) for i in range(n)], n, [x], [a])
    emit(2, "W_sub_x_squared", case, lambda x, a: [distance(a, x, i) for i in range(n)], n, [x], [a])
    if case != "blocks":
        emit(220, "RBF1", case, lambda x, a, b: [mp.exp(-b[i] * distance(a, x, i)) for i in range(n)], n, [x], [a, b])
        emit(221, "RBF2", case, lambda x, a, b: [1 / (1 + b[i] ** 2 * distance(a, x, i)) for i in range(n)], n, [x], [a, b])
        emit(222, "RBF3", case, lambda x, a, b: [1 / mp.sqrt(1 + b[i] ** 2 * distance(a, x, i)) for i in range(n)], n, [x], [a, b])
        emit(3, "Quadratic", case, lambda x, *a: [quadratic(x, v) for v in a], min(n, 3), [x[:4]],
             [(min(m, 4), min(m, 4), draws(min(m, 4) ** 2)) for _ in range(min(n, 3))])
for case, sizes in (("ordinary", (5, 5, 5, 5)), ("mixed", (5, 1, 5, 1)), ("edge", (1, 1, 1, 1))):
    x = draws(5) if case != "edge" else [0, 1e-8, -1e50, 1e50, 1]
    emit(150, "Poly3", case, entrywise(lambda x, p, q, r, s: p + q * x + r * x * x + s * x ** 3), 5, [x], [row(draws(k)) for k in sizes])

VECTOR = {
    75: ("SqrtNorm", lambda x: [v / norm(x) for v in x]),
    76: ("SquaredNorm", lambda x: [v / norm(x) ** 2 for v in x]),
    81: ("SoftMax", softmax),
    88: ("ZscoreNorm", lambda x: standard(x, 1e-16, 0)),
    89: ("LineNorm", line),
    97: ("LayerNorm", lambda x: standard(x, 0, M(1e-6) ** 2)),
    160: ("Max", lambda x: [max(x)]),
    161: ("Sum", lambda x: [mp.fsum(x)]),
}
for code, (name, f) in VECTOR.items():
    for case, x in (("ordinary", draws(7)), ("single", [1.5]), ("huge", [1e200, -2e200, 3e200]), ("tiny", [1e-150, 3e-150]),
                    ("far", [800.0, -800.0, 1.0, 0.0])):
        if code in (88, 97) and case == "single" or code in (88, 89) and case == "tiny":
            continue  # where the rule for equal entries begins; graph_test.cpp has these
        emit(code, name, case, f, len(f([M(v) for v in x])), [x])

emit(48, "Append_x1_x2", "ordinary", lambda x, z: x + z, 7, [draws(3), draws(4)])
emit(49, "MixProduct2", "ordinary", lambda x, z: [p * q for p in x for q in z], 12, [draws(3), draws(4)])
emit(95, "SignMap", "ordinary", lambda x: [(1 - x[0]) / 2, (x[0] + 1) / 2], 2, [[0.3]])
emit(96, "VecMask", "ordinary", lambda x, a: [v if k else M(0) for v, k in zip(x, [1, 0, 1, 0])], 4, [draws(4)], [row([1, 0, -2, 0])])
emit(180, "CopyVar", "ordinary", lambda a: a, 4, [], [row(draws(4))])
for case, a in (("ordinary", draws(3)), ("zero", [0, 0, 0]), ("small", [1e-9, -2e-9, 1e-9]), ("half", [0.3, -0.2, 0.1]),
                ("turn", [3.0, 1.0, -0.5]), ("many", [40.0, -70.0, 11.0])):
    emit(181, "Rotation3D", case, rotation, 3, [draws(3)], [row(a)])
for case, n, m, a in (("double", 16, 4, [2]), ("two", 9, 16, [0.75, 1.3]), ("oblong", 24, 6, [2, 1.7, 2, 4]), ("inside", 9, 9, [3.1]),
                      ("one_cell", 4, 1, [2])):
    emit(198, "Zoom", case, lambda x, a: zoom(x, a, n), n, [draws(m)], [row(a)], side=-1)
emit(199, "Assembly", "ordinary", lambda *x: [v for k in x for v in k], 6, [draws(1), draws(2), draws(3)])
emit(230, "MaxOutMul", "ordinary", lambda *x: [max(v) for v in zip(*x)], 5, [draws(5), draws(5), draws(5)])
emit(200, "SetPart", "ordinary", lambda x: [M(0), M(0)] + x + [M(0)], 6, [draws(3)], window=(2,))
emit(201, "GetPart", "ordinary", lambda x: x[2:5], 3, [draws(6)], window=(2,))
for case, w, m in (("ordinary", (0, 4, 5, 2, 3, 1, 1), 20), ("moved", (3, 5, 6, 2, 2, 2, 3), 33), ("left_over", (1, 5, 5, 2, 3, 2, 2), 27),
                   ("whole", (0, 3, 2, 3, 2, 1, 1), 6), ("cell", (0, 2, 3, 1, 1, 1, 1), 6)):
    cells, x = w[3] * w[4], draws(m)
    n = len(windows(x, w))
    emit(202, "Convolution", case, lambda x, a, b: [mp.fsum(p * q for p, q in zip(v, a)) + b[0] for v in windows(x, w)], n,
         [x], [(w[3], w[4], draws(cells)), row(draws(1))], w)
    for code, name, f in ((203, "PoolMax", max), (204, "PoolMean", mean), (205, "PoolMin", min), (206, "PoolNorm2", lambda v: shrink(v, cells)),
                          (208, "PoolMedian", lambda v: sorted(v)[(len(v) - 1) // 2]), (209, "PoolVar", variance)):
        emit(code, name, case, lambda x: [f(v) for v in windows(x, w)], n, [x], window=w)
