# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-network, run as a user runs it."""
import os
import re
import signal
import subprocess
import time

from host_test import HostTest, needs_browser, opened, run_tests

DIGITS = os.path.join(os.environ['SAMPLES'], 'digits.csv')


class Network(HostTest):
    host = os.environ['ORVANE_NETWORK']

    def test_learns(self):
        """Every network reads what a straight line cannot, every step rule learns, and the page tells the same."""
        text = '\n'.join(self.lines('--epochs', '12', DIGITS))
        self.assertIn('1168 to learn, 270 to choose, 359 to test', text)
        rates = {name: float(rate) for name, rate in re.findall(r'^(\w+) +([\d.]+) % of the test', text, re.M)}
        self.assertEqual(set(rates), {'dense', 'convolution', 'stack'})
        self.assertGreater(min(rates.values()), 90, rates)
        rules = [float(rate) for rate in re.findall(r'([\d.]+) % of the choice', text)]
        self.assertTrue(len(rules) == 12 and min(rules) > 85, rules)
        with open(self.report) as file:
            right = int(re.search(r'(\d+) of 359 pictures', file.read())[1])
        self.assertTrue(any(abs(100 * right / 359 - rate) < 0.06 for rate in rates.values()), (right, rates))

    @needs_browser
    def test_page(self):
        self.lines('--epochs', '2', DIGITS)
        figures = opened(self, self.report).figures
        self.assertEqual((figures['curves']['line'], figures['rules']['line']), (3, 6))
        self.assertEqual((figures['confusion']['cell'], figures['digits']['cell'] % 64), (100, 0))
        self.assertEqual(figures['models']['box'], 4 + 5 + 2)

    def test_interrupt(self):
        """Ctrl-C in a training without end: the best so far is tested and written."""
        host = subprocess.Popen([self.host, '--report', self.report, '--epochs', '100000', '--rate', '0.0001', DIGITS],
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
        self.refused([('no file given',), ('/no/such.csv: No such file', '/no/such.csv'), ('is a directory', self.folder),
                      ('has 1 pictures, at least 20', self.file(row + ',4\n', 'one.csv')),
                      ('ten.csv:2: "10" is no digit (column 65)', self.file(f'{row},4\n{row},10\n', 'ten.csv')),
                      ('head.csv:2: "17" is no integer from 0 to 16 (column 1)',
                       self.file('a' + ',b' * 64 + '\n17' + row[1:] + ',1\n', 'head.csv')),
                      ('short.csv:1: has 64 values', self.file(row + '\n', 'short.csv')),
                      ('--epochs: "0" is no integer from 1', '--epochs', '0', DIGITS),
                      ('--rate: "fast"', '--rate', 'fast', DIGITS), ('--test: "nan"', '--test', 'nan', DIGITS),
                      ('unknown option --colour', '--colour', 'red'), ('--batch needs a value', '--batch'),
                      ('/no/such/folder/p.html', DIGITS, '--report', '/no/such/folder/p.html')])


if __name__ == '__main__':
    run_tests()
