#include "output/log_loss.h"

#include "output/exception_barrier.h"
#include "text/fmt.h"

namespace scrivalen {

void logLoss(std::wstring_view file, const LossCounter& loss) noexcept {
  if (loss.count() == 0) {
    return;
  }
  logMessage(
      [&] {
        return loss.count() == 1
                   ? FMT::Format(L"'%s': 1 character could not be written as it was given: U+%04X.", file, loss.first())
                   : FMT::Format(L"'%s': %d characters could not be written as they were given, the first is U+%04X.",
                                 file, loss.count(), loss.first());
      },
      L"A report has characters that could not be written as they were given.");
}

}  // namespace scrivalen
