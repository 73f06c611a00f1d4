#pragma once

#include <string_view>

namespace scrivalen::platform {

/// What a user does who has no help compiler.
#ifdef _WIN32
inline constexpr std::wstring_view kHelpCompilerAdvice =
    L"Install the HTML Help compiler: hhc.exe belongs into the folder hhc beside the library, or on the search path.";
#else
inline constexpr std::wstring_view kHelpCompilerAdvice =
    L"The program hhc.exe, which comes with the library, belongs into the folder hhc beside the library's file, or on "
    L"the search path; it runs chmcmd, which the package fp-utils brings.";
#endif

}  // namespace scrivalen::platform
