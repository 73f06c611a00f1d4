#pragma once

#include <string_view>

namespace scrivalen {

/// A language as Windows knows it.
struct WindowsLanguage {
  std::string_view tag;        ///< BCP 47, in lower case
  int identifier = 0;          ///< of the locale (LCID)
  int codePage = 0;            ///< the number of its ANSI code page
  std::string_view name = {};  ///< in English
};

/// The language of a tag (BCP 47), or of as many of its first subtags as are known; null if none are.
const WindowsLanguage* windowsLanguageOf(std::string_view tag);

}  // namespace scrivalen
