#!/usr/bin/env python3
"""Writes src/text/case_folding/folding_table.h from the Unicode Character Database (Debian: unicode-data).

    scripts/case_folding.py | clang-format --assume-filename=src/x.h > src/text/case_folding/folding_table.h
"""

FILE = "/usr/share/unicode/CaseFolding.txt"
LONGEST_STEP = 2


def foldings(statuses):
    """The characters with one of the statuses and what they are folded into, in the order of the characters."""
    for line in open(FILE, encoding="utf-8"):
        fields = [field.strip() for field in line.split("#")[0].split(";")]
        if len(fields) > 2 and fields[1] in statuses:
            yield int(fields[0], 16), [int(code, 16) for code in fields[2].split()]


def ranges():
    """Lists of first, last, step and difference; in each, all differences are equal."""
    found = []
    for c, folded in foldings("CS"):
        difference = folded[0] - c
        if found and found[-1][3] == difference:
            first, last, step, _ = found[-1]
            if c - last == step or (first == last and c - last <= LONGEST_STEP):
                found[-1][1:3] = [c, c - last]
                continue
        found.append([c, c, 1, difference])
    return found


def main():
    print("#pragma once\n\n#include <cstdint>\n")
    print("// Made by scripts/case_folding.py from CaseFolding.txt of Unicode 15.0.\nnamespace scrivalen {\n")
    print("/// The characters first, first + step, ... up to last, which are folded by adding the difference.")
    print("struct FoldingRange {\n  char32_t first;\n  char32_t last;\n  std::uint8_t step;\n"
          "  std::int32_t difference;\n};\n")
    print("/// In ascending order.\ninline constexpr FoldingRange kFoldingRanges[] = {")
    print(",\n".join(f"{{0x{first:04X}, 0x{last:04X}, {step}, {difference}}}"
                     for first, last, step, difference in ranges()) + "};\n")
    print("/// A character that is folded into two or three; 0 ends them.")
    print("struct FullFolding {\n  char16_t letter;\n  char16_t folded[3];\n};\n")
    print("/// In ascending order.\ninline constexpr FullFolding kFullFoldings[] = {")
    print(",\n".join("{0x%04X, {%s}}" % (letter, ", ".join("0x%04X" % code for code in (folded + [0])[:3]))
                     for letter, folded in foldings("F")) + "};\n")
    print("}  // namespace scrivalen")


main()
