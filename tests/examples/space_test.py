# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-space, run as a user runs it."""
import csv
import math
import os
import re

from host_test import HostTest, needs_browser, opened, run_tests

HOST = os.environ['ORVANE_SPACE']
DATA = os.environ['SAMPLES']
CITIES = os.path.join(DATA, 'european_capitals.csv')


def passes(latitude, longitude, height, inclination):
    """Period in minutes, and how often a day the satellite comes above 10 degrees: by formulas of its own."""
    a, e2, degree = 6378137.0, 0.081819190842621494 ** 2, math.pi / 180
    r, i, p, l = a + 1000 * height, inclination * degree, latitude * degree, longitude * degree
    n = math.sqrt(3.986004418e14 / r ** 3)
    N = a / math.sqrt(1 - e2 * math.sin(p) ** 2)
    up = (math.cos(p) * math.cos(l), math.cos(p) * math.sin(l), math.sin(p))
    station = (N * up[0], N * up[1], (1 - e2) * N * up[2])
    count, before = 0, False
    for k in range(8641):
        t = 10.0 * k
        u, w = n * t, 7.2921158553e-5 * t
        x, y, z = math.cos(u), math.sin(u) * math.cos(i), math.sin(u) * math.sin(i)
        place = (r * (x * math.cos(w) + y * math.sin(w)), r * (y * math.cos(w) - x * math.sin(w)), r * z)
        way = [q - s for q, s in zip(place, station)]
        above = sum(d * c for d, c in zip(way, up)) >= math.sin(10 * degree) * math.hypot(*way)
        count += above and not before
        before = above
    return 2 * math.pi / n / 60, count


class Space(HostTest):
    host = HOST
    reads_late = True

    def setUp(self):
        super().setUp()
        self.store = os.path.join(self.folder, 'space.stock')
        shipped = (('nodes', 'capitals_nodes'), ('elements', 'capitals_elements'), ('river', 'nile'))
        self.options = ['--store', self.store, *(argument for option, name in shipped
                                                 for argument in (f'--{option}', os.path.join(DATA, f'{name}.csv')))]

    def answers(self, *arguments):
        result = self.run_host(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return [[float(number) for number in re.findall(r'-?\d+(?:\.\d+)?(?:e-?\d+)?', line)]
                for line in result.stdout.splitlines()]

    def test_satellite(self):
        with open(CITIES) as file:
            places = {row['city']: (float(row['latitude']), float(row['longitude'])) for row in csv.DictReader(file)}
        for city, height, inclination in (('Berlin', 420, 51.64), ('Oslo', 800, 98)):
            period, count = passes(*places[city], height, inclination)
            found = self.answers('--station', city, '--height', str(height), '--inclination', str(inclination), CITIES)[0]
            self.assertAlmostEqual(found[0], period, delta=0.01)
            self.assertEqual(found[2], count)
            # Geodetic latitudes are up to a fifth of a degree above those at the earth's centre.
            self.assertAlmostEqual(found[1], min(inclination, 180 - inclination) + 0.1, delta=0.12)

    def test_rest(self):
        _, datums, views, mesh, series = self.answers('--noise', '0', CITIES)
        self.assertLess(datums[2], 1000)  # nanometres
        self.assertLess(max(views[:2]), 1e-5)
        self.assertEqual(mesh[:2], [37, 65])
        names = 5 + 10  # bytes of "river" and "drawn walk"
        self.assertEqual(series[0], 17 + 4 + 600 * 4 + 4 + 2 * 17 + names + 600 * 34 + 2)
        self.assertEqual(os.path.getsize(self.store), series[0])

    def test_bad_input(self):
        broken = self.file('id,x,y\n1,2,3\n1,4,much\n', 'broken.csv')
        twice = self.file('id,x,y\n1,2,3\n1,4,5\n', 'twice.csv')
        for arguments, expected in (([], 'no file given'),
                                    ([broken], 'broken.csv:3: "much" is no angle within 180 degrees'),
                                    ([CITIES, '--nodes', broken], 'broken.csv:3: "much" is no coordinate'),
                                    ([CITIES, '--nodes', twice], 'twice.csv: has an id twice'),
                                    ([CITIES, '--elements', twice], 'twice.csv:2: has no column third node'),
                                    ([CITIES, '--river', '/no/such'], '/no/such: No such file'),
                                    ([CITIES, '--station', 'Atlantis'], '--station: "Atlantis"'),
                                    ([CITIES, '--height', '100'], '--height: "100" is no number from 160 to 40000'),
                                    ([CITIES, '--colour', 'red'], 'unknown option --colour'),
                                    ([CITIES, '--noise'], '--noise needs a value'),
                                    ([CITIES, '--store', '/no/such/folder/s'], '/no/such/folder/s'),
                                    ([CITIES, '--report', '/no/such/folder/p.html'], '/no/such/folder/p.html')):
            self.refused([(expected, *arguments)])

    @needs_browser
    def test_page(self):
        self.answers(CITIES)
        page = opened(self, self.report)
        self.assertGreaterEqual(set(page.figures), {'track', 'pass', 'datums', 'views', 'mesh', 'candles', 'river'})
        self.assertEqual(page.figures['mesh']['dots'], 17)
        self.assertEqual(page.formulas, 2)


if __name__ == '__main__':
    run_tests()
