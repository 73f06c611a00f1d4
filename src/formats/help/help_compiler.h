#pragma once

#include <string_view>

namespace scrivalen::formats {

/// What a user does who has no help compiler.
std::wstring_view helpCompilerAdvice();

}  // namespace scrivalen::formats
