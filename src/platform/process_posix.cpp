#include "platform/process.h"

#include "platform/utf.h"

#include <cerrno>

#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace scrivalen::platform {
namespace {

std::wstring quoted(const std::vector<std::wstring>& arguments) {
  std::wstring line;
  for (const std::wstring& argument : arguments) {
    line += line.empty() ? L"\"" : L" \"";
    line += argument;
    line += L'"';
  }
  return line;
}

int waitFor(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) {
      return -1;
    }
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

ProcessResult runProgram(const std::vector<std::wstring>& arguments) {
  std::vector<std::string> texts;
  for (const std::wstring& argument : arguments) {
    appendUtf8(texts.emplace_back(), argument);
  }
  std::vector<char*> argv;
  for (std::string& text : texts) {
    argv.push_back(text.data());
  }
  argv.push_back(nullptr);

  ProcessResult result;
  result.commandLine = quoted(arguments);
  pid_t process = 0;
  const int error = ::posix_spawnp(&process, argv.front(), nullptr, nullptr, argv.data(), environ);
  if (error != 0) {
    result.error = static_cast<std::uint32_t>(error);
    return result;
  }
  result.started = true;
  result.exitStatus = waitFor(process);
  return result;
}

}  // namespace scrivalen::platform
