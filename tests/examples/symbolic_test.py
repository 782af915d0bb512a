# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-symbolic, run as a user runs it."""
import math
import os
import subprocess
import tempfile
import unittest

from page_in_browser import needs_browser, opened, run_tests

HOST = os.environ['ORVANE_SYMBOLIC']


class Pendulum(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.report = os.path.join(folder.name, 'pendulum.html')

    def run_host(self, *arguments):
        return subprocess.run([HOST, '--report', self.report, *arguments], capture_output=True, text=True, timeout=60)

    def table(self, *arguments):
        result = self.run_host(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return [[float(cell) for cell in line.split()] for line in result.stdout.splitlines()[1:-1]]

    def test_motion(self):
        """After one period, by the arithmetic-geometric mean, the pendulum is where it began; energy is kept."""
        angle, length = 100, 1.2
        a, b = 1.0, math.cos(math.radians(angle) / 2)
        while abs(a - b) > 1e-15:
            a, b = (a + b) / 2, math.sqrt(a * b)
        period = 2 * math.pi / a * math.sqrt(length / 9.81)
        rows = self.table('--angle', str(angle), '--length', str(length), '--time', repr(period))
        self.assertEqual(len(rows), 9)
        self.assertAlmostEqual(rows[-1][1], angle, places=4)
        self.assertAlmostEqual(rows[4][1], -angle, places=4)
        self.assertAlmostEqual(rows[2][1], 0, places=4)
        self.assertLess(max(abs(row[4]) for row in rows), 1e-8)
        self.assertAlmostEqual(rows[3][3], angle * math.cos(math.sqrt(9.81 / length) * rows[3][0]), delta=0.05)

    def test_bad_input(self):
        for arguments, expected in ((['--angle', '200'], '--angle takes a number from 1 to 179, not: 200'),
                                    (['--time', '1x'], '--time takes a number from 0.1 to 60, not: 1x'),
                                    (['--length'], 'a value is missing behind: --length'),
                                    (['--colour', 'red'], 'unknown option: --colour'),
                                    (['--report', '/no/such/folder/p.html'], '/no/such/folder/p.html')):
            result = self.run_host(*arguments)
            self.assertEqual(result.returncode, 2)
            self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)
            self.assertIn(expected, result.stderr)
            self.assertFalse(os.path.exists(self.report))

    @needs_browser
    def test_page(self):
        self.table()
        page = opened(self, self.report)
        self.assertEqual({key: figure['line'] for key, figure in page.figures.items()}, {'motion': 2, 'phases': 2})
        self.assertGreaterEqual(page.formulas, 10)


if __name__ == '__main__':
    run_tests()
