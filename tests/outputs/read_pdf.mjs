// Reads a PDF with five programs and compares their results: the characters of each page, the pictures that two of them
// draw, and the targets of the outline and the links.
//
//   read_pdf.mjs conforming|classic|drawn FILE TEXT     TEXT is a UTF-8 file with the expected text of all pages
//
// Of a file that is "drawn" only the pictures are compared.
//
// The streams of a classic file declare twice their length. Only MuPDF and Ghostscript read its pages correctly;
// poppler draws the next page over each page but the last. The check expects that too, to notice when poppler changes.
//
// Readers split and join words differently, so white space is ignored. List markers, rules and the arrows of quotes
// differ between a text and a page and are ignored too. Readers that order texts by their position on the page change
// the order within a row of a table, so the order is only compared for readers that keep that of the content.
import {execFileSync} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import * as pdfjs from 'pdfjs-dist/legacy/build/pdf.mjs';
import {PDFiumLibrary} from '@hyzyla/pdfium';

const [form, file, textFile] = process.argv.slice(2);
const bytes = () => new Uint8Array(readFileSync(file));
const problems = [];

function check(good, message) {
  if (!good) {
    problems.push(message);
  }
}

function run(program, ...args) {
  return execFileSync(program, args, {maxBuffer: 1 << 30, stdio: ['ignore', 'pipe', 'ignore']});
}

const withoutBlanks = (text) => text.normalize('NFC').replace(/[\s\u0000\uFEFF\u200B]+/gu, '');
const content = (text) => withoutBlanks(text).replace(/[-=>•_\u00AD]+/gu, '');
const sorted = (text) => [...text].sort().join('');

async function readWithPdfjs() {
  const document = await pdfjs.getDocument({data: bytes(), verbosity: 0}).promise;
  const pages = [];
  const links = [];
  for (let number = 1; number <= document.numPages; ++number) {
    const page = await document.getPage(number);
    const {items} = await page.getTextContent({disableNormalization: true});
    pages.push(items.map((item) => item.str).join(''));
    for (const {dest, url} of await page.getAnnotations()) {
      links.push(url ? {page: number, url} : {page: number, target: await document.getPageIndex(dest[0]), top: dest[3]});
    }
  }
  const outline = [];
  const collect = async (entries, depth) => {
    for (const {title, dest, items} of entries ?? []) {
      outline.push({title, depth, target: dest && await document.getPageIndex(dest[0]), top: dest?.[3]});
      await collect(items, depth + 1);
    }
  };
  await collect(await document.getOutline(), 0);
  return {pages, links, outline};
}

async function readWithPdfium() {
  const library = await PDFiumLibrary.init();
  const document = await library.loadDocument(bytes());
  // PDFium returns U+FFFE for a hyphen at the end of a line.
  const pages = [...document.pages()].map((page) => page.getText().replaceAll('\uFFFE', '-'));
  document.destroy();
  library.destroy();
  return pages;
}

// Splits the output of programs that write a form feed after each page.
function splitPages(text, count) {
  const pages = text.toString('utf8').split('\f');
  return pages.slice(0, Math.max(count, pages.length - 1));
}

function differences(a, b) {
  const count = (text) => [...text].reduce((counts, c) => counts.set(c, (counts.get(c) ?? 0) + 1), new Map());
  const [left, right] = [count(a), count(b)];
  return [...new Set([...left.keys(), ...right.keys()])]
      .filter((c) => left.get(c) !== right.get(c))
      .map((c) => `${JSON.stringify(c)} ${left.get(c) ?? 0}:${right.get(c) ?? 0}`)
      .slice(0, 8)
      .join(', ');
}

const poppler = () => run('pdftotext', '-raw', '-enc', 'UTF-8', file, '-');
const mupdf = () => run('mutool', 'draw', '-q', '-F', 'txt', file);
const ghostscript = (page) => run('gs', '-q', '-dNOPAUSE', '-dBATCH', '-dSAFER', '-sDEVICE=txtwrite',
                                  `-dFirstPage=${page}`, `-dLastPage=${page}`, '-sOutputFile=-', file);

function comparePages(reader, pages, others) {
  check(pages.length === others.length, `${reader} finds ${others.length} pages, not ${pages.length}`);
  pages.forEach((page, index) => {
    const [expected, found] = [sorted(withoutBlanks(page)), sorted(withoutBlanks(others[index] ?? ''))];
    check(expected === found, `page ${index + 1}: ${reader} differs from the first reader in ${differences(expected, found)}`);
  });
}

function compareWithGhostscript(pages) {
  comparePages('Ghostscript', pages, pages.map((_, index) => ghostscript(index + 1).toString('utf8')));
}

function firstDifference(a, b) {
  let at = 0;
  while (at < a.length && a[at] === b[at]) {
    ++at;
  }
  return `${JSON.stringify(a.slice(Math.max(at - 20, 0), at + 30))} and ${JSON.stringify(b.slice(Math.max(at - 20, 0), at + 30))}`;
}

// The grey levels of squares of 8 by 8 points; within a square, fonts may differ.
function readPicture(path) {
  const data = readFileSync(path);
  const header = /^P5\s+(\d+)\s+(\d+)\s+255\s/.exec(data.subarray(0, 64).toString('latin1'));
  const [width, height] = [Number(header[1]), Number(header[2])];
  const pixels = data.subarray(header[0].length);
  const squares = [];
  for (let y = 0; y + 8 <= height; y += 8) {
    for (let x = 0; x + 8 <= width; x += 8) {
      let sum = 0;
      for (let row = y; row < y + 8; ++row) {
        for (let column = x; column < x + 8; ++column) {
          sum += pixels[row * width + column];
        }
      }
      squares.push(sum / 64);
    }
  }
  return {width, height, squares};
}

function comparePictures(folder, page) {
  run('pdftoppm', '-gray', '-r', '72', '-f', page, '-l', page, '-singlefile', file, join(folder, 'poppler'));
  run('mutool', 'draw', '-q', '-c', 'gray', '-F', 'pgm', '-r', '72', '-o', join(folder, 'mupdf.pgm'), file, page);
  const [poppler, mupdf] = [readPicture(join(folder, 'poppler.pgm')), readPicture(join(folder, 'mupdf.pgm'))];
  check(poppler.width === mupdf.width && poppler.height === mupdf.height, `page ${page}: the pictures differ in size`);
  const distances = poppler.squares.map((grey, index) => Math.abs(grey - mupdf.squares[index]));
  const mean = distances.reduce((sum, distance) => sum + distance, 0) / distances.length;
  check(mean < 10 && Math.max(...distances) < 90,
        `page ${page}: the pictures differ by ${mean.toFixed(1)} on average, ${Math.max(...distances).toFixed(0)} at most`);
}

function checkPlaces({pages, links, outline}) {
  for (const {title, target} of outline) {
    check(target !== null && withoutBlanks(pages[target] ?? '').includes(withoutBlanks(title)),
          `the outline's "${title}" leads to page ${target + 1}, which does not contain it`);
  }
  const places = new Set(outline.map(({target, top}) => `${target} ${top}`));
  for (const {page, target, top} of outline.length > 0 ? links : []) {
    check(places.has(`${target} ${top}`), `a link on page ${page} leads to page ${target + 1}, ${top}, where no heading is`);
  }
}

function checkDrawing(count) {
  const folder = mkdtempSync(join(tmpdir(), 'pictures.'));
  try {
    for (const page of new Set([1, Math.ceil(count / 2), count])) {
      comparePictures(folder, String(page));
    }
  } finally {
    rmSync(folder, {recursive: true});
  }
  return `${count} pages`;
}

async function checkConforming(expected) {
  const own = await readWithPdfjs();
  const count = own.pages.length;
  comparePages('PDFium', own.pages, await readWithPdfium());
  comparePages('poppler', own.pages, splitPages(poppler(), count));
  comparePages('MuPDF', own.pages, splitPages(mupdf(), count));
  compareWithGhostscript(own.pages);
  const found = content(own.pages.join(''));
  check(expected === found, `the pages do not have the expected text: ${firstDifference(expected, found)}`);
  checkPlaces(own);
  checkDrawing(count);
  return `${count} pages, ${own.outline.length} outline entries, ${own.links.length} links`;
}

function checkClassic(expected) {
  const pages = splitPages(mupdf(), 0).filter((page) => page.length > 0);
  compareWithGhostscript(pages);
  const found = content(pages.join(''));
  check(sorted(expected) === sorted(found), `the pages do not have the expected text: ${differences(expected, found)}`);
  const shown = splitPages(poppler(), pages.length).map((page) => withoutBlanks(page).length);
  const overlaid = pages.slice(0, -1).filter((page, index) => shown[index] > withoutBlanks(page).length);
  check(pages.length > 1 && overlaid.length > 0, 'poppler separates the classic pages: the guide says that it does not');
  return `${pages.length} pages, on ${overlaid.length} of them poppler draws the next one too`;
}

const withoutUnderlines = (text) => text.replace(/^([~.])\1*\r?$/gmu, '');
const expected = content(withoutUnderlines(readFileSync(textFile, 'utf8')));
const checks = {
  classic: () => checkClassic(expected),
  conforming: () => checkConforming(expected),
  drawn: () => checkDrawing(splitPages(poppler(), 0).length),
};
const summary = await checks[form]();
for (const problem of problems.slice(0, 10)) {
  console.error(`${file}: ${problem}`);
}
console.log(summary);
process.exit(problems.length === 0 ? 0 : 1);
