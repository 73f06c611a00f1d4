#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen {

struct ProcessResult {
  bool started = false;
  std::uint32_t error = 0;   ///< the system's number when it was not started
  int exitStatus = 0;        ///< when it was started; -1 when a signal or this function ended it
  int signal = 0;            ///< the signal that ended it; 0 when none did
  std::wstring commandLine;  ///< what was run, each argument in double quotes
  /// The lines that it wrote to its standard error, of the first 4 KiB. None on Windows, where it gets no handles.
  std::vector<std::wstring> messages;
};

/// Starts a program, without a window and without a shell, and waits for its end. It gets no open file of this process
/// but the standard ones, and a lost reader ends it even where this process ignores that. When work is to stop
/// (stop.h), the program is ended, on Linux with all that it has started: for that it gets a process group of its own.
/// @param arguments  the program first: a path, or a name that is looked for on the search path
/// @param variables  "NAME=value": changes to this process's environment for the program; on Windows it always gets
/// that
///                   environment unchanged
ProcessResult runProgram(const std::vector<std::wstring>& arguments, const std::vector<std::wstring>& variables = {});

}  // namespace scrivalen
