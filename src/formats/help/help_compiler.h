#pragma once

#include <string_view>

namespace scrivalen::formats {

/// What a user without a help compiler should do.
std::wstring_view helpCompilerAdvice();

}  // namespace scrivalen::formats
