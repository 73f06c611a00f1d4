#include "platform/loss.h"

#include "platform/clog.h"
#include "platform/fmt.h"

namespace scrivalen::platform {

void logLoss(std::wstring_view file, const LossCounter& loss) {
  if (loss.count() == 0) {
    return;
  }
  CLog::Bug2(loss.count() == 1
                 ? FMT::Format(L"'%s': 1 character could not be written as it was given: U+%04X.", file, loss.first())
                 : FMT::Format(L"'%s': %d characters could not be written as they were given, the first is U+%04X.",
                               file, loss.count(), loss.first()));
}

}  // namespace scrivalen::platform
