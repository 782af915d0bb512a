#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Training of networks beside PyTorch (one thread, float64) and scikit-learn's MLP, in one run.

usage: bench/network_peers.py <liborvane.so>

Writes a Markdown table. Times are the process's CPU time of a training, the least of five (three for long ones), with
the same weights, batches of the same size and Adam on both sides; Orvane's with a test of all rows before and after. The
last column is the loss or the share of right answers after it, Orvane's and PyTorch's, which differ by the order of the
batches.

Needs NumPy, PyTorch and scikit-learn, which scripts/setup does not install for their size:
  python3 -m pip install numpy scikit-learn && python3 -m pip install torch --index-url https://download.pytorch.org/whl/cpu
"""
import ctypes as C
import sys
import time

try:
    import numpy as np
    import torch
    from sklearn.datasets import load_digits
    from sklearn.neural_network import MLPClassifier, MLPRegressor
except ImportError as missing:
    sys.exit(f"network_peers.py: {missing}\n{__doc__[__doc__.index('Needs'):].strip()}")

torch.set_num_threads(1)
torch.set_default_dtype(torch.float64)
DOUBLE, INT, POINTER = C.c_double, C.c_int32, C.c_void_p
COPY, PRODUCT, SHIFT, TANH, RELU, CONVOLUTION, POOL_MAX = 83, 1, 11, 66, 78, 202, 203
BETA1, BETA2, RATE = 0.9, 0.99, 0.002


class Library:
    """The exports with the argument types that ctypes needs to know."""

    def __init__(self, path):
        lib = C.CDLL(path)
        self.lib = lib
        for name in ("api_CreateNetVar", "api_CreateNetLayer", "api_CreateNetWork", "api_CreateOptimizer", "api_CreateSolver"):
            getattr(lib, name).restype = POINTER

    def call(self, name, *args):
        c = [DOUBLE(a) if isinstance(a, float) else a.ctypes.data_as(POINTER) if isinstance(a, np.ndarray)
             else POINTER(a.value) if isinstance(a, POINTER) else a for a in args]
        return getattr(self.lib, name)(*c)

    def make(self, name, *args):
        return POINTER(self.call(name, *args))


class Network:
    """Layers one after another; weights of PyTorch's layers are taken over."""

    def __init__(self, lib, size):
        self.lib = lib
        self.input = self.last = lib.make("api_CreateNetLayer", size, COPY)

    def layer(self, kind, size, var=None, var2=None):
        made = self.lib.make("api_CreateNetLayer", size, kind)
        self.lib.call("api_SetInput1ToNetLayer", made, self.last)
        for name, values in (("api_SetVarToNetLayer", var), ("api_SetVar2ToNetLayer", var2)):
            if values is not None:
                v = np.atleast_2d(values.detach().numpy()).copy()
                handle = self.lib.make("api_CreateNetVar", *v.shape)
                self.lib.call("api_SetNetVarValue", handle, v)
                self.lib.call(name, made, handle)
        self.last = made
        return made

    def linear(self, module):
        self.layer(PRODUCT, module.out_features, module.weight)
        self.layer(SHIFT, module.out_features, module.bias)

    def done(self):
        self.net = self.lib.make("api_CreateNetWork")
        assert self.lib.call("api_NetWorkInit", self.net, self.input, self.last) == 1
        return self.net


def orvane_run(lib, net, x, t, steps, batch, cost):
    rule = lib.make("api_CreateSolver", 3)
    lib.call("api_SetSolverVar", rule, BETA1, BETA2, 0.0, RATE, RATE, 0)
    opt = lib.make("api_CreateOptimizer")
    lib.call("api_SetNewWork", opt, net)
    lib.call("api_SetSolver", opt, rule)
    lib.call("api_SetTrainData", opt, x, t, len(x), x.shape[1], t.shape[1])
    lib.call("api_SetCostFun", opt, cost)
    lib.call("api_SetIterCount", opt, float(steps), float(steps + 1), float(batch))
    if t.shape[1] > 1:
        lib.call("api_SetEvaluateByClass", opt, 2.0)
    else:
        lib.call("api_SetEvaluateBySquaredError", opt, -1.0)
    assert lib.call("api_SolveInit", opt) == 0
    begin = time.process_time()
    lib.call("api_Solve", opt)
    return time.process_time() - begin


def predict(lib, net, x, outputs):
    out, all_out = np.zeros(outputs), []
    for row in x:
        lib.call("api_RunWork", net, np.ascontiguousarray(row), out)
        all_out.append(out.copy())
    return np.array(all_out)


def torch_run(model, x, t, steps, batch, loss):
    x, t = torch.from_numpy(x), torch.from_numpy(t)
    optimiser = torch.optim.Adam(model.parameters(), RATE, (BETA1, BETA2), 1e-16)
    order, at = torch.arange(len(x)), 0
    begin = time.process_time()
    for _ in range(steps):
        if batch == len(x):
            bx, bt = x, t
        else:
            if at + batch > len(x):
                order, at = torch.randperm(len(x)), 0
            rows = order[at:at + batch]
            bx, bt, at = x[rows], t[rows], at + batch
        optimiser.zero_grad()
        loss(model(bx), bt).backward()
        optimiser.step()
    return time.process_time() - begin


def mlp():
    n = torch.nn
    return n.Sequential(n.Linear(1, 32), n.Tanh(), n.Linear(32, 32), n.Tanh(), n.Linear(32, 1))


def classifier():
    n = torch.nn
    return n.Sequential(n.Linear(64, 128), n.ReLU(), n.Linear(128, 10))


def pictures():
    n = torch.nn
    return n.Sequential(n.Unflatten(1, (1, 8, 8)), n.Conv2d(1, 1, 3), n.ReLU(), n.MaxPool2d(2), n.Flatten(), n.Linear(9, 10))


def build(lib, model, x):
    network = Network(lib, x.shape[1])
    for module in model:
        if isinstance(module, torch.nn.Linear):
            network.linear(module)
        elif isinstance(module, torch.nn.Conv2d):
            layer = network.layer(CONVOLUTION, 36, module.weight[0, 0], module.bias)
            grid(lib, layer, 8, 3, 1)
        elif isinstance(module, torch.nn.MaxPool2d):
            grid(lib, network.layer(POOL_MAX, 9), 6, 2, 2)
        elif isinstance(module, (torch.nn.Tanh, torch.nn.ReLU)):
            size = lib.call("api_GetNetLayerSize", network.last)
            network.layer(TANH if isinstance(module, torch.nn.Tanh) else RELU, size)
    return network.done()


def grid(lib, layer, side, window, move):
    lib.call("api_SetLayerInputDim", layer, side, side)
    lib.call("api_SetLayerWindowDim", layer, window, window)
    lib.call("api_SetMoveDiff", layer, move, move)


def sklearn_run(kind, x, t, steps, batch):
    size = (32, 32) if kind is MLPRegressor else (128,)
    epochs = max(1, steps * batch // len(x))
    peer = kind(hidden_layer_sizes=size, activation="tanh" if kind is MLPRegressor else "relu", batch_size=batch, max_iter=epochs, tol=0,
                n_iter_no_change=10**9, learning_rate_init=RATE, beta_1=BETA1, beta_2=BETA2)
    begin = time.process_time()
    peer.fit(x, t)
    return (time.process_time() - begin) * steps / (epochs * (len(x) // batch))


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    import warnings
    warnings.filterwarnings("ignore")
    lib = Library(sys.argv[1])
    x = np.linspace(-1, 1, 1000).reshape(-1, 1).copy()
    t = np.sin(3 * x) + 0.3 * x
    digits = load_digits()
    dx, dt = (digits.data / 16).copy(), np.eye(10)[digits.target].copy()
    square = lambda y, t: 0.5 * ((y - t) ** 2).mean()
    cross = torch.nn.functional.cross_entropy
    cases = [
        ("1-32-32-1 tanh, 1,000 rows, 200 epochs", mlp, x, t, 200, 1000, 1, square, MLPRegressor, 5),
        ("1-32-32-1 tanh, 640 steps of 32 rows", mlp, x, t, 640, 32, 1, square, MLPRegressor, 5),
        ("64-128-10 on 1,797 digits, 560 steps of 32", classifier, dx, dt, 560, 32, 3, cross, MLPClassifier, 3),
        ("convolution and pool on digits, 560 steps of 32", pictures, dx, dt, 560, 32, 3, cross, None, 3),
    ]
    print("| case | Orvane ms | PyTorch ms | ratio | scikit-learn ms | ratio | after it |")
    print("|---|---|---|---|---|---|---|")
    for name, make, bx, bt, steps, batch, cost, loss, peer, rounds in cases:
        own, other, third = [], [], []
        for _ in range(rounds):
            torch.manual_seed(1)
            model = make()
            net = build(lib, model, bx)
            own.append(orvane_run(lib, net, bx, bt, steps, batch, cost))
            other.append(torch_run(model, bx, bt, steps, batch, loss))
            if peer:
                target = bt[:, 0] if peer is MLPRegressor else bt.argmax(1)
                third.append(sklearn_run(peer, bx, target, steps, batch))
        y, z = predict(lib, net, bx, bt.shape[1]), model(torch.from_numpy(bx)).detach().numpy()
        score = [f"{((v - bt) ** 2).mean():.2e}" if cost == 1 else f"{(v.argmax(1) == bt.argmax(1)).mean():.3f}" for v in (y, z)]
        a, b = min(own) * 1e3, min(other) * 1e3
        c = f"{min(third) * 1e3:.1f} | {a / min(third) / 1e3:.2f}" if third else " | "
        print(f"| {name} | {a:.1f} | {b:.1f} | {a / b:.2f} | {c} | {score[0]}, {score[1]} |", flush=True)
    net = build(lib, mlp(), x)
    one, out = np.array([0.3]), np.zeros(1)
    run, args = lib.lib.api_RunWork, (net, one.ctypes.data_as(POINTER), out.ctypes.data_as(POINTER))
    empty = lib.lib.api_GetInputSize
    times = []
    for f, a in ((run, args), (empty, (net,))):
        begin = time.process_time()
        for _ in range(20000):
            f(*a)
        times.append((time.process_time() - begin) / 20000)
    print(f"\nOne row of 1-32-32-1: {(times[0] - times[1]) * 1e9:.0f} ns beyond an empty call through ctypes.")


main()
