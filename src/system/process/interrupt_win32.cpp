#include "system/process/interrupt.h"

#include "system/windows_api.h"

#include <atomic>

namespace scrivalen {
namespace {

constexpr UINT kEndedByControlC = 0xC000013A;  // STATUS_CONTROL_C_EXIT

std::atomic<bool> interrupted = false;

// The system calls this on a thread of its own. After the console was closed or the user has logged off, it ends the
// program as soon as this returns, or after a few seconds.
BOOL WINAPI remember(DWORD event) {
  interrupted = true;
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    Sleep(INFINITE);
  }
  return TRUE;
}

}  // namespace

void rememberInterrupts() { SetConsoleCtrlHandler(&remember, TRUE); }

bool wasInterrupted() { return interrupted; }

void endIfInterrupted() {
  if (interrupted) {
    ExitProcess(kEndedByControlC);
  }
}

}  // namespace scrivalen
