#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Support vector machines beside libsvm and trees beside scikit-learn's (libsvm by scikit-learn's wrapper), in one run.

usage: bench/classify_peers.py <liborvane.so>

Writes two Markdown tables. Times are the process's CPU time of a training, the least of three runs, one thread each.
`gap` is the dual objective's distance from libsvm's, relative to it and positive where Orvane's is the lower; `differ`
is the share of points whose class differs. Trees grow to the same depth with the same least number of samples; `right`
is the share of fresh points with the right class.
"""
import ctypes as C
import sys
import time

import numpy as np
from sklearn.datasets import load_breast_cancer, load_iris, load_wine
from sklearn.svm import SVC
from sklearn.tree import DecisionTreeClassifier

LINEAR, GAUSS, POLYNOMIAL = 0, 1, 2


def pointer(array):
    return array.ctypes.data_as(C.c_void_p)


def load(path):
    library = C.CDLL(path)
    for name in ("svm_create", "cart_Create", "api_Data2D_Create"):
        getattr(library, name).restype = C.c_void_p
    for name in ("svm_predict", "svm_getB", "cart_Predict"):
        getattr(library, name).restype = C.c_double
    return library


def least(run):
    best, result = 1e300, None
    for _ in range(3):
        start = time.process_time()
        result = run()
        best = min(best, time.process_time() - start)
    return best, result


def drawn(n, dim, noise, seed):
    rng = np.random.default_rng(seed)
    x = rng.standard_normal((n, dim))
    f = x[:, 0] * x[:, 1] + x[:, 2] + 0.5 * x[:, 3] ** 2 - 0.5
    return x, np.where(f + noise * rng.standard_normal(n) > 0, 1.0, -1.0)


def shipped(loader, positive):
    data = loader()
    x = (data.data - data.data.mean(0)) / data.data.std(0)
    return np.ascontiguousarray(x), np.where(data.target == positive, 1.0, -1.0)


def by_orvane(library, kernel, p, c, x, y):
    svm = C.c_void_p(library.svm_create())
    library.svm_setXDim(svm, x.shape[1])
    library.svm_setData(svm, pointer(x), pointer(y), len(y))
    library.svm_setOther(svm, pointer(np.array(p, float)), C.c_double(c))
    library.svm_setType(svm, kernel)
    library.svm_limit(svm, C.c_double(2), 0, 10**9)  # to the optimum

    def train():
        library.svm_setA(svm, None, 0)  # from the start, not from the last run's end
        library.svm_solve(svm)

    seconds, _ = least(train)
    a = np.empty(len(y))
    library.svm_getA(svm, pointer(a))
    value = np.array([library.svm_predict(svm, pointer(row), C.c_uint8(0)) for row in x])
    objective = a.sum() - 0.5 * (a * y) @ (value - library.svm_getB(svm))
    library.api_FreeHandle(svm)
    return seconds, objective, value


def by_libsvm(kernel, p, c, x, y):
    name = {LINEAR: "linear", GAUSS: "rbf", POLYNOMIAL: "poly"}[kernel]
    gamma = 0.5 / p[0] ** 2 if kernel == GAUSS else p[0]
    model = SVC(C=c, kernel=name, gamma=gamma, coef0=p[1], degree=int(p[2]), tol=1e-3, cache_size=256)
    seconds, _ = least(lambda: model.fit(x, y))
    signed = np.zeros(len(y))
    signed[model.support_] = model.dual_coef_[0]
    value = model.decision_function(x)
    return seconds, np.abs(signed).sum() - 0.5 * signed @ (value - model.intercept_[0]), value


def machines(library):
    print("| samples | kernel | C | Orvane ms | libsvm ms | ratio | gap | differ |\n|---|---|---|---|---|---|---|---|")
    sets = {
        "iris, 150 x 4": shipped(load_iris, 1),
        "wine, 178 x 13": shipped(load_wine, 1),
        "breast cancer, 569 x 30": shipped(load_breast_cancer, 1),
        "drawn, 500 x 20": drawn(500, 20, 0.5, 1),
        "drawn, 2000 x 20": drawn(2000, 20, 0.5, 2),
        "drawn, 5000 x 20": drawn(5000, 20, 0.5, 3),
    }
    kernels = {"linear": (LINEAR, [1, 0, 1]), "Gauss": (GAUSS, [3, 0, 1]), "polynomial": (POLYNOMIAL, [0.1, 1, 2])}
    for name, (x, y) in sets.items():
        for label, (kernel, p) in kernels.items():
            for c in (1, 10):
                if kernel == LINEAR and c == 10 and len(y) > 1000:
                    continue
                own, peer = by_orvane(library, kernel, p, c, x, y), by_libsvm(kernel, p, c, x, y)
                differ = np.mean((own[2] > 0) != (peer[2] > 0))
                print(f"| {name} | {label} | {c} | {own[0] * 1e3:.3g} | {peer[0] * 1e3:.3g} | {own[0] / peer[0]:.2f} "
                      f"| {(peer[1] - own[1]) / peer[1]:.0e} | {differ:.2%} |", flush=True)


def table(library, values):
    values = np.ascontiguousarray(values.reshape(len(values), -1))
    handle = C.c_void_p(library.api_Data2D_Create(*values.shape))
    library.api_Data2D_SetValue(handle, pointer(values))
    return handle


def trees(library):
    print("\n| samples | depth | Orvane ms | scikit-learn ms | ratio | right | scikit-learn right |\n"
          "|---|---|---|---|---|---|---|")
    for n in (2000, 8000, 32000):
        for depth in (6, 12):
            x, y = drawn(n, 20, 0.5, n)
            fresh, wanted = drawn(2000, 20, 0, n + 1)
            tree = C.c_void_p(library.cart_Create())
            rows, labels = table(library, x), table(library, (y > 0).astype(float))
            library.cart_SetData(tree, rows, labels, None, C.c_uint8(1))
            library.cart_SetLimitCondition(tree, 4, C.c_double(0), C.c_double(0), C.c_uint8(depth))
            own, _ = least(lambda: library.cart_Train(tree))
            answers = np.array([library.cart_Predict(tree, pointer(row)) for row in fresh])
            model = DecisionTreeClassifier(max_depth=depth, min_samples_split=4, random_state=1)
            peer, _ = least(lambda: model.fit(x, y))
            print(f"| drawn, {n} x 20 | {depth} | {own * 1e3:.3g} | {peer * 1e3:.3g} | {own / peer:.2f} "
                  f"| {np.mean(answers == wanted):.1%} | {np.mean(model.predict(fresh) == wanted):.1%} |", flush=True)
            for handle in (rows, labels, tree):
                library.api_FreeHandle(handle)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    library = load(sys.argv[1])
    machines(library)
    trees(library)


if __name__ == "__main__":
    main()
