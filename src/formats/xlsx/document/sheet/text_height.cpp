#include "formats/xlsx/document/sheet/text_height.h"

#include "text/columns/line_breaks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>

namespace scrivalen::xlsx {
namespace {

struct LetterWidth {
  std::string_view letters;
  double width;
};

// In digits: how wide the characters of Carlito, Liberation Sans and DejaVu Sans are at most. All others are as wide as
// a digit. A text in any of these fonts is 6 % narrower. Columns in Excel are as much narrower than their digits
// (kPrintedDigit), so that it needs the height; LibreOffice, whose columns are as wide, may leave a line blank.
constexpr LetterWidth kLetterWidths[] = {{" ',.Iijl", 0.5},  {"!():;-[]f", 0.65}, {"rt", 0.7},        {"\"/\\`", 0.8},
                                         {"Jcsz", 0.9},      {"kvxy|", 0.95},     {"bdhnopqu", 1.05}, {"FTZ", 1.1},
                                         {"ABEKPSVXY", 1.2}, {"CDHNRU", 1.3},     {"#&+<=>^~", 1.35}, {"GOQ", 1.4},
                                         {"w", 1.45},        {"%m", 1.6},         {"MW", 1.8},        {"@", 1.85}};

constexpr std::size_t kAscii = 0x80;

constexpr std::array<double, kAscii> kWidthsOfLetters = [] {
  std::array<double, kAscii> widths{};
  widths.fill(1);
  for (const LetterWidth& known : kLetterWidths) {
    for (const char letter : known.letters) {
      widths[static_cast<unsigned char>(letter)] = known.width;
    }
  }
  return widths;
}();

constexpr double kOtherLetter = 1.05;  // for each column of a letter that is not ASCII
constexpr double kBoldLetter = 1.05;   // as wide as others
constexpr double kUsualSize = 1100;    // of a font

// Measures the words of a text, from its begin to its end, in digits of the usual font.
class WordMeasure {
 public:
  // @param font  whose size is the smallest of letters
  WordMeasure(std::string_view text, std::span<const TextRun> runs, const Font& font)
      : text_(text), runs_(runs), smallest_(font.size), scale_(smallest_ / kUsualSize) {}

  double blank() const { return widthOf(' '); }
  double word(const Word& word);

 private:
  void enter(const Font& font);
  double widthOf(char ascii) const {
    return scale_ * (isCode_ ? kCodeWidth : kWidthsOfLetters[static_cast<unsigned char>(ascii)]);
  }

  std::string_view text_;
  std::span<const TextRun> runs_;  // that have not begun
  double smallest_;
  double scale_;
  bool isCode_ = false;
};

double WordMeasure::word(const Word& word) {
  const auto begin = static_cast<std::size_t>(word.text.data() - text_.data());
  double width = 0;
  std::size_t known = 0;
  for (std::size_t i = 0; i < word.text.size(); ++i) {
    for (; !runs_.empty() && runs_.front().begin <= begin + i; runs_ = runs_.subspan(1)) {
      enter(runs_.front().font);
    }
    if (static_cast<unsigned char>(word.text[i]) < kAscii) {
      width += widthOf(word.text[i]);
      ++known;
    }
  }
  const auto others = static_cast<double>(word.columns - std::min(known, word.columns));
  return width + others * scale_ * (isCode_ ? kCodeWidth : kOtherLetter);
}

void WordMeasure::enter(const Font& font) {
  isCode_ = font.family == Family::Code;
  const bool isWider = !isCode_ && (font.flags & Font::Bold) != 0;
  scale_ = std::max<double>(font.size, smallest_) / kUsualSize * (isWider ? kBoldLetter : 1);
}

// The lines of a text without line feeds. A word that is longer than a line is divided.
double wrappedLinesOf(std::string_view line, WordMeasure& measure, double width) {
  double lines = 1;
  double used = 0;
  WordReader words(line);
  for (Word word; words.next(word);) {
    const double before = static_cast<double>(word.blanks) * measure.blank();
    const double own = measure.word(word);
    if (used + before + own <= width) {
      used += before + own;
      continue;
    }
    lines += used > 0 ? 1 : 0;
    used = own;
    if (own > width) {
      const auto letters = static_cast<double>(std::max<std::size_t>(word.columns, 1));
      const double letter = own / letters;
      const double ofALine = std::max(std::floor(width / letter), 1.0);
      const double full = std::ceil(letters / ofALine) - 1;
      lines += full;
      used = (letters - full * ofALine) * letter;
    }
  }
  return lines;
}

// Line feeds at the end make no lines.
double wrappedLinesOf(std::string_view text, std::span<const TextRun> runs, const Font& font, double width) {
  WordMeasure measure(text, runs, font);
  text = text.substr(0, text.find_last_not_of('\n') + 1);
  double lines = 0;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines += wrappedLinesOf(text.substr(begin, end - begin), measure, std::max(width, 1.0));
    begin = end + 1;
  }
  return lines;
}

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
  return linesOf(text, width) > 1 ? wrappedLinesOf(text, {}, Font(), width) : 1;
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
  const double monospaced = linesOf(text.text, spaceOf(text, font, width));
  const bool isExact = isCode(text) || monospaced <= 1;
  const double lines = isExact ? monospaced : wrappedLinesOf(text.text, text.runs, font, width);
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
