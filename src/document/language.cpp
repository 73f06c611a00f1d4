#include "document/language.h"

#include "text/ascii.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

namespace scrivalen::document {
namespace {

constexpr std::string_view kScripts[] = {"adlm", "arab", "aran", "hebr", "mand", "mend",
                                         "nkoo", "rohg", "samr", "syrc", "thaa", "yezi"};
constexpr std::string_view kLanguages[] = {"ar", "arc", "arz", "ckb", "dv", "fa", "he",  "iw", "ji", "khw",
                                           "ks", "mzn", "nqo", "pnb", "ps", "sd", "syr", "ug", "ur", "yi"};

template <std::size_t kCount>
bool isOneOf(const std::string_view (&list)[kCount], std::string_view text) {
  return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

bool isScript(std::string_view subtag) {
  return subtag.size() == 4 && std::all_of(subtag.begin(), subtag.end(), [](char c) { return isAsciiLetter(c); });
}

}  // namespace

bool isRightToLeft(std::string_view tag) {
  const std::string lowered = asciiLowered(tag);
  std::string_view rest = lowered;
  const std::string_view language = rest.substr(0, rest.find('-'));
  while (rest.find('-') != rest.npos) {
    rest.remove_prefix(rest.find('-') + 1);
    const std::string_view subtag = rest.substr(0, rest.find('-'));
    if (subtag.size() == 1) {
      break;  // an extension
    }
    if (isScript(subtag)) {
      return isOneOf(kScripts, subtag);
    }
  }
  return isOneOf(kLanguages, language);
}

}  // namespace scrivalen::document
