# SPDX-License-Identifier: Apache-2.0
"""What the tests of the example hosts share: a run of the host, its page as a browser shows it."""
import csv
import html.parser
import math
import os
import re
import subprocess
import tempfile
import unittest
import urllib.parse

CHROMIUM = os.environ.get('CHROMIUM', '')
needs_browser = unittest.skipUnless(CHROMIUM and os.path.exists(CHROMIUM), 'needs chromium')


class Page(html.parser.HTMLParser):
    """Counts what the page shows: marks inside each figure, typeset formulas, text outside scripts."""

    def __init__(self, text):
        super().__init__()
        self.figures, self.figure, self.formulas, self.texts, self.hidden = {}, None, 0, [], 0
        self.linked, self.errors, self.tags, self.data = [], 0, set(), []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.tags.add(tag)
        for link in (values[key] for key in ('src', 'href') if key in values):
            prefix, is_data, text = link.partition('data:text/csv;charset=utf-8,')
            if is_data and not prefix:
                self.data.append(list(csv.reader(urllib.parse.unquote(text).splitlines())))
            else:
                self.linked.append(link)
        classes = (values.get('class') or '').split()
        if tag == 'figure':
            self.figure = self.figures.setdefault(values['id'], {})
        if self.figure is not None and tag in ('path', 'rect', 'circle') and classes:
            key = classes[0]
            self.figure[key] = self.figure.get(key, 0) + 1
            if tag == 'path' and not re.match(r'^M-?[\d.]+ -?[\d.]+[LHV]', values['d']):
                raise AssertionError('a path without a line: ' + values['d'][:40])
        self.formulas += 'katex-html' in classes
        self.errors += 'katex-error' in classes
        if tag in ('script', 'style', 'annotation'):
            self.hidden += 1

    def handle_endtag(self, tag):
        if tag == 'figure':
            self.figure = None
        if tag in ('script', 'style', 'annotation'):
            self.hidden -= 1

    def handle_data(self, data):
        if not self.hidden:
            self.texts.append(data)


def opened(test, path):
    """The page, which must need nothing beside it and hold no formula that the typesetter refuses."""
    with tempfile.TemporaryDirectory() as folder:
        shown = subprocess.run([CHROMIUM, '--headless', '--no-sandbox', '--disable-gpu', '--user-data-dir=' + folder,
                                '--virtual-time-budget=5000', '--dump-dom', 'file://' + os.path.abspath(path)],
                               capture_output=True, text=True, timeout=120)
    test.assertEqual(shown.returncode, 0, shown.stderr)
    page = Page(shown.stdout)
    test.assertEqual(page.linked, [], 'the page needs something beside it')
    test.assertEqual(re.findall(r'url\((?!data:|#)[^)]{0,80}', shown.stdout.split('<script>')[0]), [])
    test.assertEqual(page.errors, 0, 'a formula that the typesetter refuses')
    test.assertIn('This page again:', ''.join(page.texts))
    for table in page.data:
        test.assertEqual(table[0], ['series', 'x', 'y'])
        test.assertGreater(sum(all(map(math.isfinite, map(float, row[1:]))) for row in table[1:]), 0)
    return page


class HostTest(unittest.TestCase):
    """A class of tests of the program `host`, which writes its page to self.report."""
    host = ''
    options = ()  # of every run
    reads_late = False  # some answers come before the last file is read

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.report = os.path.join(self.folder, 'report.html')

    def file(self, text, name='data.csv'):
        path = os.path.join(self.folder, name)
        with open(path, 'wb') as out:
            out.write(text if isinstance(text, bytes) else text.encode())
        return path

    def run_host(self, *arguments):
        return subprocess.run([self.host, '--report', self.report, *self.options, *arguments], capture_output=True,
                              text=True, timeout=300)

    def lines(self, *arguments):
        result = self.run_host(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout.splitlines()

    def refused(self, cases):
        """Each list of arguments ends in one line of words and no file."""
        for expected, *arguments in cases:
            before = sorted(os.listdir(self.folder))
            result = self.run_host(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertTrue(self.reads_late or result.stdout == '', result.stdout)
            self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)
            self.assertIn(expected, result.stderr)
            self.assertEqual(sorted(os.listdir(self.folder)), before, 'a file was left behind')


def run_tests():
    """Runs the test program; 77 when every test was skipped."""
    program = unittest.main(module='__main__', verbosity=2, exit=False)
    result = program.result
    every_skipped = result.testsRun > 0 and len(result.skipped) == result.testsRun
    raise SystemExit(77 if every_skipped else 0 if result.wasSuccessful() else 1)
