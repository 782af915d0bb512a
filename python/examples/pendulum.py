# SPDX-License-Identifier: Apache-2.0
"""Derives the equation of a pendulum from its energies, linearises it and follows the motion."""
import numpy as np

from orvane import special, sym

GRAVITY, LENGTH, ANGLE = 9.81, 1.0, 1.2


def main() -> None:
    q, w, g, length = sym.symbols("q w g l")  # angle and its rate
    lagrangian = length**2 * w**2 / 2 - g * length * (1 - sym.cos(q))
    print("energies     ", lagrangian)
    # d/dt (dL/dw) = dL/dq, and dL/dw is linear in w: the acceleration is the quotient.
    acceleration = lagrangian.diff(q) / lagrangian.diff(w, 2)
    print("acceleration ", acceleration)
    print("LaTeX        ", acceleration.latex())
    numbers = acceleration.subs(g=GRAVITY, l=LENGTH)
    small = numbers.taylor(q, order=1)
    stiffness = -small.coefficients()[1]
    print(f"small swings  {small}, period {2 * np.pi / np.sqrt(stiffness):.6f} s")

    exact = 4 * special.ellipk(np.sin(ANGLE / 2) ** 2) * np.sqrt(LENGTH / GRAVITY)
    times = np.array([0.25, 0.5, 1.0]) * exact
    motion = sym.solve_ode([w, numbers], "t", [q, w], 0.0, [ANGLE, 0.0], times)
    print(f"from {ANGLE} rad   period {exact:.6f} s by an elliptic integral")
    for time, (angle, rate) in zip(times, motion):
        print(f"  t = {time:.4f} s  angle {angle:+.7f}  rate {rate:+.7f}")
    assert abs(motion[2, 0] - ANGLE) < 1e-6 and abs(motion[0, 0]) < 1e-6


main()
