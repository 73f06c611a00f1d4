#pragma once

#include <string_view>

namespace scrivalen::formats {

/// How the log line begins that says that the compiler could not be started.
inline constexpr const wchar_t* kNotStartedLine = L"HHC Error!";
/// How the reason begins that the report returns for the same failure.
inline constexpr std::wstring_view kNotStartedReason = L"The help compiler could not be started: ";

/// What a user without a help compiler should do.
std::wstring_view helpCompilerAdvice();

/// Whether the help compiler finds the pages beside its project even if the name of their folder has letters outside
/// the code page.
bool findsPagesInAnyProjectFolder();

}  // namespace scrivalen::formats
