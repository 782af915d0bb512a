# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-search, run as a user runs it."""
import os
import random
import re
import signal
import subprocess
import time

from host_test import HostTest, needs_browser, opened, run_tests

HOST = os.environ['ORVANE_SEARCH']
DATA = os.environ['SAMPLES']


class Search(HostTest):
    host = HOST
    options = ('--data', DATA)

    def file(self, text):
        return super().file(text, f'own{len(os.listdir(self.folder))}.csv')

    def found(self, *arguments):
        result = self.run_host(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return {line.split()[0]: line.split('=', 1)[1].strip() for line in result.stdout.splitlines()}

    def value(self, formula, **inputs):
        """The formula as a user reads it."""
        return eval(formula.replace('^', '**'), {'exp': __import__('math').exp, 'ln': __import__('math').log, **inputs})

    def test_kepler(self):
        for name, unit in (('planets', 1), ('jupiter_moons', 1.769138 / 421.8**1.5)):
            law = self.found('--study', name)[name]
            self.assertAlmostEqual(float(re.search(r'a\^([\d.]+)', law)[1]), 1.5, delta=0.002)
            self.assertAlmostEqual(self.value(law, a=1000) / (unit * 1000**1.5), 1, delta=0.02)

    def test_own_files(self):
        random.seed(1)
        rows = [(random.uniform(0.5, 4), random.uniform(0.5, 4)) for _ in range(60)]
        law = lambda x, y: (x * y + 2) / (1 + 0.5 * y**2)
        own = self.file('x,y,z\n' + ''.join(f'{x},{y},{law(x, y)}\n' for x, y in rows))
        self.assertAlmostEqual(self.value(self.found(own)['own'], x=1.5, y=2.5), law(1.5, 2.5), places=3)
        own = self.file('x,y\n' + ''.join(f'{x},{3 * x**0.7 + 1}\n' for x, _ in rows))
        self.assertAlmostEqual(self.value(self.found('--kind', 'powers', own)['own'], x=2), 3 * 2**0.7 + 1, places=2)
        own = self.file('x,y\n' + ''.join(f'{x / 9},{1 + 5 / ((x / 9 - 4) ** 2 + 1)}\n' for x in range(70)))
        self.assertAlmostEqual(self.value(self.found('--kind', 'peaks', own)['own'], x=3), 3.5, places=2)

    def test_bad_input(self):
        for arguments, expected in ((['/no/such.csv'], '/no/such.csv: No such file'),
                                    ([self.file('x,y\n1,2\n3,much\n')], '.csv:3: "much" is no finite number'),
                                    ([self.file('x,y\n1,2\n3\n')], '.csv:3: has 1 cells, the header 2'),
                                    ([self.file('x,y\n1,2\n')], 'has 1 rows, a law needs four'),
                                    (['--kind', 'powers', self.file('x,y\n' + '-1,2\n' * 4)], '-1 in column "x"'),
                                    (['--study', 'moon'], 'no study is called "moon"; there are planets'),
                                    (['--kind', 'peaks', '--parameters', '6', self.file('x,y\n' + '1,2\n' * 9)],
                                     '6 parameters are no number of peaks'),
                                    (['--degree', '7'], '--degree: "7"'),
                                    (['--degree', '2.5'], '--degree: "2.5" is no integer'),
                                    (['--kind', 'any'], '--kind: "any"'),
                                    (['--colour', 'red'], 'unknown option --colour'),
                                    (['--seconds'], '--seconds needs a value'),
                                    (['--report', '/no/such/folder/p.html'], '/no/such/folder/p.html')):
            self.refused([(expected, *arguments)])

    def test_interrupt(self):
        """Hours of work: Ctrl-C ends it, and the page has what was found."""
        random.seed(2)
        own = self.file('a,b,c,d,e\n' + ''.join(
            ','.join(str(random.random()) for _ in range(5)) + '\n' for _ in range(300)))
        host = subprocess.Popen([HOST, '--report', self.report, '--degree', '4', '--parameters', '9', own],
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        time.sleep(1)
        host.send_signal(signal.SIGINT)
        out, errors = host.communicate(timeout=20)
        self.assertEqual(host.returncode, 130, errors)
        self.assertIn('own ', out)
        with open(self.report) as page:
            self.assertIn('The search was ended early', page.read())

    @needs_browser
    def test_page(self):
        self.found('--study', 'adsorption')
        page = opened(self, self.report)
        self.assertEqual(page.figures['adsorption-data']['line'], 1)
        self.assertEqual(page.figures['adsorption-data']['dots'], 14)
        self.assertIn('adsorption-front', page.figures)
        self.assertGreaterEqual(page.formulas, 7)


if __name__ == '__main__':
    run_tests()
