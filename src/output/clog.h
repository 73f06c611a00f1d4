#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The library's log and its version.
struct CLog {
  /// Sets @p message to the system's text for an error, by default the last one.
  /// @return the error's number
  static std::uint32_t FormatLastError(std::wstring& message);
  static std::uint32_t FormatLastError(std::wstring& message, std::uint32_t error);

  /// Logs a defect with its source location.
  static void Bug(std::wstring_view caption, std::wstring_view source, int line, std::wstring_view message);
  /// Logs a message as one line: line breaks become spaces.
  static void Bug2(std::wstring_view message);

  /// The library's name and version; the argument is ignored.
  static std::wstring VersionStr(int kind);
};
