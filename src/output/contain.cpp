#include "output/contain.h"

#include "output/clog.h"
#include "text/fmt.h"
#include "output/host.h"
#include "text/utf.h"

#include <exception>
#include <new>

namespace scrivalen::platform {

void logRaised() noexcept {
  try {
    throw;
  } catch (const std::exception& raised) {
    try {
      std::wstring reason;
      appendWide(reason, raised.what());
      CLog::Bug2(FMT::Format(L"A report operation failed: %s", reason));
    } catch (...) {
      logLine(L"A report operation failed: there is not enough memory.");
    }
  } catch (...) {
    logLine(L"A report operation failed.");
  }
}

void logLine(const wchar_t* line) noexcept {
  try {
    try {
      CLog::Bug2(line);
    } catch (const std::bad_alloc&) {
      sendToLog(line);
    }
  } catch (...) {
    // What the host's handler raises can be told to nobody.
  }
}

}  // namespace scrivalen::platform
