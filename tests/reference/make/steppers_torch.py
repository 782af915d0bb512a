#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/network/steppers_torch.csv: the mean squared error of a 1-16-16-1 tanh network before and
after 200 full-batch steps of PyTorch's optimisers (float64), `name,code,lr,beta1,beta2,extra,before,after`.

Weights and data are formulas that the test repeats: entry k of the flat variables is 0.6 sin(1.7 k + 0.3), row i of 64 is
x = 2i/63 - 1 with target sin(3x) + 0.3x. The loss is half the mean squared error.

Needs PyTorch, which scripts/setup does not install for its size:
  python3 -m pip install torch --index-url https://download.pytorch.org/whl/cpu
"""
import math
import pathlib
import sys

try:
    import torch
except ImportError as missing:
    sys.exit(f"steppers_torch.py: {missing}\n{__doc__[__doc__.index('Needs'):].strip()}")

torch.set_default_dtype(torch.float64)
STEPS, ROWS = 200, 64
SHAPES = [(16, 1), (16,), (16, 16), (16,), (1, 16), (1,)]
TINY = 1e-16


def variables():
    k, out = 0, []
    for shape in SHAPES:
        n = math.prod(shape)
        out.append(torch.tensor([0.6 * math.sin(1.7 * i + 0.3) for i in range(k, k + n)]).reshape(shape).requires_grad_())
        k += n
    return out


def error(v, x, t):
    h = torch.tanh(x @ v[0].T + v[1])
    h = torch.tanh(h @ v[2].T + v[3])
    return ((h @ v[4].T + v[5] - t) ** 2).mean()


o = torch.optim
CASES = [
    ("SGD", 8, 0.1, 0, 0, 0, lambda v: o.SGD(v, 0.1)),
    ("Adam", 3, 0.01, 0.9, 0.99, 0, lambda v: o.Adam(v, 0.01, (0.9, 0.99), TINY)),
    # A schedule of the momentum that stands at beta1 from the first step.
    ("NAdam", 14, 0.01, 0.9, 0.99, 0, lambda v: o.NAdam(v, 0.01, (0.9, 0.99), TINY, momentum_decay=1e9)),
    ("RAdam", 2, 0.01, 0.9, 0.99, 0, lambda v: o.RAdam(v, 0.01, (0.9, 0.99), TINY)),
    ("Adamax", 4, 0.01, 0.9, 0.99, 0, lambda v: o.Adamax(v, 0.01, (0.9, 0.99), TINY)),
    ("Adadelta", 6, 1.0, 0.9, 0.9, 0, lambda v: o.Adadelta(v, 1.0, 0.9, TINY)),
    ("AMSGrad", 5, 0.01, 0.9, 0.99, 0, lambda v: o.Adam(v, 0.01, (0.9, 0.99), TINY, amsgrad=True)),
    ("AdamW", 15, 0.01, 0.9, 0.99, 0.05, lambda v: o.AdamW(v, 0.01, (0.9, 0.99), TINY, weight_decay=0.05)),
]


def main():
    x = torch.tensor([[2 * i / (ROWS - 1) - 1] for i in range(ROWS)])
    t = torch.sin(3 * x) + 0.3 * x
    lines = [f"# Written by tests/reference/make/steppers_torch.py with torch {torch.__version__.split('+')[0]}."]
    for *numbers, make in CASES:
        v = variables()
        optimiser = make(v)
        before = error(v, x, t).item()
        for _ in range(STEPS):
            optimiser.zero_grad()
            (0.5 * error(v, x, t)).backward()
            optimiser.step()
        lines.append(",".join(map(str, numbers)) + f",{before:.12g},{error(v, x, t).item():.12g}")
    out = pathlib.Path(__file__).resolve().parents[1] / "network" / "steppers_torch.csv"
    out.write_text("\n".join(lines) + "\n")


main()
