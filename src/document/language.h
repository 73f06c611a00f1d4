#pragma once

#include <string_view>

namespace scrivalen::document {

/// Whether a language is written from right to left: by the script in its tag (BCP 47), else by the language's usual
/// one.
bool isRightToLeft(std::string_view tag);

}  // namespace scrivalen::document
