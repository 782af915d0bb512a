# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-atlas, run as a user runs it."""
import os
import re
import subprocess
import tempfile
import unittest

from page_in_browser import needs_browser, opened, run_tests

HOST = os.environ['ORVANE_ATLAS']


class Atlas(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.report = os.path.join(folder.name, 'atlas.html')

    def run_host(self, *arguments):
        return subprocess.run([HOST, *arguments], capture_output=True, text=True, timeout=60)

    def test_marks(self):
        result = self.run_host('--report', self.report)
        self.assertEqual(result.returncode, 0, result.stderr)
        plots, curves, marks, missed = map(int, re.findall(r'\d+', result.stdout.splitlines()[0]))
        self.assertGreaterEqual(plots, 20)
        self.assertGreaterEqual(curves, 60)
        self.assertGreaterEqual(marks, 40)
        self.assertEqual(missed, 0)

    def test_bad_input(self):
        for arguments, expected in ((['--report'], '--report needs a value'), (['--x'], 'unknown option --x'),
                                    (['--report', '/no/such/folder/a.html'], '/no/such/folder/a.html')):
            result = self.run_host(*arguments)
            self.assertEqual(result.returncode, 2)
            self.assertEqual(len(result.stderr.splitlines()), 1)
            self.assertIn(expected, result.stderr)

    @needs_browser
    def test_page(self):
        self.assertEqual(self.run_host('--report', self.report).returncode, 0)
        page = opened(self, self.report)
        self.assertGreaterEqual(len(page.figures), 20)
        for name, marks in page.figures.items():
            self.assertGreaterEqual(marks.get('line', 0), 2, name)
            self.assertGreaterEqual(marks.get('dots', 0), 1, name)


if __name__ == '__main__':
    run_tests()
