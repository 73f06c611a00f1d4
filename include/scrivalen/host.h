#pragma once

#include <scrivalen/export.h>

#include <cstdint>

/// What a host application may take over. The handlers are process-wide and may be set from any thread; a null handler
/// restores the default. A handler is called in the thread that uses the report, and so in several threads at once
/// where several are used; it must not raise.
namespace scrivalen {

/// Receives one log message: one line, without a line end. The text is valid during the call only.
using LogHandler = void (*)(const wchar_t* message);

/// Shows an error to a person. Both texts are valid during the call only.
using ErrorBoxHandler = void (*)(const wchar_t* title, const wchar_t* text);

/// Returns the time in seconds since 1970-01-01 00:00 UTC.
using ClockHandler = std::int64_t (*)();

/// @param handler  null: a line on standard error, as UTF-8, after "scrivalen: "
SCRIVALEN_API void SetLogHandler(LogHandler handler);

/// Compiled help alone shows errors: when its compiler cannot be started.
/// @param handler  null: a modal message box on Windows, which waits for a person; on Linux the log has it
SCRIVALEN_API void SetErrorBoxHandler(ErrorBoxHandler handler);

/// @param handler  null: the system's clock. Every date in every output comes from here, but for those that the help
///                 compiler of Windows writes
SCRIVALEN_API void SetClockHandler(ClockHandler handler);

/// Says where the folders `tmpl`, with the templates, and `hhc`, with the help compiler, are. A program that links the
/// static library needs it unless they are beside the program.
/// @param folder  a path, with or without a separator at its end; copied. Null or empty restores the default, which is
///                the folder of the library's own file, or of the program's when the library is linked into it
SCRIVALEN_API void SetDataFolder(const wchar_t* folder);

}  // namespace scrivalen
