#include "formats/xlsx/excel_text.h"

#include "formats/xlsx/workbook.h"
#include "text/ascii.h"
#include "text/plain_text.h"
#include "text/utf.h"
#include "text/xml_characters.h"

#include <algorithm>
#include <iterator>

namespace scrivalen {
namespace {

constexpr unsigned kEndOfAscii = 0x80;
using Ascii = PlainBelow<char, kEndOfAscii>;

constexpr std::string_view kEscapedUnderscore = "_x005F";
constexpr std::size_t kEscapeDigits = 4;

// The part that fits into a cell, without splitting a character.
std::wstring_view fitting(std::wstring_view text) {
  if (text.size() <= Workbook::kCellLength / 2) {
    return text;
  }
  std::size_t units = 0;
  const wchar_t* const end = text.data() + text.size();
  for (const wchar_t* at = text.data(); at != end;) {
    const wchar_t* const before = at;
    units += unitsOf(nextCharacter(at, end));
    if (units > Workbook::kCellLength) {
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

bool isHexDigit(char c) { return hexValue(c) >= 0; }

// Whether libxlsxwriter escapes a character, so that its escape begins with an underscore.
bool becomesEscape(char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t'; }

// Whether the underscore at `at` would be read as the beginning of an escape.
bool looksLikeEscape(std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(at);
  if (!rest.starts_with("_x") || rest.size() < 2 + kEscapeDigits + 1) {
    return false;
  }
  const char next = rest[2 + kEscapeDigits];
  return std::all_of(rest.begin() + 2, rest.begin() + 2 + kEscapeDigits, &isHexDigit) &&
         (next == '_' || becomesEscape(next));
}

bool beginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

std::size_t longestLine(std::string_view ascii) {
  std::size_t longest = 0;
  for (std::size_t end = ascii.find('\n'); end != std::string_view::npos; end = ascii.find('\n')) {
    longest = std::max(longest, end);
    ascii.remove_prefix(end + 1);
  }
  return std::max(longest, ascii.size());
}

}  // namespace

void ExcelText::assign(const wchar_t* text) {
  const std::wstring_view whole = text;
  const std::wstring_view part = fitting(whole);
  isCut_ = part.size() < whole.size();
  utf8_.clear();
  const std::size_t done = appendPlain<Ascii>(utf8_, part);
  width_ = longestLine(utf8_);
  if (done < part.size()) {
    appendRest(part.substr(done));
  }
  if (utf8_.find("_x") != std::string::npos) {
    escapeEscapes();
  }
}

void ExcelText::appendRest(std::wstring_view rest) {
  const std::size_t lineBegin = utf8_.rfind('\n') + 1;  // 0 if there is no line break
  std::size_t width = utf8_.size() - lineBegin;
  const wchar_t* const end = rest.data() + rest.size();
  for (const wchar_t* at = rest.data(); at != end;) {
    const char32_t c = nextCharacter(at, end);
    char bytes[4];
    const bool isAllowed = c < kEndOfAscii || isXmlCharacter(c);
    if (!isAllowed) {
      loss_.note(c);
    }
    utf8_.append(bytes, putUtf8(isAllowed ? c : kReplacement, bytes));
    width = c == U'\n' ? 0 : width + widthOf(c);
    width_ = std::max(width_, width);
  }
}

// libxlsxwriter counts the escapes as characters of the cell, so a long text full of them is cut earlier.
void ExcelText::escapeEscapes() {
  std::string escaped;
  std::size_t length = 0;
  for (std::size_t at = 0; at < utf8_.size(); ++at) {
    const bool escape = looksLikeEscape(utf8_, at);
    const std::size_t more = escape ? kEscapedUnderscore.size() + 1 : beginsCharacter(utf8_[at]) ? 1 : 0;
    if (length + more > Workbook::kCellLength) {
      isCut_ = true;
      break;
    }
    length += more;
    if (escape) {
      escaped += kEscapedUnderscore;
    }
    escaped += utf8_[at];
  }
  utf8_ = escaped;
}

}  // namespace scrivalen
