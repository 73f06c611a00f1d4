// The five programs that read PDF for the tests. Each function returns the text of every page, in the order of the
// page's content where the program keeps that. Run as a program it writes them as JSON:
//
//   pdf_readers.mjs RESULT FILE...      {FILE: {"poppler": [page, ...], "mupdf": ..., ...}, ...}
import {execFileSync} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {fileURLToPath} from 'node:url';
import * as pdfjs from 'pdfjs-dist/legacy/build/pdf.mjs';
import {PDFiumLibrary} from '@hyzyla/pdfium';

function run(program, ...args) {
  return execFileSync(program, args, {maxBuffer: 1 << 30, stdio: ['ignore', 'pipe', 'ignore']}).toString('utf8');
}

// These programs write a form feed after each page.
const splitPages = (text) => text.split('\f').slice(0, -1);

export const poppler = (file) => splitPages(run('pdftotext', '-raw', '-enc', 'UTF-8', file, '-'));

export const mupdf = (file) => splitPages(run('mutool', 'draw', '-q', '-F', 'txt', file));

// Ghostscript writes pages of one file without anything between them, so each page is a file.
export function ghostscript(file, count) {
  const folder = mkdtempSync(join(tmpdir(), 'pages.'));
  try {
    run('gs', '-q', '-dNOPAUSE', '-dBATCH', '-dSAFER', '-sDEVICE=txtwrite', `-sOutputFile=${folder}/%d`, file);
    return Array.from({length: count}, (_, index) => readFileSync(join(folder, String(index + 1)), 'utf8'));
  } finally {
    rmSync(folder, {recursive: true});
  }
}

// disableNormalization: ligatures and presentation forms stay as the file has them.
export async function pdfJs(file) {
  const document = await pdfjs.getDocument({data: new Uint8Array(readFileSync(file)), verbosity: 0}).promise;
  const pages = [];
  for (let number = 1; number <= document.numPages; ++number) {
    const {items} = await (await document.getPage(number)).getTextContent({disableNormalization: true});
    pages.push(items.map(({str, hasEOL}) => str + (hasEOL ? '\n' : '')).join(''));
  }
  await document.destroy();
  return pages;
}

// PDFium returns U+FFFE for a hyphen at the end of a line, and joins the lines.
export async function pdfium(file) {
  const library = await PDFiumLibrary.init();
  const document = await library.loadDocument(new Uint8Array(readFileSync(file)));
  const pages = [...document.pages()].map((page) => page.getText().replaceAll('\uFFFE', '-\n'));
  document.destroy();
  library.destroy();
  return pages;
}

export async function readWithAll(file) {
  const pages = poppler(file);
  return {
    poppler: pages,
    mupdf: mupdf(file),
    ghostscript: ghostscript(file, pages.length),
    'pdf.js': await pdfJs(file),
    pdfium: await pdfium(file),
  };
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const [result, ...files] = process.argv.slice(2);
  const texts = {};
  for (const file of files) {
    texts[file] = await readWithAll(file);
  }
  writeFileSync(result, JSON.stringify(texts));
}
