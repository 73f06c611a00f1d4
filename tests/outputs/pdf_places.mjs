// Writes as JSON where the outlines and links of PDF files lead, as pdf.js reads them:
//
//   pdf_places.mjs RESULT FILE...      {FILE: {"outline": [...], "links": [...]}, ...}
//
// An entry of the outline has a depth, a title, and a page and height to which it leads; a link has a page, and an address
// or the name, page and height of a place. Pages count from 0.
import {readFileSync, writeFileSync} from 'node:fs';
import * as pdfjs from 'pdfjs-dist/legacy/build/pdf.mjs';

async function placeOf(document, destination) {
  const explicit = typeof destination === 'string' ? await document.getDestination(destination) : destination;
  return explicit ? {target: await document.getPageIndex(explicit[0]), top: explicit[3]} : {};
}

async function readOutline(document, entries, depth, outline) {
  for (const {title, dest, items} of entries ?? []) {
    outline.push({depth, title, ...(await placeOf(document, dest))});
    await readOutline(document, items, depth + 1, outline);
  }
  return outline;
}

// The name of a place is bytes, in our files those of UTF-8; pdf.js makes a character of each.
const nameOf = (destination) =>
  typeof destination === 'string' ? Buffer.from(destination, 'latin1').toString('utf8') : undefined;

async function readLinks(document) {
  const links = [];
  for (let number = 0; number < document.numPages; ++number) {
    for (const {dest, unsafeUrl} of await (await document.getPage(number + 1)).getAnnotations()) {
      links.push({
        page: number,
        ...(unsafeUrl ? {address: unsafeUrl} : {name: nameOf(dest), ...(await placeOf(document, dest))}),
      });
    }
  }
  return links;
}

const [result, ...files] = process.argv.slice(2);
const places = {};
for (const file of files) {
  const document = await pdfjs.getDocument({data: new Uint8Array(readFileSync(file)), verbosity: 0}).promise;
  places[file] = {outline: await readOutline(document, await document.getOutline(), 0, []), links: await readLinks(document)};
  await document.destroy();
}
writeFileSync(result, JSON.stringify(places));
