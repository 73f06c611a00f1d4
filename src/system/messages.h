#pragma once

#include <cstdint>
#include <string>

namespace scrivalen::platform {

/// The system's number for the last call of the platform layer that failed: errno, or GetLastError.
std::uint32_t lastSystemError();

/// The system's number for a disk without room.
std::uint32_t diskFullError();

/// The system's text for such a number, without the line end that some systems put behind it.
std::wstring systemErrorText(std::uint32_t error);

#ifdef _WIN32
inline constexpr bool kHasMessageBox = true;
#else
inline constexpr bool kHasMessageBox = false;
#endif

/// Shows an error in a modal box; does nothing on a system that has none.
void showMessageBox(const wchar_t* title, const wchar_t* text);

}  // namespace scrivalen::platform
