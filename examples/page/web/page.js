// SPDX-License-Identifier: Apache-2.0
// Typesets every element that carries LaTeX, and lets a row of the ranking point at its curve.
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
