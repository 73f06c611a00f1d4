#pragma once

#include <cstdint>
#include <string>

namespace scrivalen {

// Each goes to the host's handler, or to the default where the host has set none.
void sendToLog(const wchar_t* line);
void showErrorBox(const wchar_t* title, const wchar_t* text);
/// Whether an error box is no more than a line of the log: the host has no handler for it, and the system has no boxes.
bool isErrorBoxLogged();
/// Seconds since 1970-01-01 UTC.
std::int64_t currentTime();

/// A path whose folder has the templates and the help compiler in it: the library's own file, unless the host has said
/// otherwise; empty when the system does not know that file.
std::wstring homePath();

}  // namespace scrivalen
