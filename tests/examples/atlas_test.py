# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-atlas, run as a user runs it."""
import os
import re

from host_test import HostTest, needs_browser, opened, run_tests


class Atlas(HostTest):
    host = os.environ['ORVANE_ATLAS']

    def test_marks(self):
        plots, curves, marks, missed = map(int, re.findall(r'\d+', self.lines()[0]))
        self.assertTrue(plots >= 20 and curves >= 60 and marks >= 40 and missed == 0, (plots, curves, marks, missed))

    def test_bad_input(self):
        self.refused([('unknown option --x', '--x'), ('/no/such/folder/a.html', '--report', '/no/such/folder/a.html')])

    @needs_browser
    def test_page(self):
        self.lines()
        page = opened(self, self.report)
        self.assertGreaterEqual(len(page.figures), 20)
        for name, marks in page.figures.items():
            self.assertTrue(marks.get('line', 0) >= 2 and marks.get('dots', 0) >= 1, name)


if __name__ == '__main__':
    run_tests()
