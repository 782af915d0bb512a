# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-signal, run as a user runs it."""
import csv
import math
import os
import re

from host_test import HostTest, needs_browser, opened, run_tests

RECORD = os.path.join(os.environ['SAMPLES'], 'mauna_loa_co2.csv')


class Signal(HostTest):
    host = os.environ['ORVANE_SIGNAL']

    def write(self, values, head='x'):
        return self.file(head + '\n' + ''.join(f'{value}\n' for value in values))

    def test_parts_of_a_known_signal(self):
        """A line and two tones: peaks, parts that add up, a low-pass that takes the tones."""
        n, rate = 400, 10
        record = self.write(7 + 0.5 * k / rate + 3 * math.sin(2 * math.pi * k / rate) + math.cos(2 * math.pi * 3 * k / rate)
                            for k in range(n))
        out = record + '.out'
        result = self.run_host('--column', 'x', '--rate', str(rate), '--output', out, record)
        self.assertEqual(result.returncode, 0, result.stderr)
        peaks = [tuple(map(float, p)) for p in re.findall(r'peak: +([\d.]+) .*amplitude ([\d.]+)', result.stdout)]
        for (frequency, amplitude), (f, a) in zip(peaks, ((1, 3), (3, 1))):
            self.assertAlmostEqual(frequency, f, delta=0.01)
            self.assertAlmostEqual(amplitude, a, delta=0.02)
        with open(out) as file:
            rows = [{key: float(value) for key, value in row.items()} for row in csv.DictReader(file)]
        self.assertEqual(len(rows), n)
        for k, row in enumerate(rows):
            self.assertAlmostEqual(row['value'], row['trend'] + row['season'] + row['residual'], places=6)
            if 60 < k < n - 60:
                self.assertAlmostEqual(row['trend'], 7 + 0.05 * k, delta=0.03)
                self.assertAlmostEqual(row['envelope'], 3, delta=0.05)
                self.assertLess(abs(row['fir']), 0.08)  # of 4, and the cubic that the tones have in themselves

    def test_complaints(self):
        good = [math.sin(k) for k in range(60)]
        for values, head, arguments, message in (
                (good, 'x', ['--column', 'y'], 'data.csv:1: no column is called "y"'),
                ([*good, 'abc'], 'x', ['--column', 'x'], 'data.csv:62: "abc" is no finite number (column "x")'),
                ([*good, '1,2'], 'x', ['--column', 'x'], 'data.csv:62: 2 cells, the header has 1'),
                (good[:20], 'x', ['--column', 'x'], 'has 20 values, at least 48 are needed'),
                ([5] * 60, 'x', ['--column', 'x'], 'has one value throughout'),
                (good, 'x', ['--column', 'x', '--edge', '6'], '--edge: 6 is not below half the rate, 6'),
                (good, 'x', ['--rate', 'many'], '--rate: "many" is no number from 2 to 1000'),
                (good, 'x', ['--window', 'round'], '--window: "round" is none of hanning, ')):
            self.refused([(message, *arguments, self.write(values, head))])

    @needs_browser
    def test_page(self):
        self.assertEqual(self.run_host(RECORD).returncode, 0)
        page = opened(self, self.report)
        lines = {name: marks.get('line', 0) for name, marks in page.figures.items()}
        self.assertEqual(lines, {'series': 2, 'growth': 1, 'amplitudes': 2, 'band': 2, 'magnitude': 5, 'delay': 5,
                                 'filtered': 3, 'smoothed': 6, 'histogram': 4, 'quantiles': 1})
        self.assertEqual(page.figures['histogram']['bars'], 25)
        self.assertGreater(page.figures['quantiles']['dots'], 400)
        text = ' '.join(page.texts)
        for part in ('Shapiro-Wilk', 'Butterworth', 'Whittaker', 'Exp(-(x-a)^2 / (2 * b^2))'):
            self.assertIn(part, text)


if __name__ == '__main__':
    run_tests()
