#include "formats/xlsx/document/sheet/sheet_names.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "text/letter_case.h"
#include "text/utf.h"

namespace scrivalen::xlsx {
namespace {

constexpr std::size_t kLongestName = 31;  // UTF-16 code units
constexpr std::string_view kReserved = "history";

std::string loweredText(std::string_view text) {
  std::string lowered;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    char bytes[4];
    lowered.append(bytes, putUtf8(toLowerCase(c), bytes));
  }
  return lowered;
}

// A name neither begins nor ends with an apostrophe.
std::string trimmedName(std::string_view name) {
  constexpr std::string_view kNotAtTheEnds = " '";
  const std::size_t begin = name.find_first_not_of(kNotAtTheEnds);
  return begin == name.npos ? std::string()
                            : std::string(name.substr(begin, name.find_last_not_of(kNotAtTheEnds) + 1 - begin));
}

std::string legalName(std::string_view wish) {
  std::string name(wish);
  for (char& c : name) {
    constexpr std::string_view kForbidden = "[]:*?/\\\n\t";
    const std::string_view rest(&c, static_cast<std::size_t>(name.data() + name.size() - &c));
    c = kForbidden.find(c) != kForbidden.npos || beginsWithEscape(rest) ? ' ' : c;
  }
  return trimmedName(cutToUnits(trimmedName(name), kLongestName));
}

}  // namespace

bool SheetNames::claim(const std::string& name) {
  const std::string lowered = loweredText(name);
  return lowered != kReserved && used_.insert(lowered).second;
}

std::string SheetNames::next(std::string_view wish) {
  ++sheets_;
  const std::string legal = legalName(wish);
  const std::string base = legal.empty() ? std::string("Sheet").append(std::to_string(sheets_)) : legal;
  if (claim(base)) {
    return base;
  }
  for (std::size_t number = 2;; ++number) {
    const std::string suffix = std::string(" (").append(std::to_string(number)).append(")");
    const std::string name = trimmedName(cutToUnits(base, kLongestName - suffix.size())).append(suffix);
    if (claim(name)) {
      return name;
    }
  }
}

}  // namespace scrivalen::xlsx
