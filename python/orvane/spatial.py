# SPDX-License-Identifier: Apache-2.0
"""Rotations in space.

>>> from orvane.spatial import Rotation
>>> quarter = Rotation.from_rotvec([0.0, 0.0, np.pi / 2])
>>> quarter.apply([1.0, 0.0, 0.0]).round(12) + 0.0
array([0., 1., 0.])
"""
from __future__ import annotations

from typing import Any

import numpy as np
from numpy.typing import ArrayLike

from ._check import Floats, floats, matrix, vector
from ._core import ffi, lib
from ._handle import Handle


def _double(array: Floats) -> Any:
    return ffi.from_buffer("double[]", array.reshape(-1))


class Rotation(Handle):
    """A rotation, held as its rotation vector in radians.

    Examples
    --------
    >>> from orvane.spatial import Rotation
    >>> Rotation.from_quat([1.0, 0.0, 0.0, 0.0]).as_rotvec()
    array([0., 0., 0.])
    """

    __slots__ = ()

    def __init__(self) -> None:
        super().__init__(lib.slam_SO3_create())

    @classmethod
    def _by(cls, call: Any, values: Floats) -> "Rotation":
        made = cls()
        call(made.pointer, _double(values))
        return made

    @classmethod
    def from_rotvec(cls, phi: ArrayLike) -> "Rotation":
        """Of a rotation vector: axis times angle."""
        return cls._by(lib.slam_SO3_setByAxis, vector(phi, "phi", length=3, finite=True))

    @classmethod
    def from_quat(cls, q: ArrayLike) -> "Rotation":
        """Of a quaternion w, x, y, z of any length but 0."""
        values = vector(q, "q", length=4, finite=True)
        if not values.any():
            raise ValueError("q: a quaternion of length 0 is no rotation")
        return cls._by(lib.slam_SO3_setByQuaternion, values)

    @classmethod
    def from_matrix(cls, r: ArrayLike) -> "Rotation":
        """Of an orthogonal matrix of determinant 1."""
        table = matrix(r, "r", columns=3)
        if table.shape != (3, 3) or not np.allclose(table @ table.T, np.eye(3), atol=1e-6) or np.linalg.det(table) < 0:
            raise ValueError(f"r: must be orthogonal, 3 by 3, of determinant 1, not {table.tolist()}")
        return cls._by(lib.slam_SO3_setByR, table)

    def _read(self, call: Any, size: int) -> Floats:
        out = np.empty(size)
        call(self.pointer, _double(out))
        return out

    def as_rotvec(self) -> Floats:
        """The rotation vector."""
        return self._read(lib.slam_SO3_toAxis, 3)

    def as_quat(self) -> Floats:
        """The unit quaternion w, x, y, z."""
        return self._read(lib.slam_SO3_toQuaternion, 4)

    def as_matrix(self) -> Floats:
        """The matrix."""
        return self._read(lib.slam_SO3_toR, 9).reshape(3, 3)

    def apply(self, points: ArrayLike) -> Floats:
        """Turns points, rows of three."""
        array = floats(points, "points")
        if array.ndim == 0 or array.shape[-1] != 3:
            raise ValueError(f"points: the last dimension must be 3, not the shape {array.shape}")
        turned: Floats = array @ self.as_matrix().T
        return turned

    def __mul__(self, other: "Rotation") -> "Rotation":
        return Rotation.from_matrix(self.as_matrix() @ other.as_matrix())

    def inv(self) -> "Rotation":
        """The rotation back."""
        return Rotation.from_rotvec(-self.as_rotvec())

    def magnitude(self) -> float:
        """The angle in radians."""
        return float(np.linalg.norm(self.as_rotvec()))

    def __repr__(self) -> str:
        return "<closed Rotation>" if self.closed else f"Rotation.from_rotvec({self.as_rotvec().tolist()})"

    def __reduce__(self) -> tuple[Any, ...]:
        return Rotation.from_rotvec, (self.as_rotvec(),)
