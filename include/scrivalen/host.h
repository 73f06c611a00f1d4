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

/// Tells whether what takes long is to stop. It is asked for every page while a PDF is laid out, many times a second
/// while the help compiler runs, and when a signal has broken off a wait: for a reader of a pipe, or for one that reads
/// on.
using StopHandler = bool (*)();

/// @param handler  null: a line on standard error, as UTF-8, after "scrivalen: "
SCRIVALEN_API void SetLogHandler(LogHandler handler);

/// Compiled help alone shows errors: when its compiler cannot be started.
/// @param handler  null: a modal message box on Windows, which waits for a person; on Linux the log has it
SCRIVALEN_API void SetErrorBoxHandler(ErrorBoxHandler handler);

/// @param handler  null: the system's clock. Every date in every output comes from here, but for those that the help
///                 compiler of Windows writes
SCRIVALEN_API void SetClockHandler(ClockHandler handler);

/// A report that is stopped has failed: its Open or Close returns REPORT_FILE_ERROR, and its working files are removed.
/// With a handler the help compiler runs in a process group of its own on Linux, where a Ctrl+C at the terminal does not
/// reach it; it is ended together with what it has started.
/// @param handler  null: nothing stops
SCRIVALEN_API void SetStopHandler(StopHandler handler);

/// Says where the folders `tmpl`, with the templates, and `hhc`, with the help compiler, are. A program that links the
/// static library needs it unless they are beside the program.
/// @param folder  a path, with or without a separator at its end; copied. Null or empty restores the default, which is
///                the folder of the library's own file, or of the program's when the library is linked into it
SCRIVALEN_API void SetDataFolder(const wchar_t* folder);

}  // namespace scrivalen
