#pragma once

#include "text/replaced_all.h"
#include "text/utf.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

using scrivalen::replacedAll;
using scrivalen::toUtf8;
using scrivalen::toWide;

/// The parts of a text between separators: one more than there are separators.
std::vector<std::string_view> split(std::string_view text, char separator);

/// @param separator  what is between two parts
std::string joined(const std::vector<std::string_view>& parts, std::string_view separator);

/// A file's name without its extension. A name such as ".md" has none.
std::wstring_view withoutExtension(std::wstring_view fileName);

/// The system's text for its last error.
std::string lastErrorText();

}  // namespace scrivalen::command
