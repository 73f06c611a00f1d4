#pragma once

#ifndef _WIN32
#include <csignal>
#endif

namespace scrivalen {

/// While an object of this class exists, a write of its thread that fails returns its error only. Otherwise the system
/// would also send a signal, which ends most programs, when a pipe has lost its reader (SIGPIPE) or a file outgrows the
/// process's limit (SIGXFSZ).
class WriteSignalsBlocked {
 public:
  WriteSignalsBlocked() noexcept;
  WriteSignalsBlocked(const WriteSignalsBlocked&) = delete;
  WriteSignalsBlocked& operator=(const WriteSignalsBlocked&) = delete;
  ~WriteSignalsBlocked();

#ifndef _WIN32
 private:
  sigset_t signals_;  // those that were neither blocked nor pending before
  bool isBlocking_ = false;
#endif
};

}  // namespace scrivalen
