#pragma once

#include <scrivalen/export.h>

#include <cstdint>

/// What a host application may take over. The handlers are process-wide and may be set from any thread; a null
/// handler restores the default. A handler must not raise.
namespace scrivalen {

/// Receives one log message: one line, without a line end. The text is valid during the call only.
using LogHandler = void (*)(const wchar_t* message);

/// Shows an error to a person. Both texts are valid during the call only.
using ErrorBoxHandler = void (*)(const wchar_t* title, const wchar_t* text);

/// Answers the time in seconds since 1970-01-01 00:00 UTC.
using ClockHandler = std::int64_t (*)();

/// Default: a line on standard error, as UTF-8.
SCRIVALEN_API void SetLogHandler(LogHandler handler);

/// Default: a modal message box on Windows, a log line on Linux.
SCRIVALEN_API void SetErrorBoxHandler(ErrorBoxHandler handler);

/// Default: the system's clock. Every date in every output comes from here.
SCRIVALEN_API void SetClockHandler(ClockHandler handler);

/// Says where the folders `tmpl`, with the templates, and `hhc`, with the help compiler, are. A program that links the
/// static library needs it unless they are beside the program.
/// @param folder  a path, with or without a separator at its end; copied. Null or empty restores the default, which is
///                the folder of the library's own file, or of the program's when the library is linked into it
SCRIVALEN_API void SetDataFolder(const wchar_t* folder);

}  // namespace scrivalen
