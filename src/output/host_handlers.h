#pragma once

#include <cstdint>
#include <string>

namespace scrivalen {

// Each calls the host's handler, or the default if the host has set none.
void sendToLog(const wchar_t* line);
void showErrorBox(const wchar_t* title, const wchar_t* text);
/// Whether an error box is only a log line: the host has set no handler, and the system has no message boxes.
bool isErrorBoxLogged();
/// Seconds since 1970-01-01 UTC.
std::int64_t currentTime();

/// A path in the folder that contains the templates and the help compiler: the host's data folder if it has set one,
/// otherwise the library's own file; empty when the path of that file is unknown.
std::wstring homePath();

}  // namespace scrivalen
