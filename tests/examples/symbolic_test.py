# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-symbolic, run as a user runs it."""
import math
import os

from host_test import HostTest, needs_browser, opened, run_tests


class Pendulum(HostTest):
    host = os.environ['ORVANE_SYMBOLIC']

    def test_motion(self):
        """After one period, by the arithmetic-geometric mean, the pendulum is where it began; energy is kept."""
        angle, length = 100, 1.2
        a, b = 1.0, math.cos(math.radians(angle) / 2)
        while abs(a - b) > 1e-15:
            a, b = (a + b) / 2, math.sqrt(a * b)
        period = 2 * math.pi / a * math.sqrt(length / 9.81)
        rows = [[float(cell) for cell in line.split()] for line in
                self.lines('--angle', str(angle), '--length', str(length), '--time', repr(period))[1:-1]]
        self.assertEqual(len(rows), 9)
        for row, expected in ((8, angle), (4, -angle), (2, 0)):
            self.assertAlmostEqual(rows[row][1], expected, places=4)
        self.assertLess(max(abs(row[4]) for row in rows), 1e-8)
        self.assertAlmostEqual(rows[3][3], angle * math.cos(math.sqrt(9.81 / length) * rows[3][0]), delta=0.05)

    def test_bad_input(self):
        self.refused([('--angle takes a number from 1 to 179, not: 200', '--angle', '200'),
                      ('a value is missing behind: --length', '--length'), ('unknown option: --colour', '--colour', 'red')])

    @needs_browser
    def test_page(self):
        self.lines()
        page = opened(self, self.report)
        self.assertEqual({key: figure['line'] for key, figure in page.figures.items()}, {'motion': 2, 'phases': 2})
        self.assertGreaterEqual(page.formulas, 10)


if __name__ == '__main__':
    run_tests()
