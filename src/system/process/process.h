#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace scrivalen {

struct ProcessResult {
  bool started = false;
  std::uint32_t error = 0;   ///< the system's error number if it was not started
  int exitStatus = 0;        ///< if it was started; -1 when a signal or this function ended it
  int signal = 0;            ///< the signal that ended it; 0 when none did
  std::wstring commandLine;  ///< what was run, each argument in double quotes
  /// The lines in the first 4 KiB of its standard error. None on Windows, where it inherits no handles.
  std::vector<std::wstring> messages;
};

struct ProcessSetup {
  std::wstring folder;             ///< the program's current folder; empty: that of this process
  std::function<bool()> isToStop;  ///< asked many times a second whether to end the program; must not throw
};

/// Starts a program, without a window and without a shell, and waits for it to exit. It inherits no open files but the
/// standard ones, and SIGPIPE ends it even if this process ignores that signal. When work is to stop (stop.h, or the
/// setup), the program is ended, on Linux with everything that it has started: for that it gets its own process group.
/// @param arguments  the program first: a path, or a name to look up on the search path
/// @param variables  "NAME=value": changes to the environment for the program; ignored on Windows
ProcessResult runProgram(const std::vector<std::wstring>& arguments, const std::vector<std::wstring>& variables = {},
                         const ProcessSetup& setup = {});

}  // namespace scrivalen
