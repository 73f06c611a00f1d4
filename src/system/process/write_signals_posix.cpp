#include "system/process/write_signals.h"

#include <cerrno>
#include <ctime>
#include <initializer_list>

namespace scrivalen {

// A signal that waits already, or that the host has blocked, is the host's business.
WriteSignalsBlocked::WriteSignalsBlocked() noexcept {
  sigset_t pending;
  sigset_t blocked;
  sigemptyset(&signals_);
  if (sigpending(&pending) != 0 || pthread_sigmask(SIG_SETMASK, nullptr, &blocked) != 0) {
    return;
  }
  for (const int signal : {SIGPIPE, SIGXFSZ}) {
    if (sigismember(&pending, signal) == 0 && sigismember(&blocked, signal) == 0) {
      sigaddset(&signals_, signal);
    }
  }
  isBlocking_ = pthread_sigmask(SIG_BLOCK, &signals_, nullptr) == 0;
}

// A signal that came meanwhile is taken, so that it is not delivered afterwards.
WriteSignalsBlocked::~WriteSignalsBlocked() {
  if (!isBlocking_) {
    return;
  }
  const int error = errno;
  constexpr timespec kNoWait = {0, 0};
  while (sigtimedwait(&signals_, nullptr, &kNoWait) > 0) {
  }
  pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
  errno = error;
}

}  // namespace scrivalen
