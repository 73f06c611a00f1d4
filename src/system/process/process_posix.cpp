#include "system/process/process.h"

#include "system/files/files.h"
#include "system/process/stop.h"
#include "text/utf.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <sstream>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace scrivalen {
namespace {

constexpr std::size_t kMaxMessageBytes = 4096;
constexpr int kPollMilliseconds = 50;
constexpr std::chrono::milliseconds kPauseBetweenRequests{500};
constexpr int kMaxRequests = 4;

std::wstring quoted(const std::vector<std::wstring>& arguments) {
  std::wstring line;
  for (const std::wstring& argument : arguments) {
    line += line.empty() ? L"\"" : L" \"";
    line += argument;
    line += L'"';
  }
  return line;
}

// Ends a program and what it has started once work is to stop: first with SIGTERM, so that they can clean up. A shell
// that is just starting another program may lose a signal, so several are sent.
class Stopper {
 public:
  /// @param hasGroup  whether the process leads its own group
  Stopper(pid_t process, bool hasGroup, const std::function<bool()>& isToStop)
      : target_(hasGroup ? -process : process), isToStop_(isToStop) {}

  void poll() {
    if (!isStopRequested() && !(isToStop_ && isToStop_())) {
      return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now >= nextRequest_) {
      nextRequest_ = now + kPauseBetweenRequests;
      ::kill(target_, ++requests_ > kMaxRequests ? SIGKILL : SIGTERM);
    }
  }

 private:
  pid_t target_;
  const std::function<bool()>& isToStop_;
  int requests_ = 0;
  std::chrono::steady_clock::time_point nextRequest_;
};

// Most programs exit as soon as their standard error is closed, so the first pauses are short.
void waitFor(pid_t process, Stopper& stopper, ProcessResult& result) {
  result.exitStatus = -1;
  int status = 0;
  int pause = 1;
  pid_t ended = 0;
  while ((ended = ::waitpid(process, &status, WNOHANG)) != process) {
    if (ended < 0 && errno != EINTR) {
      return;
    }
    ::poll(nullptr, 0, pause);
    pause = std::min(2 * pause, kPollMilliseconds);
    stopper.poll();
  }
  if (WIFEXITED(status)) {
    result.exitStatus = WEXITSTATUS(status);
  } else if (WIFSIGNALED(status)) {
    result.signal = WTERMSIG(status);
  }
}

// A pipe; programs that are started inherit neither end.
class Pipe {
 public:
  Pipe() : error_(::pipe2(ends_, O_CLOEXEC) == 0 ? 0 : errno) {}
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    closeEnd(ends_[0]);
    closeEnd(ends_[1]);
  }

  int error() const { return error_; }
  int writingEnd() const { return ends_[1]; }
  void closeWritingEnd() { closeEnd(ends_[1]); }

  // Reads until all writers have closed the pipe, and keeps the beginning as far as it fits into the capacity of
  // `kept`.
  void readAll(std::string& kept, Stopper& stopper) const {
    char chunk[4096];
    for (;;) {
      waitForBytes(stopper);
      const ssize_t count = ::read(ends_[0], chunk, sizeof chunk);
      if (count > 0) {
        kept.append(chunk, std::min(static_cast<std::size_t>(count), kept.capacity() - kept.size()));
      } else if (count == 0 || errno != EINTR) {
        return;
      }
    }
  }

 private:
  void waitForBytes(Stopper& stopper) const {
    pollfd end{ends_[0], POLLIN, 0};
    int ready = 0;
    do {
      stopper.poll();
      ready = ::poll(&end, 1, kPollMilliseconds);
    } while (ready == 0 || (ready < 0 && errno == EINTR));
  }

  static void closeEnd(int& end) {
    if (end >= 0) {
      ::close(end);
    }
    end = -1;
  }

  int ends_[2] = {-1, -1};
  int error_;
};

// The open files of a program that is started: the standard streams, with the given file as its standard error; and its
// current folder. A glibc before 2.34 cannot close the files that the host lets every program inherit.
class StandardFiles {
 public:
  StandardFiles(int standardError, const std::string& folder) {
    keep(::posix_spawn_file_actions_init(&actions_));
    keep(::posix_spawn_file_actions_adddup2(&actions_, standardError, STDERR_FILENO));
    if (!folder.empty()) {
      keep(::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()));
    }
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 34)
    keep(::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1));
#endif
  }
  StandardFiles(const StandardFiles&) = delete;
  StandardFiles& operator=(const StandardFiles&) = delete;
  ~StandardFiles() { ::posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* get() const { return &actions_; }
  /// The error of the first action that could not be added, such as that memory ran out; 0 without one. The program
  /// must not start without it: it would work in another folder.
  int error() const { return error_; }

 private:
  void keep(int error) { error_ = error_ != 0 ? error_ : error; }

  posix_spawn_file_actions_t actions_{};
  int error_ = 0;
};

// The attributes of a program that is started: default actions for the signals that this process may ignore, and its
// own process group if it may have to be ended.
class StartAttributes {
 public:
  explicit StartAttributes(bool hasGroup) {
    ::posix_spawnattr_init(&attributes_);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGPIPE);
    ::sigaddset(&signals, SIGXFSZ);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    const int group = hasGroup ? POSIX_SPAWN_SETPGROUP : 0;
    ::posix_spawnattr_setflags(&attributes_, static_cast<short>(POSIX_SPAWN_SETSIGDEF | group));
  }
  StartAttributes(const StartAttributes&) = delete;
  StartAttributes& operator=(const StartAttributes&) = delete;
  ~StartAttributes() { ::posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

std::vector<std::wstring> linesOf(std::string_view utf8) {
  std::vector<std::wstring> lines;
  std::istringstream text{std::string(utf8)};
  for (std::string line; std::getline(text, line);) {
    if (!line.empty()) {
      appendWide(lines.emplace_back(), line);
    }
  }
  return lines;
}

// A null-terminated list of texts, as the system expects it.
class TextList {
 public:
  explicit TextList(const std::vector<std::wstring>& texts) {
    for (const std::wstring& text : texts) {
      texts_.push_back(narrowPath(text));
    }
    for (std::string& text : texts_) {
      pointers_.push_back(text.data());
    }
    pointers_.push_back(nullptr);
  }
  TextList(const TextList&) = delete;
  TextList& operator=(const TextList&) = delete;

  // Adds the variables whose names are not in the list yet.
  void addOtherVariables(char** variables) {
    pointers_.pop_back();
    for (; variables && *variables; ++variables) {
      if (!hasVariable(*variables)) {
        pointers_.push_back(*variables);
      }
    }
    pointers_.push_back(nullptr);
  }

  char** get() { return pointers_.data(); }

 private:
  bool hasVariable(std::string_view other) const {
    const std::size_t end = other.find('=');
    return end != std::string_view::npos && std::any_of(texts_.begin(), texts_.end(), [&](const std::string& own) {
             return own.starts_with(other.substr(0, end + 1));
           });
  }

  std::vector<std::string> texts_;
  std::vector<char*> pointers_;
};

}  // namespace

ProcessResult runProgram(const std::vector<std::wstring>& arguments, const std::vector<std::wstring>& variables,
                         const ProcessSetup& setup) {
  // Its path may be relative to the current folder of this process.
  const bool isFound = setup.folder.empty() || folderOf(arguments.front()).empty();
  const std::string program = narrowPath(isFound ? arguments.front() : resolvedPath(arguments.front()));
  TextList argv(arguments);
  TextList environment(variables);
  environment.addOtherVariables(environ);

  ProcessResult result;
  result.commandLine = quoted(arguments);
  std::string messages;
  messages.reserve(kMaxMessageBytes);
  Pipe messagePipe;
  const StandardFiles files(messagePipe.writingEnd(), narrowPath(setup.folder));
  const bool hasGroup = canStop() || setup.isToStop;
  const StartAttributes attributes(hasGroup);
  pid_t process = 0;
  int error = messagePipe.error() != 0 ? messagePipe.error() : files.error();
  if (error == 0) {
    error = ::posix_spawnp(&process, program.c_str(), files.get(), attributes.get(), argv.get(), environment.get());
  }
  if (error != 0) {
    result.error = static_cast<std::uint32_t>(error);
    return result;
  }
  result.started = true;
  messagePipe.closeWritingEnd();
  Stopper stopper(process, hasGroup, setup.isToStop);
  messagePipe.readAll(messages, stopper);
  waitFor(process, stopper, result);
  result.messages = linesOf(std::string_view(messages).substr(0, kMaxMessageBytes));
  return result;
}

}  // namespace scrivalen
