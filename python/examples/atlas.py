# SPDX-License-Identifier: Apache-2.0
"""Draws special functions, and checks identities between them over many points."""
import numpy as np

from orvane import special


def main() -> None:
    x = np.linspace(0.05, 15.0, 2000)
    identities = {
        "Wronskian of J and Y": special.jv(1, x) * special.yv(0, x) - special.jv(0, x) * special.yv(1, x) - 2 / (np.pi * x),
        "reflection of gamma": special.gamma(x / 16) * special.gamma(1 - x / 16) * np.sin(np.pi * x / 16) / np.pi - 1,
        "Legendre's relation": _legendre(x / 16) - np.pi / 2,
        "sn^2 + cn^2": sum(part**2 for part in special.ellipj(x, 0.7)[:2]) - 1,
        "P + Q": special.gammainc(2.5, x) + special.gammaincc(2.5, x) - 1,
    }
    for name, rest in identities.items():
        print(f"{name:22s} largest error {np.abs(rest).max():.1e}")
        assert np.abs(rest).max() < 1e-10
    try:
        from matplotlib import pyplot
    except ImportError:
        print("matplotlib is missing: no picture")
        return
    figure, axes = pyplot.subplots(2, 2, figsize=(10, 7))
    for order in range(4):
        axes[0, 0].plot(x, special.jv(order, x), label=f"J{order}")
    t = np.linspace(-12, 3, 1000)
    axes[0, 1].plot(t, special.airy_ai(t), label="Ai")
    axes[0, 1].plot(t, np.clip(special.airy_bi(t), -1, 2), label="Bi")
    for m in (0.1, 0.7, 0.99):
        axes[1, 0].plot(x, special.ellipj(x, m)[0], label=f"sn, m = {m}")
    axes[1, 1].plot(x, special.fresnel(x / 3)[0], label="S")
    axes[1, 1].plot(x, special.fresnel(x / 3)[1], label="C")
    for ax in axes.flat:
        ax.legend()
    figure.savefig("atlas.svg")
    print("drawn into atlas.svg")


def _legendre(m: np.ndarray) -> np.ndarray:
    k, e, k1, e1 = special.ellipk(m), special.ellipe(m), special.ellipk(1 - m), special.ellipe(1 - m)
    return e * k1 + e1 * k - k * k1


main()
