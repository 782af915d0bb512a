// SPDX-License-Identifier: Apache-2.0
// Writes the pages' style sheets and scripts into one C++ source, so that the program needs no file beside it.
// usage: node bundle.mjs FOLDER_OF_KATEX OUT.cpp
import { readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const [katex, out] = process.argv.slice(2);

// The formulas are in these faces alone; the page stays small without the others.
const faces = /KaTeX_(Main-Regular|Main-Bold|Main-Italic|Math-Italic|AMS-Regular|Size[1-4]-Regular)\.woff2/;

function inlinedFonts(css) {
  return css.replace(/@font-face\{[^}]*\}/g, (rule) => {
    const file = rule.match(faces);
    if (!file) return '';
    const data = readFileSync(join(katex, 'dist/fonts', file[0])).toString('base64');
    return rule.replace(/src:[^}]*/, `src:url(data:font/woff2;base64,${data}) format("woff2")`);
  });
}

// Pieces of an HTML page: a script must not hold its own end tag.
function scriptText(text) {
  if (/<\/script/i.test(text)) throw new Error('a script holds its own end tag');
  return text;
}

const licence = readFileSync(join(katex, 'LICENSE'), 'utf8').trim();
const version = JSON.parse(readFileSync(join(katex, 'package.json'), 'utf8')).version;
const notice = `/*!\nKaTeX ${version}\n${licence}\n*/\n`;

const styles = readFileSync(join(here, 'page.css'), 'utf8') + notice +
  inlinedFonts(readFileSync(join(katex, 'dist/katex.min.css'), 'utf8'));
const scripts = scriptText(notice + readFileSync(join(katex, 'dist/katex.min.js'), 'utf8') + '\n' +
  readFileSync(join(here, 'page.js'), 'utf8'));

// Octal escapes have three digits at most, so a following digit is never swallowed.
function literal(bytes) {
  let text = '';
  for (const b of bytes) {
    const plain = b >= 32 && b < 127 && b !== 34 && b !== 92 && b !== 63;
    text += plain ? String.fromCharCode(b) : '\\' + b.toString(8).padStart(3, '0');
  }
  return `"${text}"`;
}

function pieces(name, text) {
  const bytes = Buffer.from(text, 'utf8');
  const rows = [];
  for (let i = 0; i < bytes.length; i += 8000) rows.push(`    ${literal(bytes.subarray(i, i + 8000))},`);
  return `constexpr std::string_view ${name}[] = {\n${rows.join('\n')}\n};\n`;
}

writeFileSync(out, `// SPDX-License-Identifier: Apache-2.0
// Made by web/bundle.mjs.
#include "resources.h"

namespace {

${pieces('kStyles', styles)}
${pieces('kScripts', scripts)}
}  // namespace

std::span<const std::string_view> pageStyles() { return kStyles; }
std::span<const std::string_view> pageScripts() { return kScripts; }
`);
