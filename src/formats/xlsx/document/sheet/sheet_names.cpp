#include "formats/xlsx/document/sheet/sheet_names.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "text/case_folding/case_folding.h"
#include "text/replaced_all.h"
#include "text/utf.h"

#include <utility>

namespace scrivalen::xlsx {
namespace {

constexpr std::size_t kLongestName = 31;  // UTF-16 code units
constexpr std::string_view kReserved = "history";

// East Asian versions of Excel take the full-width forms of ASCII for the same characters, and two more.
constexpr char32_t kFirstFullWidth = U'\uFF01';
constexpr char32_t kLastFullWidth = U'\uFF5E';
constexpr char32_t kFullWidthYen = U'\uFFE5';

char32_t usualWidth(char32_t c) { return c >= kFirstFullWidth && c <= kLastFullWidth ? c - kFirstFullWidth + U'!' : c; }

template <typename Change>
std::string changed(std::string_view utf8, Change change) {
  std::string result;
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    char bytes[4];
    result.append(bytes, putUtf8(change(c), bytes));
  }
  return result;
}

bool isForbidden(char32_t c) {
  constexpr std::u32string_view kForbidden = U"[]:*?/\\\n\t";
  return c == kFullWidthYen || kForbidden.find(usualWidth(c)) != kForbidden.npos;
}

// A name neither begins nor ends with an apostrophe.
std::string_view trimmedName(std::string_view name) {
  constexpr std::string_view kNotAtTheEnds[] = {" ", "'", "\u2019", "\uFF07"};
  for (bool isTrimmed = false; !isTrimmed;) {
    isTrimmed = true;
    for (const std::string_view part : kNotAtTheEnds) {
      const std::size_t before = name.starts_with(part) ? part.size() : 0;
      name.remove_prefix(before);
      const std::size_t after = name.ends_with(part) ? part.size() : 0;
      name.remove_suffix(after);
      isTrimmed = isTrimmed && before + after == 0;
    }
  }
  return name;
}

std::string legalName(std::string_view wish) {
  std::string name = changed(wish, [](char32_t c) { return isForbidden(c) ? U' ' : c; });
  for (char& c : name) {
    const std::string_view rest(&c, static_cast<std::size_t>(name.data() + name.size() - &c));
    c = beginsWithEscape(rest) ? ' ' : c;
  }
  return std::string(trimmedName(cutToUnits(trimmedName(name), kLongestName)));
}

// Equal for names that some reader takes for the same. LibreOffice takes a dotless i for an i.
std::string folded(std::string_view name) {
  return replacedAll<char>(foldCaseFully(changed(name, usualWidth)), "\u0131", "i");
}

}  // namespace

bool SheetNames::claim(std::string_view name) {
  std::string key = folded(name);
  return key != kReserved && used_.insert(std::move(key)).second;
}

std::string SheetNames::next(std::string_view wish) {
  ++sheets_;
  const std::string legal = legalName(wish);
  const std::string base = legal.empty() ? std::string("Sheet").append(std::to_string(sheets_)) : legal;
  if (claim(base)) {
    return base;
  }
  for (std::size_t& number = numbers_.try_emplace(folded(base), 1).first->second;;) {
    const std::string suffix = std::string(" (").append(std::to_string(++number)).append(")");
    const std::string name = std::string(trimmedName(cutToUnits(base, kLongestName - suffix.size()))).append(suffix);
    if (claim(name)) {
      return name;
    }
  }
}

}  // namespace scrivalen::xlsx
