#include "platform/contain.h"

#include "platform/clog.h"
#include "platform/fmt.h"
#include "platform/utf.h"

#include <exception>

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
      // Without memory for the message there is nothing left to tell it with.
    }
  } catch (...) {
    CLog::Bug2(L"A report operation failed.");
  }
}

}  // namespace scrivalen::platform
