#pragma once

#include <string_view>

namespace scrivalen::help {

/// A language as a help file states it.
struct Language {
  int identifier;         ///< of the locale on Windows (LCID)
  int codePage;           ///< the number of its Windows code page
  std::string_view name;  ///< in English
};

/// The language of a tag (BCP 47), or of as many of its first subtags as are known; English if none are.
Language languageOf(std::string_view tag);

/// The name of a language's code page in HTML.
std::string_view charsetOf(const Language& language);

}  // namespace scrivalen::help
