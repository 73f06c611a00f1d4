#include "output/exception_barrier.h"

#include "output/host_handlers.h"
#include "text/fmt.h"

#include <new>

namespace scrivalen {

void logException() noexcept {
  Reason reason;
  reason.keepException();
  logMessage([&] { return FMT::Format(L"%s%s", kOperationFailed, reason.text()); },
             L"A report operation failed: there is not enough memory.");
}

void logLine(const wchar_t* line) noexcept {
  try {
    try {
      CLog::Bug2(line);
    } catch (const std::bad_alloc&) {
      sendToLog(line);
    }
  } catch (...) {
    // An exception from the host's log handler cannot be reported anywhere.
  }
}

}  // namespace scrivalen
