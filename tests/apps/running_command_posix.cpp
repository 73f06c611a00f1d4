#include "running_command_posix.h"

#include "text/replaced_all.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace scrivalen::command::test {
namespace {

constexpr std::chrono::seconds kPatience{30};
constexpr std::chrono::milliseconds kPause{2};

// Runs in the child between fork and exec.
void prepare(const RunningCommand::Start& start, const std::string& errorFile, int input) {
  ::dup2(input, STDIN_FILENO);
  if (!start.outputFile.empty()) {
    ::dup2(::open(start.outputFile.c_str(), O_WRONLY), STDOUT_FILENO);
  }
  ::dup2(::open(errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ}) {
    std::signal(signal, SIG_DFL);
  }
  for (const int signal : start.ignored) {
    std::signal(signal, SIG_IGN);
  }
  for (const std::string& variable : start.variables) {
    const std::size_t equals = variable.find('=');
    ::setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
  }
  if (start.largestFile > 0) {
    const rlimit limit{static_cast<rlim_t>(start.largestFile), static_cast<rlim_t>(start.largestFile)};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
}

}  // namespace

RunningCommand::RunningCommand(const CommandRun& folder, const Start& start)
    : folder_(folder), filesAtFirst_(folder.names().size()), errorFile_(scrivalen::toUtf8(errorFolder_ / L"error")) {
  std::signal(SIGPIPE, SIG_IGN);  // the command may end before it has read everything
  std::vector<std::string> arguments = {SCRIVALEN_COMMAND};
  for (const std::string& argument : start.arguments) {
    arguments.push_back(scrivalen::replacedAll<char>(argument, "@/", folder.path("")));
  }
  std::vector<char*> pointers;
  for (std::string& argument : arguments) {
    pointers.push_back(argument.data());
  }
  pointers.push_back(nullptr);
  int ends[2] = {};
  EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
  process_ = ::fork();
  if (process_ == 0) {
    prepare(start, errorFile_, ends[0]);
    ::execv(pointers.front(), pointers.data());
    std::_Exit(127);
  }
  EXPECT_GT(process_, 0);
  ::close(ends[0]);
  input_ = ends[1];
}

RunningCommand::~RunningCommand() {
  if (!hasEnded()) {
    send(SIGKILL);
    end();
  }
  closeInput();
}

void RunningCommand::write(std::string_view text) const {
  while (!text.empty()) {
    const ssize_t written = ::write(input_, text.data(), text.size());
    if (written <= 0) {
      return;
    }
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void RunningCommand::closeInput() {
  if (input_ >= 0) {
    ::close(input_);
  }
  input_ = -1;
}

void RunningCommand::send(int signal) const { ::kill(process_, signal); }

void RunningCommand::waitForAFile() const {
  waitUntil([this] { return folder_.names().size() > filesAtFirst_; });
}

void RunningCommand::waitUntil(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    ASSERT_LT(std::chrono::steady_clock::now(), end) << "timed out";
    std::this_thread::sleep_for(kPause);
  }
}

bool RunningCommand::hasEnded() {
  int status = 0;
  if (!status_ && ::waitpid(process_, &status, WNOHANG) == process_) {
    status_ = status;
  }
  return status_.has_value();
}

int RunningCommand::end() {
  waitUntil([this] { return hasEnded(); });
  const int status = status_.value_or(0);
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

std::string RunningCommand::error() const {
  return scrivalen::replacedAll<char>(scrivalen::test::bytesOf(scrivalen::toWide(errorFile_)), folder_.path(""), "@/");
}

}  // namespace scrivalen::command::test
