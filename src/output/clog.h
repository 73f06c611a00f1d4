#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The library's log and its version.
struct CLog {
  /// Fills the system's text for an error.
  /// @return the error's number
  static std::uint32_t FormatLastError(std::wstring& message);
  static std::uint32_t FormatLastError(std::wstring& message, std::uint32_t error);

  /// Logs a defect with its place.
  static void Bug(std::wstring_view caption, std::wstring_view source, int line, std::wstring_view message);
  /// Logs a message as one line: line ends become blanks.
  static void Bug2(std::wstring_view message);

  /// The library's name and version; the argument is kept for its callers and changes nothing.
  static std::wstring VersionStr(int kind);
};
