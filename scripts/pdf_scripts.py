#!/usr/bin/env python3
"""Makes docs/scripts.md: what five readers extract from PDF in thirteen scripts, ours and that of other typesetters.

It needs a finished build of the preset linux, what scripts/setup.sh test installs, the package groff, and the network: fonts
of Debian packages that are not installed, and Typst from npm, are put into build/scripts.
"""
import datetime
import json
import os
import pathlib
import re
import subprocess
import sys
import unicodedata

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDER = ROOT / "build" / "scripts"
COMMAND = ROOT / "build" / "linux" / "bin" / "scrivalen"
TYPST = "@myriaddreamin/typst-ts-node-compiler@0.7.0"
FONT_PACKAGES = {"Devanagari": ("fonts-lohit-deva", "Lohit-Devanagari.ttf"),
                 "Thai": ("fonts-tlwg-garuda-ttf", "Garuda.ttf"),
                 "Chinese": ("fonts-droid-fallback", "DroidSansFallbackFull.ttf"),
                 "Korean": ("fonts-unfonts-core", "UnDotum.ttf")}
READERS = {"poppler": "poppler", "mupdf": "MuPDF", "ghostscript": "Ghostscript", "pdf.js": "pdf.js", "pdfium": "PDFium"}

TEXTS = {
    "Latin": "The first office of the château offers fine fjord views.",
    "Greek": "Ξεσκεπάζω την ψυχοφθόρα βδελυγμία.",
    "Cyrillic": "Съешь же ещё этих мягких французских булок.",
    "Vietnamese": "Tất cả mọi người sinh ra đều được tự do.",
    "combining marks": "q\u0303 and x\u030c and e\u0323\u0302 are letters with marks",
    "Armenian": "Բոլոր մարդիկ ծնվում են ազատ ու հավասար",
    "Georgian": "ყველა ადამიანი იბადება თავისუფალი",
    "Hebrew": "כל בני האדם נולדו בני חורין ושווים",
    "Arabic": "يولد جميع الناس أحرارا متساوين في الكرامة",
    "Arabic vowels": "\u0645\u064f\u062d\u064e\u0645\u064e\u0651\u062f\u064c \u0631\u064e\u0633\u064f\u0648\u0644\u064f",
    "Persian": "\u0645\u06cc\u200c\u062e\u0648\u0627\u0647\u0645 \u0646\u06cc\u0645\u200c\u0641\u0627\u0635\u0644\u0647",
    "Devanagari": "सभी मनुष्यों को गौरव और अधिकार प्राप्त हैं",
    "Thai": "มนุษย์ทั้งหลายเกิดมามีอิสระ",
    "Chinese": "人人生而自由，在尊严和权利上一律平等。",
    "Korean": "모든 인간은 태어날 때부터 자유로우며",
    "emoji": "sun ☀ and warning ⚠ and grin 😀",
    "joined emoji": "two \U0001f600\u200d\U0001f600 of them",
}

TYPST_PROGRAM = """
import {NodeCompiler} from '@myriaddreamin/typst-ts-node-compiler';
import {readFileSync, writeFileSync} from 'node:fs';
const fontPaths = ['/usr/share/fonts', process.argv[1]];
for (const file of process.argv.slice(2)) {
  const compiler = NodeCompiler.create({workspace: process.cwd(), fontArgs: [{fontPaths}]});
  const mainFileContent = '#set text(font: "Liberation Serif")\\n' + readFileSync(file, 'utf8');
  writeFileSync(file.replace(/txt$/, 'typst.pdf'), Buffer.from(compiler.pdf({mainFileContent})));
}
"""

FONTS_CONF = """<?xml version="1.0"?>
<fontconfig><include>/etc/fonts/fonts.conf</include><dir>{folder}</dir><cachedir>{folder}/cache</cachedir></fontconfig>
"""


def run(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, **options)


def output(*command):
    done = subprocess.run([str(word) for word in command], check=False, capture_output=True, text=True)
    return done.stdout + done.stderr


def fetch():
    fonts = FOLDER / "fonts"
    fonts.mkdir(parents=True, exist_ok=True)
    for package, name in FONT_PACKAGES.values():
        if not list(fonts.rglob(name)):
            run("apt-get", "-q", "download", package, cwd=fonts)
            run("dpkg-deb", "-x", next(fonts.glob(f"{package}_*.deb")), fonts)
    (fonts / "fonts.conf").write_text(FONTS_CONF.format(folder=fonts), encoding="utf-8")
    if not (FOLDER / "node_modules").exists():
        run("npm", "install", "--prefix", FOLDER, "--no-audit", "--no-fund", TYPST)
    return fonts


def make(fonts):
    """Writes the text of each script as PDF, with every typesetter."""
    environment = dict(os.environ, FONTCONFIG_FILE=str(fonts / "fonts.conf"))
    texts = []
    for name, text in TEXTS.items():
        path = FOLDER / f"{name.replace(' ', '-')}.txt"
        path.write_text(text + "\n", encoding="utf-8")
        texts.append(path)
        font_file = [] if name not in FONT_PACKAGES else ["--set", f"font-file={font_of(fonts, name)}"]
        run(COMMAND, path, "--from", "markdown", "-q", *font_file, "-o", path.with_suffix(".ours.pdf"))
        path.with_suffix(".office.txt").write_text(text + "\n", encoding="utf-8")
        with open(path.with_suffix(".groff.pdf"), "wb") as pdf:
            run("groff", "-K", "utf8", "-T", "pdf", path, stdout=pdf, stderr=subprocess.DEVNULL)
    plain_texts = [path.with_suffix(".office.txt") for path in texts]
    run("soffice", f"-env:UserInstallation=file://{FOLDER}/office", "--headless", "--infilter=Text (encoded):UTF8",
        "--convert-to", "pdf", "--outdir", FOLDER, *plain_texts, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    run("node", "--input-type=module", "-e", TYPST_PROGRAM, "--", fonts, *texts, cwd=FOLDER)


def font_of(fonts, script):
    return next(fonts.rglob(FONT_PACKAGES[script][1]))


def read():
    files = sorted(FOLDER.glob("*.pdf"))
    result = FOLDER / "pages.json"
    run("node", ROOT / "tests" / "outputs" / "pdf_readers.mjs", result, *files, stdout=subprocess.DEVNULL)
    pages = json.loads(result.read_text(encoding="utf-8"))
    for path in files:  # in the order of reading, which is usual, rather than that of the file
        pages[str(path)]["poppler"] = [output("pdftotext", "-enc", "UTF-8", path, "-")]
    return pages


def plain(text):
    """Without marks of direction, and with blanks for white space."""
    text = re.sub("[\u200e\u200f\u202a-\u202e\u2066-\u2069\0]", "", text)
    return " ".join(unicodedata.normalize("NFC", text).split())


def judge(expected, found):
    """One word for what a reader has extracted."""
    if found == expected:
        return "yes"
    if found == "":
        return "nothing"
    if unicodedata.normalize("NFKC", found) == unicodedata.normalize("NFKC", expected):
        return "ligatures"
    if found.replace(" ", "") == expected.replace(" ", ""):
        return "blanks"
    if sorted(found.replace(" ", "")) == sorted(expected.replace(" ", "")):
        return "reversed" if found.replace(" ", "") == expected.replace(" ", "")[::-1] else "order"
    left = list(found)
    kept = sum(1 for character in expected.replace(" ", "") if character in left and not left.remove(character))
    all_letters = len(expected.replace(" ", ""))
    return "more" if kept == all_letters else f"{kept} of {all_letters}"


def table(pages, typesetter):
    lines = ["| | " + " | ".join(READERS.values()) + " |", "| --- |" + " --- |" * len(READERS)]
    for name, text in TEXTS.items():
        found = pages[str(FOLDER / f"{name.replace(' ', '-')}.{typesetter}.pdf")]
        cells = [judge(plain(text), plain(" ".join(found[reader]))) for reader in READERS]
        lines.append(f"| {name} | " + " | ".join(cells) + " |")
    return "\n".join(lines)


def version(pattern, *command):
    found = re.search(pattern, output(*command))
    return found[1] if found else "?"


def module_version(name):
    return json.loads((ROOT / "node_modules" / name / "package.json").read_text(encoding="utf-8"))["version"]


def readers():
    return (f"poppler {version('version ([0-9.]+)', 'pdftotext', '-v')}, "
            f"MuPDF {version('([0-9.]+)', 'dpkg-query', '-W', '-f', '${Version}', 'mupdf-tools')}, "
            f"Ghostscript {version('([0-9.]+)', 'gs', '--version')}, "
            f"pdf.js {module_version('pdfjs-dist')}, PDFium (npm's `@hyzyla/pdfium` {module_version('@hyzyla/pdfium')})")


def typesetters():
    return (f"groff {version('version ([0-9.]+)', 'groff', '--version')}, "
            f"LibreOffice {version('LibreOffice ([0-9.]+)', 'soffice', '--version')}, "
            f"Typst (npm's `typst-ts-node-compiler` {TYPST.rpartition('@')[2]})")


PAGE = """# Scripts in PDF

What five readers extract from the same short texts, set by Scrivalen and by three others. `scripts/pdf_scripts.py` made this
page on {date}, with

- {readers};
- {typesetters}.

In the tables is

- **yes**: the text as it was given. Marks of direction, which some readers add, are not counted.
- **ligatures**: the same, with characters such as U+FB01 for two letters.
- **blanks**: all letters in their order, but blanks are added or missing.
- **reversed**: all letters, but in the order of the page.
- **order**: all letters, in another order.
- **more**: all letters, and others that are not in the text.
- **12 of 30**: so many of the letters.

Each text is one paragraph. Scrivalen and groff had their own fonts. LibreOffice and Typst chose among those of the machine,
to which the packages {fonts}
were added; Scrivalen got the fonts of these packages as `font-file`.

## Scrivalen

{ours}

{notes}

## LibreOffice

{office}

## Typst

{typst}

## groff

{groff}

groff's fonts hold Latin letters only; it leaves out what they lack.

## What the bundled fonts lack

Liberation and DejaVu Sans, which come with the library, have no letters of Devanagari and the other Indian scripts, Thai,
Chinese, Japanese, Korean, Ethiopic, Khmer, Tibetan and others, and few emoji. Such text is drawn as empty boxes, with a
warning that names the script, until `font-file` adds a font. It can be searched and copied all the same.
"""

NOTES = """poppler's order is that of reading, as pdftotext has it by default. MuPDF and Ghostscript give letters from right to left in
the order of the page, whoever wrote the file: see the other tables. pdf.js leaves out a joiner that is beside characters past
U+FFFF, and has marks from right to left in the order of the page. Ghostscript 10.00 reads no character beyond U+FFFF, such as an
emoji, changes some of several characters that one glyph stands for, and orders marks by their places."""


def main():
    os.environ["LC_ALL"] = "C.UTF-8"
    make(fetch())
    pages = read()
    packages = ", ".join(f"`{package}`" for package, _ in FONT_PACKAGES.values())
    page = PAGE.format(date=datetime.date.today().isoformat(), readers=readers(), typesetters=typesetters(), fonts=packages, notes=NOTES,
                       **{name: table(pages, name) for name in ("ours", "office", "typst", "groff")})
    (ROOT / "docs" / "scripts.md").write_text(page, encoding="utf-8")


if __name__ == "__main__":
    sys.exit(main())
