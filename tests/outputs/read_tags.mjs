// Prints the structure of a PDF's first page as pdf.js finds it: roles with their kids in parentheses, "." for content
// and "@" for the area of a link.
//
//   read_tags.mjs FILE
import {readFileSync} from 'node:fs';
import * as pdfjs from 'pdfjs-dist/legacy/build/pdf.mjs';

const data = new Uint8Array(readFileSync(process.argv[2]));
const document = await pdfjs.getDocument({data, verbosity: 0}).promise;

function shown({role, alt, lang, type, children}) {
  if (role === undefined) {
    return type === 'content' ? '.' : '@';
  }
  const facts = [alt, lang].filter((fact) => fact).map((fact) => `[${fact}]`);
  return `${role}${facts.join('')}(${children.map(shown).join(' ')})`;
}

const page = await document.getPage(1);
console.log(shown(await page.getStructTree()));
console.log((await document.getMarkInfo()).Marked);
