# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-network, run as a user runs it."""
import os
import re
import signal
import subprocess
import tempfile
import time
import unittest

from host_test import needs_browser, opened, run_tests

HOST = os.environ['ORVANE_NETWORK']
DIGITS = os.path.join(os.environ['SAMPLES'], 'digits.csv')


class Network(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.report = os.path.join(folder.name, 'network.html')

    def run_host(self, *arguments):
        return subprocess.run([HOST, '--report', self.report, *arguments], capture_output=True, text=True, timeout=300)

    def file_of(self, *lines):
        path = os.path.join(self.folder, 'digits.csv')
        with open(path, 'w') as file:
            file.write('\n'.join(lines) + '\n')
        return path

    def test_learns(self):
        """The stack reads what a straight line cannot; the page shows every part."""
        result = self.run_host('--epochs', '12', DIGITS)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn('1168 to learn, 270 to choose, 359 to test', result.stdout)
        rates = {name: float(rate) for name, rate in re.findall(r'^(\w+) +([\d.]+) % of the test', result.stdout, re.M)}
        self.assertEqual(set(rates), {'dense', 'convolution', 'stack'})
        self.assertGreater(rates['dense'], 91)
        self.assertGreater(rates['convolution'], 91)
        self.assertGreater(rates['stack'], 92)
        rules = [float(rate) for rate in re.findall(r'([\d.]+) % of the choice', result.stdout)]
        self.assertEqual(len(rules), 12)
        self.assertGreater(min(rules), 85)
        with open(self.report) as file:
            text = file.read()
        shown = re.search(r'(\d+) of 359 pictures', text)
        self.assertAlmostEqual(100 * int(shown[1]) / 359, max(rates.values()), delta=3)

    @needs_browser
    def test_page(self):
        self.assertEqual(self.run_host('--epochs', '2', DIGITS).returncode, 0)
        page = opened(self, self.report)
        self.assertEqual(page.figures['curves']['line'], 3)
        self.assertEqual(page.figures['rules']['line'], 6)
        self.assertEqual(page.figures['confusion']['cell'], 100)
        self.assertEqual(page.figures['digits']['cell'] % 64, 0)
        self.assertEqual(page.figures['models']['box'], 5 + 4 + 2)

    def test_interrupt(self):
        """Ctrl-C in a training without end: the best so far is tested and written."""
        host = subprocess.Popen([HOST, '--report', self.report, '--epochs', '100000', '--rate', '0.0001', DIGITS],
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        time.sleep(2)
        host.send_signal(signal.SIGINT)
        out, err = host.communicate(timeout=60)
        self.assertEqual(host.returncode, 130, err)
        self.assertRegex(out, r'dense +[\d.]+ % of the test')
        with open(self.report) as file:
            self.assertIn('ended early', file.read())

    def test_bad_input(self):
        row = ','.join(['3'] * 64)
        for lines, expected in (([row + ',4'], 'has 1 pictures, at least 20'),
                                ([row + ',4', row + ',10'], 'digits.csv:2: "10" is no digit (column 65)'),
                                (['a' + ',b' * 64, '17' + row[1:] + ',1'],
                                 'digits.csv:2: "17" is no integer from 0 to 16 (column 1)'),
                                ([row], 'digits.csv:1: has 64 values')):
            self.refused([self.file_of(*lines)], expected)
        for arguments, expected in (([], 'no file given'),
                                    (['/no/such.csv'], '/no/such.csv: No such file'),
                                    ([self.folder], 'is a directory'),
                                    (['--epochs', '0', DIGITS], '--epochs: "0" is no whole number from 1'),
                                    (['--rate', 'fast', DIGITS], '--rate: "fast"'),
                                    (['--test', 'nan', DIGITS], '--test: "nan"'),
                                    (['--colour', 'red'], 'unknown option --colour'),
                                    (['--batch'], '--batch needs a value'),
                                    ([DIGITS, '--report', '/no/such/folder/p.html'], '/no/such/folder/p.html')):
            self.refused(arguments, expected)

    def refused(self, arguments, expected):
        result = self.run_host(*arguments)
        self.assertEqual(result.returncode, 2, arguments)
        self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)
        self.assertIn(expected, result.stderr)
        self.assertFalse(os.path.exists(self.report))


if __name__ == '__main__':
    run_tests()
