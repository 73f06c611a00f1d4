#include "system/interrupt.h"

#include "system/windows_api.h"

#include <atomic>

namespace scrivalen::platform {
namespace {

std::atomic<bool> interrupted = false;

// The system calls this on a thread of its own; false hands the event on, which ends the program.
BOOL WINAPI remember(DWORD) { return !interrupted.exchange(true); }

}  // namespace

void rememberInterrupts() { SetConsoleCtrlHandler(&remember, TRUE); }

bool wasInterrupted() { return interrupted; }

}  // namespace scrivalen::platform
