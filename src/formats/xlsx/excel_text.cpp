#include "formats/xlsx/excel_text.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "text/plain_text.h"
#include "text/utf.h"
#include "text/xml_characters.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace scrivalen {
namespace {

constexpr unsigned kEndOfAscii = 0x80;
constexpr unsigned kEndOfControls = 0x20;

// The characters of ASCII that are not control characters.
struct Printable : PlainBelow<char, kEndOfAscii> {
  static bool isPlain(unsigned c) { return c >= kEndOfControls && c < kEndOfAscii; }
  static bool arePlain(std::uint64_t bytes) { return allMarked(bytes + eightTimes(kEndOfAscii - kEndOfControls)); }
};

// The part that fits into a cell, without splitting a character.
std::wstring_view fitting(std::wstring_view text) {
  if (text.size() <= xlsx::kLongestCellText / 2) {
    return text;
  }
  std::size_t units = 0;
  const wchar_t* const end = text.data() + text.size();
  for (const wchar_t* at = text.data(); at != end;) {
    const wchar_t* const before = at;
    units += unitsOf(nextCharacter(at, end));
    if (units > xlsx::kLongestCellText) {
      return text.substr(0, static_cast<std::size_t>(before - text.data()));
    }
  }
  return text;
}

struct Range {
  char32_t first;
  char32_t last;
};

// The approximate ranges of double-width characters (Unicode Standard Annex 11).
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},  {0xFE30, 0xFE6F},
                           {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};

std::size_t widthOf(char32_t c) {
  const bool isWide = c >= std::begin(kWide)->first &&
                      std::any_of(std::begin(kWide), std::end(kWide),
                                  [c](const Range& range) { return c >= range.first && c <= range.last; });
  return isWide ? 2 : 1;
}

bool isControl(char32_t c) { return c < kEndOfControls && c != U'\n' && c != U'\t'; }

}  // namespace

void ExcelText::assign(const wchar_t* text) {
  const std::wstring_view whole = text;
  const std::wstring_view part = fitting(whole);
  isCut_ = part.size() < whole.size();
  hasControls_ = false;
  utf8_.clear();
  const std::size_t done = appendPlain<Printable>(utf8_, part);
  width_ = done;
  if (done < part.size()) {
    appendRest(part.substr(done));
  }
  if (hasControls_ || utf8_.find("_x") != std::string::npos) {
    utf8_ = xlsx::escapedText(utf8_);
  }
}

void ExcelText::appendRest(std::wstring_view rest) {
  std::size_t width = width_;
  const wchar_t* const end = rest.data() + rest.size();
  for (const wchar_t* at = rest.data(); at != end;) {
    const char32_t c = nextCharacter(at, end);
    char bytes[4];
    const bool isAllowed = c < kEndOfAscii || isXmlCharacter(c);
    if (!isAllowed) {
      loss_.note(c);
    }
    hasControls_ = hasControls_ || isControl(c);
    utf8_.append(bytes, putUtf8(isAllowed ? c : kReplacement, bytes));
    width = c == U'\n' ? 0 : width + widthOf(c);
    width_ = std::max(width_, width);
  }
}

}  // namespace scrivalen
