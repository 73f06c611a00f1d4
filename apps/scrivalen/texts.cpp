#include "texts.h"

#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::command {

std::string lastErrorText() { return toUtf8(platform::systemErrorText(platform::lastSystemError())); }

}  // namespace scrivalen::command
