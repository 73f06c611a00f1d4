#pragma once

#include "command_support.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace scrivalen::command::test {

/// The program itself as a child process whose standard input the test writes, for what a person at a terminal does.
class RunningCommand {
 public:
  struct Start {
    std::vector<std::string> arguments = {};  ///< names that begin with "@/" mean files of the folder
    std::vector<int> ignored = {};            ///< signals
    std::vector<std::string> variables = {};  ///< NAME=VALUE
    long largestFile = 0;                     ///< bytes; 0: any size
    std::string outputFile = {};              ///< an existing one, for its standard output; empty: that of the test
  };

  RunningCommand(const CommandRun& folder, const Start& start);
  RunningCommand(const RunningCommand&) = delete;
  RunningCommand& operator=(const RunningCommand&) = delete;
  ~RunningCommand();

  void write(std::string_view text) const;
  void closeInput();
  void send(int signal) const;
  /// Waits until the folder has a file more than in the beginning.
  void waitForAFile() const;
  static void waitUntil(const std::function<bool()>& condition);
  /// Whether it has ended; does not wait.
  bool hasEnded();
  /// Waits for its end, not for ever. @return its exit status, or minus the signal that ended it
  int end();
  /// What it wrote to its standard error, the folder's path as "@/"; after its end.
  std::string error() const;

 private:
  const CommandRun& folder_;
  std::size_t filesAtFirst_;
  scrivalen::test::TemporaryFolder errorFolder_;
  std::string errorFile_;
  pid_t process_ = -1;
  int input_ = -1;
  std::optional<int> status_;  // as waitpid says it
};

}  // namespace scrivalen::command::test
