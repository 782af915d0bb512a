# SPDX-License-Identifier: Apache-2.0
"""Fits distributions to the waiting times between eruptions, and says what one would expect of the next one."""
import pathlib

import numpy as np

from orvane import distributions, stats

DATA = pathlib.Path(__file__).resolve().parents[2] / "examples" / "data" / "old_faithful.csv"


def main() -> None:
    waiting = np.loadtxt(DATA, delimiter=",", skiprows=1)[:, 1]
    print(f"{waiting.size} waiting times of {waiting.min():.0f} to {waiting.max():.0f} minutes")
    moments = stats.describe(waiting)
    print(f"mean {moments.mean:.1f}, deviation {moments.std:.1f}; normal? Shapiro-Wilk p = {stats.shapiro(waiting).pvalue:.2g}")
    with distributions.fit(waiting, discrete=False, time=20) as found:
        print(f"{len(found.ranking)} laws in {found.seconds:.1f} s ({found.message})")
        for line in found.ranking[:5]:
            print(f"{line.error:10.5f}  {line.name:24s} {np.round(line.parameters, 4).tolist()}")
        best = found.best
        low, high = best.interval(0.8)
        print(f"with {best.name}: 80 % of the waiting times lie between {low:.0f} and {high:.0f} minutes")
        try:
            found.plot().figure.savefig("fit.svg")
            print("drawn into fit.svg")
        except ImportError:
            print("matplotlib is missing: no picture")


main()
