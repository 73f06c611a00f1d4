#pragma once

#include <string_view>

namespace scrivalen {

/// How the log line begins that says that the help compiler could not be started.
inline constexpr const wchar_t* kNotStartedLine = L"HHC Error!";
/// How the reason begins that the report returns for the same failure.
inline constexpr std::wstring_view kNotStartedReason = L"The help compiler could not be started: ";

}  // namespace scrivalen
