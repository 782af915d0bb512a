# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-programmes, run as a user runs it."""
import csv
import itertools
import math
import os
import re
import subprocess
import tempfile
import unittest

from page_in_browser import needs_browser, opened, run_tests

HOST = os.environ['ORVANE_PROGRAMMES']
CITIES = os.path.join(os.environ['SAMPLES'], 'european_capitals.csv')


class Programmes(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.report = os.path.join(folder.name, 'programmes.html')

    def run_host(self, *arguments):
        return subprocess.run([HOST, '--report', self.report, *arguments], capture_output=True, text=True, timeout=60)

    def answers(self, *arguments):
        result = self.run_host(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return [[float(number) for number in re.findall(r'-?\d+(?:\.\d+)?', line)] for line in result.stdout.splitlines()]

    def test_plan(self):
        """The whole pieces against all of them; the real plan is no worse and near."""
        profit, needs, stock, most = (140, 48, 75, 190, 165), \
            ((9, 2.5, 7, 14, 16), (5.5, 3, 2, 6.5, 5), (3, 1.5, 1, 4, 2), (0.9, 0.3, 0.6, 1.4, 1.1)), \
            (620, 380, 210, 60), (40, 200, 80, 25, 30)
        best = 0
        for table, shelf, desk, bed in itertools.product(*(range(most[k] + 1) for k in (0, 2, 3, 4))):
            if 0.9 * table + 0.6 * shelf + 1.4 * desk + 1.1 * bed > 60:
                continue
            left = [s - n[0] * table - n[2] * shelf - n[3] * desk - n[4] * bed for s, n in zip(stock, needs)]
            if min(left) < 0:
                continue
            chairs = min(most[1], min(math.floor(l / n[1] + 1e-9) for l, n in zip(left, needs)))
            best = max(best, 140 * table + 48 * chairs + 75 * shelf + 190 * desk + 165 * bed)
        real, whole = self.answers(CITIES)[0]
        self.assertAlmostEqual(whole, best)
        self.assertGreaterEqual(real, whole)
        self.assertLess(real, 1.01 * whole)

    def test_portfolio(self):
        expected, deviation, lots, in_lots = self.answers('--return', '6', '--lots', '12', CITIES)[1]
        self.assertGreaterEqual(expected, 6 - 1e-3)
        self.assertEqual(lots, 12)
        self.assertGreaterEqual(in_lots, deviation - 1e-3)
        self.assertGreater(deviation, self.answers('--return', '5', CITIES)[1][1])
        # All in the one asset of the greatest return.
        self.assertEqual(self.answers('--return', '8', '--lots', '3', CITIES)[1], [8, 23, 3, 23])

    def test_tour(self):
        """Four cities: the shortest of the three tours. All capitals: shorter than by nearest neighbours."""
        with open(CITIES) as file:
            rows = list(csv.DictReader(file))
        few = os.path.join(self.folder, 'few.csv')
        names = {'Athens', 'Berlin', 'Lisbon', 'Oslo'}
        four = [row for row in rows if row['city'] in names]
        with open(few, 'w') as file:
            file.write('city,latitude,longitude\n')
            file.writelines(f"{row['city']},{row['latitude']},{row['longitude']}\n" for row in four)

        def distance(a, b):
            p, q, l = (math.radians(float(x)) for x in
                       (a['latitude'], b['latitude'], float(a['longitude']) - float(b['longitude'])))
            return 6371 * math.acos(math.sin(p) * math.sin(q) + math.cos(p) * math.cos(q) * math.cos(l))

        least = min(sum(distance(four[i], four[j]) for i, j in zip((0, *order), (*order, 0)))
                    for order in itertools.permutations((1, 2, 3)))
        self.assertAlmostEqual(self.answers(few)[2][0], least, delta=1)
        length, count, nearest = self.answers('--threads', '3', CITIES)[2]
        self.assertEqual(count, len(rows))
        self.assertLess(length, 0.9 * nearest)

    def test_bad_input(self):
        broken = os.path.join(self.folder, 'broken.csv')
        with open(broken, 'w') as file:
            file.write('city,latitude,longitude\nA,1,2\nB,91,2\n')
        for arguments, expected in (([], 'no file given'),
                                    (['/no/such.csv'], '/no/such.csv: cannot be read'),
                                    ([broken], 'broken.csv:3: "91" is no angle within 90 degrees'),
                                    (['--lots', '0', CITIES], '--lots: "0"'),
                                    (['--lots', '2.5', CITIES], '--lots: "2.5" is no whole number'),
                                    (['--return', 'much', CITIES], '--return: "much"'),
                                    (['--colour', 'red'], 'unknown option --colour'),
                                    (['--threads'], '--threads needs a value'),
                                    ([CITIES, '--report', '/no/such/folder/p.html'], '/no/such/folder/p.html')):
            result = self.run_host(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)
            self.assertIn(expected, result.stderr)
            self.assertFalse(os.path.exists(self.report))

    @needs_browser
    def test_page(self):
        self.answers(CITIES)
        page = opened(self, self.report)
        self.assertIn('frontier', page.figures)
        self.assertIn('map', page.figures)
        self.assertEqual(page.figures['map']['line'], 1)
        self.assertGreaterEqual(page.formulas, 2)


if __name__ == '__main__':
    run_tests()
