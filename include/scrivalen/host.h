#pragma once

#include <scrivalen/export.h>

#include <cstdint>

/// Services that a host application may take over. The handlers are process-wide and may be set from any thread; a null
/// handler restores the default. A handler is called on the thread that uses the report, so with several threads it may
/// be called concurrently. It must not throw.
namespace scrivalen {

/// Receives one log message: a single line without a line end. The text is valid during the call only.
using LogHandler = void (*)(const wchar_t* message);

/// Shows an error to the user. Both texts are valid during the call only.
using ErrorBoxHandler = void (*)(const wchar_t* title, const wchar_t* text);

/// Returns the time in seconds since 1970-01-01 00:00 UTC.
using ClockHandler = std::int64_t (*)();

/// Returns whether to stop the current long operation. It is called for every page while a PDF is laid out, many times
/// a second while the help compiler runs, and when a signal interrupts a wait for a pipe: for its reader to open it, or
/// to read on.
using StopHandler = bool (*)();

/// @param handler  null: a line on standard error, as UTF-8, after "scrivalen: "
SCRIVALEN_API void SetLogHandler(LogHandler handler);

/// Only compiled help shows an error: when its compiler cannot be started.
/// @param handler  null: a modal message box on Windows, which waits for the user; a log line on Linux
SCRIVALEN_API void SetErrorBoxHandler(ErrorBoxHandler handler);

/// @param handler  null: the system's clock. Every date in every output comes from here, except those that the help
///                 compiler on Windows writes
SCRIVALEN_API void SetClockHandler(ClockHandler handler);

/// A stopped report fails: its Open or Close returns REPORT_FILE_ERROR, and its temporary files are removed. On Linux,
/// with a handler set, the help compiler runs in its own process group, which a Ctrl+C at the terminal does not reach;
/// stopping it also ends the processes it started.
/// @param handler  null: operations are never stopped
SCRIVALEN_API void SetStopHandler(StopHandler handler);

/// Sets the folder that contains `tmpl`, with the templates, `fonts`, with the fonts of PDF documents, and `hhc`, with
/// the help compiler. A program that links the static library must call it unless they are beside the program.
/// @param folder  a path, with or without a trailing separator; copied. Null or empty restores the default: the folder
///                of the library's own file, or of the program when the library is linked statically
SCRIVALEN_API void SetDataFolder(const wchar_t* folder);

}  // namespace scrivalen
