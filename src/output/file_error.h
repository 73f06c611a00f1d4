#pragma once

#include <string>
#include <string_view>

namespace scrivalen {

/// The operation on a file that failed.
enum class FileError { Open, Write };

/// How the sentence begins that says that a write failed; the file's name comes next, and an apostrophe.
inline constexpr std::wstring_view kWriteErrorStart = L"File write error for '";

/// The message for a file error: "File open/create error for '%s'. %s" or "File write error for '%s'. %s".
std::wstring fileErrorText(FileError error, std::wstring_view file, std::wstring_view reason);

/// Logs that message, or only the reason when memory runs out.
void logFileError(FileError error, std::wstring_view file, const wchar_t* reason) noexcept;

/// The reason when an output that is still open is to open another file.
inline constexpr const wchar_t* kStillOpen = L"The report is still open.";

}  // namespace scrivalen
