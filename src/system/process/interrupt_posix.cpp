#include "system/process/interrupt.h"

#include <csignal>
#include <initializer_list>

#include <time.h>

namespace scrivalen {
namespace {

constexpr long kNanosecondsBetweenAlarms = 50'000'000;

volatile std::sig_atomic_t firstRequest = 0;  // the signal's number

// A request may come just before a system call blocks. The repeated alarms interrupt that call later.
timer_t alarms;
bool hasAlarms = false;

void interruptCall(int) {}

void remember(int signal) {
  if (firstRequest == 0) {
    firstRequest = signal;
  }
  if (hasAlarms) {
    constexpr timespec kPause{0, kNanosecondsBetweenAlarms};
    constexpr itimerspec kRepeating{kPause, kPause};
    ::timer_settime(alarms, 0, &kRepeating, nullptr);
  }
}

// Without SA_RESTART, so that a blocking call is interrupted.
void handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigfillset(&action.sa_mask);
  sigaction(signal, &action, nullptr);
}

bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void rememberInterrupts() {
  handle(SIGALRM, &interruptCall);
  hasAlarms = ::timer_create(CLOCK_MONOTONIC, nullptr, &alarms) == 0;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (!isIgnored(signal)) {
      handle(signal, &remember);
    }
  }
  for (const int signal : {SIGPIPE, SIGXFSZ}) {
    std::signal(signal, SIG_IGN);
  }
}

bool wasInterrupted() { return firstRequest != 0; }

void endIfInterrupted() {
  if (firstRequest != 0) {
    std::signal(firstRequest, SIG_DFL);
    std::raise(firstRequest);
  }
}

}  // namespace scrivalen
