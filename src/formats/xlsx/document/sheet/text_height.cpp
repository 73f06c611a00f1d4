#include "formats/xlsx/document/sheet/text_height.h"

#include "text/columns/line_breaks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace scrivalen::xlsx {
namespace {

struct LetterWidth {
  std::string_view letters;
  double width;
};

// In digits: how wide the characters of Carlito, Liberation Sans and DejaVu Sans are at most. All others are as wide as
// a digit.
constexpr LetterWidth kLetterWidths[] = {{" ',.Iijl", 0.5},  {"!():;-[]f", 0.65}, {"rt", 0.7},        {"\"/\\`", 0.8},
                                         {"Jcsz", 0.9},      {"kvxy|", 0.95},     {"bdhnopqu", 1.05}, {"FTZ", 1.1},
                                         {"ABEKPSVXY", 1.2}, {"CDHNRU", 1.3},     {"#&+<=>^~", 1.35}, {"GOQ", 1.4},
                                         {"w", 1.45},        {"%m", 1.6},         {"MW", 1.8},        {"@", 1.85}};

constexpr std::array<double, 256> kWidthsOfLetters = [] {
  std::array<double, 256> widths{};
  widths.fill(1);
  for (const LetterWidth& known : kLetterWidths) {
    for (const char letter : known.letters) {
      widths[static_cast<unsigned char>(letter)] = known.width;
    }
  }
  return widths;
}();

// The width of a text's letters in digits, for each column that a monospaced font gives them.
double letterWidthOf(std::string_view text) {
  const double width = std::accumulate(text.begin(), text.end(), 0.0, [](double sum, char c) {
    return sum + kWidthsOfLetters[static_cast<unsigned char>(c)];
  });
  return width / static_cast<double>(text.size());
}

constexpr double kUsualSize = 1100;  // of a font

bool isCode(const RichText& text) {
  return !text.runs.empty() && std::all_of(text.runs.begin(), text.runs.end(),
                                           [](const TextRun& run) { return run.font.family == Family::Code; });
}

}  // namespace

double linesOf(std::string_view text, double width) {
  const bool hasBreak = text.find('\n') != text.npos;
  // A character is at least a byte.
  if (!hasBreak && (static_cast<double>(text.size()) <= width || extentOf(text).widestLine <= width)) {
    return 1;
  }
  const auto columns = static_cast<std::size_t>(std::max(width, 1.0));
  LineReader reader(text, columns);
  std::size_t lines = 0;
  for (Line line; reader.next(line);) {
    const std::size_t pieces = (line.columns + columns - 1) / columns;  // of a word that is too long
    lines += std::max<std::size_t>(pieces, 1);
  }
  return static_cast<double>(std::max<std::size_t>(lines, 1));
}

double shownLinesOf(std::string_view text, double width) {
  const double lines = linesOf(text, width);
  return lines > 1 ? linesOf(text, width / letterWidthOf(text)) : lines;
}

double spaceOf(const RichText& text, const Font& font, double width) {
  double size = 0;  // that of each byte, added up
  for (std::size_t i = 0; i < text.runs.size(); ++i) {
    const Font& own = text.runs[i].font;
    const double letter = own.family == Family::Code ? kCodeWidth : 1;
    size += static_cast<double>(partOf(text, i).size()) * letter * std::max(own.size, font.size);
  }
  const double average = text.text.empty() ? font.size : size / static_cast<double>(text.text.size());
  return width * kUsualSize / std::max<double>(average, font.size);
}

double heightOf(const RichText& text, const Font& font, double width) {
  const double space = spaceOf(text, font, width);
  const double lines = isCode(text) ? linesOf(text.text, space) : shownLinesOf(text.text, space);
  double added = 0;
  double highest = 0;
  for (std::size_t i = 0; i < text.runs.size(); ++i) {
    const double size = text.runs[i].font.size;
    if (size > font.size) {
      added += (size - font.size) * shownLinesOf(partOf(text, i), width * kUsualSize / size);
      highest = std::max(highest, size - font.size);
    }
  }
  return kLineHeight * (lines * font.size + std::min(added, lines * highest)) / kUsualSize;
}

}  // namespace scrivalen::xlsx
