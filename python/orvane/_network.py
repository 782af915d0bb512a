# SPDX-License-Identifier: Apache-2.0
"""A dense network of the library: built from layers, trained by Adam, run over rows."""
from __future__ import annotations

from typing import Any, Sequence

import numpy as np

from . import capi
from ._check import Floats
from ._core import ffi, lib
from ._handle import ConvergenceError, Handle
from ._run import beside


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array.reshape(-1))


class Graph:
    """A dense network: layers of weights, offsets and activations."""

    def __init__(self, sizes: Sequence[int], activation: int) -> None:
        self.parts: list[Handle] = []
        self.net = Handle(lib.api_CreateNetWork())
        first = last = self._part(lib.api_CreateNetLayer(sizes[0], capi.ORVANE_LAYER_COPY))
        for place, size in enumerate(sizes[1:]):
            for kind, shape in ((capi.ORVANE_LAYER_W_DOT_X, (size, sizes[place])), (capi.ORVANE_LAYER_X_ADD_A, (1, size))):
                layer, variable = self._part(lib.api_CreateNetLayer(size, kind)), self._part(lib.api_CreateNetVar(*shape))
                lib.api_SetVarToNetLayer(layer, variable)
                lib.api_SetInput1ToNetLayer(layer, last)
                last = layer
            if place < len(sizes) - 2:
                layer = self._part(lib.api_CreateNetLayer(size, activation))
                lib.api_SetInput1ToNetLayer(layer, last)
                last = layer
        status = lib.api_NetWorkInit(self.net.pointer, first, last)
        if status != capi.ORVANE_NETWORK_READY:
            raise ConvergenceError(f"the network was refused with the code {status}")
        self.sizes = (sizes[0], sizes[-1])

    def _part(self, pointer: Any) -> Any:
        self.parts.append(Handle(pointer))
        return self.parts[-1].pointer

    @property
    def variables(self) -> Floats:
        out = np.empty(lib.api_NetWorkGetVarSize(self.net.pointer))
        lib.api_NetWorkGetVar(self.net.pointer, _double(out))
        return out

    @variables.setter
    def variables(self, values: Floats) -> None:
        lib.api_NetWorkSetVar(self.net.pointer, _double(values))

    def train(self, x: Floats, y: Floats, steps: int, batch: int, rate: float, weight: float, seed: int,
              bar: bool) -> str:
        pointer = self.net.pointer
        with Handle(lib.api_CreateOptimizer()) as optimiser, Handle(lib.api_CreateSolver(capi.ORVANE_STEPPER_ADAM)) as stepper:
            opt = optimiser.pointer
            lib.api_SetSolverVar(stepper.pointer, 0.9, 0.999, 1e-8, rate, rate / 20, steps)
            lib.api_SetSolver(opt, stepper.pointer)
            lib.api_SetNewWork(opt, pointer)
            lib.api_optSetSeed(opt, seed)
            lib.api_SetPreprocessType(opt, 255)
            lib.api_SetTrainData(opt, _double(x), _double(y), len(x), x.shape[1], y.shape[1])
            lib.api_SetIterCount(opt, steps, max(1, steps // 64), min(batch, len(x)))
            if weight:
                lib.api_setRegForAllVar(opt, weight, 2)
            status = lib.api_SolveInit(opt)
            if status:
                raise ConvergenceError(f"the training was refused with the code {status}")
            lib.api_NetRandValue(pointer, 1.0)
            info = ffi.new("double[7]")

            def state() -> tuple[float, str]:
                lib.api_GetOptRes(opt, info)
                return info[6] / steps, f"{info[5]:.4g}"

            _, outcome = beside(lambda: lib.api_Solve(opt), lambda: lib.api_Stop(opt), progress=bar, title="network",
                                state=state)
            lib.api_SetNewWork(opt, ffi.NULL)
        return outcome

    def run(self, x: Floats) -> Floats:
        out = np.empty((len(x), self.sizes[1]))
        source, target, run, pointer = int(x.ctypes.data), int(out.ctypes.data), lib.api_RunWork, self.net.pointer
        for i in range(len(x)):
            run(pointer, ffi.cast("double*", source + i * x.strides[0]), ffi.cast("double*", target + i * out.strides[0]))
        return out
