#pragma once

#include <string>
#include <string_view>

namespace scrivalen {

/// What failed with a file.
enum class FileError { Open, Write };

/// How the sentence begins that says that a write failed; the file's name comes next, and an apostrophe.
inline constexpr std::wstring_view kWriteErrorStart = L"File write error for '";

/// The sentence on a file and the reason: "File open/create error for '%s'. %s", "File write error for '%s'. %s".
std::wstring fileErrorText(FileError error, std::wstring_view file, std::wstring_view reason);

/// Logs that sentence; without memory for it, the reason alone.
void logFileError(FileError error, std::wstring_view file, const wchar_t* reason) noexcept;

/// The reason of an output that is asked to open another file.
inline constexpr const wchar_t* kStillOpen = L"The report is still open.";

}  // namespace scrivalen
