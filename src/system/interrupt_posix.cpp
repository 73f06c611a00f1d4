#include "system/interrupt.h"

#include <csignal>
#include <initializer_list>

namespace scrivalen::platform {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void remember(int) { interrupted = 1; }

}  // namespace

void rememberInterrupts() {
  struct sigaction action {};
  action.sa_handler = &remember;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    sigaction(signal, &action, nullptr);
  }
}

bool wasInterrupted() { return interrupted != 0; }

}  // namespace scrivalen::platform
