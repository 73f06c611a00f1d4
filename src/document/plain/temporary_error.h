#pragma once

#include <string_view>

namespace scrivalen::document {

/// Raises why a private temporary file fails: the system's reason for the call before, or std::bad_alloc. The file's
/// folder is removed, so the text names the folder around it, in which a person looks for room or rights.
/// @param what  "its temporary file cannot be read"
[[noreturn]] void raiseTemporaryError(std::string_view what);
/// The same with a known reason.
[[noreturn]] void raiseTemporaryError(std::string_view what, std::wstring_view reason);

}  // namespace scrivalen::document
