#pragma once

#include <string_view>

namespace scrivalen::formats {

/// What a user without a help compiler should do.
std::wstring_view helpCompilerAdvice();

/// Whether the help compiler finds the pages beside its project even if the name of their folder has letters outside
/// the code page.
bool findsPagesInAnyProjectFolder();

}  // namespace scrivalen::formats
