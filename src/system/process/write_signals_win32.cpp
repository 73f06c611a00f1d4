#include "system/process/write_signals.h"

namespace scrivalen {

WriteSignalsBlocked::WriteSignalsBlocked() noexcept = default;
WriteSignalsBlocked::~WriteSignalsBlocked() = default;

}  // namespace scrivalen
