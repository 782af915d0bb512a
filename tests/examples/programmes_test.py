# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-programmes, run as a user runs it."""
import csv
import itertools
import math
import os
import re

from host_test import HostTest, needs_browser, opened, run_tests

CITIES = os.path.join(os.environ['SAMPLES'], 'european_capitals.csv')


class Programmes(HostTest):
    host = os.environ['ORVANE_PROGRAMMES']

    def answers(self, *arguments):
        return [[float(number) for number in re.findall(r'-?\d+(?:\.\d+)?', line)] for line in self.lines(*arguments)]

    def test_plan(self):
        """The whole pieces against all of them; the real plan is no worse and near."""
        profit, stock, most = (140, 48, 75, 190, 165), (620, 380, 210, 60), (40, 200, 80, 25, 30)
        needs = ((9, 2.5, 7, 14, 16), (5.5, 3, 2, 6.5, 5), (3, 1.5, 1, 4, 2), (0.9, 0.3, 0.6, 1.4, 1.1))
        best, others = 0, (0, 2, 3, 4)
        for pieces in itertools.product(*(range(most[k] + 1) for k in others)):
            left = [s - sum(n[k] * p for k, p in zip(others, pieces)) for s, n in zip(stock, needs)]
            if min(left) >= 0:
                chairs = min(most[1], min(math.floor(l / n[1] + 1e-9) for l, n in zip(left, needs)))
                best = max(best, profit[1] * chairs + sum(profit[k] * p for k, p in zip(others, pieces)))
        real, whole = self.answers(CITIES)[0]
        self.assertAlmostEqual(whole, best)
        self.assertTrue(whole <= real < 1.01 * whole, real)

    def test_portfolio(self):
        expected, deviation, lots, in_lots = self.answers('--return', '6', '--lots', '12', CITIES)[1]
        self.assertTrue(expected >= 6 - 1e-3 and lots == 12 and in_lots >= deviation - 1e-3)
        self.assertGreater(deviation, self.answers('--return', '5', CITIES)[1][1])
        # All in the one asset of the greatest return.
        self.assertEqual(self.answers('--return', '8', '--lots', '3', CITIES)[1], [8, 23, 3, 23])

    def test_tour(self):
        """Four cities: the shortest of the three tours. All capitals: shorter than by nearest neighbours."""
        with open(CITIES) as file:
            rows = list(csv.DictReader(file))
        four = [row for row in rows if row['city'] in {'Athens', 'Berlin', 'Lisbon', 'Oslo'}]
        few = self.file('city,latitude,longitude\n' +
                        ''.join(f"{row['city']},{row['latitude']},{row['longitude']}\n" for row in four))

        def distance(a, b):
            p, q, l = (math.radians(float(x)) for x in
                       (a['latitude'], b['latitude'], float(a['longitude']) - float(b['longitude'])))
            return 6371 * math.acos(math.sin(p) * math.sin(q) + math.cos(p) * math.cos(q) * math.cos(l))

        least = min(sum(distance(four[i], four[j]) for i, j in zip((0, *order), (*order, 0)))
                    for order in itertools.permutations((1, 2, 3)))
        self.assertAlmostEqual(self.answers(few)[2][0], least, delta=1)
        length, count, nearest = self.answers('--threads', '3', CITIES)[2]
        self.assertTrue(count == len(rows) and length < 0.9 * nearest)

    def test_bad_input(self):
        broken = self.file('city,latitude,longitude\nA,1,2\nB,91,2\n')
        self.refused([('no file given',), ('/no/such.csv: No such file', '/no/such.csv'),
                      ('data.csv:3: "91" is no angle within 90 degrees', broken),
                      ('--lots: "2.5" is no integer', '--lots', '2.5', CITIES)])

    @needs_browser
    def test_page(self):
        self.lines(CITIES)
        page = opened(self, self.report)
        self.assertIn('frontier', page.figures)
        self.assertEqual(page.figures['map']['line'], 1)
        self.assertGreaterEqual(page.formulas, 2)


if __name__ == '__main__':
    run_tests()
