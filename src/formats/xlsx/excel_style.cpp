#include "formats/xlsx/excel_style.h"

#include "text/ascii.h"
#include "text/fmt.h"
#include "text/plain_text.h"
#include "text/utf.h"
#include "text/xml_characters.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace scrivalen {
namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n\f";

std::wstring_view trimmed(std::wstring_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::wstring_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// An unterminated comment extends to the end of the text.
std::wstring withoutComments(std::wstring_view text) {
  std::wstring result;
  for (;;) {
    const std::size_t begin = text.find(L"/*");
    result += text.substr(0, begin);
    if (begin == std::wstring_view::npos) {
      return result;
    }
    result += L' ';
    const std::size_t end = text.find(L"*/", begin + 2);
    text = end == std::wstring_view::npos ? std::wstring_view() : text.substr(end + 2);
  }
}

// Editors begin a file with one, and concatenated files have others inside.
constexpr wchar_t kByteOrderMark = 0xFEFF;

struct Part {
  std::wstring_view text;
  wchar_t end;  // the character after it; 0 at the end of the text
};

// Takes the part before the first of some characters off a text, and that character; characters in quotes do not count.
Part takeUntil(std::wstring_view& text, std::wstring_view ends) {
  wchar_t quote = 0;
  std::size_t at = 0;
  for (; at < text.size() && (quote || ends.find(text[at]) == std::wstring_view::npos); ++at) {
    if (quote) {
      quote = text[at] == quote ? L'\0' : quote;
    } else if (text[at] == L'"' || text[at] == L'\'') {
      quote = text[at];
    }
  }
  const bool isEnd = at == text.size();
  const Part part{text.substr(0, at), isEnd ? L'\0' : text[at]};
  text.remove_prefix(isEnd ? at : at + 1);
  return part;
}

std::optional<double> numberOf(std::wstring_view text, std::wstring_view unit, double least, double most) {
  if (!unit.empty() && endsWithIgnoringCase(text, unit)) {
    text = trimmed(text.substr(0, text.size() - unit.size()));
  }
  const std::string digits = toUtf8(text);
  double number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size() || !(number >= least && number <= most)) {
    return std::nullopt;
  }
  return number;
}

// Spreadsheet programs accept no longer names.
constexpr std::size_t kLongestFontName = 31;

// The name becomes an XML attribute, which does not preserve line breaks.
bool isInvalidInFontName(wchar_t c) {
  const auto value = characterValue(c);
  return value < 0x20 || !(isSurrogate(value) || isXmlCharacter(value)) ||
         std::wstring_view(L"\"'<>").find(c) != std::wstring_view::npos;
}

std::optional<std::wstring> fontOf(std::wstring_view list) {
  std::wstring_view name = trimmed(takeUntil(list, L",").text);
  if (name.size() >= 2 && (name.front() == L'"' || name.front() == L'\'') && name.back() == name.front()) {
    name = trimmed(name.substr(1, name.size() - 2));
  }
  if (name.empty() || name.size() > kLongestFontName || std::any_of(name.begin(), name.end(), &isInvalidInFontName)) {
    return std::nullopt;
  }
  return std::wstring(name);
}

struct Rules {
  CellStyle sheet;
  CellStyle cell;
  CellStyle bold;
  std::optional<double> columnWidth;
  std::optional<double> frozenRows;
};

template <typename Value>
bool keep(std::optional<Value>& place, const std::optional<Value>& value) {
  if (value) {
    place = value;
  }
  return value.has_value();
}

struct CellProperty {
  std::wstring_view name;
  bool (*set)(CellStyle& style, std::wstring_view value);
};

constexpr CellProperty kCellProperties[] = {
    {L"font-family", [](CellStyle& style, std::wstring_view value) { return keep(style.fontFamily, fontOf(value)); }},
    {L"font-size",
     [](CellStyle& style, std::wstring_view value) { return keep(style.fontSize, numberOf(value, L"pt", 1, 409)); }},
    {L"color", [](CellStyle& style, std::wstring_view value) { return keep(style.color, colorOf(value)); }},
    {L"background-color",
     [](CellStyle& style, std::wstring_view value) { return keep(style.background, colorOf(value)); }}};

struct SheetProperty {
  std::wstring_view name;
  bool (*set)(Rules& rules, std::wstring_view value);
};

constexpr double kNarrowestColumn = 1;  // digits; a column of width 0 is hidden
constexpr double kWidestColumn = 255;
constexpr double kMaxFrozenRows = 1000;

bool setColumnWidth(Rules& rules, std::wstring_view value) {
  return keep(rules.columnWidth, numberOf(value, L"", kNarrowestColumn, kWidestColumn));
}

bool setFrozenRows(Rules& rules, std::wstring_view value) {
  const std::optional<double> rows = numberOf(value, L"", 0, kMaxFrozenRows);
  return rows == std::floor(rows.value_or(0)) && keep(rules.frozenRows, rows);
}

constexpr SheetProperty kSheetProperties[] = {{L"column-width", &setColumnWidth}, {L"freeze-rows", &setFrozenRows}};

struct RuleName {
  std::wstring_view name;
  CellStyle Rules::*style;
};

constexpr RuleName kRules[] = {{L"sheet", &Rules::sheet}, {L"cell", &Rules::cell}, {L"bold", &Rules::bold}};

template <typename Row, std::size_t size>
const Row* find(const Row (&table)[size], std::wstring_view name) {
  for (const Row& row : table) {
    if (equalIgnoringCase(row.name, name)) {
      return &row;
    }
  }
  return nullptr;
}

class Reader {
 public:
  Reader(Rules& rules, const std::function<void(const std::wstring&)>& problem) : rules_(rules), problem_(problem) {}

  void read(std::wstring_view text) {
    while (!trimmed(text).empty()) {
      readRule(text);
    }
  }

 private:
  void readRule(std::wstring_view& text) {
    const Part head = takeUntil(text, L"{}");
    const std::wstring_view name = trimmed(head.text);
    if (head.end != L'{') {
      return report(L"'%s' is no rule", name);
    }
    std::wstring_view block = takeUntil(text, L"}").text;
    const RuleName* const rule = find(kRules, name);
    if (!rule) {
      return report(L"there is no rule '%s'", name);
    }
    while (!block.empty()) {
      readDeclaration(*rule, takeUntil(block, L";").text);
    }
  }

  void readDeclaration(const RuleName& rule, std::wstring_view declaration) {
    declaration = trimmed(declaration);
    if (declaration.empty()) {
      return;
    }
    const std::size_t colon = declaration.find(L':');
    const std::wstring_view name = trimmed(declaration.substr(0, colon));
    if (colon == std::wstring_view::npos) {
      return report(L"'%s' is no declaration", declaration);
    }
    const std::wstring_view value = trimmed(declaration.substr(colon + 1));
    const SheetProperty* const ofSheet = rule.style == &Rules::sheet ? find(kSheetProperties, name) : nullptr;
    const CellProperty* const ofCell = find(kCellProperties, name);
    if (!ofSheet && !ofCell) {
      return problem_(FMT::Format(L"'%s' has no '%s'", rule.name, name));
    }
    if (!(ofSheet ? ofSheet->set(rules_, value) : ofCell->set(rules_.*rule.style, value))) {
      problem_(FMT::Format(L"'%s' is no value for '%s'", value, name));
    }
  }

  void report(std::wstring_view format, std::wstring_view part) { problem_(FMT::Format(format, part)); }

  Rules& rules_;
  const std::function<void(const std::wstring&)>& problem_;
};

template <typename Value>
const std::optional<Value>& either(const std::optional<Value>& first, const std::optional<Value>& second) {
  return first ? first : second;
}

CellStyle cascaded(const CellStyle& style, const CellStyle& sheet) {
  return {either(style.fontFamily, sheet.fontFamily), either(style.fontSize, sheet.fontSize),
          either(style.color, sheet.color), either(style.background, sheet.background)};
}

}  // namespace

SheetStyle readStyle(std::wstring_view text, const std::function<void(const std::wstring&)>& problem) {
  Rules rules;
  std::wstring bare = withoutComments(text);
  if (std::erase(bare, kByteOrderMark) > 0) {
    problem(L"a byte-order mark is no part of a style sheet");
  }
  Reader(rules, problem).read(bare);
  return {cascaded(rules.cell, rules.sheet), cascaded(rules.bold, rules.sheet), rules.columnWidth,
          static_cast<std::uint32_t>(rules.frozenRows.value_or(0))};
}

CellColors readColors(std::wstring_view text) {
  const std::size_t semicolon = text.find(L';');
  const bool hasBoth = semicolon != std::wstring_view::npos;
  const std::wstring_view font = hasBoth ? trimmed(text.substr(0, semicolon)) : std::wstring_view();
  const std::wstring_view fill = trimmed(hasBoth ? text.substr(semicolon + 1) : text);
  CellColors colors{colorOf(font), colorOf(fill), true};
  colors.isUnderstood = (font.empty() || colors.color) && (fill.empty() || colors.background);
  return colors;
}

}  // namespace scrivalen
