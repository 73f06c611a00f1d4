#!/usr/bin/env python3
"""Writes src/text/line_breaking/class_table.h from the Unicode Character Database (Debian: unicode-data).

    scripts/line_break_classes.py > src/text/line_breaking/class_table.h
"""
import re

FOLDER = "/usr/share/unicode/"
CHARACTERS = 0x110000
BLOCK = 128

# Classes that differ from those of the database: rule LB1 resolves AI, SG, XX, SA and CJ, and two rules depend on other
# properties as well.
CLASSES = ("AL BK CR LF NL SP ZW CM ZWJ WJ GL BA HY CL CP CPWide EX IS SY OP OPWide QU NS B2 CB BB HL IN NU PR PO ID "
           "IDNew EB EM JL JV JT H2 H3 RI").split()


def ranges(name):
    for line in open(FOLDER + name, encoding="utf-8"):
        match = re.match(r"([0-9A-F]+)(?:\.\.([0-9A-F]+))?\s*;\s*(\w+)", line)
        if match:
            first = int(match[1], 16)
            yield first, int(match[2] or match[1], 16), match[3]


def set_of(name, *values):
    return {c for first, last, value in ranges(name) if value in values for c in range(first, last + 1)}


def unlisted_classes():
    """The classes of characters that LineBreak.txt does not list, as its head has them."""
    classes = ["XX"] * CHARACTERS
    for first, last in ((0x3400, 0x4DBF), (0x4E00, 0x9FFF), (0xF900, 0xFAFF), (0x20000, 0x2FFFD), (0x30000, 0x3FFFD),
                        (0x1F000, 0x1FAFF), (0x1FC00, 0x1FFFD)):
        classes[first:last + 1] = ["ID"] * (last + 1 - first)
    classes[0x20A0:0x20D0] = ["PR"] * 0x30
    return classes


def resolved_classes():
    classes = unlisted_classes()
    for first, last, value in ranges("LineBreak.txt"):
        classes[first:last + 1] = [value] * (last + 1 - first)
    general = ["Cn"] * CHARACTERS
    for first, last, value in ranges("extracted/DerivedGeneralCategory.txt"):
        general[first:last + 1] = [value] * (last + 1 - first)
    wide = set_of("EastAsianWidth.txt", "F", "W", "H")
    pictographs = set_of("emoji/emoji-data.txt", "Extended_Pictographic")
    for c in range(CHARACTERS):
        name = classes[c]
        if name in ("AI", "SG", "XX"):
            name = "AL"
        elif name == "SA":
            name = "CM" if general[c] in ("Mn", "Mc") else "AL"
        elif name == "CJ":
            name = "NS"
        elif name in ("OP", "CP") and c in wide:
            name += "Wide"
        elif name == "ID" and general[c] == "Cn" and c in pictographs:
            name = "IDNew"
        classes[c] = name
    return classes


def number_lines(numbers):
    line = " "
    for number in numbers:
        if len(line) + len(str(number)) + 2 > 120:
            yield line
            line = " "
        line += f" {number},"
    yield line


def main():
    numbers = [CLASSES.index(name) for name in resolved_classes()]
    blocks = {}
    index = [blocks.setdefault(tuple(numbers[at:at + BLOCK]), len(blocks)) for at in range(0, CHARACTERS, BLOCK)]
    print("#pragma once\n\n#include <cstdint>\n")
    print("// Made by scripts/line_break_classes.py from LineBreak.txt of Unicode 15.0.\nnamespace scrivalen {\n")
    print("/// The classes of Unicode Standard Annex 14, as its rule LB1 resolves them. CPWide and OPWide are East Asian; "
          "IDNew are\n/// pictographs to come.")
    print("enum class BreakClass : std::uint8_t {")
    print("\n".join(f"  {name}," for name in CLASSES[:-1]) + f"\n  {CLASSES[-1]}\n}};\n")
    print(f"inline constexpr unsigned kBreakClassBlock = {BLOCK};  // characters in a block of equal index\n")
    print("inline constexpr std::uint8_t kBreakClassIndex[] = {")
    print("\n".join(number_lines(index)) + "\n};\n")
    print("inline constexpr std::uint8_t kBreakClasses[] = {")
    print("\n".join(number_lines(number for block in blocks for number in block)) + "\n};\n")
    print("}  // namespace scrivalen")


main()
