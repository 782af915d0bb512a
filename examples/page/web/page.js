// SPDX-License-Identifier: Apache-2.0
// Typesets every element that carries LaTeX, lets a row of the ranking point at its curve, and sorts a table by a click
// on one of its headings, a second click the other way round.
for (const element of document.querySelectorAll('[data-tex]')) {
  katex.render(element.dataset.tex, element, { displayMode: true, throwOnError: false, strict: 'ignore' });
}
for (const row of document.querySelectorAll('[data-series]')) {
  const series = row.dataset.series;
  const point = (on) => {
    document.body.classList.toggle('pointing', on);
    for (const mark of document.querySelectorAll('.' + series)) mark.classList.toggle('pointed', on);
  };
  row.addEventListener('mouseenter', () => point(true));
  row.addEventListener('mouseleave', () => point(false));
}
const numberIn = (text) => Number.parseFloat(text.replace(/\u2212/g, '-').replace(/,(?=\d{3}\b)/g, ''));
const keyOf = (row, column) => row.cells[column]?.textContent.trim() ?? '';
function compareKeys(a, b) {
  const [x, y] = [numberIn(a), numberIn(b)];
  if (Number.isNaN(x) || Number.isNaN(y)) return a.localeCompare(b);
  return x - y;
}
for (const heading of document.querySelectorAll('thead th')) {
  const sort = () => {
    const column = heading.cellIndex;
    const turn = heading.ariaSort === 'ascending' ? -1 : 1;
    for (const other of heading.parentElement.cells) other.removeAttribute('aria-sort');
    heading.setAttribute('aria-sort', turn === 1 ? 'ascending' : 'descending');
    const body = heading.closest('table').tBodies[0];
    const rows = [...body.rows].sort((a, b) => turn * compareKeys(keyOf(a, column), keyOf(b, column)));
    body.append(...rows);
  };
  heading.tabIndex = 0;
  heading.title = 'sort';
  heading.addEventListener('click', sort);
  heading.addEventListener('keydown', (event) => {
    if (event.key === 'Enter') sort();
  });
}
