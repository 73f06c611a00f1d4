#!/usr/bin/env python3
"""Checks a PDF as ISO 19005-2, level U, asks for: check_archive.py JSON PDF, the first written by qpdf --json."""

import json
import re
import subprocess
import sys

problems = []


def expect(good, problem):
    if not good:
        problems.append(problem)


class File:
    def __init__(self, json_path, pdf_path):
        with open(json_path, encoding="utf-8") as file:
            document = json.load(file)
        self.pdf = pdf_path
        objects = document["qpdf"][1]
        self.objects = {name[4:]: value for name, value in objects.items() if name.startswith("obj:")}
        self.trailer = objects["trailer"]["value"]

    def value(self, value):
        while isinstance(value, str) and value in self.objects:
            held = self.objects[value]
            value = held["value"] if "value" in held else held["stream"]["dict"]
        return value

    def dictionaries(self):
        for name, held in self.objects.items():
            value = held["value"] if "value" in held else held["stream"]["dict"]
            if isinstance(value, dict):
                yield name, value

    def stream(self, reference):
        number = reference.split()[0]
        return subprocess.run(["qpdf", f"--show-object={number}", "--filtered-stream-data", self.pdf],
                              check=True, capture_output=True).stdout


def check_trailer(file):
    with open(file.pdf, "rb") as pdf:
        expect(pdf.read(9) == b"%PDF-1.7\n", "it is not PDF 1.7")
    expect(len(file.trailer.get("/ID", [])) == 2, "it has no identifier")
    expect("/Encrypt" not in file.trailer, "it is encrypted")


def check_catalog(file):
    catalog = file.value(file.trailer["/Root"])
    intents = [file.value(intent) for intent in catalog.get("/OutputIntents", [])]
    expect([intent.get("/S") for intent in intents] == ["/GTS_PDFA1"], "it has not one output intent")
    profile = file.stream(intents[0]["/DestOutputProfile"])
    expect(profile[36:40] == b"acsp" and len(profile) == int.from_bytes(profile[:4], "big"), "its profile is none")
    expect(file.value(intents[0]["/DestOutputProfile"]).get("/N") == 3, "its profile is not of RGB")
    for key in ("/AA", "/OpenAction", "/AcroForm", "/OCProperties", "/Requirements"):
        expect(key not in catalog, f"its catalog has {key}")
    check_metadata(file, catalog)


def check_metadata(file, catalog):
    xmp = file.stream(catalog["/Metadata"]).decode("utf-8")
    expect("/Filter" not in file.value(catalog["/Metadata"]), "its metadata are compressed")
    expect("<pdfaid:part>2</pdfaid:part>" in xmp, "its metadata name another part of the standard")
    expect("<pdfaid:conformance>U</pdfaid:conformance>" in xmp, "its metadata name another level")
    information = file.value(file.trailer["/Info"])
    for key, element in (("/Producer", "pdf:Producer"), ("/Creator", "xmp:CreatorTool"), ("/Title", "dc:title"),
                         ("/Author", "dc:creator")):
        found = re.search(f"<{element}>(?:<[^>]*>)*([^<]*)<", xmp)
        given = information.get(key, "u:")[2:]
        expect((found.group(1) if found else "") == given.replace("&", "&amp;"), f"{key} differs in its metadata")
    digits = re.sub(r"\D", "", information["/CreationDate"])
    expect(digits == re.sub(r"\D", "", re.search("<xmp:CreateDate>([^<]*)<", xmp).group(1)), "its dates differ")


def check_fonts(file):
    for name, font in file.dictionaries():
        if font.get("/Type") != "/Font":
            continue
        kind = font["/Subtype"]
        if kind == "/Type0":
            check_composite(file, name, font)
        else:
            descriptor = file.value(font["/FontDescriptor"])
            embedded = [key for key in ("/FontFile", "/FontFile2", "/FontFile3") if key in descriptor]
            expect(len(embedded) == 1, f"font {name} is not embedded")
            expect(kind.startswith("/CIDFont") or font.get("/Encoding") == "/WinAnsiEncoding",
                   f"font {name} has no encoding that readers know")


def check_composite(file, name, font):
    descendant = file.value(font["/DescendantFonts"][0])
    glyphs = file.stream(descendant["/CIDToGIDMap"])
    texts = file.stream(font["/ToUnicode"]).decode("ascii")
    known = {}
    for block in re.findall(r"beginbfchar\n(.*?)endbfchar", texts, re.S):
        for code, text in re.findall(r"<([0-9A-F]{2}|[0-9A-F]{4})><([0-9A-F]*)>", block):
            known[int(code, 16)] = text
    numbers = list(numbers_of(file, font, len(glyphs) // 2))
    expect(numbers, f"font {name} has no numbers")
    for code, number in numbers:
        expect(glyphs[2 * number:2 * number + 2] != b"\0\0", f"font {name}: number {number} is the missing glyph")
        text = known.get(code, "")
        units = {text[i:i + 4] for i in range(0, len(text), 4)}
        expect(units and not units & {"0000", "FEFF", "FFFE"}, f"font {name}: number {number} has no text")


def numbers_of(file, font, end):
    """The codes of a font with their numbers, below the end of its table of glyphs."""
    codes = file.stream(font["/Encoding"]).decode("ascii")
    for block in re.findall(r"begincidrange\n(.*?)endcidrange", codes, re.S):
        for first, last, number in re.findall(r"<([0-9A-F]+)><([0-9A-F]+)>(\d+)", block):
            for code in range(int(first, 16), int(last, 16) + 1):
                if int(number) + code - int(first, 16) < end:
                    yield code, int(number) + code - int(first, 16)


def check_objects(file):
    for name, value in file.dictionaries():
        kind, subtype = value.get("/Type"), value.get("/Subtype")
        if kind == "/Annot":
            expect(value.get("/F") == 4, f"annotation {name} is not printed")
            action = file.value(value.get("/A", {}))
            expect(action.get("/S", "/URI") in ("/URI", "/GoTo"), f"annotation {name} acts")
            expect("/AA" not in value, f"annotation {name} acts")
        if subtype == "/Image":
            space = json.dumps(file.value(value["/ColorSpace"]))
            expect("CMYK" not in space, f"image {name} has no colours of the profile")
            expect(not value.get("/Interpolate"), f"image {name} is interpolated")
        for key in ("/EmbeddedFiles", "/JavaScript", "/JS", "/OPI", "/PS", "/TR", "/F" if "/Filter" in value else "/TR"):
            expect(key not in value, f"object {name} has {key}")


document = File(sys.argv[1], sys.argv[2])
check_trailer(document)
check_catalog(document)
check_fonts(document)
check_objects(document)
for message in problems:
    print(f"{document.pdf}: {message}", file=sys.stderr)
sys.exit(1 if problems else 0)
