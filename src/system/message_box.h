#pragma once

namespace scrivalen::platform {

#ifdef _WIN32
inline constexpr bool kHasMessageBox = true;
#else
inline constexpr bool kHasMessageBox = false;
#endif

/// Shows an error the system's own way: a modal box on Windows, a line of the log where there is none.
void showSystemMessageBox(const wchar_t* title, const wchar_t* text);

}  // namespace scrivalen::platform
