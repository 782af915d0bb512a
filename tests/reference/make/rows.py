# SPDX-License-Identifier: Apache-2.0
"""What the generators of reference tables share: where tables are, how a row is written, tolerances by condition numbers.

A row of a table of numbers is case,arguments...,expected,ulps: arguments as hexadecimal floats, the value with 25 digits.
"""
import pathlib
import sys

import mpmath as mp

REFERENCE = pathlib.Path(__file__).resolve().parents[1]
INF, NAN = mp.inf, mp.nan
EPS = mp.mpf(2) ** -52
LARGEST, SMALLEST = mp.mpf(sys.float_info.max), mp.mpf(2) ** -1022
SCRIPT = pathlib.Path(sys.argv[0]).name
near = None  # the value that the row in hand has so far


def save(table, lines, made=None):
    """Writes tests/reference/<table>.csv below a line that names the script; `made` is what it used."""
    made = made or f"mpmath {mp.__version__}, {mp.mp.dps} digits"
    (REFERENCE / f"{table}.csv").write_text("\n".join([f"# {SCRIPT}, {made}", *lines]) + "\n")


def line(case, arguments, value, ulps):
    """One row; a value or a tolerance that is a text stands as it is."""
    value = value if isinstance(value, str) else mp.nstr(mp.mpf(value), 25)
    return ",".join([case, *(float(a).hex() for a in arguments), value, str(ulps)])


def ulp(value):
    return mp.mpf(2) ** (mp.frexp(max(abs(value), SMALLEST))[1] - 53)


def leading_integer(case, args, place):
    """The first argument of cases named whole... is an integer order, which is met."""
    return place == 0 and case.startswith("whole")


def condition(f, args, value, case="", exactly=leading_integer):
    """Sum over the arguments of |x f'(x)/f(x)|, by a difference far below double precision, but for those that the
    function takes `exactly`."""
    total, h = mp.mpf(0), mp.mpf(10) ** -22
    for place, x in enumerate(args):
        if x == 0 or x in (INF, -INF) or exactly(case, args, place):
            continue
        moved = list(args)
        moved[place] = x * (1 + h)
        change = f(*moved) - value
        if not mp.isnan(change):  # past the edge of the domain
            total += abs(change / h / value)
    return total


def cells(table):
    """The rows of a table as it stands. Generators take their cases from there: a new one is a line with the arguments,
    whatever stands for the rest."""
    for text in (REFERENCE / f"{table}.csv").read_text().splitlines():
        if not text.startswith("#"):
            yield text.split(",")


def cases(table):
    """Name, arguments and present value of the rows that `line` writes."""
    for case, *numbers, value, _ in cells(table):
        yield case, [float.fromhex(n) for n in numbers], mp.mpf(value)


def write(name, f, base=2, slack=None, conditioned=True, exact=None, exactly=leading_integer, most=INF):
    """Values and tolerances of the table special/<name>.csv of f, anew for the cases in it, unless the command line names
    other tables. The tolerance is `base` ulps (or base(*args)) times 1 + condition, plus slack(args, value), an absolute
    error that a fixed stop or number of levels leaves. Where exact(args) holds, the arguments count as the doubles they
    are. A row of a tolerance above `most` is an error."""
    if len(sys.argv) > 1 and name not in sys.argv[1:]:
        return
    global near
    lines = []
    for case, raw, known in cases(f"special/{name}"):
        args = [mp.mpf(a) for a in raw]
        near = known
        value = f(*args)
        if isinstance(value, mp.mpc):
            assert abs(value.imag) <= abs(value.real) * mp.mpf(10) ** -25, (name, raw, value)
            value = value.real
        if mp.isnan(value) or abs(value) > LARGEST:
            lines.append(line(case, raw, "nan" if mp.isnan(value) else "inf" if value > 0 else "-inf", 0))
            continue
        ulps = mp.mpf(base(*args) if callable(base) else base)
        if conditioned and value != 0 and not (exact and exact(args)):
            ulps *= 1 + condition(f, args, value, case, exactly)
        if slack and value != 0:  # a value of 0 is met
            ulps += abs(slack(args, value)) / ulp(value)
        assert ulps < most, (name, raw, value, ulps)
        lines.append(line(case, raw, mp.nstr(value, 25, min_fixed=0, max_fixed=0), mp.nstr(mp.ceil(ulps * 10) / 10, 6)))
    save(f"special/{name}", lines)
    print(name, len(lines), flush=True)


def inverse(f):
    """An inverse of f, found near the value that the table holds: a new row starts with a guess."""
    def g(y, *rest):
        return mp.findroot(lambda t: f(t, *rest) - y, (near, near * (1 + mp.mpf(10) ** -9)), maxsteps=40, verify=False)
    return g
