# SPDX-License-Identifier: Apache-2.0
"""The example host orvane-fit, run as a user runs it."""
import csv
import math
import os
import re
import signal
import statistics
import subprocess
import time

from host_test import HostTest, needs_browser, opened, run_tests

SAMPLES = os.environ['SAMPLES']
QUICK = ['--iterations', '20', '--population', '12', '--threads', '2']
RANK = re.compile(r'^ *(\d+)  (.+?) +(\S+)  ?((?: ?\w=\S+)*)$')


def sample(name):
    return os.path.join(SAMPLES, name)


def ranking(text):
    """[(name, error, {letter: value})] of the printed table, held against its own numbering."""
    rows = []
    for line in text.splitlines()[1:]:
        if line.startswith(('not settled:', 'without a fit:')):
            break
        found = RANK.match(line)
        if not found or int(found[1]) != len(rows) + 1:
            raise AssertionError('no line of the ranking: ' + repr(line))
        params = dict(pair.split('=') for pair in found[4].split())
        rows.append((found[2], float(found[3]), {key: float(value) for key, value in params.items()}))
    return rows


class FitTest(HostTest):
    host = os.environ['ORVANE_FIT']

    def fitted(self, *arguments):
        return ranking('\n'.join(self.lines(*QUICK, *arguments)))


class Input(FitTest):
    def test_bad_input(self):
        nile = sample('nile.csv')
        self.refused([('/no/such.csv: No such file', '/no/such.csv'), ('no file given',),
                      ('no column is called "depth"', nile, '--column', 'depth'),
                      ('unknown distribution "Normall"', nile, '--fit', 'Gumbel,Normall'),
                      ('unknown solver "simplex"', nile, '--solvers', 'iswo,simplex'),
                      ('--threads: "0"', nile, '--threads', '0'), ('unknown option --colour', nile, '--colour')])
        for text, expected, *options in (('v\n1\n2\n12x\n4\n', 'data.csv:4: "12x"'), ('v\n1\nnan\n', 'data.csv:3: "nan"'),
                                         ('a,b\n1,2\n\n2,3\n4,\n', 'data.csv:5: ""', '--column', 'b'),
                                         ('a,b\n1,2\n2\n', 'data.csv:3: column 2 is missing', '--column', 'b'),
                                         ('x\n1\n2\n', 'data.csv:1: "x"', '--header', 'no'), ('a\n1\n"2\n', 'data.csv:3: a quote'),
                                         ('v\n7.5\n', 'column "v" has one value only, 7.5'), ('v\n', 'column "v" has no value'), ('', 'is empty'),
                                          ('a;b\n3,5;1\n', '"3,5" is no finite number (column "a"); --decimal comma'),
                                          ('"1,234"\n1\n"12,34"\n', 'data.csv:3: "12,34"', '--thousands', 'comma'),
                                          ('a\n1\0\n', 'data.csv:2: holds a zero byte'), (b'\x1f\x8b\x08', 'compressed (gzip)')):
            self.refused([(expected, self.file(text), *options)])
        self.refused([('would replace the data', self.file('v\n1\n2\n4\n'), '--report', self.file('v\n1\n2\n4\n'))])

    def test_full_disk(self):
        # A file size limit fails the write half-way through the page.
        data = self.file('v\n1\n2\n4\n')
        result = subprocess.run(['bash', '-c', 'trap "" XFSZ; ulimit -f 100; exec "$0" "$@"', self.host, *QUICK, '--fit',
                                 'Normal', '--report', self.report, data], capture_output=True, text=True, timeout=60)
        self.assertEqual(result.returncode, 2)
        self.assertIn('report.html: the report cannot be written', result.stderr)
        self.assertEqual(os.listdir(self.folder), ['data.csv'])


class Ranking(FitTest):
    def test_formats_give_the_same_fit(self):
        """A sample told in eight ways: by one and the same column the Normal fit finds one centre."""
        values = [f'{v / 8}' for v in (31, 40, 44, 47, 50, 52, 55, 60, 66, 79)]
        plain = '\n'.join(values)
        ways = [
            (plain, []),
            ('\ufeffv\r\n' + '\r\n'.join(values) + '\r\n', ['--column', 'v']),
            ('x;"the ""v"""\n' + '\n'.join('1;' + v for v in values), ['--column', 'the "v"']),
            ('1\t' + '\n2\t'.join(values), ['--column', '2', '--header', 'no']),
            ('a,b\n' + '\n'.join(f'"Paris, Texas", +{v} ' for v in values), ['--column', '2', '--delimiter', 'comma']),
            ('100\n' + plain, ['--header', 'yes']),
            (('\ufeff' + plain).encode('utf-16-le'), []),
            ('v;w\n' + '\n'.join('000.00' + v.replace('.', ',') + ';1' for v in values),
             ['--decimal', 'comma', '--thousands', 'point']),
        ]
        for text, options in ways:
            (name, error, params), = self.fitted(self.file(text), '--fit', 'Normal', *options)
            self.assertEqual(name, 'Normal')
            self.assertAlmostEqual(params['a'], 6.45, delta=0.5, msg=repr(options))
            self.assertLess(error, 0.1, repr(options))

    def test_error_is_the_squared_distance(self):
        """The printed error of a Normal fit, computed again from the printed parameters."""
        with open(sample('old_faithful.csv'), newline='') as file:
            data = sorted(float(row['waiting']) for row in csv.DictReader(file))
        (_, error, params), = self.fitted('--column', 'waiting', '--fit', 'normal', sample('old_faithful.csv'))
        fitted = statistics.NormalDist(params['a'], params['b'])
        steps = {x: (i + 1) / len(data) for i, x in enumerate(data)}
        expected = sum((fitted.cdf(x) - share) ** 2 for x, share in steps.items())
        self.assertTrue(math.isclose(error, expected, rel_tol=1e-3), (error, expected))

    def test_every_distribution_gets_its_turn(self):
        """One thread passes over every other distribution of a call; the host still has all of them."""
        names = ['Normal', 'Gumbel', 'Laplace', 'Cauchy', 'Rayleigh', 'GenExp-Normal', 'HalfCos-Gumbel', 'Gamma']
        rows = self.fitted('--threads', '1', '--fit', ','.join(names + ['gumbel']), '--column', 'flow',
                           '--solvers', 'iswo,lg', sample('nile.csv'))
        self.assertEqual(sorted(row[0] for row in rows), sorted(names))
        errors = [row[1] for row in rows]
        self.assertEqual(errors, sorted(errors))
        self.assertEqual(set(dict((row[0], row[2]) for row in rows)['GenExp-Normal']), set('abc'))

    def test_plain_set(self):
        text = '\n'.join(self.lines(*QUICK, '--fit', 'plain', '--column', 'inches', sample('us_precipitation.tsv')))
        rows, rest = ranking(text), re.search('^without a fit: (.*)$', text, re.M)
        names = [row[0] for row in rows] + (rest[1].split(', ') if rest else [])
        self.assertEqual(len(set(names)), 57)
        self.assertGreaterEqual(len(rows), 50)


class Interrupt(FitTest):
    LONG = ['--fit', 'all', '--iterations', '2000', '--threads', '2', '--column', 'waiting']

    def test_ctrl_c_reports_what_there_is(self):
        for patience in (2, 10, 40):  # a busy machine may have no first fit yet
            host = subprocess.Popen([self.host, *self.LONG, '--report', self.report, sample('old_faithful.csv')],
                                    stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            time.sleep(patience)
            self.assertIsNone(host.poll(), 'the fit was too short to be interrupted')
            host.send_signal(signal.SIGINT)
            out, messages = host.communicate(timeout=60)
            if out:
                break
            self.assertIn('No distribution has a fit', messages)
        self.assertEqual(host.returncode, 130, messages)
        rows = ranking(out)
        self.assertTrue(0 < len(rows) < 342, len(rows))
        self.assertIn(f'Ended early: {len(rows)} of 342', messages)
        self.assertNotIn('\x1b', messages)
        self.assertEqual(os.listdir(self.folder), ['report.html'])
        with open(self.report, encoding='utf-8') as page:
            self.assertIn('The fit was ended early', page.read())

    def test_time_limit(self):
        start = time.monotonic()
        result = self.run_host(*self.LONG, '--threads', '342', '--iterations', '1000000', '--precision', '1e-300',
                               '--seconds', '4', sample('old_faithful.csv'))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn('Ended early', result.stderr)
        self.assertGreater(len(ranking(result.stdout)), 100)
        self.assertGreater(time.monotonic() - start, 4)


@needs_browser
class Report(FitTest):
    def opened(self, *arguments):
        rows = self.fitted(*arguments)
        return opened(self, self.report), rows

    def test_plots_and_formulas(self):
        page, rows = self.opened('--column', 'waiting', '--best', '4', '--fit',
                                      'Normal,GenPower-Normal,Lomax,Gumbel,Gamma,HalfCos-Gumbel', sample('old_faithful.csv'))
        densities, distribution, quantiles = (page.figures[key] for key in ('densities', 'distribution', 'quantiles'))
        self.assertGreaterEqual(densities['bars'], 5)
        self.assertEqual(densities['line'], 4)
        self.assertEqual((distribution['steps'], distribution['line']), (1, 4))
        self.assertEqual(quantiles['line'], 1 + 3)
        self.assertGreater(quantiles['dots'], 200)
        self.assertGreaterEqual(page.formulas, 4 * 3)
        text = ' '.join(page.texts)
        for label in ('Density', 'Distribution function', 'Parameter range', 'Fitted parameters', rows[0][0]):
            self.assertIn(label, text)
        self.assertNotRegex(text, r'[\u4e00-\u9fff\ufffd]')

    def test_density_that_is_no_slope_is_named(self):
        """The cosine generalisation writes the inner distribution function where its slope has the inner density."""
        page, _ = self.opened('--column', 'waiting', '--fit', 'Normal,GenSymCos-Normal,Gumbel',
                              sample('old_faithful.csv'))
        self.assertIn('the density formula of GenSymCos-Normal is not the slope', ' '.join(page.texts))

    def test_every_sheet_typesets(self):
        """Sheets of all 57 plain distributions and of one of each generalisation, eight at a time."""
        names = [row[0] for row in self.fitted('--fit', 'plain', '--column', 'flow', sample('nile.csv'))]
        names += [kind + '-Normal' for kind in ('GenLog', 'GenExp', 'HalfCos', 'GenPower', 'GenSymCos')]
        for start in range(0, len(names), 8):
            group = names[start:start + 8]
            page, rows = self.opened('--column', 'flow', '--best', '8', '--fit', ','.join(group), sample('nile.csv'))
            self.assertGreaterEqual(page.formulas, 3 * len(rows), group)
            self.assertNotRegex(' '.join(page.texts), r'[\u4e00-\u9fff\ufffd\\]', group)

    def test_names_are_text_not_markup(self):
        data = self.file('<b>&"v\n1\n2\n4\n', '<u>.csv')
        page, _ = self.opened('--fit', 'Normal', data)
        self.assertIn('<b>&"v', ' '.join(page.texts))
        self.assertNotIn('b', page.tags)
        self.assertNotIn('u', page.tags)


if __name__ == '__main__':
    run_tests()
