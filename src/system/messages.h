#pragma once

#include <cstdint>
#include <string>

namespace scrivalen {

/// The system's error number for its last failed call: errno, or GetLastError.
std::uint32_t lastSystemError();

/// Restores such a number after calls whose own errors do not matter.
void setLastSystemError(std::uint32_t error);

/// Preserves the reason of a failure during a cleanup.
class SystemErrorKeeper {
 public:
  SystemErrorKeeper() : error_(lastSystemError()) {}
  SystemErrorKeeper(const SystemErrorKeeper&) = delete;
  SystemErrorKeeper& operator=(const SystemErrorKeeper&) = delete;
  ~SystemErrorKeeper() { setLastSystemError(error_); }

 private:
  std::uint32_t error_;
};

/// The system's error number for a full disk.
std::uint32_t diskFullError();

/// Whether an error number says that memory ran out.
bool isOutOfMemoryError(std::uint32_t error);

/// The system's text for an error number, without the line break that some systems append.
std::wstring systemErrorText(std::uint32_t error);

#ifdef _WIN32
inline constexpr bool kHasMessageBox = true;
#else
inline constexpr bool kHasMessageBox = false;
#endif

/// Shows an error in a modal message box; does nothing on a system that has none.
void showMessageBox(const wchar_t* title, const wchar_t* text);

}  // namespace scrivalen
