#pragma once

#include <cstdint>
#include <string>

namespace scrivalen {

/// The number that the system gives for its last call that failed: errno, or GetLastError.
std::uint32_t lastSystemError();

/// Restores such a number, where what was done since is of no interest.
void setLastSystemError(std::uint32_t error);

/// Keeps the reason of a failure while something is cleaned up.
class SystemErrorKeeper {
 public:
  SystemErrorKeeper() : error_(lastSystemError()) {}
  SystemErrorKeeper(const SystemErrorKeeper&) = delete;
  SystemErrorKeeper& operator=(const SystemErrorKeeper&) = delete;
  ~SystemErrorKeeper() { setLastSystemError(error_); }

 private:
  std::uint32_t error_;
};

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

}  // namespace scrivalen
