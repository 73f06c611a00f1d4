#pragma once

#include "command_support.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace scrivalen::command::test {

/// The command as a child process. The test writes its standard input and sends it signals, as a user at a terminal
/// does.
class RunningCommand {
 public:
  struct Start {
    std::vector<std::string> arguments = {};  ///< one that begins with "@/" names a file in the folder
    std::vector<int> ignored = {};            ///< signals
    std::vector<std::string> variables = {};  ///< NAME=VALUE
    long largestFile = 0;                     ///< bytes; 0: any size
    std::string outputFile = {};              ///< an existing file for its standard output; empty: the test's
  };

  RunningCommand(const CommandRun& folder, const Start& start);
  RunningCommand(const RunningCommand&) = delete;
  RunningCommand& operator=(const RunningCommand&) = delete;
  ~RunningCommand();

  void write(std::string_view text) const;
  void closeInput();
  void send(int signal) const;
  /// Waits until the folder has more files than at the start.
  void waitForAFile() const;
  static void waitUntil(const std::function<bool()>& condition);
  /// Whether it has ended; does not wait.
  bool hasEnded();
  /// Waits for its end, up to a time limit. @return its exit status, or minus the signal that ended it
  int end();
  /// Its standard error, with "@/" for the path of the folder. Call it after the end.
  std::string error() const;

 private:
  const CommandRun& folder_;
  std::size_t filesAtFirst_;
  scrivalen::test::TemporaryFolder errorFolder_;
  std::string errorFile_;
  pid_t process_ = -1;
  int input_ = -1;
  std::optional<int> status_;  // as waitpid reports it
};

}  // namespace scrivalen::command::test
