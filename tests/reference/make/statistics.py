#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/statistics: families.csv by mpmath, samples.csv and tests.csv by SciPy and R.

families.csv: code, a, b, c, x; the integral of the density from the lower end of the support to x, in ulps.
samples.csv: name and values. tests.csv: what, sample, second sample; value and the largest error.
The density of a family is written here as the library's text has it, so that text and function are held together.
"""
import math
import pathlib
import subprocess

import mpmath as mp
import numpy as np
import scipy
from scipy import stats

OUT = pathlib.Path(__file__).resolve().parents[1] / "statistics"
mp.mp.dps = 22
Exp, Log, Sqrt, Gamma, Beta, pi, Abs = mp.exp, mp.log, mp.sqrt, mp.gamma, mp.beta, mp.pi, abs
LOGISTIC = "(1 + c * z)**(-1 - 1/c) / (b * (1 + (1 + c * z)**(-1/c))**2)"

# code: parameters, lower end, density, points. The density of Gumbel is below 1e-280 left of -12.
FAMILIES = {
    1: ([2.5, 4], "0", "x**(a-1) * (1-x)**(b-1) / Beta(a, b)", [0.03, 0.4, 0.9]),
    3: ([2, 3], "0", "a * b * x**(a-1) / (1 + x**a)**(b+1)", [0.05, 0.6, 4]),
    5: ([1, 2], "-mp.inf", "1 / (pi * b * (1 + ((x - a) / b)**2))", [-30, 0.5, 9]),
    7: ([3.25], "0", "x**((a/2)-1) * Exp(-x/2) / (2**(a/2) * Gamma(a/2))", [0.1, 2, 12]),
    11: ([1.75], "0", "a * Exp(-a * x)", [0.001, 0.5, 3]),
    13: ([1.25, 0.75], "0", "(Exp(-(x-a)**2 / (2 * b**2)) + Exp(-(x+a)**2 / (2 * b**2))) / (b * Sqrt(2 * pi))", [0.1, 1, 3]),
    15: ([2.25, 1.5, 0.5], "c", "a / b * ((x - c) / b)**(-1 - a) * Exp(-((x-c)/b)**(-a))", [1.2, 2, 9]),
    17: ([2.5, 1.5], "0", "b**a * x**(a-1) * Exp(-b * x)/ Gamma(a)", [0.1, 1.5, 6]),
    19: ([0.75, 1.5], "0", "a * b * Exp(a + b * x - a * Exp(b * x))", [0.01, 0.5, 1.5]),
    23: ([1, 2], "-12", "Exp(-z - Exp(-z)) / b", [-3, 1, 12]),
    25: ([1.5], "0", "Sqrt(2) / (a * Sqrt(pi)) * Exp(-x**2 / (2 * a**2))", [0.01, 1, 4]),
    27: ([3.25], "0", "2**(-a/2) * x**(-a/2-1) * Exp(-1/(2 * x)) / Gamma(a/2)", [0.08, 0.4, 5]),
    29: ([2.5, 1.5], "0", "b**a * x**(-a-1) * Exp(-b/x) / Gamma(a)", [0.2, 0.8, 9]),
    31: ([2, 3], "0", "Sqrt(b/(2 * pi * x**3)) * Exp(-b * (x - a)**2 / (2 * a**2 * x))", [0.3, 1.5, 9]),
    33: ([0.5, 2], "1/b", "1 / ((b - a) * x**2)", [0.6, 1, 1.9]),
    35: ([1, 2], "-mp.inf", "Exp(- Abs(x - a) / b) / (2 * b)", [-5, 0.5, 7]),
    37: ([1, 2], "a", "Sqrt(b / (2 * pi)) * Exp(-b / (2 * (x - a))) / (x - a)**1.5", [1.2, 4, 900]),
    39: ([0.5, 1.25], "0", "b / (x * pi * ((Log(x) - a)**2 + b**2))", [0.01, 2, 90]),
    41: ([1, 2], "-mp.inf", "Exp(-(x-a)/b) / (b * (1 + Exp(-(x-a)/b))**2)", [-9, 0, 8]),
    43: ([2, 3], "0", "(b / a) * (x / a)**(b-1) / (1 + (x / a)**b)**2", [0.2, 2, 12]),
    45: ([0.25, 0.75], "0", "Exp(-(Log(x) - a)**2 / (2 * b**2)) / (x * b * Sqrt(2 * pi))", [0.2, 1, 9]),
    47: ([2.25, 1.5], "0", "a / b * (1 + x / b)**(-a-1)", [0.01, 1, 20]),
    49: ([1.25], "0", "Sqrt(2 / pi) * x**2 * Exp(-x**2 / (2 * a**2)) / a**3", [0.2, 2, 5]),
    51: ([1, 2], "-mp.inf", "Exp(-(x-a)**2 / (2 * b**2)) / (Sqrt(2 * pi) * b)", [-7, 0.5, 5]),
    53: ([1.5, 2.5], "a", "b * a**b / x**(b+1)", [1.6, 2, 30]),
    55: ([1.25, 1.5], "0", "(2 - a) * b * (1 + (1 - a) * (-b*x))**(1/(1-a))", [0.01, 1, 30]),
    59: ([1.5], "0", "x * Exp(-x**2 / (2 * a**2)) / a**2", [0.1, 2, 5]),
    61: ([1, 2, 0.5], "a - b/c", LOGISTIC, [-2.5, 1, 30]),
    65: ([1, 3], "a", "1 / (b - a)", [1.25, 2, 2.75]),
    67: ([2, 1.75], "0", "b / a * (x / a)**(b-1) * Exp(-(x/a)**b)", [0.1, 2, 5]),
}


def family_rows():
    for code, (params, low, density, points) in FAMILIES.items():
        names = dict(zip("abc", map(mp.mpf, params)))
        code_object = compile(density, "density", "eval")
        f = lambda x: eval(code_object, globals(), {**names, "x": x, "z": (x - names["a"]) / names.get("b", 1)})
        end = eval(low, globals(), names)
        for x in points:
            if code == 39:  # in the logarithm of x, where the density has no pole
                value = mp.quad(lambda s: f(mp.exp(s)) * mp.exp(s), [-mp.inf, names["a"], mp.log(x)])
            elif code == 35:  # with a corner at a
                value = mp.quad(f, [end, min(x, names["a"]), x])
            else:
                value = mp.quad(f, [end, x] if mp.isinf(end) else mp.linspace(end, x, 4))
            abc = (params + [0, 0])[:3]
            yield f"cdf,{code}," + ",".join(float(v).hex() for v in [*abc, x]) + f",{mp.nstr(value, 20)},200"
    for a, b in ((9.5, 770), (770, 9.5), (300, 200), (5000, 90000)):  # B(a, b) is below the doubles
        middle, spread = a / (a + b), math.sqrt(a * b / (a + b) ** 3)
        scale = mp.loggamma(a + b) - mp.loggamma(a) - mp.loggamma(b)
        for away in (-2.5, 0.5, 1.2):
            x = middle + away * spread
            pieces = [mp.mpf(0), *(middle + k * spread for k in range(-12, 5) if middle + k * spread > 0 and k < away), x]
            value = mp.quad(lambda t: mp.exp(scale + (a - 1) * mp.log(t) + (b - 1) * mp.log1p(-t)), pieces)
            # The condition number x f(x)/F(x), and exponents of the powers.
            yield f"cdf,1,{float(a).hex()},{float(b).hex()},0,{x.hex()},{mp.nstr(value, 20)},{1000 + 4 * max(a, b) ** 0.5:.0f}"
    for x in (0, 3.9, 12):
        yield f"cdf,69,{3.7.hex()},0,0,{float(x).hex()},{stats.poisson(3.7).cdf(x):.17g},64"


def samples():
    rng = np.random.default_rng(20261122)
    yield "constant", np.full(7, 2.5)
    yield "ties", np.round(rng.normal(size=40), 1)
    yield "outlier", np.append(rng.normal(size=30), 25)
    yield "exponential", rng.exponential(size=80)
    for n in (0, 1, 2, 3, 4, 5, 6, 11, 12, 50, 300, 1000):
        yield f"normal{n}", rng.normal(1, 2, size=n)


def anderson_darling(z):
    n = len(z)
    if n < 3:
        return 0
    i = np.arange(1, n + 1)
    s = np.sum((2 * i - 1) / n * (np.log(z) + np.log1p(-z[::-1])))
    a = (1 + 0.75 / n + 2.25 / n**2) * (-n - s)
    if a < 0.2:
        return 1 - math.exp(-13.436 + 101.14 * a - 223.73 * a * a)
    if a < 0.34:
        return 1 - math.exp(-8.318 + 42.796 * a - 59.938 * a * a)
    if a < 0.6:
        return math.exp(0.9177 - 4.279 * a - 1.38 * a * a)
    return math.exp(1.2937 - 5.709 * a + 0.0186 * a * a) if a < 13 else 0


def test_rows(all_samples):
    for name, x in all_samples.items():
        n = len(x)
        row = lambda what, value, error=1e-10, other="": f"{what},{name},{other},{value:.17g},{error:g}"
        if n > 1:
            yield row("std", np.std(x, ddof=1))
            yield row("median", np.sort(x)[n // 2], 0)
        if n == 0 or name == "constant":
            continue
        yield row("mean", np.mean(x))
        if n < 3:
            continue
        yield row("skewness", stats.skew(x))
        yield row("kurtosis", stats.kurtosis(x, fisher=False))
        jb = stats.jarque_bera(x).statistic * (n // 6) / (n / 6)
        yield row("jarqueBera", math.exp(-jb / 2))
        w, p = stats.shapiro(x)
        yield row("shapiroW", w, 1e-8)  # the peer's scores are those of single precision polynomials
        yield row("shapiroP", p, 1e-6)
        own = stats.norm(np.mean(x), np.std(x, ddof=1))
        yield row("ks", stats.kstest(x, own.cdf, method="exact").pvalue, 1e-6)
        yield row("ad", anderson_darling(np.sort(own.cdf(x))))
    for one, two in (("ties", "normal50"), ("normal300", "exponential"), ("normal50", "normal1000")):
        x, y = all_samples[one], all_samples[two]
        d = stats.ks_2samp(x, y).statistic
        p = stats.kstwo.sf(d, int(len(x) * len(y) / (len(x) + len(y))))
        yield f"ks2,{one},{two},{p:.17g},1e-6"


R_SCRIPT = """
suppressMessages(library(nortest))
for (line in readLines(file("stdin"))) {
  cells <- strsplit(line, ",")[[1]]; x <- as.numeric(cells[-1])
  say <- function(what, value, error) cat(sprintf("%s,%s,,%.17g,%g\n", what, cells[1], value, error))
  s <- shapiro.test(x)
  say("shapiroW", s$statistic, 1e-13)
  say("shapiroP", s$p.value, 1e-12)
  if (length(x) > 7) say("adNormal", ad.test(x)$p.value, 1e-12)
  if (!anyDuplicated(x)) say("ks", ks.test(x, "pnorm", mean(x), sd(x), exact = TRUE)$p.value, 1e-11)
}"""


def witness_rows(all_samples):
    """R with nortest, whose tests are written in doubles by the same papers."""
    lines = [f"{name}," + ",".join(f"{v:.17g}" for v in x)
             for name, x in all_samples.items() if len(x) > 2 and name != "constant"]
    run = subprocess.run(["Rscript", "-e", R_SCRIPT], input="\n".join(lines) + "\n", capture_output=True, text=True)
    if run.returncode != 0:
        raise SystemExit(run.stderr)
    return run.stdout.splitlines()


def write(name, rows, head):
    (OUT / name).write_text(f"# make/statistics.py, mpmath {mp.__version__}, SciPy {scipy.__version__}\n# {head}\n" + "\n".join(rows) + "\n")


every = dict(samples())
write("families.csv", family_rows(), "cdf,code,a,b,c,x,value,ulps")
write("samples.csv", (",".join([name, *(float(v).hex() for v in x)]) for name, x in every.items()), "name,values")
write("tests.csv", [*test_rows(every), *witness_rows(every)], "what,sample,other,value,error")
