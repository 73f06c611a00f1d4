#pragma once

#include "text/languages/windows_language.h"

#include <string_view>

namespace scrivalen::help {

/// The language of a tag (BCP 47), or of as many of its first subtags as are known; English if none are.
const WindowsLanguage& languageOf(std::string_view tag);

/// The name of a language's code page in HTML.
std::string_view charsetOf(const WindowsLanguage& language);

}  // namespace scrivalen::help
